# Cross compilation for 64-bit Windows with mingw-w64, posix thread variant
# (the win32 variant lacks std::recursive_timed_mutex).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(AURIVOX_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${AURIVOX_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${AURIVOX_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${AURIVOX_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${AURIVOX_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Everything links statically against the compiler's runtime so that Wine (or
# a Windows machine) needs no mingw DLLs beside the module.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
