# cmake -DBUILD_DIR=<build> -DWORK_DIR=<empty folder> -P Packages.cmake
#
# Runs CPack on the build and checks that it made a .deb and a .tar.gz that
# hold the module, the print-parameter library, the header and the package
# file for find_package().

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
message(STATUS "packages: ${debs} ${tarballs}")
file(REMOVE_RECURSE "${WORK_DIR}")
