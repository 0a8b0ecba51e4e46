# cmake -DROOT=<project folder> -P CheckDependencyDirection.cmake
#
# The frameless window framework (QtCustomModule/) and the print-parameter
# library (PrintParams/) must not depend on the module that uses them: a
# vendor's library replaces ours, and the framework serves other programs.
# Their build already leaves source/ out of their include folders; this
# check reads every #include line of their C and C++ files and fails, naming
# the file and the line, when one names a file of the module's source/
# folder, either relative to the including file ("../../source/...") or as
# the module's own files name it ("Common/Logging.h", "source/UI/...").

include("${CMAKE_CURRENT_LIST_DIR}/BexReadLines.cmake")

if(NOT ROOT)
    message(FATAL_ERROR "CheckDependencyDirection: pass -DROOT=<project folder>")
endif()
cmake_path(ABSOLUTE_PATH ROOT NORMALIZE)
set(module_dir "${ROOT}/source")
if(NOT IS_DIRECTORY "${module_dir}")
    message(FATAL_ERROR "CheckDependencyDirection: ${module_dir} is not a folder")
endif()

set(checked_folders QtCustomModule PrintParams)
set(patterns "")
foreach(folder IN LISTS checked_folders)
    foreach(extension h hh hpp hxx inl ipp c cc cpp cxx)
        list(APPEND patterns "${ROOT}/${folder}/*.${extension}")
    endforeach()
endforeach()
file(GLOB_RECURSE checked_files LIST_DIRECTORIES false RELATIVE "${ROOT}" ${patterns})
list(SORT checked_files)
if(NOT checked_files)
    message(FATAL_ERROR "CheckDependencyDirection: no C or C++ file under ${ROOT}/{${checked_folders}}")
endif()

# The folder of the module's files, or "" when path lies elsewhere.
function(module_file path out)
    cmake_path(IS_PREFIX module_dir "${path}" NORMALIZE inside)
    if(inside AND EXISTS "${path}" AND NOT IS_DIRECTORY "${path}")
        set(${out} "${path}" PARENT_SCOPE)
    else()
        set(${out} "" PARENT_SCOPE)
    endif()
endfunction()

set(violations "")
foreach(relative IN LISTS checked_files)
    set(path "${ROOT}/${relative}")
    cmake_path(GET path PARENT_PATH including_dir)
    bex_read_lines("${path}" lines)
    set(line_number 0)
    foreach(line IN LISTS lines)
        math(EXPR line_number "${line_number} + 1")
        if(NOT line MATCHES "^[ \t]*#[ \t]*include[ \t]*[<\"]([^>\"]+)[>\"]")
            continue()
        endif()
        set(name "${CMAKE_MATCH_1}")
        # Found beside the including file (or an absolute path): that file.
        if(IS_ABSOLUTE "${name}")
            set(beside "${name}")
        else()
            set(beside "${including_dir}/${name}")
        endif()
        cmake_path(NORMAL_PATH beside)
        set(target "")
        if(EXISTS "${beside}" AND NOT IS_DIRECTORY "${beside}")
            module_file("${beside}" target)
        else()
            # Named as the module names its files, from source/ or from the
            # project folder.
            foreach(candidate "${module_dir}/${name}" "${ROOT}/${name}")
                cmake_path(NORMAL_PATH candidate)
                module_file("${candidate}" target)
                if(target)
                    break()
                endif()
            endforeach()
        endif()
        if(target)
            cmake_path(RELATIVE_PATH target BASE_DIRECTORY "${ROOT}")
            list(APPEND violations "${relative}:${line_number}: includes \"${name}\", which is ${target} of the module")
        endif()
    endforeach()
endforeach()

list(LENGTH checked_files file_count)
list(JOIN checked_folders "/ and " folders_text)
if(violations)
    list(LENGTH violations violation_count)
    list(JOIN violations "\n  " listed)
    message(FATAL_ERROR
        "${violation_count} include line(s) of the framework or the print-parameter library reach "
        "the module's source/ folder:\n  ${listed}\n"
        "Move what they need below both (BexSupport/) or into the part itself.")
endif()
message(STATUS "${file_count} files of ${folders_text}/ checked: none includes a file of source/")
