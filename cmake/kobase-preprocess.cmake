# Preprocesses a configuration document at build time, and again whenever the document or a file
# that it includes has changed.
#
#   kobase_preprocess(TARGET target SOURCE file.xml OUTPUT file.xml
#                     [DEFINES NAME=VALUE...] [INCLUDE directory...] [OPTIONS option...])
#
# TARGET   a target that gets the output; a custom target that is part of "all" is made when there
#          is none of that name. Several documents may have the same one.
# SOURCE   the document, relative to the current source folder
# OUTPUT   what is written, relative to the current binary folder
# DEFINES  variables, as the option -D of kobase-xpp takes them
# INCLUDE  folders in which included files are looked for, relative to the current source folder
# OPTIONS  further options of kobase-xpp, such as --output-format=standard or -S NAME=TEXT
cmake_policy(PUSH)
cmake_policy(VERSION 3.20...3.25)

# Where a path lies that was given relative to a folder.
function(kobase_preprocess_path result path folder)
    get_filename_component(absolute "${path}" ABSOLUTE BASE_DIR "${folder}")
    set(${result} "${absolute}" PARENT_SCOPE)
endfunction()

function(kobase_preprocess)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;SOURCE;OUTPUT" "DEFINES;INCLUDE;OPTIONS")
    foreach(name TARGET SOURCE OUTPUT)
        if(NOT arg_${name})
            message(FATAL_ERROR "kobase_preprocess: ${name} is missing")
        endif()
    endforeach()
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "kobase_preprocess: unknown argument ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT TARGET kobase::xpp)
        message(FATAL_ERROR "kobase_preprocess: kobase-xpp was not found; set KOBASE_XPP to it")
    endif()
    kobase_preprocess_path(source "${arg_SOURCE}" "${CMAKE_CURRENT_SOURCE_DIR}")
    kobase_preprocess_path(output "${arg_OUTPUT}" "${CMAKE_CURRENT_BINARY_DIR}")
    set(options ${arg_OPTIONS})
    foreach(definition IN LISTS arg_DEFINES)
        list(APPEND options -D "${definition}")
    endforeach()
    foreach(folder IN LISTS arg_INCLUDE)
        kobase_preprocess_path(folder "${folder}" "${CMAKE_CURRENT_SOURCE_DIR}")
        list(APPEND options -I "${folder}")
    endforeach()
    get_filename_component(output_folder "${output}" DIRECTORY)
    file(MAKE_DIRECTORY "${output_folder}")
    add_custom_command(
        OUTPUT "${output}"
        COMMAND ${KOBASE_XPP_COMMAND} ${options} -o "${output}" -MD -MF "${output}.d"
                -MT "${output}" -- "${source}"
        DEPENDS "${source}" "${KOBASE_XPP}"
        DEPFILE "${output}.d"
        COMMENT "Preprocessing ${arg_OUTPUT}"
        VERBATIM)
    if(NOT TARGET ${arg_TARGET})
        add_custom_target(${arg_TARGET} ALL)
    endif()
    target_sources(${arg_TARGET} PRIVATE "${output}")
endfunction()

cmake_policy(POP)
