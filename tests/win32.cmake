# The tests of the component on Windows, run in Wine.
set(BUILD_SHARED_LIBS OFF)
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# tessara_wine_test(<name> SOURCES ... LIBRARIES ... [ARGUMENTS ...]): the program runs by CMake's emulator
function(tessara_wine_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LIBRARIES;ARGUMENTS" ${ARGN})
    add_executable(${name} ${TEST_SOURCES} support/com_apartment_win32.cpp)
    tessara_compile_settings(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE GL_GLEXT_PROTOTYPES)
    target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} gmock_main ole32)
    add_test(NAME ${name} COMMAND ${name} ${TEST_ARGUMENTS})
    # What is skipped here would be tested nowhere.
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 FAIL_REGULAR_EXPRESSION "SKIPPED")
endfunction()

add_subdirectory(support)

tessara_wine_test(platform_com_test
    SOURCES platform/com/bstr_test.cpp platform/com/com_object_test.cpp
    LIBRARIES tessara-platform
    ARGUMENTS --gtest_filter=-Variant.*)  # the system's are the system's
tessara_wine_test(platform_registry_test
    SOURCES platform/com/registry/registry_script_test.cpp
    LIBRARIES tessara-platform)
tessara_wine_test(platform_gl_test
    SOURCES platform/gl/offscreen_context_test.cpp
    LIBRARIES tessara-offscreen)
tessara_wine_test(platform_ui_test
    SOURCES platform/ui/sample_dialog.cpp platform/ui/ui_classes_test.cpp
    LIBRARIES tessara-scripted-ui tessara-ui)
tessara_wine_test(platform_ui_win32_test
    SOURCES platform/ui/sample_dialog.cpp platform/ui/win32_user.cpp platform/ui/win32_features_test.cpp
        platform/ui/window_contract_test.cpp
    LIBRARIES tessara-ui tessara-offscreen)
target_compile_definitions(platform_ui_win32_test PRIVATE TESSARA_DIALOG_USER="platform/ui/win32_user.h")
# One desktop for all.
set_tests_properties(platform_ui_win32_test PROPERTIES RUN_SERIAL ON)
tessara_wine_test(textures_test
    SOURCES textures/elevation_grid_test.cpp textures/elevation_palette_test.cpp
    LIBRARIES tessara-textures)
tessara_wine_test(textures_calls_test
    SOURCES textures/texture_registry_test.cpp textures/texture_upload_test.cpp
    LIBRARIES tessara-recording-gl tessara-allocation-failure tessara-textures)
tessara_wine_test(terrain_test
    SOURCES terrain/build_test.cpp terrain/invariants_test.cpp terrain/mesh.cpp terrain/node_test.cpp
        terrain/update_test.cpp
    LIBRARIES tessara-terrain)
# Its flights are those of every other system, to the last bit.
tessara_wine_test(terrain_draw_test
    SOURCES terrain/draw_test.cpp terrain/frustum_test.cpp terrain/golden_test.cpp
    LIBRARIES tessara-recording-gl tessara-terrain)
tessara_wine_test(terrain_pixels_test
    SOURCES terrain/pixels_test.cpp
    LIBRARIES tessara-offscreen tessara-terrain)
tessara_wine_test(persistence_test
    SOURCES persistence/saved_structs_test.cpp persistence/saved_value_test.cpp
    LIBRARIES tessara-persistence)
tessara_wine_test(surface_test
    SOURCES surface/surface_test.cpp surface/texture_import_test.cpp surface/texture_slots_test.cpp
    LIBRARIES tessara-recording-gl tessara-allocation-failure tessara-scripted-ui tessara-surface)
tessara_wine_test(surface_saved_form_test
    SOURCES surface/saved_form_test.cpp
    LIBRARIES tessara-recording-gl tessara-allocation-failure tessara-surface tessara-host)
tessara_wine_test(dialog_test
    SOURCES dialog/changes_test.cpp dialog/elements_test.cpp dialog/listing_test.cpp dialog/loading_test.cpp
    LIBRARIES tessara-recording-gl tessara-allocation-failure tessara-scripted-ui tessara-surface)
tessara_wine_test(module_test
    SOURCES module/module_win32_test.cpp
    LIBRARIES tessara-host tessara-offscreen)
target_compile_definitions(module_test PRIVATE TESSARA_MODULE_PATH="$<TARGET_FILE:tessara-module>")
add_dependencies(module_test tessara-module)

# A host that finds the component by its class id alone, and one in plain C.
foreach(state registered unregistered)
    add_test(NAME module_is_${state} COMMAND ${PROJECT_SOURCE_DIR}/tools/wine regsvr32 /s
        $<$<STREQUAL:${state},unregistered>:/u> $<TARGET_FILE:tessara-module> COMMAND_EXPAND_LISTS)
endforeach()
add_test(NAME minimal_host COMMAND minimal_host --registered)
add_test(NAME plain_c_host COMMAND plain_c_host)
set_tests_properties(module_is_registered PROPERTIES FIXTURES_SETUP registered)
set_tests_properties(module_is_unregistered PROPERTIES FIXTURES_CLEANUP registered)
set_tests_properties(minimal_host plain_c_host PROPERTIES FIXTURES_REQUIRED registered TIMEOUT 60)
# One registry for all.
set_tests_properties(module_test module_is_registered module_is_unregistered minimal_host plain_c_host PROPERTIES
    RESOURCE_LOCK registry)
