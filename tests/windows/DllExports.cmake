# Checks a Windows build's application folder with objdump -p:
# - the module exports exactly its six functions and the print-parameter
#   library its two factories, nothing else;
# - every DLL that a program or DLL of the folder imports is either in the
#   folder or one that Windows itself provides.
#
#   cmake -DOBJDUMP=... -DAPP_DIR=... -DMODULE=... -DLIBRARY=... -P DllExports.cmake

cmake_minimum_required(VERSION 3.16)

foreach(var OBJDUMP APP_DIR MODULE LIBRARY)
    if(NOT ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

# The names in a PE file's export table.
function(dll_exports file out)
    execute_process(COMMAND "${OBJDUMP}" -p "${file}" OUTPUT_VARIABLE dump RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "objdump could not read ${file}")
    endif()
    string(FIND "${dump}" "[Ordinal/Name Pointer] Table" start)
    if(start EQUAL -1)
        set(${out} "" PARENT_SCOPE)
        return()
    endif()
    string(SUBSTRING "${dump}" ${start} -1 table)
    string(REGEX MATCHALL "\n\t\\[ *[0-9]+\\] [^\n]+" lines "${table}")
    set(names)
    foreach(line ${lines})
        string(REGEX REPLACE "^\n\t\\[ *[0-9]+\\] " "" name "${line}")
        list(APPEND names "${name}")
    endforeach()
    list(SORT names)
    set(${out} "${names}" PARENT_SCOPE)
endfunction()

# The DLLs a PE file imports.
function(dll_imports file out)
    execute_process(COMMAND "${OBJDUMP}" -p "${file}" OUTPUT_VARIABLE dump RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "objdump could not read ${file}")
    endif()
    string(REGEX MATCHALL "DLL Name: [^\n]+" lines "${dump}")
    set(names)
    foreach(line ${lines})
        string(REGEX REPLACE "^DLL Name: " "" name "${line}")
        string(TOLOWER "${name}" name)
        list(APPEND names "${name}")
    endforeach()
    set(${out} "${names}" PARENT_SCOPE)
endfunction()

set(failures)

dll_exports("${MODULE}" module_exports)
set(expected_module
    BexRipEngineDriverUI_RipServer_Initialize
    BexRipEngineDriverUI_RipServer_UnInitialize
    BexRipEngineDriverUI_RipServer_Kind
    BexRipEngineDriverUI_RipServer_Version
    CreateBexRipEngineDriverUI_RipServer
    DestroyBexRipEngineDriverUI_RipServer)
list(SORT expected_module)
if(NOT module_exports STREQUAL expected_module)
    list(APPEND failures "module exports [${module_exports}], expected [${expected_module}]")
endif()

dll_exports("${LIBRARY}" library_exports)
set(expected_library CreateUIPrintParamsHandler DestroyUIPrintParamsHandler)
if(NOT library_exports STREQUAL expected_library)
    list(APPEND failures "library exports [${library_exports}], expected [${expected_library}]")
endif()

get_filename_component(module_name "${MODULE}" NAME)
get_filename_component(library_name "${LIBRARY}" NAME)
if(NOT module_name STREQUAL "BexRipEngineDriverUI_RipServer.dll")
    list(APPEND failures "module file is ${module_name}")
endif()
if(NOT library_name STREQUAL "BexUIPrintParamsProcessing.dll")
    list(APPEND failures "library file is ${library_name}")
endif()
dll_imports("${MODULE}" module_imports)
if(NOT "bexuiprintparamsprocessing.dll" IN_LIST module_imports)
    list(APPEND failures "the module does not import BexUIPrintParamsProcessing.dll: [${module_imports}]")
endif()

# DLLs that every Windows installation has.
set(windows_dlls
    advapi32.dll comdlg32.dll d3d11.dll dwmapi.dll dxgi.dll gdi32.dll imm32.dll kernel32.dll mpr.dll
    msvcrt.dll netapi32.dll ole32.dll oleaut32.dll psapi.dll shell32.dll shlwapi.dll user32.dll
    userenv.dll uxtheme.dll version.dll winmm.dll ws2_32.dll wtsapi32.dll)

file(GLOB_RECURSE pe_files "${APP_DIR}/*.dll" "${APP_DIR}/*.exe")
set(present)
foreach(file ${pe_files})
    get_filename_component(name "${file}" NAME)
    string(TOLOWER "${name}" name)
    list(APPEND present "${name}")
endforeach()
foreach(file ${pe_files})
    get_filename_component(name "${file}" NAME)
    if(name STREQUAL "7z.exe")
        continue() # 7-Zip's own build; it imports only Windows DLLs
    endif()
    dll_imports("${file}" imports)
    foreach(import ${imports})
        if(NOT import IN_LIST present AND NOT import IN_LIST windows_dlls)
            list(APPEND failures "${name} imports ${import}, which is not in ${APP_DIR}")
        endif()
    endforeach()
endforeach()

if(failures)
    list(JOIN failures "\n  " text)
    message(FATAL_ERROR "The Windows application folder is not right:\n  ${text}")
endif()
list(LENGTH pe_files count)
message(STATUS "module exports: ${module_exports}")
message(STATUS "library exports: ${library_exports}")
message(STATUS "${count} programs and DLLs, every import resolved")
