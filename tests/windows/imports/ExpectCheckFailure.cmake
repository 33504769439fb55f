# Runs check_sdk_imports on an import library that lacks an operation (or has it in the
# wrong form), and passes only when the check fails with that one problem: a line that
# names the operation and says what is wrong with it.
# Usage: cmake -DCHECK=<check_sdk_imports> -DINCLUDE_DIR=<SDK include folder>
#              -DLIBRARY=<import library> -DNM=<mingw nm> -DNAME=<operation>
#              -DREASON=<what is wrong> -P ExpectCheckFailure.cmake
execute_process(COMMAND ${CHECK} ${INCLUDE_DIR} ${LIBRARY} ${NM}
                OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
if(status EQUAL 0)
  message(FATAL_ERROR "the check passed on ${LIBRARY}, which lacks ${NAME}:\n${out}")
endif()
string(REPLACE "\n" ";" lines "${err}")
set(named FALSE)
foreach(line IN LISTS lines)
  string(FIND "${line}" "${NAME}" at_name)
  string(FIND "${line}" "${REASON}" at_reason)
  if(NOT at_name EQUAL -1 AND NOT at_reason EQUAL -1)
    set(named TRUE)
  endif()
endforeach()
if(NOT named)
  message(FATAL_ERROR "the check failed (${status}) without a line that names ${NAME} and "
                      "says '${REASON}':\n${err}")
endif()
if(NOT err MATCHES "(^|\n)1 problem\\(s\\)\n")
  message(FATAL_ERROR "the check found more than the one problem made for it:\n${err}")
endif()
message(STATUS "the check failed and named ${NAME}:\n${err}")
