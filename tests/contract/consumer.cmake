# Configures and builds a separate project against an installed tree, runs its program and
# compares the output.
# Usage: cmake -D source=... -D folder=... -D prefix=... -D libraries=... -D expected=...
#        -D program="NAME|ARGUMENT..." -D generator=... [-D toolchain=...] -D compiler=... [-D emulator=...] -P consumer.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

if(NOT EXISTS ${prefix})
    message("skipped: there is no ${prefix}")
    return()
endif()
set(settings -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix})
if(toolchain)
    list(APPEND settings -DCMAKE_TOOLCHAIN_FILE=${toolchain})
else()
    list(APPEND settings -DCMAKE_CXX_COMPILER=${compiler})
endif()
string(REPLACE "|" ";" emulator "${emulator}")
set(ENV{PKG_CONFIG_PATH} ${prefix}/${libraries}/pkgconfig)

file(REMOVE_RECURSE ${folder})
run(ignored ${CMAKE_COMMAND} -S ${source} -B ${folder} -G ${generator} ${settings})
run(ignored ${CMAKE_COMMAND} --build ${folder})
string(REPLACE "|" ";" program "${program}")
run(output ${emulator} ${folder}/${program})
compare_or_write("${output}" ${expected} "lines of the consumer")
