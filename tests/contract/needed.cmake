# Checks what a library needs to be loaded, and that it imports nothing that starts a thread or
# reads or changes the settings of the process.
# Usage: cmake -D readelf=... -D nm=... -D library=... -D soname=... -P needed.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

# libm and libgcc_s come with some versions of the toolchain.
set(required libexpat.so.1 libstdc++.so.6 libc.so.6)
set(possible libm.so.6 libgcc_s.so.1 ld-linux-armhf.so.3)
set(forbidden pthread_create thrd_create clone fork _ZNSt6thread15_M_start_thread
    getenv setenv setlocale _ZNSt6locale6globalERKS_)

run(dynamic ${readelf} -dW ${library})
if(NOT dynamic MATCHES "\\(SONAME\\)[^\n]*: [^a-z]*${soname}[^.0-9]")
    message(SEND_ERROR "the name is not ${soname}:\n${dynamic}")
endif()

lines(dynamic "${dynamic}")
foreach(line IN LISTS dynamic)
    if(line MATCHES "\\(NEEDED\\)[^:]*: .(.*).$")
        list(APPEND needed ${CMAKE_MATCH_1})
        if(NOT CMAKE_MATCH_1 IN_LIST required AND NOT CMAKE_MATCH_1 IN_LIST possible)
            message(SEND_ERROR "needed: ${CMAKE_MATCH_1}")
        endif()
    endif()
endforeach()
foreach(name IN LISTS required)
    if(NOT name IN_LIST needed)
        message(SEND_ERROR "not needed: ${name}")
    endif()
endforeach()

run(imports ${nm} -D --undefined-only ${library})
foreach(name IN LISTS forbidden)
    if(imports MATCHES " (${name}[^@\n]*)(@|\n)")
        message(SEND_ERROR "imported: ${CMAKE_MATCH_1}")
    endif()
endforeach()
