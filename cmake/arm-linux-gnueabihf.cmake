# Builds for 32-bit ARM Linux, hard-float. On an ARM host the same compiler is the native one.
# The target's libraries outside the cross compiler's own folders lie in a sysroot that
# scripts/setup fills; an ARM host has none.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

get_filename_component(kobase_build "${CMAKE_CURRENT_LIST_DIR}/../build" ABSOLUTE)
set(KOBASE_SYSROOT "${kobase_build}/sysroot-armhf" CACHE PATH "Folder with the target's expat")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KOBASE_SYSROOT)

if(EXISTS "${KOBASE_SYSROOT}")
    list(APPEND CMAKE_FIND_ROOT_PATH "${KOBASE_SYSROOT}" /usr/arm-linux-gnueabihf)
    set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
    set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
    set(ENV{PKG_CONFIG_LIBDIR} "${KOBASE_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig")

    # Host programs that link libkobase.so find the expat that it needs: the linker by
    # -rpath-link, the emulated loader by its library path.
    set(sysroot_libraries "${KOBASE_SYSROOT}/usr/lib/arm-linux-gnueabihf")
    set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${sysroot_libraries}")
    find_program(KOBASE_QEMU NAMES qemu-arm-static qemu-arm)
    if(KOBASE_QEMU)
        set(CMAKE_CROSSCOMPILING_EMULATOR "${KOBASE_QEMU};-L;/usr/arm-linux-gnueabihf;\
-E;LD_LIBRARY_PATH=${sysroot_libraries}")
    endif()
endif()
