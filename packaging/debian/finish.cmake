# CPack runs this script (CPACK_POST_BUILD_SCRIPTS) after it made each
# package. It packs the .deb again with dpkg-deb, without the postinst and
# postrm that CPack writes for libraries under /usr/lib: all they do is run
# ldconfig, which the package's ldconfig trigger (packaging/debian/triggers)
# has dpkg do once for every package that needs it. The package has no
# maintainer scripts of its own.

if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

find_program(BEX_DPKG_DEB dpkg-deb REQUIRED)

function(bex_run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGN}")
    endif()
endfunction()

foreach(deb IN LISTS CPACK_PACKAGE_FILES)
    if(NOT deb MATCHES "\\.deb$")
        continue()
    endif()
    set(tree "${CPACK_TOPLEVEL_DIRECTORY}/repack")
    file(REMOVE_RECURSE "${tree}")
    bex_run("${BEX_DPKG_DEB}" --raw-extract "${deb}" "${tree}")
    foreach(script postinst postrm)
        set(file "${tree}/DEBIAN/${script}")
        if(EXISTS "${file}")
            file(STRINGS "${file}" lines)
            list(FILTER lines EXCLUDE REGEX "^(#!/bin/sh|set -e|if \\[ \"\\$1\" = \"(configure|remove)\" \\]; then|\tldconfig|fi|)$")
            if(lines)
                message(FATAL_ERROR "${script} of ${deb} does more than run ldconfig:\n${lines}")
            endif()
            file(REMOVE "${file}")
        endif()
    endforeach()
    # Every file and folder belongs to root, as in the package CPack made.
    bex_run("${BEX_DPKG_DEB}" --root-owner-group --build "${tree}" "${deb}")
    file(REMOVE_RECURSE "${tree}")
endforeach()
