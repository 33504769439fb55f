# Runs one host script through `qzhost script` and compares its standard output with the
# expected text through the comparison program (which names each line that disagrees), and
# its exit status with the one that the script states; standard error must be empty
# exactly when the status is 0. Variables: QZHOST, PLUGIN, RUNTIME, COMPARE, SCRIPT,
# EXPECTED, WORK_DIR.
get_filename_component(name ${SCRIPT} NAME_WE)

set(expected_exit 0)
set(plugin ${PLUGIN})
set(use_stdin FALSE)
file(STRINGS ${SCRIPT} directives REGEX "^#[ ]*(exit|plugin|input):")
foreach(directive IN LISTS directives)
  if(directive MATCHES "^#[ ]*exit:[ ]*([0-9]+)[ ]*$")
    set(expected_exit ${CMAKE_MATCH_1})
  elseif(directive MATCHES "^#[ ]*plugin:[ ]*runtime[ ]*$")
    set(plugin ${RUNTIME})
  elseif(directive MATCHES "^#[ ]*plugin:[ ]*missing[ ]*$")
    set(plugin ${WORK_DIR}/no-such-plugin.so)
  elseif(directive MATCHES "^#[ ]*input:[ ]*stdin[ ]*$")
    set(use_stdin TRUE)
  else()
    message(FATAL_ERROR "${SCRIPT}: unknown directive '${directive}'")
  endif()
endforeach()

if(use_stdin)
  execute_process(COMMAND ${QZHOST} script --plugin ${plugin} -
    INPUT_FILE ${SCRIPT}
    OUTPUT_VARIABLE actual ERROR_VARIABLE diagnostics RESULT_VARIABLE status)
else()
  execute_process(COMMAND ${QZHOST} script --plugin ${plugin} ${SCRIPT}
    OUTPUT_VARIABLE actual ERROR_VARIABLE diagnostics RESULT_VARIABLE status)
endif()

# Paths differ between build trees: the plug-in's path reads <plugin> in the output.
string(REPLACE "${plugin}" "<plugin>" actual "${actual}")

set(actual_file ${WORK_DIR}/${name}.actual)
file(WRITE ${actual_file} "${actual}")
execute_process(COMMAND ${COMPARE} ${EXPECTED} ${actual_file}
  OUTPUT_VARIABLE differences ERROR_VARIABLE compare_error RESULT_VARIABLE compare_status)
set(problems "")
if(NOT compare_status EQUAL 0)
  string(APPEND problems "standard output (${actual_file}) disagrees with ${EXPECTED}:\n"
    "${differences}${compare_error}")
endif()
if(NOT "${status}" STREQUAL "${expected_exit}")
  string(APPEND problems "exit status ${status}, expected ${expected_exit}\n")
endif()
# A script that runs through leaves standard error empty: a diagnostic there (such as a
# breach of the host's calling contract) fails it.
if(expected_exit EQUAL 0 AND NOT diagnostics STREQUAL "")
  string(APPEND problems "diagnostics on standard error\n")
endif()
if(NOT expected_exit EQUAL 0 AND diagnostics STREQUAL "")
  string(APPEND problems "exit status ${expected_exit} without a diagnostic on standard error\n")
endif()
if(problems)
  # Printed as they are (a fatal error's text would be rewrapped), then the verdict.
  message(NOTICE "${name}:\n${problems}standard error:\n${diagnostics}")
  message(FATAL_ERROR "${name} failed")
endif()
