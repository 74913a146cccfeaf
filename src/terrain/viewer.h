#pragma once

/// A viewer's position. The level of detail tests compare its y with normalised heights.
struct Viewer {
    float x;
    float y;
    float z;
};
