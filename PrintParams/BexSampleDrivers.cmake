# Sample printer drivers of the open print-parameter library.
#
# PrintParams/samples/ is laid out like an application's "dtp/" folder:
#   driver/                     the .prs and .pdv files
#   bin/ICC Profile/RGB/        RGB input profiles
#   bin/ICC Profile/CMYK/       CMYK input profiles
#   bin/ICC Profile/OUTPUT/     device profiles
# The files are made by tools/make_sample_drivers.py and
# tools/make_icc_profiles.py and committed.
set(BEX_SAMPLE_DRIVERS_DIR "${CMAKE_CURRENT_LIST_DIR}/samples"
    CACHE INTERNAL "Source folder of the sample drivers")

# bex_stage_sample_drivers(<appdir> [FOR_TARGET <target>])
#
# Copies the samples into <appdir>/dtp/ at build time, again whenever a
# sample changes. With FOR_TARGET the target is built after the copy (a test
# executable passes itself, its application directory being its own folder).
# Files already staged are overwritten; files changed in <appdir> without a
# change of the samples stay as they are, so tests that change drivers copy
# fresh ones from BEX_SAMPLE_DRIVERS_DIR themselves.
function(bex_stage_sample_drivers app_dir)
    cmake_parse_arguments(ARG "" "FOR_TARGET" "" ${ARGN})
    file(GLOB_RECURSE sample_files CONFIGURE_DEPENDS "${BEX_SAMPLE_DRIVERS_DIR}/*")
    string(MD5 app_dir_hash "${app_dir}")
    string(SUBSTRING "${app_dir_hash}" 0 12 app_dir_hash)
    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/bex_stage_samples_${app_dir_hash}.stamp")
    add_custom_command(OUTPUT "${stamp}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${app_dir}/dtp"
        COMMAND "${CMAKE_COMMAND}" -E copy_directory "${BEX_SAMPLE_DRIVERS_DIR}" "${app_dir}/dtp"
        COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
        DEPENDS ${sample_files}
        COMMENT "Staging the sample drivers into ${app_dir}/dtp"
        VERBATIM)
    add_custom_target(bex_stage_samples_${app_dir_hash} ALL DEPENDS "${stamp}")
    if(ARG_FOR_TARGET)
        add_dependencies(${ARG_FOR_TARGET} bex_stage_samples_${app_dir_hash})
    endif()
endfunction()
