# cmake -DCHECK=<CheckDependencyDirection.cmake> -DWORK=<empty folder> -P CheckDependencyDirectionPlanted.cmake
#
# Shows that CheckDependencyDirection.cmake fails where it must: it is run on
# a small made-up project whose framework and library each include a file of
# source/ (once as the module names it, once relative to the including file),
# and must fail naming those two lines and nothing else.

if(NOT CHECK OR NOT WORK)
    message(FATAL_ERROR "pass -DCHECK=<CheckDependencyDirection.cmake> -DWORK=<folder>")
endif()
file(REMOVE_RECURSE "${WORK}")
file(WRITE "${WORK}/source/Common/Logging.h" "#pragma once\n")
file(WRITE "${WORK}/source/UI/Dialog.h" "#pragma once\n")
file(WRITE "${WORK}/QtCustomModule/Frameless/Helper.h" "#pragma once\n")
file(WRITE "${WORK}/QtCustomModule/Frameless/Helper.cpp"
    "#include \"Helper.h\"\n\n#include \"Common/Logging.h\"\n#include <QWidget>\n")
file(WRITE "${WORK}/PrintParams/Registry.cpp"
    "// \"UI/Dialog.h\" in a comment is no include\n#  include \"../source/UI/Dialog.h\"\n#include <QString>\n")
file(WRITE "${WORK}/PrintParams/Clean.cpp" "#include \"Registry.h\"\n#include <QHash>\n")

execute_process(
    COMMAND "${CMAKE_COMMAND}" "-DROOT=${WORK}" -P "${CHECK}"
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
message("${output}")

set(expected
    "QtCustomModule/Frameless/Helper.cpp:3: includes \"Common/Logging.h\", which is source/Common/Logging.h"
    "PrintParams/Registry.cpp:2: includes \"../source/UI/Dialog.h\", which is source/UI/Dialog.h")
if(result EQUAL 0)
    message(FATAL_ERROR "the check passed a tree with two includes of source/")
endif()
foreach(line IN LISTS expected)
    string(FIND "${output}" "${line}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "the check did not report: ${line}")
    endif()
endforeach()
foreach(unexpected "Helper.cpp:1:" "Helper.cpp:4:" "Registry.cpp:1:" "Registry.cpp:3:" "Clean.cpp")
    string(FIND "${output}" "${unexpected}" at)
    if(NOT at EQUAL -1)
        message(FATAL_ERROR "the check reported a line that reaches nothing of source/: ${unexpected}")
    endif()
endforeach()
message(STATUS "the check failed on both planted includes and named their files and lines")
