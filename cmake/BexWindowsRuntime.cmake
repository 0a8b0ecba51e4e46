# What a Windows build adds to the application directory and to the tests.
#
# - The staged application directory (build/app) runs as it is on Windows:
#   Qt's DLLs, the platform and style plugins and MinGW's runtime DLLs are
#   copied beside the module, and a zip of the folder is one target away
#   (`cmake --build <dir> --target windows_app_zip`).
# - A build made on Linux runs its tests under Wine: the tests' emulator is
#   <build>/wine-run, which gives Wine a prefix of its own in the build tree,
#   the Chinese ANSI code page 936 and the DLL folders on WINEPATH.
if(NOT WIN32)
    return()
endif()

# MinGW's runtime DLLs, which Qt's DLLs need beside them.
set(BEX_MINGW_RUNTIME_DLLS)
if(NOT MSVC)
    foreach(dll libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${dll}
            OUTPUT_VARIABLE dll_path OUTPUT_STRIP_TRAILING_WHITESPACE)
        get_filename_component(dll_path "${dll_path}" ABSOLUTE)
        if(NOT EXISTS "${dll_path}")
            message(FATAL_ERROR "MinGW runtime DLL not found: ${dll} (asked ${CMAKE_CXX_COMPILER})")
        endif()
        list(APPEND BEX_MINGW_RUNTIME_DLLS "${dll_path}")
    endforeach()
endif()

# Qt's DLLs and the plugins a widget application needs on Windows.
get_target_property(bex_qt_core_dll Qt5::Core IMPORTED_LOCATION_RELEASE)
get_filename_component(BEX_QT_BIN_DIR "${bex_qt_core_dll}" DIRECTORY)
set(BEX_QT_DLLS)
foreach(module Core Gui Widgets)
    get_target_property(dll Qt5::${module} IMPORTED_LOCATION_RELEASE)
    list(APPEND BEX_QT_DLLS "${dll}")
endforeach()
get_target_property(bex_qt_windows_plugin Qt5::QWindowsIntegrationPlugin IMPORTED_LOCATION_RELEASE)
get_filename_component(bex_qt_platforms_dir "${bex_qt_windows_plugin}" DIRECTORY)
get_filename_component(BEX_QT_PLUGIN_DIR "${bex_qt_platforms_dir}" DIRECTORY)
set(BEX_QT_PLUGINS
    platforms/qwindows.dll
    platforms/qoffscreen.dll
    platforms/qminimal.dll
    styles/qwindowsvistastyle.dll
    imageformats/qico.dll)

# bex_stage_windows_runtime(<appdir>)
# Copies Qt's DLLs and plugins and MinGW's runtime into <appdir> at build time.
function(bex_stage_windows_runtime app_dir)
    set(outputs)
    set(commands)
    foreach(dll ${BEX_QT_DLLS} ${BEX_MINGW_RUNTIME_DLLS})
        get_filename_component(name "${dll}" NAME)
        list(APPEND outputs "${app_dir}/${name}")
        list(APPEND commands COMMAND "${CMAKE_COMMAND}" -E copy_if_different "${dll}" "${app_dir}/${name}")
    endforeach()
    foreach(plugin ${BEX_QT_PLUGINS})
        get_filename_component(folder "${plugin}" DIRECTORY)
        list(APPEND outputs "${app_dir}/${plugin}")
        list(APPEND commands
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${app_dir}/${folder}"
            COMMAND "${CMAKE_COMMAND}" -E copy_if_different "${BEX_QT_PLUGIN_DIR}/${plugin}" "${app_dir}/${plugin}")
    endforeach()
    string(MD5 app_dir_hash "${app_dir}")
    string(SUBSTRING "${app_dir_hash}" 0 12 app_dir_hash)
    add_custom_command(OUTPUT ${outputs} ${commands}
        COMMENT "Copying Qt and the MinGW runtime into ${app_dir}"
        VERBATIM)
    add_custom_target(bex_stage_windows_runtime_${app_dir_hash} ALL DEPENDS ${outputs})
