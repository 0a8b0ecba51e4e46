# Makes the device links the ICC tests classify, with Little CMS's linkicc,
# from Ghostscript's profiles:
#   cmake -DLINKICC=linkicc -DICC_DIR=/usr/share/color/icc -DLINK_DIR=<folder> -P MakeDeviceLinks.cmake
file(MAKE_DIRECTORY "${LINK_DIR}")
set(gs "${ICC_DIR}/ghostscript")
function(make_link output description)
    execute_process(
        COMMAND "${LINKICC}" "-o${LINK_DIR}/${output}" "-d${description}" ${ARGN}
        RESULT_VARIABLE status
        OUTPUT_VARIABLE out
        ERROR_VARIABLE out)
    if(NOT status EQUAL 0 OR NOT EXISTS "${LINK_DIR}/${output}")
        message(FATAL_ERROR "linkicc failed for ${output} (${status}):\n${out}")
    endif()
    message(STATUS "made ${LINK_DIR}/${output}")
endfunction()
make_link(rgb-to-cmyk.icc "sRGB to SWOP CMYK" "${gs}/srgb.icc" "${gs}/default_cmyk.icc")
make_link(cmyk-to-cmyk.icc "SWOP CMYK to PS CMYK" "${gs}/default_cmyk.icc" "${gs}/ps_cmyk.icc")
