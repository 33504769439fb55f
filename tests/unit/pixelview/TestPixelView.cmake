# The inspect tests make their own images with OpenImageIO (linked through the commands
# library) and run the qzhost program on them and on the bundled samples.
target_compile_definitions(test_pixelview PRIVATE QZ_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
if(TARGET qzhost AND TARGET InfoPal)
  target_compile_definitions(test_pixelview PRIVATE
    QZ_QZHOST_PROGRAM="$<TARGET_FILE:qzhost>" QZ_INFOPAL_LIBRARY="$<TARGET_FILE:InfoPal>")
  add_dependencies(test_pixelview qzhost InfoPal)
endif()
# The monitor test makes its ICC profile, and works out what it shows, with LittleCMS.
target_link_libraries(test_pixelview PRIVATE PkgConfig::LCMS2)
