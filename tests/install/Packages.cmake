# cmake -DBUILD_DIR=<build> -DWORK_DIR=<empty folder> [-DDEBIAN_LIBDIR=<libdir>] [-DWINDOWS=ON]
#       -P Packages.cmake
#
# Runs CPack on the build and checks that it made a .deb and a .tar.gz (a
# .zip for a Windows build) that hold the module, the print-parameter
# library, the header and the package file for find_package().
#
# With DEBIAN_LIBDIR (the build's CMAKE_INSTALL_LIBDIR, lib/<multiarch>) the
# .deb is also checked as a Debian package: the libraries lie in
# /usr/<libdir>, the copyright file and changelog are there, /usr/bin/7z is
# not, it depends on 7zip and libc, and lintian reports no error, no warning
# and no override that is not needed any more. Lintian's whole output is
# printed either way.

cmake_minimum_required(VERSION 3.20)

foreach(var BUILD_DIR WORK_DIR)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
get_filename_component(cmake_dir "${CMAKE_COMMAND}" DIRECTORY)
find_program(CPACK cpack HINTS "${cmake_dir}" REQUIRED)
execute_process(COMMAND "${CPACK}" --config "${BUILD_DIR}/CPackConfig.cmake" -B "${WORK_DIR}"
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cpack failed (${result})")
endif()

# A Windows build packs the same tree as a zip: the DLLs in bin/ beside
# 7-Zip for Windows, no "lib" prefix.
if(WINDOWS)
    file(GLOB zips "${WORK_DIR}/*.zip")
    list(LENGTH zips zip_count)
    if(NOT zip_count EQUAL 1)
        message(FATAL_ERROR "expected one .zip, found: ${zips}")
    endif()
    execute_process(COMMAND "${CMAKE_COMMAND}" -E tar tf "${zips}" OUTPUT_VARIABLE zip_listing
        RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "cannot read ${zips}")
    endif()
    foreach(file "bin/BexRipEngineDriverUI_RipServer.dll" "bin/BexUIPrintParamsProcessing.dll" "bin/7z.exe"
            "include/IRipEngineDriverUI.h" "BexRipEngineDriverUI_RipServerConfig.cmake"
            "dtp/driver/BexUV2513_CMYKWV.prs")
        string(FIND "${zip_listing}" "${file}" at)
        if(at EQUAL -1)
            message(FATAL_ERROR "the zip package lacks ${file}:\n${zip_listing}")
        endif()
    endforeach()
    string(FIND "${zip_listing}" "/libBex" at)
    if(NOT at EQUAL -1)
        message(FATAL_ERROR "the zip package holds a library with the \"lib\" prefix:\n${zip_listing}")
    endif()
    return()
endif()

set(expected
    "libBexRipEngineDriverUI_RipServer.so"
    "libBexUIPrintParamsProcessing.so"
    "include/IRipEngineDriverUI.h"
    "BexRipEngineDriverUI_RipServerConfig.cmake"
    "dtp/driver/BexUV2513_CMYKWV.prs")

file(GLOB debs "${WORK_DIR}/*.deb")
file(GLOB tarballs "${WORK_DIR}/*.tar.gz")
list(LENGTH debs deb_count)
list(LENGTH tarballs tarball_count)
if(NOT deb_count EQUAL 1 OR NOT tarball_count EQUAL 1)
    message(FATAL_ERROR "expected one .deb and one .tar.gz, found: ${debs} ${tarballs}")
endif()

find_program(DPKG_DEB dpkg-deb REQUIRED)
execute_process(COMMAND "${DPKG_DEB}" --contents "${debs}" OUTPUT_VARIABLE deb_listing RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "dpkg-deb cannot read ${debs}")
endif()
execute_process(COMMAND "${CMAKE_COMMAND}" -E tar tzf "${tarballs}" OUTPUT_VARIABLE tar_listing
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cannot read ${tarballs}")
endif()
foreach(file IN LISTS expected)
    foreach(kind deb tar)
        string(FIND "${${kind}_listing}" "${file}" at)
        if(at EQUAL -1)
            message(FATAL_ERROR "the ${kind} package lacks ${file}:\n${${kind}_listing}")
        endif()
    endforeach()
endforeach()

if(DEFINED DEBIAN_LIBDIR)
    execute_process(COMMAND "${DPKG_DEB}" --field "${debs}" Package Depends
        OUTPUT_VARIABLE fields RESULT_VARIABLE result)
    if(NOT result EQUAL 0 OR NOT fields MATCHES "Package: ([^\n]+)")
        message(FATAL_ERROR "dpkg-deb cannot read the fields of ${debs}")
    endif()
    set(package "${CMAKE_MATCH_1}")
    foreach(file "./usr/${DEBIAN_LIBDIR}/libBexRipEngineDriverUI_RipServer.so"
            "./usr/${DEBIAN_LIBDIR}/libBexUIPrintParamsProcessing.so"
            "./usr/${DEBIAN_LIBDIR}/cmake/BexRipEngineDriverUI_RipServer/BexRipEngineDriverUI_RipServerConfig.cmake"
            "./usr/share/doc/${package}/copyright"
            "./usr/share/doc/${package}/changelog.gz")
        string(FIND "${deb_listing}" " ${file}" at)
        if(at EQUAL -1)
            message(FATAL_ERROR "the .deb lacks ${file}:\n${deb_listing}")
        endif()
    endforeach()
    string(FIND "${deb_listing}" " ./usr/bin/7z" at)
    if(NOT at EQUAL -1)
        message(FATAL_ERROR "the .deb holds /usr/bin/7z, the command of Debian's 7-Zip packages:\n${deb_listing}")
    endif()
    foreach(dependency 7zip libc6 libqt5widgets5)
        if(NOT fields MATCHES "Depends:.*(^|[ ,])${dependency}( |,|\n|$)")
            message(FATAL_ERROR "the .deb does not depend on ${dependency}:\n${fields}")
        endif()
    endforeach()

    find_program(LINTIAN lintian)
    if(NOT LINTIAN)
        message(FATAL_ERROR "lintian is not installed, so the .deb cannot be checked: install the Debian "
                            "package lintian (scripts/install-deps installs it with the others)")
    endif()
    # Informational tags are shown too, and the overrides with their reasons.
    execute_process(COMMAND "${LINTIAN}" --version OUTPUT_VARIABLE lintian_version
        OUTPUT_STRIP_TRAILING_WHITESPACE)
    execute_process(COMMAND "${LINTIAN}" --display-info --show-overrides --tag-display-limit 0 "${debs}"
        OUTPUT_VARIABLE lintian_output ERROR_VARIABLE lintian_errors RESULT_VARIABLE lintian_result)
    message(STATUS "${lintian_version} on ${debs}:\n${lintian_output}${lintian_errors}")
    # Exit code 2: lintian found errors, listed below with the warnings.
    # Anything else but 0 is lintian itself failing.
    if(NOT lintian_result EQUAL 0 AND NOT lintian_result EQUAL 2)
        message(FATAL_ERROR "lintian failed (${lintian_result})")
    endif()
    # An override that no longer matches anything must go too.
    string(REPLACE ";" "," lines "${lintian_output}")
    string(REPLACE "\n" ";" lines "${lines}")
    list(FILTER lines INCLUDE REGEX "^[EW]: |unused-override")
    if(lines OR NOT lintian_result EQUAL 0)
        list(JOIN lines "\n" complaints)
        message(FATAL_ERROR "lintian finds fault with the .deb:\n${complaints}")
    endif()
endif()
message(STATUS "packages: ${debs} ${tarballs}")
file(REMOVE_RECURSE "${WORK_DIR}")
