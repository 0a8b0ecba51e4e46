# Cross-compiles the project for 64-bit Windows with Debian's MinGW-w64
# (g++-mingw-w64-x86-64-posix: posix threads, which Qt's std::thread use
# needs). Qt for Windows comes from CMAKE_PREFIX_PATH (scripts/windows points
# it at the unpacked Qt 5.15 for MinGW-w64); the translation tools stay the
# build machine's own (Debian's qttools5-dev-tools).
#
#   cmake -S . -B build-windows \
#         -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-w64.cmake \
#         -DCMAKE_PREFIX_PATH=/path/to/qt5-mingw64
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(BEX_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${BEX_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${BEX_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${BEX_MINGW_TRIPLET}-windres)

# Headers and libraries come from MinGW's sysroot and the prefixes given on
# the command line (Qt for Windows); programs run during the build (moc, rcc,
# uic, lrelease, 7-Zip, wine) come from the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/${BEX_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Qt's Linguist tools are not part of Qt for Windows: lrelease and lupdate are
# Debian's, found through their own CMake package unless one is given.
if(NOT DEFINED Qt5LinguistTools_DIR AND EXISTS /usr/lib/x86_64-linux-gnu/cmake/Qt5LinguistTools)
    set(Qt5LinguistTools_DIR /usr/lib/x86_64-linux-gnu/cmake/Qt5LinguistTools CACHE PATH "Linux Qt5LinguistTools")
endif()
