# Builds a project whose configurations are preprocessed by an installed kobase-xpp, changes an
# included file, and looks at what is built again.
# Usage: cmake -D source=... -D folder=... -D prefix=... -D generator=... -D binaries=...
#        [-D toolchain=...] -P preprocess.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

set(settings -DCMAKE_PREFIX_PATH=${prefix} -DKOBASE_XPP=${prefix}/${binaries}/kobase-xpp)
if(toolchain)
    list(APPEND settings -DCMAKE_TOOLCHAIN_FILE=${toolchain})
endif()

# Builds, and compares the numbers of the rooms that were preprocessed with those expected.
function(build_expect what)
    run(output ${CMAKE_COMMAND} --build ${folder}/build --parallel 2)
    message("-- ${what}\n${output}")
    string(REGEX MATCHALL "Preprocessing rooms/room[0-9]+" done "${output}")
    list(TRANSFORM done REPLACE "Preprocessing rooms/room" "")
    list(SORT done COMPARE NATURAL)
    if(NOT "${done}" STREQUAL "${ARGN}")
        message(FATAL_ERROR "${what}: built ${done}, expected ${ARGN}")
    endif()
endfunction()

# Changes a file of the project's copy, later than the clock of the file system can tell apart.
function(change file)
    execute_process(COMMAND ${CMAKE_COMMAND} -E sleep 1.1)
    file(TOUCH ${folder}/source/${file})
endfunction()

function(room_expect number text)
    file(READ ${folder}/build/rooms/room${number}.xml room)
    string(FIND "${room}" "${text}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "room ${number} lacks ${text}:\n${room}")
    endif()
endfunction()

file(REMOVE_RECURSE ${folder})
file(COPY ${source}/ DESTINATION ${folder}/source)
run(ignored ${CMAKE_COMMAND} -S ${folder}/source -B ${folder}/build -G ${generator} ${settings})
build_expect("first build" 1 2 3 4 5 6 7 8 9 10)
room_expect(7 "<room number=\"7\" >")
room_expect(7 "<channel id=\"2\" />")
build_expect("nothing changed")
change(parts/speaker.xml)
build_expect("an include of five changed" 1 2 3 4 5)
build_expect("nothing changed since")
change(parts/channels.xml)
build_expect("the include of all changed" 1 2 3 4 5 6 7 8 9 10)
change(large_room.xml)
build_expect("a source changed" 6 7 8 9 10)
