# Toolchain for the Windows module: Debian's mingw-w64. Everything is linked in, so that the module
# asks a machine for nothing but the system's own DLLs.
#
# Programs are linked with posix threads, which the standard library's mutex and thread need. That
# runtime puts an exception handler into the process that loads it, so the module, which has locks
# of the system instead, is linked with the variant for the system's own threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(STREAKFALL_MODULE_LINKER x86_64-w64-mingw32-g++-win32)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler takes the stack for aligned to 32 bytes where the system promises 16: moves of wide
# registers to the stack are therefore assembled in their unaligned form. Paths are cut, so that
# the same sources give the same file from any folder.
set(CMAKE_CXX_FLAGS_INIT
  "-D_WIN32_WINNT=0x0601 -Wa,-muse-unaligned-vector-move -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
set(hardened "-Wl,--dynamicbase,--nxcompat,--high-entropy-va -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static ${hardened}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static ${hardened}")
