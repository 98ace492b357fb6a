# Unpacks the Debian packages of an architecture side by side, looks at what they say they depend
# on, and runs a tool from them. A consumer is built against the unpacked tree in a test of its own.
# Usage: cmake -D packages=... -D architecture=... -D folder=... -D version=... [-D emulator=...]
#        -P packages.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
string(REPLACE "|" ";" emulator "${emulator}")

if(NOT EXISTS ${packages})
    message("skipped: scripts/package has not been run")
    return()
endif()

# Every dependency but those within the library's own packages names the version it needs.
set(libkobase1_depends libc6 libexpat1 libstdc++6)
set(libkobase-dev_depends libkobase1)
set(kobase-tools_depends libkobase1 libc6 libstdc++6)
set(libkobase-doc_depends "")

file(REMOVE_RECURSE ${folder})
foreach(name libkobase1 libkobase-dev kobase-tools libkobase-doc)
    set(package ${packages}/${name}_${version}_${architecture}.deb)
    if(name STREQUAL libkobase-doc)
        set(package ${packages}/${name}_${version}_all.deb)
    endif()
    run(depends dpkg-deb -f ${package} Depends)
    foreach(other IN LISTS ${name}_depends)
        string(FIND ", ${depends}" ", ${other} (" place)
        if(place EQUAL -1)
            message(SEND_ERROR "${name} does not depend on a version of ${other}: ${depends}")
        endif()
    endforeach()
    run(ignored dpkg-deb -x ${package} ${folder})
    foreach(paper changelog.gz copyright)
        if(NOT EXISTS ${folder}/usr/share/doc/${name}/${paper})
            message(SEND_ERROR "${name} has no ${paper}")
        endif()
    endforeach()
endforeach()

run(output ${emulator} ${folder}/usr/bin/kobase-calc "6 * 7")
if(NOT output STREQUAL "(i) 42\n")
    message(FATAL_ERROR "kobase-calc printed ${output}")
endif()

foreach(file share/doc/kobase/docs/getting-started.md share/doc/kobase/examples/first/first.cpp
        share/xml/kobase/kobase.rng)
    if(NOT EXISTS ${folder}/usr/${file})
        message(SEND_ERROR "no package has ${file}")
    endif()
endforeach()
