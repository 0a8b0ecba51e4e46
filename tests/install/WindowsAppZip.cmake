# cmake -DBUILD_DIR=<Windows build> -DZIP=<application zip> -DWORK_DIR=<folder>
#       -DWINE=<wine> -DWINEPREFIX=<prefix> -P WindowsAppZip.cmake
#
# The zip of the application folder is what an operator copies onto a
# Windows machine: it is made anew, unpacked into an empty folder, checked
# for the files a host needs, and its minimal host is run from there under
# Wine with no DLL folder of the build on the search path, so that a DLL
# missing from the zip fails the run.

cmake_minimum_required(VERSION 3.20)

foreach(var BUILD_DIR ZIP WORK_DIR WINE WINEPREFIX)
    if(NOT ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

execute_process(COMMAND "${CMAKE_COMMAND}" --build "${BUILD_DIR}" --target windows_app_zip
    OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "the zip could not be made (${result})")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
file(ARCHIVE_EXTRACT INPUT "${ZIP}" DESTINATION "${WORK_DIR}")

foreach(file BexRipEngineDriverUI_RipServer.dll BexUIPrintParamsProcessing.dll 7z.exe minimal_host.exe
        demo_host.exe Qt5Core.dll Qt5Gui.dll Qt5Widgets.dll platforms/qwindows.dll
        styles/qwindowsvistastyle.dll dtp/driver/BexUV2513_CMYKWV.prs dtp/driver/BexUV2513_CMYKWV.pdv)
    if(NOT EXISTS "${WORK_DIR}/${file}")
        message(FATAL_ERROR "the application zip lacks ${file}")
    endif()
endforeach()
# What a run leaves in an application folder does not travel with it.
foreach(leftover PrinterDriverConfig.ini cache dtp/BexUIPrintParamsProcessing.json)
    if(EXISTS "${WORK_DIR}/${leftover}")
        message(FATAL_ERROR "the application zip holds ${leftover}, which a run of the build left")
    endif()
endforeach()
file(READ "${WORK_DIR}/7z.exe" magic LIMIT 2 HEX)
if(NOT magic STREQUAL "4d5a")
    message(FATAL_ERROR "7z.exe in the zip is not a Windows program")
endif()

# Wine passes QT_ variables to Windows programs only as WINEQT_.
set(ENV{WINEPREFIX} "${WINEPREFIX}")
set(ENV{WINEDEBUG} "-all")
set(ENV{WINEPATH} "")
set(ENV{WINEQT_QPA_PLATFORM} "offscreen")
set(ENV{WINEQT_FORCE_STDERR_LOGGING} "1")
execute_process(COMMAND "${WINE}" "${WORK_DIR}/minimal_host.exe" "${WORK_DIR}/BexRipEngineDriverUI_RipServer.dll"
    WORKING_DIRECTORY "${WORK_DIR}"
    OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE result)
message("${output}")
if(NOT result EQUAL 0)
    message(FATAL_ERROR "the minimal host failed in the unpacked folder (${result}):\n${errors}")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
