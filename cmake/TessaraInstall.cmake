# What an installed tree holds, and how a project outside finds it. The libraries find each other relative to where they
# lie, so that the tree may be moved as a whole.
include(CMakePackageConfigHelpers)

set(TESSARA_INSTALL_CMAKE ${CMAKE_INSTALL_LIBDIR}/cmake/Tessara)
file(RELATIVE_PATH tessara_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})

# Libraries that a host links with, each under the name Tessara::<name> and with its public headers. Their file names carry
# no version: a process
# has one platform library, and a host that somebody else built looks for it under its plain name.
foreach(name headers platform host)
    if(TARGET tessara-${name})
        set_target_properties(tessara-${name} PROPERTIES EXPORT_NAME ${name} INSTALL_RPATH "$ORIGIN")
        install(TARGETS tessara-${name} EXPORT TessaraTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
            FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
            INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
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
