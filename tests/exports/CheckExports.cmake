# Lists the dynamic symbols that a library defines and fails unless they are exactly the
# entry point and the members of RQSession (PluginExportRules.cmake).
# Usage: cmake -DNM=<nm> -DLIBRARY=<file> -P CheckExports.cmake
include(${CMAKE_CURRENT_LIST_DIR}/PluginExportRules.cmake)
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
                OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "nm failed on ${LIBRARY}")
endif()
string(REPLACE "\n" ";" lines "${listing}")
set(names)
foreach(line IN LISTS lines)
  if(line STREQUAL "")
    continue()
  endif()
  string(REGEX MATCH "^[^ ]+" name "${line}")
  list(APPEND names "${name}")
endforeach()
qz_check_plugin_exports(LIBRARY ${LIBRARY} NAMES ${names})
message(STATUS "exports: GPMain_InfoPal and RQSession only")
