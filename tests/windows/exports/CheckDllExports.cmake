# Reads a DLL's export table and fails unless it names exactly the entry point and the
# members of RQSession (tests/exports/PluginExportRules.cmake, the rule of the Linux
# library too).
# Usage: cmake -DOBJDUMP=<mingw objdump> -DLIBRARY=<file.dll> -P CheckDllExports.cmake
include(${CMAKE_CURRENT_LIST_DIR}/../../exports/PluginExportRules.cmake)
execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY}
                OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "objdump failed on ${LIBRARY}")
endif()
# The table of names: after its heading, one "[ordinal] name" line per export, up to the
# first line of another form. (A bracket in a CMake list element hides the separators after
# it: the names are taken out with their ordinals' closing brackets turned into '>'.)
string(FIND "${listing}" "[Ordinal/Name Pointer] Table\n" start)
if(start EQUAL -1)
  message(FATAL_ERROR "${LIBRARY} has no export table")
endif()
# The lines after the heading.
string(LENGTH "[Ordinal/Name Pointer] Table\n" heading)
math(EXPR start "${start} + ${heading}")
string(SUBSTRING "${listing}" ${start} -1 table)
string(REGEX MATCH "^([ \t]*\\[ *[0-9]+\\] [^\n]+\n)+" table "${table}")
string(REPLACE "]" ">" table "${table}")
string(REGEX MATCHALL "> [^\n]+" entries "${table}")
set(names)
foreach(entry IN LISTS entries)
  string(SUBSTRING "${entry}" 2 -1 name)
  list(APPEND names "${name}")
endforeach()
if(NOT names)
  message(FATAL_ERROR "${LIBRARY} exports nothing")
endif()
qz_check_plugin_exports(LIBRARY ${LIBRARY} NAMES ${names})
list(LENGTH names count)
message(STATUS "exports (${count}): GPMain_InfoPal and RQSession only")
