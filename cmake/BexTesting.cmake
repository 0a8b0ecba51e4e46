# bex_add_qtest(<name> [STYLED] SOURCES <files...> [LIBRARIES <targets...>])
#
# Adds one Qt Test executable and registers it with CTest. Every test
# executable is built into a folder of its own under tests-apps/, which is
# its application directory: the settings file, cache/ and dtp/ it works
# with belong to it alone, so tests can run in parallel and never touch files
# outside the build tree. The archiver link "7z" is staged there too.
#
# STYLED registers the same executable a second time, as <name>_styled, with
# BEX_TEST_STYLE_SHEET=1: the application then carries the module's style
# sheet and the host's rules (examples/common/host_rules.qss) from the start,
# as in a host, so every widget is also tested the way operators see it. The
# executable must link the module's resources (BexRipEngineDriverUI_objects);
# a styled run whose sheet cannot be read fails.
function(bex_add_qtest name)
    cmake_parse_arguments(ARG "STYLED" "" "SOURCES;LIBRARIES" ${ARGN})
    set(app_dir "${CMAKE_BINARY_DIR}/tests-apps/${name}")
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE Qt5::Test bex_test_support ${ARG_LIBRARIES})
    bex_target_warnings(${name})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${app_dir}")
    bex_stage_archiver("${app_dir}" FOR_TARGET ${name})
    set(environment "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=bex.*.debug=true")
    # Under Wine every program start, and the archiver most, is several
    # times slower than on Linux.
    set(timeout 300)
    if(CMAKE_CROSSCOMPILING)
        set(timeout 900)
    endif()
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY "${app_dir}")
    # Runs of one executable share its application directory: one at a time.
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT ${timeout} RESOURCE_LOCK ${name})
    if(ARG_STYLED)
        target_link_libraries(${name} PRIVATE bex_test_styled_run)
        add_test(NAME ${name}_styled COMMAND ${name} WORKING_DIRECTORY "${app_dir}")
        set_tests_properties(${name}_styled PROPERTIES
            ENVIRONMENT "${environment};BEX_TEST_STYLE_SHEET=1"
            TIMEOUT ${timeout}
            RESOURCE_LOCK ${name})
    endif()
endfunction()
