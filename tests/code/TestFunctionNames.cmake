# Checks the names of the test functions: every private slot of every class
# in the .cpp and .h files below TESTS_DIR (Qt Test runs each private slot of
# a test class as a test function).
#
# A name is a behaviour sentence in camelCase parts joined by underscores,
# <subject>_<behaviour> or <subject>_<condition>_<behaviour>, each part
# beginning with a small letter ("export_replaceFails_keepsTheOldPackage"),
# never beginning with "should". A data function is the name of its test
# followed by "_data". Qt's initTestCase, cleanupTestCase, init and cleanup
# keep their names.
#
#   cmake -DTESTS_DIR=.../tests -P TestFunctionNames.cmake

cmake_minimum_required(VERSION 3.16)

include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/BexReadLines.cmake")

if(NOT TESTS_DIR)
    message(FATAL_ERROR "TESTS_DIR is not set")
endif()

set(qt_functions initTestCase initTestCase_data cleanupTestCase init cleanup)
set(part "[a-z][A-Za-z0-9]*")

# Whether name follows the rule; out is set to the empty string or to what
# is wrong with it.
function(check_name name out)
    set(${out} "" PARENT_SCOPE)
    if(name IN_LIST qt_functions)
        return()
    endif()
    string(REGEX REPLACE "_data$" "" sentence "${name}")
    if(NOT sentence MATCHES "^${part}_${part}(_${part})?$")
        set(${out} "not <subject>_[<condition>_]<behaviour> in camelCase" PARENT_SCOPE)
    elseif(sentence MATCHES "^should([A-Z0-9_]|$)")
        set(${out} "begins with \"should\"" PARENT_SCOPE)
    endif()
endfunction()

file(GLOB_RECURSE sources LIST_DIRECTORIES false "${TESTS_DIR}/*.cpp" "${TESTS_DIR}/*.h")
list(SORT sources)
set(problems)
set(checked 0)
foreach(source IN LISTS sources)
    bex_read_lines("${source}" lines)
    file(RELATIVE_PATH shown "${TESTS_DIR}/.." "${source}")
    set(in_slots FALSE)
    set(number 0)
    foreach(line IN LISTS lines)
        math(EXPR number "${number} + 1")
        if(line MATCHES "^private +(slots|Q_SLOTS) *:")
            set(in_slots TRUE)
        elseif(line MATCHES "^(public|protected|private|signals|Q_SIGNALS)[ :]" OR line MATCHES "^}")
            set(in_slots FALSE)
        elseif(in_slots AND line MATCHES "^    void +([A-Za-z0-9_]+) *\\(")
            set(name "${CMAKE_MATCH_1}")
            math(EXPR checked "${checked} + 1")
            check_name("${name}" why)
            if(why)
                list(APPEND problems "${shown}:${number}: ${name}: ${why}")
            endif()
        endif()
    endforeach()
endforeach()

if(checked EQUAL 0)
    message(FATAL_ERROR "no test function found below ${TESTS_DIR}")
endif()
if(problems)
    list(LENGTH problems count)
    string(REPLACE ";" "\n" problems "${problems}")
    message(FATAL_ERROR "${count} test function name(s) break the naming rule:\n${problems}")
endif()
message(STATUS "${checked} test function names follow the naming rule")
