# The archiver that makes and unpacks driver packages.
#
# The module runs it from the application directory ("7z.exe" on Windows,
# "7z" elsewhere) and never searches PATH, so every staged application
# directory (build/app and each test's own folder) gets a link named "7z" to
# the system's 7-Zip, and the install puts one beside the installed
# programs. Debian's 7-Zip is the package "7zip" (program 7zz).
#
# A Windows build stages 7-Zip for Windows as "7z.exe" instead: the full
# 7z.exe or the standalone 7za.exe, found on the path or given with
# -DBEX_SYSTEM_7ZIP=... (scripts/windows takes 7za.exe from the npm package
# 7zip-bin). It must be a Windows program: a build made on Linux would
# otherwise find the Linux one.
if(WIN32)
    find_program(BEX_SYSTEM_7ZIP NAMES 7z.exe 7za.exe DOC "7-Zip for Windows, staged as \"7z.exe\"")
    if(BEX_SYSTEM_7ZIP)
        file(READ "${BEX_SYSTEM_7ZIP}" bex_7zip_magic LIMIT 2 HEX)
        if(NOT bex_7zip_magic STREQUAL "4d5a")
            message(FATAL_ERROR "${BEX_SYSTEM_7ZIP} is not a Windows program: "
                                "give 7-Zip for Windows with -DBEX_SYSTEM_7ZIP=<path to 7z.exe or 7za.exe>")
        endif()
    endif()
else()
    find_program(BEX_SYSTEM_7ZIP NAMES 7zz 7z DOC "7-Zip program that the staged \"7z\" links to")
endif()
if(NOT BEX_SYSTEM_7ZIP)
    message(WARNING "7-Zip not found (Debian package 7zip; on Windows 7z.exe or 7za.exe): driver packages "
                    "cannot be made or unpacked, and the package tests fail")
endif()

if(WIN32)
    set(BEX_ARCHIVER_NAME "7z.exe")
else()
    set(BEX_ARCHIVER_NAME "7z")
endif()

# bex_stage_archiver(<appdir> [FOR_TARGET <target>])
#
# Puts the archiver link into <appdir> at build time. With FOR_TARGET the
# target is built after it.
function(bex_stage_archiver app_dir)
    cmake_parse_arguments(ARG "" "FOR_TARGET" "" ${ARGN})
    if(NOT BEX_SYSTEM_7ZIP)
        return()
    endif()
    set(link "${app_dir}/${BEX_ARCHIVER_NAME}")
    if(WIN32)
        set(stage_command "${CMAKE_COMMAND}" -E copy "${BEX_SYSTEM_7ZIP}" "${link}")
    else()
        set(stage_command "${CMAKE_COMMAND}" -E create_symlink "${BEX_SYSTEM_7ZIP}" "${link}")
    endif()
    string(MD5 app_dir_hash "${app_dir}")
    string(SUBSTRING "${app_dir_hash}" 0 12 app_dir_hash)
    add_custom_command(OUTPUT "${link}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${app_dir}"
        COMMAND ${stage_command}
        COMMENT "Linking the archiver into ${app_dir}"
        VERBATIM)
    add_custom_target(bex_stage_archiver_${app_dir_hash} ALL DEPENDS "${link}")
    if(ARG_FOR_TARGET)
        add_dependencies(${ARG_FOR_TARGET} bex_stage_archiver_${app_dir_hash})
    endif()
endfunction()

# The installed programs' folder gets its link too.
function(bex_install_archiver)
    if(NOT BEX_SYSTEM_7ZIP)
        return()
    endif()
    if(WIN32)
        install(PROGRAMS "${BEX_SYSTEM_7ZIP}" DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME "${BEX_ARCHIVER_NAME}")
    else()
        install(CODE "
            set(bex_bin_dir \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
            file(MAKE_DIRECTORY \"\${bex_bin_dir}\")
            message(STATUS \"Installing: \${bex_bin_dir}/${BEX_ARCHIVER_NAME} -> ${BEX_SYSTEM_7ZIP}\")
            file(CREATE_LINK \"${BEX_SYSTEM_7ZIP}\" \"\${bex_bin_dir}/${BEX_ARCHIVER_NAME}\" SYMBOLIC)")
    endif()
endfunction()
