# What `cmake --install` lays out for hosts, and the packages CPack makes of it.
#
#   <libdir>/libBexRipEngineDriverUI_RipServer.so      the module (run path $ORIGIN)
#   <libdir>/libBexUIPrintParamsProcessing.so          the print-parameter library
#   <includedir>/IRipEngineDriverUI.h                  the one header hosts build against
#   <libdir>/cmake/BexRipEngineDriverUI_RipServer/     find_package() files
#   <datadir>/BexRipEngineDriverUI_RipServer/dtp/      the sample drivers
#   <bindir>/7z                                        link to the system's 7-Zip (cmake/BexArchiver.cmake)
# <libdir> is the multiarch folder, lib/x86_64-linux-gnu on Debian (see the
# top-level CMakeLists.txt). On Windows the two DLLs go to <bindir> instead.

include(CMakePackageConfigHelpers)

if(WIN32)
    set(bex_module_dir "${CMAKE_INSTALL_BINDIR}")
else()
    set(bex_module_dir "${CMAKE_INSTALL_LIBDIR}")
endif()
# The Windows DLLs carry no "lib" prefix (bex_windows_dll_names).
get_target_property(bex_module_prefix BexRipEngineDriverUI_RipServer PREFIX)
if(NOT bex_module_prefix AND NOT bex_module_prefix STREQUAL "")
    set(bex_module_prefix "${CMAKE_SHARED_LIBRARY_PREFIX}")
endif()
set(BEX_MODULE_INSTALL_FILE
    "${bex_module_dir}/${bex_module_prefix}BexRipEngineDriverUI_RipServer${CMAKE_SHARED_LIBRARY_SUFFIX}")
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
# makes a .deb and a .tar.gz of the installed tree, both for the prefix /usr.
set(CPACK_PACKAGE_NAME "bexripenginedriverui-ripserver")
set(CPACK_PACKAGE_VENDOR "Bex")
set(BEX_PACKAGE_MAINTAINER "Bex RIP server team <rip-server@bex.example>"
    CACHE STRING "Maintainer of the .deb, as: name <mail address>")
set(CPACK_PACKAGE_CONTACT "${BEX_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
string(JOIN "\n" CPACK_PACKAGE_DESCRIPTION
    "RIP hosts of the Bex RIP server for flatbed inkjet printers load this"
    "module as a shared library. Operators use it to install, export, import"
    "and remove printer drivers and, before every job is ripped, to check and"
    "edit the driver's print properties: resolution, media and ink, ICC"
    "profiles and rendering intent, ink density and limits, ink order, print"
    "mode and mirror. Its dialogs speak Chinese and English."
    ""
    "The package holds the module, the print-parameter library"
    "BexUIPrintParamsProcessing that reads and writes the drivers' .prs files,"
    "the header and CMake package file that hosts build against, and three"
    "sample drivers with their ICC profiles. Driver packages are made and"
    "unpacked with 7-Zip.")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
# A Windows build makes a zip of the same tree instead (its ready
# application folder is the target windows_app_zip).
if(WIN32)
    set(CPACK_GENERATOR "ZIP")
else()
    set(CPACK_GENERATOR "DEB;TGZ")
endif()
set(CPACK_PACKAGE_FILE_NAME "BexRipEngineDriverUI_RipServer-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}")
if(NOT WIN32)
    set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
endif()
# Packages carry the libraries without their debugging information.
set(CPACK_STRIP_FILES TRUE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_DEBIAN_PACKAGE_SECTION "graphics")

# The .deb of a Linux build passes lintian (test cpack_packages). It is the
# installed tree with these differences, made by packaging/debian/staging.cmake
# on CPack's copy of the tree:
# - /usr/share/doc/<package>/ gets the copyright file and the changelog, and
#   /usr/share/lintian/overrides/<package> the few rules that do not fit a
#   package holding a module, its library and its development files together;
# - /usr/bin/7z is left out: it is the command of Debian's p7zip-full, and it
#   would only serve a host whose application directory, where the module
#   also keeps its settings, cache/ and dtp/, were /usr/bin. A host links
#   "7z" to /usr/bin/7zz in its own application directory; the package
#   depends on 7zip for that program.
# dpkg-shlibdeps adds the libraries' dependencies (libc, libstdc++, Qt). The
# module lies in the linker's multiarch folder, so the package declares it in
# a shlibs file and activates the ldconfig trigger.
if(NOT WIN32)
    set(bex_debian_dir "${PROJECT_SOURCE_DIR}/packaging/debian")
    set(CPACK_PRE_BUILD_SCRIPTS "${bex_debian_dir}/staging.cmake")
    set(CPACK_BEX_DEBIAN_DIR "${bex_debian_dir}")
    set(CPACK_BEX_ARCHIVER_LINK "${CMAKE_INSTALL_BINDIR}/${BEX_ARCHIVER_NAME}")

    set(CPACK_DEBIAN_PACKAGE_DEPENDS "7zip")
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    # Only the module has a shlibs line: the print-parameter library has no
    # versioned SONAME, as its file name is what a vendor build replaces.
    get_target_property(bex_module_soversion BexRipEngineDriverUI_RipServer SOVERSION)
    set(bex_shlibs_file "${PROJECT_BINARY_DIR}/package/debian/shlibs")
    set(bex_module_shlibs "${CMAKE_SHARED_LIBRARY_PREFIX}BexRipEngineDriverUI_RipServer ${bex_module_soversion}")
    file(CONFIGURE OUTPUT "${bex_shlibs_file}"
        CONTENT "${bex_module_shlibs} ${CPACK_PACKAGE_NAME} (>= ${PROJECT_VERSION})\n")
    set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${bex_shlibs_file}" "${bex_debian_dir}/triggers")
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
    # CPack also writes a postinst and a postrm that run ldconfig for every
    # package with libraries under /usr/lib; the trigger does that job now,
    # and packaging/debian/finish.cmake packs the .deb again without them.
    set(CPACK_POST_BUILD_SCRIPTS "${bex_debian_dir}/finish.cmake")
endif()
include(CPack)
