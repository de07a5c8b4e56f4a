# 32-bit Windows.
set(ZEVRIN_WINDOWS x86)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(ZEVRIN_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/windows.toolchain.cmake)
