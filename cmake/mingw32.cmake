# The toolchain of 32-bit Windows: Debian's mingw-w64 with threads of the POSIX kind, and scripts/windows-deps for
# what Debian has no package of.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(prefix i686-w64-mingw32)
set(CMAKE_C_COMPILER ${prefix}-gcc-posix)
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)

get_filename_component(source_dir ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(QEL_WINDOWS_DEPS ${source_dir}/build/windows-deps CACHE PATH "What scripts/windows-deps has made")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QEL_WINDOWS_DEPS)
set(CMAKE_FIND_ROOT_PATH ${QEL_WINDOWS_DEPS} /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ZLIB_USE_STATIC_LIBS ON)

# Doubles are calculated as on every other system, and not with the longer ones of the old unit, with which 1.23 becomes
# 1.2299 in an amount; Windows calls with a stack that is aligned for less than these instructions want.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "${CMAKE_C_FLAGS_INIT}")
