# Writes a copy of a module-definition file with one export changed, for the check that
# must then fail: -DDROP=<symbol> leaves the export out, -DMAKE_DATA=<symbol> marks it
# DATA (an import pointer without its code thunk). Fails when the file has no such export.
# Usage: cmake -DINPUT=<file.def> -DOUTPUT=<file.def> -DDROP=<symbol>|-DMAKE_DATA=<symbol>
#              -P EditModuleDefinition.cmake
file(STRINGS ${INPUT} lines)
set(out)
set(found FALSE)
foreach(line IN LISTS lines)
  # An export's line: its symbol, then DATA for data.
  string(STRIP "${line}" entry)
  string(REGEX REPLACE " .*" "" symbol "${entry}")
  if(DEFINED DROP AND symbol STREQUAL DROP)
    set(found TRUE)
    continue()
  endif()
  if(DEFINED MAKE_DATA AND entry STREQUAL MAKE_DATA)
    set(found TRUE)
    string(APPEND line " DATA")
  endif()
  string(APPEND out "${line}\n")
endforeach()
if(NOT found)
  message(FATAL_ERROR "${INPUT} has no export '${DROP}${MAKE_DATA}' to change")
endif()
file(WRITE ${OUTPUT} "${out}")
