# The build's own tools, built for the machine that builds, inside a build for another
# platform: this source tree configured with QZ_HOST_TOOLS_ONLY in a folder of its own
# (<build>/host-tools), with the machine's compiler. Each tool becomes an imported program
# of the outer build, which a custom command names as it names a program of its own:
#   qz_host_tool(<name>)
# A native build of this tree that is configured already can build them instead
# (QZ_HOST_TOOLS_BUILD). The inner build runs at every build of the outer one (ninja finds nothing to do when no
# tool's source changed), before anything that uses a tool.
include(ExternalProject)

set(QZ_HOST_TOOLS qzrespack qzsdkexports check_sdk_imports)
set(QZ_HOST_TOOLS_BUILD "" CACHE PATH
  "A configured native build folder of this tree (e.g. build/default) that builds the tools; empty: a folder of this build's own")

if(QZ_HOST_TOOLS_BUILD)
  # The native build already there builds the tools (only those targets, brought up to
  # date at every build): scripts/test.sh names the default build, which compiled the
  # same sources moments before, so nothing is configured or compiled twice.
  if(NOT EXISTS ${QZ_HOST_TOOLS_BUILD}/CMakeCache.txt)
    message(FATAL_ERROR "QZ_HOST_TOOLS_BUILD: '${QZ_HOST_TOOLS_BUILD}' is not a configured build folder")
  endif()
  set(QZ_HOST_TOOLS_DIR ${QZ_HOST_TOOLS_BUILD})
  set(configure CONFIGURE_COMMAND "")
else()
  set(QZ_HOST_TOOLS_DIR ${CMAKE_BINARY_DIR}/host-tools)
  set(configure CMAKE_ARGS -DQZ_HOST_TOOLS_ONLY=ON -DCMAKE_BUILD_TYPE=Release)
endif()

set(byproducts)
foreach(tool IN LISTS QZ_HOST_TOOLS)
  list(APPEND byproducts ${QZ_HOST_TOOLS_DIR}/bin/${tool})
endforeach()
ExternalProject_Add(qz_host_tools
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${QZ_HOST_TOOLS_DIR}
  ${configure}
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target ${QZ_HOST_TOOLS}
  INSTALL_COMMAND ""
  BUILD_ALWAYS ON
  BUILD_BYPRODUCTS ${byproducts})

foreach(tool IN LISTS QZ_HOST_TOOLS)
  add_executable(${tool} IMPORTED GLOBAL)
  set_target_properties(${tool} PROPERTIES IMPORTED_LOCATION ${QZ_HOST_TOOLS_DIR}/bin/${tool})
  add_dependencies(${tool} qz_host_tools)
endforeach()
