# The inspect tests make their own images with OpenImageIO (linked through the commands
# library) and run the qzhost program on them and on the bundled samples.
set(paths QZ_SOURCE_DIR ${PROJECT_SOURCE_DIR})
if(TARGET qzhost AND TARGET InfoPal)
  list(APPEND paths QZ_QZHOST_PROGRAM $<TARGET_FILE:qzhost> QZ_INFOPAL_LIBRARY $<TARGET_FILE:InfoPal>)
  add_dependencies(test_pixelview qzhost InfoPal)
endif()
qz_target_build_paths(test_pixelview ${paths})
# The monitor test makes its ICC profile, and works out what it shows, with LittleCMS.
target_link_libraries(test_pixelview PRIVATE PkgConfig::LCMS2)
# The tests make their images with OpenImageIO, and work out the half floats that the
# files keep with Imath.
pkg_check_modules(TEST_IMATH REQUIRED IMPORTED_TARGET Imath)
target_link_libraries(test_pixelview PRIVATE PkgConfig::OIIO PkgConfig::TEST_IMATH)
