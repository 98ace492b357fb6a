# Compares the slots of the virtual tables of the public classes, as the compiler lays them out,
# with a checked-in list. With "write" set, writes the list instead.
# Usage: cmake -D "compiler=..." -D source=... -D include=... -D folder=... -D list=...
#        [-D write=ON] -P vtables.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

file(REMOVE_RECURSE ${folder})
file(MAKE_DIRECTORY ${folder})
run(ignored ${compiler} -std=c++17 -I${include} -fdump-lang-class -c ${source}
    -o ${folder}/kobase.o -dumpdir ${folder}/)
file(GLOB dump ${folder}/*.class)
file(READ ${dump} dump)
lines(dump "${dump}")

# A table stands between the line "Vtable for CLASS" and the line "Class CLASS"; its slots begin
# with their offset.
set(text "")
set(of_library FALSE)
foreach(line IN LISTS dump)
    if(line MATCHES "^Vtable for (.*)")
        set(class ${CMAKE_MATCH_1})
        if(class MATCHES "^(ko|probe)::")
            set(of_library TRUE)
            string(APPEND text "${class}\n")
        else()
            set(of_library FALSE)
        endif()
    elseif(line MATCHES "^Class ")
        set(of_library FALSE)
    elseif(of_library AND line MATCHES "^[0-9]+ ")
        string(REGEX REPLACE "\\(int \\(\\*\\)\\(\\.\\.\\.\\)\\)" "" slot "${line}")
        string(REGEX REPLACE " +" " " slot "${slot}")
        string(APPEND text "  ${slot}\n")
    endif()
endforeach()
compare_or_write("${text}" ${list} "virtual tables")
