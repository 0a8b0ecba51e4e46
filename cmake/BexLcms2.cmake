# Little CMS 2, which checks and describes ICC profiles: the target Bex::Lcms2.
#
# On Linux it is Debian's liblcms2-dev, found through pkg-config. A cross
# build (Windows) links a static Little CMS built for the target: its prefix
# is given as BEX_LCMS2_ROOT (scripts/windows builds it from Debian's source
# package), or the library is looked for in the tool chain's own folders.
set(BEX_LCMS2_ROOT "" CACHE PATH "Prefix of a Little CMS 2 built for the target (cross builds)")

add_library(bex_lcms2 INTERFACE)
add_library(Bex::Lcms2 ALIAS bex_lcms2)

if(NOT CMAKE_CROSSCOMPILING)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(BEX_LCMS2 REQUIRED IMPORTED_TARGET lcms2>=2.9)
    target_link_libraries(bex_lcms2 INTERFACE PkgConfig::BEX_LCMS2)
    return()
endif()

# The results are cached: a different prefix (another cache folder) is
# searched afresh rather than keeping the old one's paths.
if(NOT "${BEX_LCMS2_ROOT}" STREQUAL "${BEX_LCMS2_SEARCHED_ROOT}")
    unset(BEX_LCMS2_INCLUDE_DIR CACHE)
    unset(BEX_LCMS2_LIBRARY CACHE)
    set(BEX_LCMS2_SEARCHED_ROOT "${BEX_LCMS2_ROOT}" CACHE INTERNAL "")
endif()
if(BEX_LCMS2_ROOT)
    # The prefix lies outside the tool chain's root: searched as it is. The
    # static library comes first, so the module carries Little CMS itself.
    find_path(BEX_LCMS2_INCLUDE_DIR lcms2.h PATHS "${BEX_LCMS2_ROOT}/include"
        NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    find_library(BEX_LCMS2_LIBRARY NAMES liblcms2.a lcms2 PATHS "${BEX_LCMS2_ROOT}/lib"
        NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
else()
    find_path(BEX_LCMS2_INCLUDE_DIR lcms2.h)
    find_library(BEX_LCMS2_LIBRARY NAMES liblcms2.a lcms2)
endif()
if(NOT BEX_LCMS2_INCLUDE_DIR OR NOT BEX_LCMS2_LIBRARY)
    message(FATAL_ERROR "Little CMS 2 for the target was not found: set BEX_LCMS2_ROOT to its prefix "
                        "(scripts/windows builds one)")
endif()
target_include_directories(bex_lcms2 SYSTEM INTERFACE "${BEX_LCMS2_INCLUDE_DIR}")
target_link_libraries(bex_lcms2 INTERFACE "${BEX_LCMS2_LIBRARY}")
