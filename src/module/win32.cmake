# Tessara.DLL: what the module carries beside code lies in its file as resources of the system's kind.
set(library ${CMAKE_CURRENT_BINARY_DIR}/TESSARALib.tlb)
add_custom_command(OUTPUT ${library} COMMAND tessara-type-library ${idl} ${library}
    DEPENDS tessara-type-library ${idl} VERBATIM)

set(script ${CMAKE_CURRENT_BINARY_DIR}/Tessara.rc)
set(generator ${PROJECT_SOURCE_DIR}/cmake/ModuleResources.cmake)
set(data ${CMAKE_CURRENT_SOURCE_DIR}/resources)
add_custom_command(OUTPUT ${script}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${script} -DFILE=Tessara.DLL -DNAME=${data}/project_name.txt
        -DSCRIPT=${data}/registry.rgs -DLIBRARY=${library} -DVERSION=${data}/version.txt
        -DMANIFEST=${data}/manifest.xml -P ${generator}
    DEPENDS ${generator} ${data}/project_name.txt ${data}/version.txt VERBATIM)
set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS "${library};${data}/registry.rgs;${data}/manifest.xml")

target_sources(tessara-module PRIVATE exports.def resources_win32.cpp ${script})
set_target_properties(tessara-module PROPERTIES SUFFIX .DLL)
