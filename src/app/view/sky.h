#pragma once

#include "app/view/shader_program.h"

#include <memory>

namespace tessara {

class Camera;
struct Atmosphere;

/// The sky behind a terrain.
class Sky {
public:
    /// \param gl outlives this object \param withShaders smooths the steps of an 8-bit picture's gradient
    Sky(const GlFunctions& gl, bool withShaders);

    /// Fills the frame with the sky that the camera looks into. Leaves the matrices changed.
    void Draw(const Atmosphere& atmosphere, const Camera& camera) const;

private:
    const GlFunctions& gl_;
    std::unique_ptr<ShaderProgram> dither_;  // null without shaders
};

}  // namespace tessara
