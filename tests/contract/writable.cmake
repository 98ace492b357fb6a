# Checks that the writable sections of a library hold nothing but the constants that are made when
# it is loaded, and what compiler, loader and the standard streams need for themselves. Tables of
# pointers, which the loader relocates and then protects, lie in other sections.
# Usage: cmake -D objdump=... -D library=... -P writable.cmake
cmake_minimum_required(VERSION 3.22)
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

set(constants ko::lxml::str_empty ko::xpp::default_xpp_uri ko::xpp::default_xpr_uri)
set(of_loader std::__ioinit __dso_handle completed\\.[0-9]+)
# Whom a thread charges for memory while it is inside a call of expat, null otherwise: expat does not
# tell the functions that give it memory for which parser they are called.
set(of_calls "ko::xml::.anonymous namespace.::current")
list(JOIN constants "|" constants)
list(JOIN of_loader "|" of_loader)

# Gives the bytes of a section; 0 when there is none.
function(section_size result name)
    set(${result} 0 PARENT_SCOPE)
    string(REPLACE "." "\\." name "${name}")
    if(sections MATCHES "\n +[0-9]+ ${name} +([0-9a-f]+) ")
        math(EXPR size "0x${CMAKE_MATCH_1}")
        set(${result} ${size} PARENT_SCOPE)
    endif()
endfunction()

run(sections ${objdump} -hw ${library})
run(symbols ${objdump} -tC ${library})
lines(symbols "${symbols}")

# Whatever has no symbol would show as a section larger than its symbols; alignment takes some.
foreach(section .data .bss .tdata .tbss)
    section_size(unnamed ${section})
    foreach(symbol IN LISTS symbols)
        if(NOT symbol MATCHES "^[0-9a-f]+ .......[ ]*\\${section}[ \t]+([0-9a-f]+) +(.*)$")
            continue()
        endif()
        set(size ${CMAKE_MATCH_1})
        string(REGEX REPLACE "^\\.hidden |\\(abi:cxx11\\)$" "" name "${CMAKE_MATCH_2}")
        math(EXPR unnamed "${unnamed} - 0x${size}")
        if(NOT size EQUAL 0 AND NOT name MATCHES "^(${constants}|${of_calls}|${of_loader})$")
            message(SEND_ERROR "writable: ${name}, ${size} bytes in ${section}")
        endif()
    endforeach()
    if(unnamed GREATER 16)
        message(SEND_ERROR "writable: ${unnamed} bytes without a name in ${section}")
    endif()
endforeach()
