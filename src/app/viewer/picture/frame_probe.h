#pragma once

#include "app/view/triangle_counter.h"
#include "app/viewer/picture/node_survey.h"
#include "platform/gl/gl_functions.h"

#include <cstdint>
#include <memory>
#include <vector>

struct ITessara;

namespace tessara {

class DetailCamera;

/// Looks at the triangles that a terrain draws, through OpenGL. Belongs to the context that was current when it was
/// made.
class FrameProbe {
public:
    /// \param gl outlives this object
    FrameProbe(const GlFunctions& gl, GlLookup lookup);
    FrameProbe(const FrameProbe&) = delete;
    FrameProbe& operator=(const FrameProbe&) = delete;
    ~FrameProbe();

    /// Draws the terrain for a camera without touching the frame. \param expected triangles at most, or so
    /// \return three vertices for each triangle in tree units; none where the context can't deliver them
    std::vector<DrawnVertex> Capture(ITessara& surface, DetailCamera& camera, std::uint32_t expected);

private:
    struct Functions;
    std::uint32_t CaptureInto(std::vector<DrawnVertex>& vertices, ITessara& surface, DetailCamera& camera,
                              std::uint32_t capacity);

    const GlFunctions& gl_;
    TriangleCounter counter_;
    std::unique_ptr<Functions> feedback_;  // null where the context has no transform feedback
    GLuint buffer_ = 0;
    GLuint program_ = 0;
};

}  // namespace tessara
