# What the scripts of this folder share.

# Runs a command and gives its standard output; a failure ends the test.
function(run result)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE errors
                    RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "failed (${status}): ${command}\n${output}${errors}")
    endif()
    set(${result} "${output}" PARENT_SCOPE)
endfunction()

# Splits a text into a list of its non-empty lines. Semicolons and brackets, which a list does not
# stand, are written as other characters.
function(lines result text)
    string(REPLACE ";" "," text "${text}")
    string(REPLACE "[" "(" text "${text}")
    string(REPLACE "]" ")" text "${text}")
    string(REGEX REPLACE "\n+" ";" text "${text}")
    string(REGEX REPLACE "^;|;$" "" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Compares a text with a checked-in file and shows what differs; with "write" set, writes it.
function(compare_or_write text file what)
    if(write)
        file(WRITE ${file} "${text}")
        return()
    endif()
    file(READ ${file} expected)
    if("${text}" STREQUAL "${expected}")
        return()
    endif()
    lines(is "${text}")
    lines(expected "${expected}")
    foreach(line IN LISTS is)
        if(NOT line IN_LIST expected)
            message("new:  ${line}")
        endif()
    endforeach()
    foreach(line IN LISTS expected)
        if(NOT line IN_LIST is)
            message("gone: ${line}")
        endif()
    endforeach()
    message(FATAL_ERROR "the ${what} are not those of ${file}")
endfunction()
