#pragma once

#include <string>

namespace tessara {

class Pointer;
class TerrainDocument;

/// What is under the mouse, in words, at the moment of asking. Empty where there is no ground.
class Readout {
public:
    /// \param document,pointer outlive this object
    Readout(const TerrainDocument& document, const Pointer& pointer) : document_(document), pointer_(pointer) {}

    /// The place, in the coordinates of the terrain's file and in metres.
    std::string Place() const;

    /// Height and slope.
    std::string Height() const;

private:
    const TerrainDocument& document_;
    const Pointer& pointer_;
};

}  // namespace tessara
