# 64-bit Windows.
set(ZEVRIN_WINDOWS x64)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(ZEVRIN_TRIPLE x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/windows.toolchain.cmake)
