# The component for Windows: Tessara.DLL and a small host, from the sources of the same rooms.
enable_language(RC)

# What is built needs nothing beside it but the system's own libraries.
add_link_options(-static)
# The same bytes from the same sources, and no names that only debuggers read.
add_link_options(-s LINKER:--no-insert-timestamp)
set(CMAKE_CXX_STANDARD_LIBRARIES "")

find_package(Threads REQUIRED)
add_library(OpenGL::GL INTERFACE IMPORTED)
set_target_properties(OpenGL::GL PROPERTIES INTERFACE_LINK_LIBRARIES "opengl32;gdi32")
add_library(OpenGL::GLU INTERFACE IMPORTED)
set_target_properties(OpenGL::GLU PROPERTIES INTERFACE_LINK_LIBRARIES "glu32;opengl32")

add_subdirectory(tools/idl)
add_subdirectory(src/platform)
add_subdirectory(src/services)
add_subdirectory(src/textures)
add_subdirectory(src/terrain)
add_subdirectory(src/persistence)
add_subdirectory(src/surface)
add_subdirectory(src/dialog)
add_subdirectory(src/module)
add_subdirectory(src/host)
add_subdirectory(examples)
include(cmake/TessaraWindowsPackage.cmake)

if(TESSARA_BUILD_TESTS)
    enable_testing()
    add_subdirectory(tests)
endif()
