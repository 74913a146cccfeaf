# What of the host needs no library but the system's: a static library.
tessara_room(host
    basic_host.cpp
    camera.cpp
    detail_camera.cpp
    element_keys.cpp
    elevation_cell.cpp
    elevation_matrix.cpp
    gl_context.cpp
    ground_search.cpp
    height_pyramid.cpp
    host_classes.cpp
    host_classes_win32.cpp
    memory_place.cpp
    textures/texture_service.cpp
)
target_link_libraries(tessara-host PUBLIC tessara-platform tessara-textures tessara-frustum)

tessara_public_headers(tessara-host
    basic_host.h
    camera.h
    class_factory.h
    detail_camera.h
    elevation_matrix.h
    gl_context.h
    height_pyramid.h
    host_classes.h
    memory_place.h
    textures/texture_service.h
    vector3.h
)
