# For Windows, 32 bit, with Debian's MinGW and its posix threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(cross i686-w64-mingw32)
set(CMAKE_C_COMPILER ${cross}-gcc-posix)
set(CMAKE_CXX_COMPILER ${cross}-g++-posix)
set(CMAKE_RC_COMPILER ${cross}-windres)

# Qt's folder comes by CMAKE_PREFIX_PATH; the programs that a build runs are this machine's.
set(CMAKE_FIND_ROOT_PATH /usr/${cross} ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine.sh)
