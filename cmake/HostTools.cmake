# The build's own tools, built for the machine that builds, inside a build for another
# platform: this source tree configured with QZ_HOST_TOOLS_ONLY in a folder of its own
# (<build>/host-tools), with the machine's compiler. Each tool becomes an imported program
# of the outer build, which a custom command names as it names a program of its own:
#   qz_host_tool(<name>)
# The inner build runs at every build of the outer one (ninja finds nothing to do when no
# tool's source changed), before anything that uses a tool.
include(ExternalProject)

set(QZ_HOST_TOOLS_DIR ${CMAKE_BINARY_DIR}/host-tools)
set(QZ_HOST_TOOLS qzrespack qzsdkexports check_sdk_imports)

set(byproducts)
foreach(tool IN LISTS QZ_HOST_TOOLS)
  list(APPEND byproducts ${QZ_HOST_TOOLS_DIR}/bin/${tool})
endforeach()
ExternalProject_Add(qz_host_tools
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${QZ_HOST_TOOLS_DIR}
  CMAKE_ARGS -DQZ_HOST_TOOLS_ONLY=ON -DCMAKE_BUILD_TYPE=Release
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target ${QZ_HOST_TOOLS}
  INSTALL_COMMAND ""
  BUILD_ALWAYS ON
  BUILD_BYPRODUCTS ${byproducts})

foreach(tool IN LISTS QZ_HOST_TOOLS)
  add_executable(${tool} IMPORTED GLOBAL)
  set_target_properties(${tool} PROPERTIES IMPORTED_LOCATION ${QZ_HOST_TOOLS_DIR}/bin/${tool})
  add_dependencies(${tool} qz_host_tools)
endforeach()
