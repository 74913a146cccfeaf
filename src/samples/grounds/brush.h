#pragma once

#include "samples/grounds/field.h"

namespace tessara::detail {

/// Draws over a field, smoothly at the edges and on across its borders. Places and sizes are in pixels.

/// A blade that narrows from its root to its tip and bends sideways. \param bend how far the tip is moved across
/// \param rootValue,tipValue the colour along it
void DrawBlade(Field& field, float x, float y, float angle, float length, float width, float bend, float rootValue,
               float tipValue);

/// A round spot. \param middle,rim values at its centre and its edge
void DrawSpot(Field& field, float x, float y, float radius, float middle, float rim);

/// A leaf with a rib along its middle. \param height the value of its surface, to which half a rib is added
void DrawLeaf(Field& field, float x, float y, float angle, float length, float width, float value, float rib);

}  // namespace tessara::detail
