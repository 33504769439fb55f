# Cross-compiles for 64-bit Windows with Debian's mingw-w64 (g++-mingw-w64-x86-64-posix,
# binutils-mingw-w64-x86-64). The POSIX thread model gives the C++ runtime std::thread and
# std::mutex; windres compiles the generated resource scripts.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(QZ_MINGW_TRIPLE x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${QZ_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QZ_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${QZ_MINGW_TRIPLE}-windres)
set(CMAKE_AR ${QZ_MINGW_TRIPLE}-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${QZ_MINGW_TRIPLE}-ranlib CACHE FILEPATH "")

# Libraries and headers come from the mingw-w64 tree only; programs (the build's own
# tools) from the machine.
set(CMAKE_FIND_ROOT_PATH /usr/${QZ_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
