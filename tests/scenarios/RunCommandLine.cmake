# Runs qzhost with ARGS (a list) and checks the exit status; for status 0 standard output
# must contain STDOUT_CONTAINS, for any other status standard error must be exactly one
# line. Variables: QZHOST, ARGS, EXPECTED_EXIT, STDOUT_CONTAINS.
execute_process(COMMAND ${QZHOST} ${ARGS}
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
set(problems "")
if(NOT "${status}" STREQUAL "${EXPECTED_EXIT}")
  string(APPEND problems "exit status ${status}, expected ${EXPECTED_EXIT}\n")
endif()
if(EXPECTED_EXIT EQUAL 0)
  string(FIND "${out}" "${STDOUT_CONTAINS}" found)
  if(found EQUAL -1)
    string(APPEND problems "standard output does not mention '${STDOUT_CONTAINS}'\n")
  endif()
else()
  string(REGEX MATCHALL "\n" newlines "${err}")
  list(LENGTH newlines lines)
  if(NOT lines EQUAL 1 OR NOT err MATCHES "\n$")
    string(APPEND problems "standard error is not exactly one line\n")
  endif()
endif()
if(problems)
  message(FATAL_ERROR "qzhost ${ARGS}:\n${problems}standard output:\n${out}\nstandard error:\n${err}")
endif()
