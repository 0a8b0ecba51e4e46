# bex_add_qtest(<name> SOURCES <files...> [LIBRARIES <targets...>])
#
# Adds one Qt Test executable and registers it with CTest. Every test
# executable is built into a folder of its own under tests-apps/, which is
# its application directory: the settings file, cache/ and dtp/ it works
# with belong to it alone, so tests can run in parallel and never touch files
# outside the build tree. The archiver link "7z" is staged there too.
function(bex_add_qtest name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    set(app_dir "${CMAKE_BINARY_DIR}/tests-apps/${name}")
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE Qt5::Test bex_test_support ${ARG_LIBRARIES})
    bex_target_warnings(${name})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${app_dir}")
    bex_stage_archiver("${app_dir}" FOR_TARGET ${name})
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY "${app_dir}")
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=bex.*.debug=true"
        TIMEOUT 300)
endfunction()
