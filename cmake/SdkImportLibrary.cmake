# The import library of the host runtime's DLL (qzhost-runtime.dll), which the plug-in
# links on Windows. The runtime is not built for Windows, so what its DLL exports is read
# from the SDK headers: qzsdkexports (a tool of the machine that builds, cmake/HostTools.cmake)
# parses them as the cross compiler sees them and writes the module-definition file, from
# which dlltool makes the import library. Both are made at build time, again whenever a
# header changes.
#   qzruntime_imports       an INTERFACE library that links the import library
#   QZ_SDK_IMPORT_DEF       the module-definition file
#   QZ_SDK_IMPORT_LIBRARY   the import library
find_program(QZ_MINGW_DLLTOOL ${QZ_MINGW_TRIPLE}-dlltool REQUIRED)

set(QZ_SDK_INCLUDE_DIR ${PROJECT_SOURCE_DIR}/src/host/sdk/include)
# CONFIGURE_DEPENDS: a header added to the SDK is read without a manual reconfigure.
file(GLOB_RECURSE QZ_SDK_IMPORT_HEADERS CONFIGURE_DEPENDS ${QZ_SDK_INCLUDE_DIR}/*.h)
list(SORT QZ_SDK_IMPORT_HEADERS)

set(QZ_SDK_IMPORT_DIR ${CMAKE_BINARY_DIR}/sdk-imports)
set(QZ_SDK_IMPORT_DEF ${QZ_SDK_IMPORT_DIR}/qzhost-runtime.def)
set(QZ_SDK_IMPORT_LIBRARY ${QZ_SDK_IMPORT_DIR}/libqzhost-runtime.dll.a)

# The cross compiler's own include folders, in its search order (clang alone would not find
# its C++ library), then the folder of the boost headers.
set(system_include_args)
foreach(dir IN LISTS CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES QZ_HEADER_LINK_DIR)
  list(APPEND system_include_args --system-include-dir ${dir})
endforeach()

add_custom_command(OUTPUT ${QZ_SDK_IMPORT_DEF}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${QZ_SDK_IMPORT_DIR}
  COMMAND qzsdkexports --target ${QZ_MINGW_TRIPLE} --library qzhost-runtime.dll
          --include-dir ${QZ_SDK_INCLUDE_DIR} ${system_include_args}
          --output ${QZ_SDK_IMPORT_DEF} ${QZ_SDK_IMPORT_HEADERS}
  DEPENDS qzsdkexports $<TARGET_FILE:qzsdkexports> ${QZ_SDK_IMPORT_HEADERS}
  COMMENT "Reading the host runtime's exports from the SDK headers"
  VERBATIM)
# dlltool names the library's members after the output's path: a name without a folder
# keeps the build's own folder out of the library.
add_custom_command(OUTPUT ${QZ_SDK_IMPORT_LIBRARY}
  COMMAND ${QZ_MINGW_DLLTOOL} --def ${QZ_SDK_IMPORT_DEF} --dllname qzhost-runtime.dll
          --output-lib libqzhost-runtime.dll.a
  WORKING_DIRECTORY ${QZ_SDK_IMPORT_DIR}
  DEPENDS ${QZ_SDK_IMPORT_DEF}
  COMMENT "Making the import library of qzhost-runtime.dll"
  VERBATIM)
add_custom_target(qzruntime_import_library DEPENDS ${QZ_SDK_IMPORT_LIBRARY})

add_library(qzruntime_imports INTERFACE)
target_link_libraries(qzruntime_imports INTERFACE ${QZ_SDK_IMPORT_LIBRARY})
# A target that links qzruntime_imports waits for the import library.
add_dependencies(qzruntime_imports qzruntime_import_library)
