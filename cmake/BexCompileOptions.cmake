# Compiler settings shared by every target of the project.

# Lets the logging helper turn __FILE__ into a project-relative path.
add_compile_definitions(
    "BEX_SOURCE_ROOT=\"${PROJECT_SOURCE_DIR}/\""
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

function(bex_target_warnings target)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /utf-8)
        if(BEX_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE /WX)
        endif()
    else()
        target_compile_options(${target} PRIVATE -Wall -Wextra)
        if(BEX_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
endfunction()

# AddressSanitizer and UndefinedBehaviorSanitizer for every target, e.g. for a
# separate build folder: cmake -B build-asan -DBEX_SANITIZE=ON
option(BEX_SANITIZE "Build with -fsanitize=address,undefined" OFF)
if(BEX_SANITIZE)
    if(MSVC)
        add_compile_options(/fsanitize=address)
    else()
        add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
        add_link_options(-fsanitize=address,undefined)
    endif()
endif()

# Shared libraries are linked with every symbol resolved, so a missing
# dependency fails at build time rather than when a host loads them. Clang's
# sanitizer runtimes live in the executable, not in the shared libraries, so
# sanitized clang builds leave the check out.
function(bex_target_no_undefined target)
    if(MSVC)
        return()
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND (BEX_BUILD_FUZZ OR BEX_SANITIZE))
        return()
    endif()
    target_link_options(${target} PRIVATE "LINKER:--no-undefined")
endfunction()

# Hosts load the Windows DLLs by their plain names
# (BexRipEngineDriverUI_RipServer.dll, BexUIPrintParamsProcessing.dll), and a
# vendor's BexUIPrintParamsProcessing replaces ours only if the import names
# the same file: MinGW's "lib" prefix goes, from the DLL and its import
# library alike.
function(bex_windows_dll_names target)
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "" IMPORT_PREFIX "")
    endif()
endfunction()
