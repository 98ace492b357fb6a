# Installs the library below a folder and compares the installed headers with those that the
# umbrella header reaches. No header may show what the library is built on.
# With tools their papers are installed too.
# Usage: cmake -D build=... -D prefix=... -D include=... [-D tools=ON] -P install.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

file(REMOVE_RECURSE ${prefix})
run(ignored ${CMAKE_COMMAND} --install ${build} --prefix ${prefix})

# Gathers in "reached" the headers that a header includes, through whatever it includes.
set(waiting kobase.h)
set(reached "")
while(waiting)
    list(POP_FRONT waiting header)
    if(header IN_LIST reached)
        continue()
    endif()
    list(APPEND reached ${header})
    file(STRINGS ${prefix}/${include}/kobase/${header} includes REGEX "^ *# *include")
    foreach(line IN LISTS includes)
        if(line MATCHES "\"(.*)\"")
            list(APPEND waiting ${CMAKE_MATCH_1})
        elseif(line MATCHES "<.*(\\.h|/.*)>")
            message(SEND_ERROR "${header} includes what is not of the standard library: ${line}")
        endif()
    endforeach()
endwhile()
list(SORT reached)

file(GLOB_RECURSE installed RELATIVE ${prefix}/${include}/kobase ${prefix}/${include}/kobase/*)
list(SORT installed)
if(NOT installed STREQUAL reached)
    message(FATAL_ERROR "installed: ${installed}\nreached:   ${reached}")
endif()

if(tools)
    foreach(file bin/kobase-xpp bin/kobase-calc share/man/man1/kobase-xpp.1
                 share/man/man1/kobase-calc.1 share/bash-completion/completions/kobase-xpp
                 share/bash-completion/completions/kobase-calc)
        if(NOT EXISTS ${prefix}/${file})
            message(SEND_ERROR "not installed: ${file}")
        endif()
    endforeach()
endif()
