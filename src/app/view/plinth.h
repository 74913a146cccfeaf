#pragma once

#include "host/vector3.h"

#include <vector>

namespace tessara {

class Camera;
class GroundFrame;
struct Atmosphere;
struct ElevationData;

/// The walls and the floor under a terrain, down to a level base, that make it look like a solid model.
class Plinth {
public:
    /// \param base its height in true space
    Plinth(const ElevationData& data, const GroundFrame& ground, const Atmosphere& atmosphere, double base);

    /// Draws the faces as the camera, whose matrices are loaded, sees them: those that are turned to it from outside,
    /// and the others from inside. The insides show where terrain in little detail leaves a gap above a wall; they end
    /// below the terrain's far edge, so that they don't stand out above it.
    void Draw(const Camera& camera) const;

private:
    struct Vertex {
        float position[3];  // in draw space
        float color[3];
    };
    struct Face {
        Vector3 outward;             // direction that it faces
        Vector3 point;               // on it, in true space
        std::vector<Vertex> strip;   // of triangles
        std::vector<Vertex> inside;  // the same, lower and of one colour
    };

    std::vector<Face> faces_;
};

}  // namespace tessara
