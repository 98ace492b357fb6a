# Compares the exported symbols of a library, demangled, with a checked-in list, so that every
# change of the interface is seen in review. With "write" set, writes the list instead.
# Usage: cmake -D nm=... -D library=... -D list=... [-D write=ON] -P exports.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

run(symbols ${nm} -DC --defined-only ${library})
string(REGEX REPLACE "(^|\n)[0-9a-f]+ (.) " "\\1\\2 " symbols "${symbols}")
lines(symbols "${symbols}")
list(SORT symbols)
list(REMOVE_DUPLICATES symbols)

# Only the library's own classes and functions, and the two sprintf for callers' strings.
foreach(symbol IN LISTS symbols)
    if(NOT symbol MATCHES "^. (typeinfo for |typeinfo name for |vtable for )?ko::"
       AND NOT symbol MATCHES "^T sprintf\\(std::")
        message(SEND_ERROR "foreign symbol exported: ${symbol}")
    elseif(symbol MATCHES "imp_t")
        message(SEND_ERROR "private class exported: ${symbol}")
    endif()
endforeach()

list(JOIN symbols "\n" text)
compare_or_write("${text}\n" ${list} "exported symbols")
