# Lists the dynamic symbols that a library defines and fails unless they are exactly the
# entry point and the members of RQSession (its constructors, destructors, assignment,
# virtual table and type information), each present.
# Usage: cmake -DNM=<nm> -DLIBRARY=<file> -P CheckExports.cmake
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
                OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "nm failed on ${LIBRARY}")
endif()
string(REPLACE "\n" ";" lines "${listing}")
set(found_entry FALSE)
set(found_session FALSE)
foreach(line IN LISTS lines)
  if(line STREQUAL "")
    continue()
  endif()
  string(REGEX MATCH "^[^ ]+" name "${line}")
  if(name STREQUAL "GPMain_InfoPal")
    set(found_entry TRUE)
  elseif(name MATCHES "^_Z(N9RQSession|TV9RQSession$|TI9RQSession$|TS9RQSession$)")
    set(found_session TRUE)
  else()
    message(FATAL_ERROR "${LIBRARY} exports '${name}', which is neither the entry point nor RQSession")
  endif()
endforeach()
if(NOT found_entry OR NOT found_session)
  message(FATAL_ERROR "${LIBRARY} does not export GPMain_InfoPal and RQSession")
endif()
message(STATUS "exports: GPMain_InfoPal and RQSession only")
