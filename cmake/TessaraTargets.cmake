# Compiler settings shared by every target of the project.
option(TESSARA_WERROR "Treat warnings as errors" OFF)
option(TESSARA_SANITIZE "Build with the address and undefined behaviour sanitizers" OFF)
option(TESSARA_FUZZ "Build the fuzz targets, with the sanitizers; needs Clang" OFF)

function(tessara_compile_settings target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
    # Results are the same on every machine: each float operation rounds by itself. Nobody reads errno after a square
    # root.
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wno-psabi
        $<$<BOOL:${TESSARA_WERROR}>:-Werror> -ffp-contract=off -fno-math-errno -fno-semantic-interposition)
    if(WIN32)
        # OpenGL's functions without the import attribute: a recording library can stand in their place.
        target_compile_definitions(${target} PRIVATE _GDI32_)
    endif()
    if(TESSARA_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(TESSARA_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
            -fno-sanitize-recover=undefined)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# One room of the source tree as a static library: tessara_room(<name> <sources>...)
function(tessara_room name)
    add_library(tessara-${name} STATIC ${ARGN})
    tessara_compile_settings(tessara-${name})
endfunction()
