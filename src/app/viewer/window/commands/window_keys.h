#pragma once

class wxKeyEvent;

namespace tessara {

struct Workbench;

/// What a key means that no menu handles: those without Ctrl are commands where nobody types, some move the camera
/// while the picture has the keyboard, and Esc ends what is going on.
struct KeyMeaning {
    bool done = false;  ///< the key is used up
    int command = 0;    ///< to be run, if any
};

/// Moves the camera, or ends something, where the key asks for that.
KeyMeaning HandleKey(Workbench& bench, const wxKeyEvent& event);

}  // namespace tessara
