# Runs a program and checks its exit status, its standard output and its standard error.
#   cmake -Dprogram="COMMAND;ARGUMENT..." [-Doutput=FILE] [-Derror=TEXT] -P check.cmake
# Standard output must be that of FILE byte for byte, or empty without one. With TEXT, standard
# error must be one line that begins with it and the exit status 1; otherwise empty and 0.
list(FILTER program EXCLUDE REGEX "^$")
string(RANDOM LENGTH 12 suffix)
set(actual "${CMAKE_CURRENT_BINARY_DIR}/output-${suffix}.tmp")
execute_process(COMMAND ${program} OUTPUT_FILE ${actual} ERROR_VARIABLE message
                RESULT_VARIABLE status)
set(expected "${actual}.expected")
file(WRITE ${expected} "")
if(DEFINED output)
    file(COPY_FILE ${output} ${expected})
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${actual} ${expected}
                RESULT_VARIABLE differs)
file(READ ${actual} text)
file(REMOVE ${actual} ${expected})

set(expected_status 0)
set(pattern "^$")
if(DEFINED error)
    set(expected_status 1)
    set(pattern "^[^\n]+\n$")
endif()
if(NOT status STREQUAL expected_status)
    message(FATAL_ERROR "exit status ${status}, expected ${expected_status}\n${message}")
endif()
string(FIND "${message}" "${error}" position)
if(NOT message MATCHES "${pattern}" OR NOT position EQUAL 0)
    message(FATAL_ERROR "standard error is not \"${error}\":\n${message}")
endif()
if(differs)
    message(FATAL_ERROR "standard output is not that expected:\n${text}")
endif()
