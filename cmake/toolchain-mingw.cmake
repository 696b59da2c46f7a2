# What the two mingw-w64 toolchains have in common: the variant with C++ threads, its run-time linked statically; the time of
# day stays out of the programs.
set(CMAKE_C_COMPILER ${KOVRA_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KOVRA_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${KOVRA_MINGW}-windres)
set(KOVRA_WIDL ${KOVRA_MINGW}-widl)
set(CMAKE_FIND_ROOT_PATH /usr/${KOVRA_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
