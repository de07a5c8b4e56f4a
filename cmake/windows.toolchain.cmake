# What both Windows targets share: the mingw-w64 cross compiler with POSIX threads, whose programs run under Wine. The
# file that includes this one has set ZEVRIN_WINDOWS, x86 or x64, and ZEVRIN_TRIPLE, the compiler's name for that target.
set(CMAKE_SYSTEM_NAME Windows)

set(CMAKE_CXX_COMPILER ${ZEVRIN_TRIPLE}-g++-posix)
set(CMAKE_C_COMPILER ${ZEVRIN_TRIPLE}-gcc-posix)
set(CMAKE_RC_COMPILER ${ZEVRIN_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ZEVRIN_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine ${ZEVRIN_WINDOWS})