endfunction()

bex_stage_windows_runtime("${BEX_APP_DIR}")

# A zip of the ready application folder, for a Windows machine: the
# programs, DLLs and plugins of the staged folder and the sample drivers,
# without what runs in the staged folder may have left there (settings,
# cache/, installed drivers).
set(BEX_WINDOWS_APP_ZIP "${CMAKE_BINARY_DIR}/BexRipEngineDriverUI_RipServer-${PROJECT_VERSION}-windows-x64.zip")
add_custom_target(windows_app_zip
    COMMAND "${CMAKE_COMMAND}" "-DAPP_DIR=${BEX_APP_DIR}" "-DSAMPLES_DIR=${BEX_SAMPLE_DRIVERS_DIR}"
            "-DSTAGING_DIR=${CMAKE_BINARY_DIR}/windows-app-zip" "-DZIP=${BEX_WINDOWS_APP_ZIP}"
            -P "${CMAKE_CURRENT_LIST_DIR}/BexWindowsAppZip.cmake"
    COMMENT "Zipping the application folder into ${BEX_WINDOWS_APP_ZIP}"
    VERBATIM)

# Tests of a Windows build made on Linux run under Wine.
if(CMAKE_CROSSCOMPILING AND CMAKE_HOST_UNIX AND NOT DEFINED CMAKE_CROSSCOMPILING_EMULATOR)
    find_program(BEX_WINE NAMES wine wine64 DOC "Wine, which runs the tests of a Windows build")
    if(NOT BEX_WINE)
        message(WARNING "Wine not found (Debian packages wine, wine64): the tests cannot run")
    endif()
    set(BEX_WINE_PREFIX "${CMAKE_BINARY_DIR}/wineprefix")
    # Wine's Z: drive is the Linux root: the DLL folders by their Linux paths.
    set(winepath)
    foreach(dir "${BEX_APP_DIR}" "${BEX_QT_BIN_DIR}")
        string(REPLACE "/" "\\\\" dir "Z:${dir}")
        list(APPEND winepath "${dir}")
    endforeach()
    foreach(dll ${BEX_MINGW_RUNTIME_DLLS})
        get_filename_component(dir "${dll}" DIRECTORY)
        string(REPLACE "/" "\\\\" dir "Z:${dir}")
        list(APPEND winepath "${dir}")
    endforeach()
    list(REMOVE_DUPLICATES winepath)
    list(JOIN winepath ";" BEX_WINEPATH)
    string(REPLACE "/" "\\\\" BEX_WINE_QT_PLUGIN_PATH "Z:${BEX_QT_PLUGIN_DIR}")
    # Under the offscreen and minimal platform plugins Qt for Windows draws
    # text with the fonts of one folder (QT_QPA_FONTDIR), not with the
    # system's: the build gets a folder with the fonts that the Linux runs
    # find through fontconfig, Latin and Chinese.
    set(BEX_WINE_FONT_DIR "${CMAKE_BINARY_DIR}/fonts")
    file(MAKE_DIRECTORY "${BEX_WINE_FONT_DIR}")
    set(bex_fonts
        /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
        /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf
        /usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc
        /usr/share/fonts/opentype/noto/NotoSansCJK-Bold.ttc)
    foreach(font ${bex_fonts})
        if(NOT EXISTS "${font}")
            message(WARNING "${font} is missing (Debian packages fonts-dejavu-core, fonts-noto-cjk): "
                            "offscreen tests under Wine draw no text with it")
            continue()
        endif()
        get_filename_component(name "${font}" NAME)
        file(CREATE_LINK "${font}" "${BEX_WINE_FONT_DIR}/${name}" SYMBOLIC)
    endforeach()
    string(REPLACE "/" "\\\\" BEX_WINE_QT_FONT_DIR "Z:${BEX_WINE_FONT_DIR}")
    configure_file("${CMAKE_CURRENT_LIST_DIR}/wine-run.in" "${CMAKE_BINARY_DIR}/wine-run"
        @ONLY FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_BINARY_DIR}/wine-run")
endif()
