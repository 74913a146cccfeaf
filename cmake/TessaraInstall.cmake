# What an installed tree holds, and how a project outside finds it. The libraries find each other relative to where they
# lie, so that the tree may be moved as a whole.
include(CMakePackageConfigHelpers)

set(TESSARA_INSTALL_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/tessara)
set(TESSARA_INSTALL_CMAKE ${CMAKE_INSTALL_LIBDIR}/cmake/Tessara)
file(RELATIVE_PATH tessara_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})

# The interfaces and the plain classes that cross the border, without a library.
add_library(tessara-headers INTERFACE)
target_compile_features(tessara-headers INTERFACE cxx_std_20)
target_include_directories(tessara-headers INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)

# Libraries that a host links with, each under the name Tessara::<name>. Their file names carry no version: a process
# has one platform library, and a host that somebody else built looks for it under its plain name.
foreach(name headers platform host)
    if(TARGET tessara-${name})
        set_target_properties(tessara-${name} PROPERTIES EXPORT_NAME ${name} INSTALL_RPATH "$ORIGIN")
        install(TARGETS tessara-${name} EXPORT TessaraTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
            INCLUDES DESTINATION ${TESSARA_INSTALL_HEADERS}
        )
    endif()
endforeach()

# Modules lie beside the libraries; nobody links with them.
foreach(name module imagefile ui-wx viewer)
    if(TARGET tessara-${name})
        set_target_properties(tessara-${name} PROPERTIES INSTALL_RPATH "$ORIGIN")
        install(TARGETS tessara-${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime)
    endif()
endforeach()
if(TARGET tessara)
    set_target_properties(tessara PROPERTIES INSTALL_RPATH "$ORIGIN/${tessara_bin_to_lib}")
    install(TARGETS tessara RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
endif()

# Headers of what the libraries above hold. They keep the folders of the sources: #include "services/kvo_host.h" works
# here and there.
foreach(room platform/com platform/system services textures host)
    install(DIRECTORY src/${room}/ DESTINATION ${TESSARA_INSTALL_HEADERS}/${room} COMPONENT development
        FILES_MATCHING PATTERN "*.h"
        PATTERN "class_table.h" EXCLUDE
        PATTERN "module_library.h" EXCLUDE
        PATTERN "process_hook.h" EXCLUDE
        PATTERN "images" EXCLUDE
        PATTERN "registry" EXCLUDE)
endforeach()
# What a host says to the window layer, or puts in its place.
foreach(header device_context dialog_template dialog_window image window_system window_types)
    install(FILES src/platform/ui/${header}.h DESTINATION ${TESSARA_INSTALL_HEADERS}/platform/ui COMPONENT development)
endforeach()
install(FILES src/platform/gl/gl.h DESTINATION ${TESSARA_INSTALL_HEADERS}/platform/gl COMPONENT development)
install(FILES src/terrain/terrain_frustum.h DESTINATION ${TESSARA_INSTALL_HEADERS}/terrain COMPONENT development)
install(FILES src/surface/itessara.h DESTINATION ${TESSARA_INSTALL_HEADERS}/surface COMPONENT development)

# The type description, for those who write hosts in other languages: its source, and what Tessara.so carries.
install(FILES src/surface/tessara.idl ${PROJECT_BINARY_DIR}/src/module/TESSARALib.json
    DESTINATION ${CMAKE_INSTALL_DATADIR}/tessara COMPONENT development)

set(TESSARA_INSTALLED_MODULE ${CMAKE_INSTALL_LIBDIR}/Tessara.so)
configure_package_config_file(cmake/TessaraConfig.cmake.in ${PROJECT_BINARY_DIR}/TessaraConfig.cmake
    INSTALL_DESTINATION ${TESSARA_INSTALL_CMAKE}
    PATH_VARS TESSARA_INSTALLED_MODULE
)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TessaraConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT TessaraTargets NAMESPACE Tessara:: DESTINATION ${TESSARA_INSTALL_CMAKE} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/TessaraConfig.cmake ${PROJECT_BINARY_DIR}/TessaraConfigVersion.cmake
    DESTINATION ${TESSARA_INSTALL_CMAKE} COMPONENT development)
