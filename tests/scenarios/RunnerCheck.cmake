# Runs RunScenario.cmake on a script whose expected text is wrong on purpose, and passes
# only when the runner fails and says why: its message must contain the one line of
# MESSAGE_FILE. Variables: those of RunScenario.cmake, and MESSAGE_FILE.
file(STRINGS ${MESSAGE_FILE} message LIMIT_COUNT 1)
file(MAKE_DIRECTORY ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND}
    -DQZHOST=${QZHOST} -DPLUGIN=${PLUGIN} -DRUNTIME=${RUNTIME} -DCOMPARE=${COMPARE}
    -DSCRIPT=${SCRIPT} -DEXPECTED=${EXPECTED} -DWORK_DIR=${WORK_DIR}
    -P ${CMAKE_CURRENT_LIST_DIR}/RunScenario.cmake
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
if(status EQUAL 0)
  message(FATAL_ERROR "the runner accepted ${EXPECTED}, which the output does not meet")
endif()
string(FIND "${out}${err}" "${message}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the runner failed without saying '${message}':\n${out}${err}")
endif()
