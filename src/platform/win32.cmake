# The room on Windows: the component model, the debug stream, OpenGL's lookup and the windows are the system's.
tessara_room(platform
    com/bstr.cpp
    com/guid_text.cpp
    com/module_class_win32.cpp
    com/module_file_win32.cpp
    com/module_registration_win32.cpp
    com/own_resource_win32.cpp
    com/registry/registry_data.cpp
    com/registry/registry_script.cpp
    com/registry/registry_tree_win32.cpp
    system/message_box.cpp
    system/number_text.cpp
    system/text_file_win32.cpp
    system/wide_text_win32.cpp
    ui/null/null_window_system.cpp
    ui/window_system.cpp
    gl/current_context_win32.cpp
    ui/win32/gl_viewport.cpp
    ui/win32/picture_bitmap.cpp
    ui/win32/win32_dialog_controls.cpp
    ui/win32/win32_dialog_events.cpp
    ui/win32/win32_dialog_window.cpp
    ui/win32/win32_window_system.cpp
)
target_link_libraries(tessara-platform PUBLIC OpenGL::GL
    comctl32 comdlg32 shell32 oleaut32 ole32 uuid advapi32 msimg32 gdi32 user32 kernel32)

# Dialogs and controls under the application framework's names, on whatever window system the process has.
tessara_room(ui ${tessara_ui_classes})
target_link_libraries(tessara-ui PUBLIC tessara-platform)

# OpenGL beyond what the system library exports, and frames in memory.
tessara_room(gl
    gl/gl_functions.cpp
    gl/render_target.cpp
)
target_link_libraries(tessara-gl PUBLIC tessara-platform OpenGL::GL)

# Contexts without a window to be seen.
tessara_room(offscreen
    gl/offscreen_context_win32.cpp
)
target_link_libraries(tessara-offscreen PUBLIC tessara-gl PRIVATE user32 gdi32)

tessara_public_headers(tessara-headers
    com/bstr.h
    com/com.h
    com/com_object.h
    com/com_ptr.h
    com/guard.h
    com/module_class.h
    com/types.h
    com/types_win32.h
    com/unknown.h
    gl/gl.h
    ui/device_context.h
    ui/window_types.h
    ui/window_types_win32.h
)
