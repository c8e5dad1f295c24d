# Cross-compiles for the unit's processor (32-bit ARM, hard-float) against the sysroot of scripts/make-armhf-sysroot,
# and lets CTest run the result under qemu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(MPL_TRIPLE arm-linux-gnueabihf)

set(MPL_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/armhf-sysroot CACHE PATH "Headers and libraries of the unit's processor")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MPL_SYSROOT)
get_filename_component(CMAKE_SYSROOT ${MPL_SYSROOT} ABSOLUTE)
if(NOT EXISTS ${CMAKE_SYSROOT}/.complete)
    message(FATAL_ERROR "No sysroot in ${CMAKE_SYSROOT}. Run scripts/make-armhf-sysroot first, or name one with -DMPL_SYSROOT=<dir>.")
endif()

set(CMAKE_C_COMPILER ${MPL_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${MPL_TRIPLE}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${MPL_TRIPLE})

set(CMAKE_FIND_ROOT_PATH ${CMAKE_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# pkg-config looks only into the sysroot, and answers with paths inside it.
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/${MPL_TRIPLE}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)

find_program(MPL_QEMU_ARM qemu-arm)
if(MPL_QEMU_ARM)
    # Qt's own plug-ins (the SQLite driver) would be looked for in the build machine's folders.
    set(CMAKE_CROSSCOMPILING_EMULATOR
        ${MPL_QEMU_ARM} -L ${CMAKE_SYSROOT} -E QT_PLUGIN_PATH=${CMAKE_SYSROOT}/usr/lib/${MPL_TRIPLE}/qt5/plugins)
endif()
set(MPL_NATIVE_BUILD "" CACHE PATH "A build for this machine, whose sandbox and simulated stack the integration tests use")

# moc and its like run on the build machine, so they are taken from there.
set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/native-qt-tools.cmake)
