# Paths of the build for test and benchmark programs, without paths in compile commands:
#   qz_target_build_paths(<target> <MACRO> <path> [<MACRO> <path>...])
# defines each <MACRO> (one of those that tests/support/BuildPaths.h declares, as
# QZ_<NAME> for qzbuild::<name>) for every source of <target>, and adds a source file,
# written at generation time, that holds the paths themselves (generator expressions
# such as $<TARGET_FILE:...> are allowed). Only that one small file differs between two
# clones of the repository, so a compiler cache serves every other object of the target
# to a fresh clone.
function(qz_target_build_paths target)
  set(definitions)
  set(body "// Written by the build (cmake/BuildPaths.cmake): the paths of this build.\n")
  string(APPEND body "namespace qzbuild {\n")
  set(args ${ARGN})
  list(LENGTH args count)
  while(count GREATER 1)
    list(POP_FRONT args macro path)
    string(REGEX REPLACE "^QZ_" "" name "${macro}")
    string(TOLOWER "${name}" name)
    list(APPEND definitions "${macro}=qzbuild::${name}")
    string(APPEND body "extern const char* const ${name} = \"${path}\";\n")
    list(LENGTH args count)
  endwhile()
  if(count GREATER 0)
    message(FATAL_ERROR "qz_target_build_paths(${target}): a macro without its path")
  endif()
  string(APPEND body "} // namespace qzbuild\n")
  set(file ${CMAKE_CURRENT_BINARY_DIR}/${target}_build_paths.cpp)
  file(GENERATE OUTPUT ${file} CONTENT "${body}")
  target_sources(${target} PRIVATE ${file})
  # The generated file stays out of unity batches: it is the one source that differs
  # between clones.
  set_source_files_properties(${file} TARGET_DIRECTORY ${target} PROPERTIES
    SKIP_UNITY_BUILD_INCLUSION ON GENERATED ON)
  target_compile_definitions(${target} PRIVATE ${definitions})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
endfunction()
