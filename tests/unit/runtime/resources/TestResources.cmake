# The runtime test program carries resources of its own, which the resource manager and
# ELF reader tests read back from its file, and it uses the stand-in plug-in libraries.
qz_add_resources(TARGET test_runtime
  MANIFEST ${CMAKE_CURRENT_LIST_DIR}/data/test_runtime.resources.json)
# The toolkit tests also read the plug-in's layout documents from the source tree.
qz_use_plugin_fixtures(test_runtime QZ_SOURCE_DIR ${PROJECT_SOURCE_DIR})
