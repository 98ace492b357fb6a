# Builds for 32-bit ARM Linux, hard-float. On an ARM host the same compiler is the native one.
# The target's libraries outside the cross compiler's own folders lie in a sysroot that
# scripts/setup fills.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

set(KOBASE_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-armhf"
    CACHE PATH "Folder with the target's expat")
list(APPEND CMAKE_FIND_ROOT_PATH "${KOBASE_SYSROOT}" /usr/arm-linux-gnueabihf)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KOBASE_SYSROOT)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

if(CMAKE_HOST_SYSTEM_PROCESSOR MATCHES "^arm")
    set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY BOTH)
    set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE BOTH)
else()
    set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
    find_program(KOBASE_QEMU NAMES qemu-arm-static qemu-arm)
    if(KOBASE_QEMU)
        set(CMAKE_CROSSCOMPILING_EMULATOR "${KOBASE_QEMU};-L;/usr/arm-linux-gnueabihf")
    endif()
endif()
