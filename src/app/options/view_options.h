#pragma once

#include "app/view/aim.h"
#include "app/view/look.h"

namespace CLI {
class App;
}

namespace tessara {

class GroundFrame;
struct ElevationData;
struct HeightSpan;

/// From where a terrain is seen, and in how much detail.
struct ViewOptions {
    int width = 1600;
    int height = 900;
    Aim aim;
    int frames = 0;  ///< to draw before the result; 0: until the triangles stay the same
};

/// Adds the options to a command. \param view outlives the command
void AddViewOptions(CLI::App& command, ViewOptions& view);

/// Refuses directions for a camera whose place and target say where it looks. \throws CLI::ValidationError
void RefuseIdleOptions(const Aim& aim);

/// The camera of the options. \param data,span of the terrain
ComPtr<Camera> MakeCamera(const ViewOptions& view, const ElevationData& data, const HeightSpan& span,
                          const GroundFrame& ground);

/// The level of detail asked for, or one that keeps errors of height below so many pixels.
double LevelOfDetailOf(const ViewOptions& view, double pixels = Look().errorPixels);

}  // namespace tessara
