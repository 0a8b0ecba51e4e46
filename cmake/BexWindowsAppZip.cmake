# cmake -DAPP_DIR=<staged application folder> -DSAMPLES_DIR=<sample drivers>
#       -DSTAGING_DIR=<scratch folder> -DZIP=<zip to write> -P BexWindowsAppZip.cmake
#
# Zips a ready Windows application folder: the programs and DLLs of the
# staged folder with Qt's plugin folders, and dtp/ with the sample drivers
# as the build staged them.

foreach(var APP_DIR SAMPLES_DIR STAGING_DIR ZIP)
    if(NOT ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

file(REMOVE_RECURSE "${STAGING_DIR}")
file(MAKE_DIRECTORY "${STAGING_DIR}")
file(GLOB programs LIST_DIRECTORIES false "${APP_DIR}/*.exe" "${APP_DIR}/*.dll")
file(COPY ${programs} DESTINATION "${STAGING_DIR}")
foreach(plugins platforms styles imageformats)
    if(IS_DIRECTORY "${APP_DIR}/${plugins}")
        file(COPY "${APP_DIR}/${plugins}" DESTINATION "${STAGING_DIR}")
    endif()
endforeach()
file(COPY "${SAMPLES_DIR}/" DESTINATION "${STAGING_DIR}/dtp")

file(REMOVE "${ZIP}")
execute_process(COMMAND "${CMAKE_COMMAND}" -E tar cf "${ZIP}" --format=zip -- .
    WORKING_DIRECTORY "${STAGING_DIR}" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "could not write ${ZIP}")
endif()
file(REMOVE_RECURSE "${STAGING_DIR}")
