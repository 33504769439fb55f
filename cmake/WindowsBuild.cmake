# The Windows x64 build (the windows-x64 preset, cmake/toolchains/mingw-w64-x86_64.cmake):
# the plug-in as InfoPal.dll, with its resources as PE resources, linked against the host
# runtime's DLL through an import library made from the SDK's declarations; the runtime's
# Windows resource reader; and the tests that check them, run under Wine.
#
# The host runtime itself is not built for Windows: the libraries that it is made of
# (ICU, Cairo, Pango, OpenImageIO, ...) have no Windows builds among Debian's packages.

# Header-only libraries are the same for every platform: Boost (boost::function,
# boost::bind, the shared pointers) for the plug-in, JSON for modern C++ for the tests. The
# machine's include folder cannot be given to the cross compiler as a whole (its C library
# headers would be found before mingw-w64's), so a folder of the build holds links to
# those libraries' folders alone.
set(QZ_HEADER_LINK_DIR ${CMAKE_BINARY_DIR}/header-only-include)
file(MAKE_DIRECTORY ${QZ_HEADER_LINK_DIR})
foreach(library IN ITEMS boost nlohmann)
  find_path(QZ_${library}_INCLUDE_DIR ${library} NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(CREATE_LINK ${QZ_${library}_INCLUDE_DIR}/${library} ${QZ_HEADER_LINK_DIR}/${library} SYMBOLIC)
endforeach()
add_library(Boost::headers INTERFACE IMPORTED)
target_include_directories(Boost::headers SYSTEM INTERFACE ${QZ_HEADER_LINK_DIR})
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json SYSTEM INTERFACE ${QZ_HEADER_LINK_DIR})

include(BuildPaths)
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
