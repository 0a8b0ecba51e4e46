# cmake -DBUILD_DIR=<build> -DHOST_SOURCE_DIR=<tests/install/host> [-DWORK_DIR=<folder>]
#       [-DCMAKE_GENERATOR=<generator>] [-DLIBDIR=<libdir of the build>]
#       [-DTOOLCHAIN_FILE=<file> -DQT_PREFIX_PATH=<Qt> -DEMULATOR=<runner>] -P InstallTree.cmake
#
# WORK_DIR defaults to a new folder in the temporary directory, outside the
# build tree. Installs the build into WORK_DIR/installed, moves that tree to
# WORK_DIR/moved (so that no path of the installation is right any more),
# builds the host of HOST_SOURCE_DIR against the moved tree through
# find_package() and runs it. Fails at the first step that does not work.
# The package file for find_package() lies below lib/ or a folder of it
# (lib/x86_64-linux-gnu/cmake/... on Debian); given LIBDIR, both libraries
# must lie there. A cross build names its tool chain file, its Qt and the
# program that runs what it builds (Wine for a Windows build made on Linux).

if(NOT DEFINED WORK_DIR)
    set(tmp "$ENV{TMPDIR}")
    if(NOT tmp)
        set(tmp "/tmp")
    endif()
    string(RANDOM LENGTH 10 suffix)
    set(WORK_DIR "${tmp}/bex-installed-host-${suffix}")
endif()

foreach(var BUILD_DIR HOST_SOURCE_DIR WORK_DIR)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGN}")
    endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/installed")
file(RENAME "${WORK_DIR}/installed" "${WORK_DIR}/moved")

foreach(expected include/IRipEngineDriverUI.h
        lib/cmake/BexRipEngineDriverUI_RipServer/BexRipEngineDriverUI_RipServerConfig.cmake)
    file(GLOB_RECURSE found RELATIVE "${WORK_DIR}/moved" "${WORK_DIR}/moved/*")
    string(REGEX REPLACE "^lib/" "lib.*/" pattern "${expected}")
    list(FILTER found INCLUDE REGEX "^${pattern}$")
    if(NOT found)
        message(FATAL_ERROR "the installed tree lacks ${expected}")
    endif()
endforeach()
if(DEFINED LIBDIR)
    foreach(library libBexRipEngineDriverUI_RipServer.so libBexUIPrintParamsProcessing.so)
        if(NOT EXISTS "${WORK_DIR}/moved/${LIBDIR}/${library}")
            message(FATAL_ERROR "the installed tree lacks ${LIBDIR}/${library}")
        endif()
    endforeach()
endif()
# The header is the only one a host gets.
file(GLOB headers RELATIVE "${WORK_DIR}/moved/include" "${WORK_DIR}/moved/include/*")
if(NOT headers STREQUAL "IRipEngineDriverUI.h")
    message(FATAL_ERROR "installed headers: ${headers}")
endif()

set(generator_args)
if(CMAKE_GENERATOR)
    set(generator_args -G "${CMAKE_GENERATOR}")
endif()
# A cross build's host is built with the same tool chain and Qt.
set(cross_args)
if(TOOLCHAIN_FILE)
    list(APPEND cross_args "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE}")
endif()
set(prefix_path "${WORK_DIR}/moved")
if(QT_PREFIX_PATH)
    list(APPEND prefix_path ${QT_PREFIX_PATH})
endif()
string(REPLACE ";" "\\;" prefix_path "${prefix_path}")
run("${CMAKE_COMMAND}" ${generator_args} -S "${HOST_SOURCE_DIR}" -B "${WORK_DIR}/host-build"
    "-DCMAKE_PREFIX_PATH=${prefix_path}" ${cross_args})
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/host-build")
# No library path from the environment: the module must find its
# print-parameter library through its own run path.
unset(ENV{LD_LIBRARY_PATH})
if(EXISTS "${WORK_DIR}/host-build/installed_module_host.exe")
    # Windows looks for a DLL's own imports beside the program, not beside
    # the DLL: a Windows host runs from the folder that holds the module, as
    # it does from its application directory.
    file(COPY "${WORK_DIR}/host-build/installed_module_host.exe" DESTINATION "${WORK_DIR}/moved/bin")
    run(${EMULATOR} "${WORK_DIR}/moved/bin/installed_module_host.exe")
else()
    run("${WORK_DIR}/host-build/installed_module_host")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
