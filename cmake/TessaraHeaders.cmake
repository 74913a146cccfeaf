# What hosts include stands apart from what only the project includes: each room names its public headers, and nothing
# else is installed. A host writes #include <tessara/surface/itessara.h>. The build tree has the same folder, as a link
# to the sources; among themselves public headers include each other by relative paths, which hold in both.
set(TESSARA_PUBLIC_INCLUDE ${PROJECT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${TESSARA_PUBLIC_INCLUDE})
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src ${TESSARA_PUBLIC_INCLUDE}/tessara SYMBOLIC)

# The target all_verify_interface_header_sets compiles each public header alone.
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

# The interfaces and the plain classes that cross the border, without a library.
add_library(tessara-headers INTERFACE)
target_compile_features(tessara-headers INTERFACE cxx_std_20)

# Public headers of the room whose list of sources this stands in, and the target that a host gets them with:
# tessara_public_headers(<target> <headers>...). tools/check-layers reads these lists too.
function(tessara_public_headers target)
    file(RELATIVE_PATH room ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
    list(TRANSFORM ARGN PREPEND ${TESSARA_PUBLIC_INCLUDE}/tessara/${room}/)
    target_sources(${target} INTERFACE FILE_SET HEADERS BASE_DIRS ${TESSARA_PUBLIC_INCLUDE} FILES ${ARGN})
endfunction()
