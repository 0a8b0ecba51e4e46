# cmake -DAPP_DIR=<staged application directory> -DSAMPLES_DIR=<sample drivers>
#       -DWORK_DIR=<folder> -DDEMO_HOST=<demo_host file name>
#       [-DEMULATOR=<program that runs it>] [-DPLATFORM=<Qt platform plugin>]
#       -P DemoTour.cmake
#
# Copies the programs of the staged application directory into WORK_DIR with
# fresh sample drivers and no installed driver or settings, runs the demo
# host's headless tour there and checks what it reports: every step ok, and
# a screenshot of every window it passed. A Windows build made on Linux
# runs the host under its emulator (Wine) with Qt's windows platform plugin,
# on the display it is given, as an operator's desktop shows it.

foreach(var APP_DIR SAMPLES_DIR WORK_DIR DEMO_HOST)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/dtp")
# On Windows the folder also holds Qt's DLLs and plugins and MinGW's runtime.
file(GLOB programs LIST_DIRECTORIES false
    "${APP_DIR}/${DEMO_HOST}"
    "${APP_DIR}/*BexRipEngineDriverUI_RipServer*"
    "${APP_DIR}/*BexUIPrintParamsProcessing*"
    "${APP_DIR}/7z" "${APP_DIR}/7z.exe"
    "${APP_DIR}/*.dll")
file(COPY ${programs} DESTINATION "${WORK_DIR}")
foreach(plugins platforms styles imageformats)
    if(IS_DIRECTORY "${APP_DIR}/${plugins}")
        file(COPY "${APP_DIR}/${plugins}" DESTINATION "${WORK_DIR}")
    endif()
endforeach()
file(COPY "${SAMPLES_DIR}/" DESTINATION "${WORK_DIR}/dtp")

if(NOT PLATFORM)
    set(PLATFORM offscreen)
endif()
set(ENV{QT_QPA_PLATFORM} "${PLATFORM}")
execute_process(COMMAND ${EMULATOR} "${WORK_DIR}/${DEMO_HOST}" --tour "${WORK_DIR}/screenshots"
    WORKING_DIRECTORY "${WORK_DIR}"
    OUTPUT_VARIABLE output
    ERROR_VARIABLE errors
    RESULT_VARIABLE result)
message("${output}")
if(NOT result EQUAL 0)
    message(FATAL_ERROR "the tour failed (${result}):\n${errors}")
endif()

foreach(step "driver manager: ok" "rip a job: ok" "demo window: ok")
    foreach(language zh en)
        string(FIND "${output}" "[${language}] ${step}" at)
        if(at EQUAL -1)
            message(FATAL_ERROR "the tour did not report \"[${language}] ${step}\"")
        endif()
    endforeach()
endforeach()
string(FIND "${output}" "tour passed" at)
if(at EQUAL -1)
    message(FATAL_ERROR "the tour did not pass")
endif()

# One picture per window and language: the manager twice, the install
# dialog, the delete question, the property dialog and the demo window.
foreach(language zh en)
    foreach(picture 01-driver-manager 02-install-driver 03-delete-question 04-driver-manager-default
            05-driver-properties 06-demo-host)
        set(file "${WORK_DIR}/screenshots/tour-${language}-${picture}.png")
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "no screenshot ${file}")
        endif()
        file(SIZE "${file}" size)
        if(size LESS 2000)
            message(FATAL_ERROR "${file} is nearly empty (${size} bytes)")
        endif()
    endforeach()
endforeach()
