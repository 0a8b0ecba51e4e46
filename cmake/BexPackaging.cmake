# What `cmake --install` lays out for hosts, and the packages CPack makes of it.
#
#   <libdir>/libBexRipEngineDriverUI_RipServer.so      the module (run path $ORIGIN)
#   <libdir>/libBexUIPrintParamsProcessing.so          the print-parameter library
#   <includedir>/IRipEngineDriverUI.h                  the one header hosts build against
#   <libdir>/cmake/BexRipEngineDriverUI_RipServer/     find_package() files
#   <datadir>/BexRipEngineDriverUI_RipServer/dtp/      the sample drivers
# On Windows the two DLLs go to <bindir> instead.

include(CMakePackageConfigHelpers)

if(WIN32)
    set(bex_module_dir "${CMAKE_INSTALL_BINDIR}")
else()
    set(bex_module_dir "${CMAKE_INSTALL_LIBDIR}")
endif()
set(BEX_MODULE_INSTALL_FILE
    "${bex_module_dir}/${CMAKE_SHARED_LIBRARY_PREFIX}BexRipEngineDriverUI_RipServer${CMAKE_SHARED_LIBRARY_SUFFIX}")
set(BEX_SAMPLES_INSTALL_DIR "${CMAKE_INSTALL_DATADIR}/BexRipEngineDriverUI_RipServer/dtp")
set(bex_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/BexRipEngineDriverUI_RipServer")

install(DIRECTORY "${BEX_SAMPLE_DRIVERS_DIR}/" DESTINATION "${BEX_SAMPLES_INSTALL_DIR}")

configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/BexRipEngineDriverUI_RipServerConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/package/BexRipEngineDriverUI_RipServerConfig.cmake"
    INSTALL_DESTINATION "${bex_package_dir}"
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR BEX_MODULE_INSTALL_FILE BEX_SAMPLES_INSTALL_DIR)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/package/BexRipEngineDriverUI_RipServerConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/package/BexRipEngineDriverUI_RipServerConfig.cmake"
    "${PROJECT_BINARY_DIR}/package/BexRipEngineDriverUI_RipServerConfigVersion.cmake"
    DESTINATION "${bex_package_dir}")

# cpack --config build/CPackConfig.cmake (or `cmake --build build --target package`)
# makes a .deb and a .tar.gz of the installed tree.
set(CPACK_PACKAGE_NAME "bexripenginedriverui-ripserver")
set(CPACK_PACKAGE_VENDOR "Bex")
set(CPACK_PACKAGE_CONTACT "Bex RIP server team")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_GENERATOR "DEB;TGZ")
set(CPACK_PACKAGE_FILE_NAME "BexRipEngineDriverUI_RipServer-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
# Packages carry the libraries without their debugging information.
set(CPACK_STRIP_FILES TRUE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "graphics")
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt5core5a (>= 5.15), libqt5gui5 (>= 5.15), libqt5widgets5 (>= 5.15)")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "7zip | p7zip-full")
include(CPack)
