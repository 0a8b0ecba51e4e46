# CPack runs this script (CPACK_PRE_BUILD_SCRIPTS) once for every package it
# makes, on the tree it installed for that package, before it packs the tree.
# Only the .deb is touched: it gets the files Debian wants in every package
# (copyright, changelog.gz, the lintian overrides) and leaves out the "7z"
# link of the installed tree, a command name that belongs to Debian's 7-Zip
# packages (p7zip-full ships /usr/bin/7z).
#
# The CPack variables below come from cmake/BexPackaging.cmake:
#   CPACK_BEX_DEBIAN_DIR      this folder
#   CPACK_BEX_ARCHIVER_LINK   the link to leave out, relative to the prefix

if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

foreach(var CPACK_TEMPORARY_DIRECTORY CPACK_PACKAGING_INSTALL_PREFIX CPACK_PACKAGE_NAME CPACK_PACKAGE_VERSION
        CPACK_BEX_DEBIAN_DIR CPACK_BEX_ARCHIVER_LINK)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

# Debian's name of the package, as CPack's DEB generator makes it.
string(TOLOWER "${CPACK_PACKAGE_NAME}" package)
set(prefix "${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}")
set(doc_dir "${prefix}/share/doc/${package}")
set(overrides_dir "${prefix}/share/lintian/overrides")

# Every file written here gets the modes Debian expects whatever the umask.
function(bex_make_dirs)
    foreach(dir IN LISTS ARGN)
        file(MAKE_DIRECTORY "${dir}")
        while(NOT dir STREQUAL prefix AND NOT dir STREQUAL CPACK_TEMPORARY_DIRECTORY)
            file(CHMOD "${dir}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                WORLD_READ WORLD_EXECUTE)
            get_filename_component(dir "${dir}" DIRECTORY)
        endwhile()
    endforeach()
endfunction()

function(bex_set_file_mode file)
    file(CHMOD "${file}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

bex_make_dirs("${doc_dir}" "${overrides_dir}")

file(COPY_FILE "${CPACK_BEX_DEBIAN_DIR}/copyright" "${doc_dir}/copyright")
bex_set_file_mode("${doc_dir}/copyright")

# The changelog's newest entry must be the version being packed.
file(STRINGS "${CPACK_BEX_DEBIAN_DIR}/changelog" first_line LIMIT_COUNT 1)
if(NOT first_line MATCHES "^([^ ]+) \\(([^)]+)\\) ")
    message(FATAL_ERROR "${CPACK_BEX_DEBIAN_DIR}/changelog does not start with an entry: ${first_line}")
endif()
if(NOT CMAKE_MATCH_1 STREQUAL package OR NOT CMAKE_MATCH_2 STREQUAL CPACK_PACKAGE_VERSION)
    message(FATAL_ERROR "the newest entry of ${CPACK_BEX_DEBIAN_DIR}/changelog is ${CMAKE_MATCH_1} "
                        "${CMAKE_MATCH_2}, the package is ${package} ${CPACK_PACKAGE_VERSION}: "
                        "add an entry for this version")
endif()
# A native package's changelog, compressed the way Debian wants it: best
# compression, no name or time stamp in the header, so the bytes depend on
# the text alone.
find_program(BEX_GZIP gzip REQUIRED)
execute_process(COMMAND "${BEX_GZIP}" -n -9 -c "${CPACK_BEX_DEBIAN_DIR}/changelog"
    OUTPUT_FILE "${doc_dir}/changelog.gz"
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "gzip failed (${result})")
endif()
bex_set_file_mode("${doc_dir}/changelog.gz")

file(COPY_FILE "${CPACK_BEX_DEBIAN_DIR}/lintian-overrides" "${overrides_dir}/${package}")
bex_set_file_mode("${overrides_dir}/${package}")

# Hosts bring their own "7z" link in their application directory; the
# package depends on 7zip for the program it points to.
set(link "${prefix}/${CPACK_BEX_ARCHIVER_LINK}")
if(IS_SYMLINK "${link}" OR EXISTS "${link}")
    file(REMOVE "${link}")
    get_filename_component(link_dir "${link}" DIRECTORY)
    file(GLOB left "${link_dir}/*")
    if(NOT left)
        file(REMOVE_RECURSE "${link_dir}")
    endif()
endif()
