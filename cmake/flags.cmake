# Compiler settings of every target of the project.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_library(kobase_flags INTERFACE)
target_compile_options(kobase_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# A fused multiply-add rounds once where the target rounds twice.
target_compile_options(kobase_flags INTERFACE -ffp-contract=off)

if(KOBASE_SANITIZE)
    add_compile_options(-fsanitize=${KOBASE_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KOBASE_SANITIZE})
    if(KOBASE_SANITIZE MATCHES undefined)
        add_compile_options(-fsanitize=float-cast-overflow)
    endif()
endif()

if(KOBASE_COVERAGE)
    add_link_options(--coverage)
endif()
