set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KOVRA_MINGW i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw.cmake)
