# The Windows x64 build (the windows-x64 preset, cmake/toolchains/mingw-w64-x86_64.cmake):
# the plug-in as InfoPal.dll, with its resources as PE resources, linked against the host
# runtime's DLL through an import library made from the SDK's declarations; the runtime's
# Windows resource reader; and the tests that check them, run under Wine.
#
# The host runtime itself is not built for Windows: the libraries that it is made of
# (ICU, Cairo, Pango, OpenImageIO, ...) have no Windows builds among Debian's packages.

# Boost's headers (boost::function, boost::bind, the shared pointers) are the same for
# every platform. The machine's include folder cannot be given to the cross compiler as a
# whole (its C library headers would be found before mingw-w64's), so a folder of the
# build holds a link to the boost folder alone.
find_path(QZ_BOOST_INCLUDE_DIR boost/version.hpp NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(QZ_BOOST_LINK_DIR ${CMAKE_BINARY_DIR}/boost-include)
file(MAKE_DIRECTORY ${QZ_BOOST_LINK_DIR})
file(CREATE_LINK ${QZ_BOOST_INCLUDE_DIR}/boost ${QZ_BOOST_LINK_DIR}/boost SYMBOLIC)
add_library(Boost::headers INTERFACE IMPORTED)
target_include_directories(Boost::headers SYSTEM INTERFACE ${QZ_BOOST_LINK_DIR})

include(HostTools)
include(QZResources)
include(SdkImportLibrary)

add_subdirectory(src/host/sdk)
add_subdirectory(src/host/runtime)
add_subdirectory(src/plugin/qzgp/InfoPal)

if(QZ_BUILD_TESTS)
  enable_testing()
  add_subdirectory(tests/windows)
endif()
