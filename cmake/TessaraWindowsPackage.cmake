# What a person gets: dist/tessara-VERSION-win64.zip, with the same files from the same sources.
#   cmake --build --preset windows --target package
install(TARGETS tessara-module RUNTIME DESTINATION . COMPONENT package)
install(TARGETS minimal_host plain_c_host RUNTIME DESTINATION example COMPONENT package)
# What a host in C++ links with.
install(TARGETS tessara-host tessara-platform tessara-textures tessara-gl tessara-frustum
    ARCHIVE DESTINATION lib COMPONENT package)
install(FILES ${PROJECT_BINARY_DIR}/src/module/TESSARALib.tlb DESTINATION . COMPONENT package)
install(FILES examples/minimal_host/main.cpp examples/minimal_host/system.h examples/minimal_host/system_wgl.cpp
    DESTINATION example/minimal_host COMPONENT package)
install(FILES examples/plain_c_host/main.c DESTINATION example/plain_c_host COMPONENT package)
install(FILES docs/windows-package.txt DESTINATION . RENAME README.txt COMPONENT package)

foreach(target headers host)
    get_target_property(headers tessara-${target} HEADER_SET)
    foreach(header IN LISTS headers)
        cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${TESSARA_PUBLIC_INCLUDE} OUTPUT_VARIABLE place)
        cmake_path(GET place PARENT_PATH folder)
        install(FILES ${header} DESTINATION include/${folder} COMPONENT package)
    endforeach()
endforeach()

# The C++ runtime, the threads and the system's start-up code are linked in.
foreach(package gcc-mingw-w64-base mingw-w64-common)
    install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${package}.txt COMPONENT package)
endforeach()
install(FILES /usr/share/common-licenses/GPL-3 DESTINATION licences RENAME GPL-3.txt COMPONENT package)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME tessara)
set(CPACK_PACKAGE_FILE_NAME tessara-${PROJECT_VERSION}-win64)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_SOURCE_DIR}/dist)
set(CPACK_COMPONENTS_ALL package)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackageTimes.cmake)
include(CPack)
