# The compiler that makes Windows programs on Debian, and the libraries that `libraries` built for it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(libraries "$ENV{TAVEX2_WINDOWS_LIBRARIES}")
if(NOT libraries)
    set(cache "$ENV{XDG_CACHE_HOME}")
    if(NOT cache)
        set(cache "$ENV{HOME}/.cache")
    endif()
    set(libraries "${cache}/tavex2/windows/libraries")
endif()
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${libraries})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/lib/pkgconfig)

# The tools that Qt runs while it builds are this machine's.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

# Programs of the build that have to be run, the tests above all.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/under-wine)
