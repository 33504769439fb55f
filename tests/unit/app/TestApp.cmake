# The command tests read the stand-in plug-ins; when the qzhost program is part of the
# build they also run it on the Info palette library.
set(paths QZ_SOURCE_DIR ${PROJECT_SOURCE_DIR})
if(TARGET qzhost AND TARGET InfoPal)
  list(APPEND paths QZ_QZHOST_PROGRAM $<TARGET_FILE:qzhost> QZ_INFOPAL_LIBRARY $<TARGET_FILE:InfoPal>)
  add_dependencies(test_app qzhost InfoPal)
endif()
qz_use_plugin_fixtures(test_app ${paths})
