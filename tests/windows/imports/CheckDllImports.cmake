cmake_minimum_required(VERSION 3.25)
# Reads a DLL's import table and fails unless the DLL imports from the host runtime's DLL
# and, besides it, only from the C and C++ runtimes and Windows' own libraries. The C++
# runtime is shared, as the host's DLL shares it: std types cross the SDK boundary.
# Usage: cmake -DOBJDUMP=<mingw objdump> -DLIBRARY=<file.dll> -P CheckDllImports.cmake
set(runtime qzhost-runtime.dll)
set(allowed
  ${runtime}
  # The C runtime (the old one or the universal one) and the C++ runtime with its support
  # libraries.
  msvcrt.dll ucrtbase.dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll
  # Windows' own libraries.
  kernel32.dll user32.dll gdi32.dll advapi32.dll shell32.dll ole32.dll oleaut32.dll
  comdlg32.dll winspool.drv ntdll.dll)
# The universal C runtime's API sets, e.g. api-ms-win-crt-runtime-l1-1-0.dll.
set(crt_api_set "^api-ms-win-crt-[a-z0-9-]+-l[0-9]+-[0-9]+-[0-9]+\\.dll$")

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "objdump failed on ${LIBRARY}")
endif()
string(REGEX MATCHALL "DLL Name: [^\n]+" entries "${listing}")
set(imports)
foreach(entry IN LISTS entries)
  string(REGEX REPLACE "^DLL Name: " "" name "${entry}")
  string(STRIP "${name}" name)
  list(APPEND imports "${name}")
endforeach()
if(NOT imports)
  message(FATAL_ERROR "${LIBRARY} imports from no DLL")
endif()

set(problems)
set(from_runtime FALSE)
foreach(name IN LISTS imports)
  string(TOLOWER "${name}" lower)
  if(lower STREQUAL runtime)
    set(from_runtime TRUE)
  endif()
  if(NOT lower IN_LIST allowed AND NOT lower MATCHES "${crt_api_set}")
    list(APPEND problems "imports from ${name}, which is not a DLL that it may import from")
  endif()
endforeach()
if(NOT from_runtime)
  list(APPEND problems "imports nothing from ${runtime}")
endif()
if(problems)
  list(JOIN problems "\n  " text)
  message(FATAL_ERROR "${LIBRARY}:\n  ${text}")
endif()
list(JOIN imports ", " text)
message(STATUS "imports from: ${text}")
