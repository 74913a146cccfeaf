#pragma once

#include "app/viewer/picture/map_view.h"

#include <chrono>

namespace tessara {

class TerrainDocument;
class TextPainter;

/// The terrain as a map, north up, with the camera on it: the surface's own picture of the heights, which takes long to
/// renew on large terrains.
class MapPicture {
public:
    /// \param document,camera outlive this object
    MapPicture(TerrainDocument& document, CameraController& camera) : document_(document), camera_(camera) {}

    /// Heights or their colours have changed.
    void MakeStale();

    /// Milliseconds after which the map is to be drawn again because it is stale: one that takes long to renew waits
    /// until nobody has changed anything for a while. \return 0 where it shows heights and colours as they are
    int Delay() const;

    /// Draws into a viewport of its own over the whole canvas, after renewing the map where that is due.
    /// \param width,height of the canvas in pixels \param factor pixels for one of the desktop's
    void Draw(int width, int height, double factor, TextPainter& text);

    /// Draws the canvas without a map.
    static void Clear(int width, int height);

    /// Renews the map now.
    void Renew();

    /// Moves the camera to a place of the map. \param point in pixels of a canvas of that size
    void GoTo(const PicturePoint& point, int width, int height, double factor);

private:
    using Clock = std::chrono::steady_clock;

    MapView Layout(int width, int height, double factor) const;
    void DrawHeights(const MapView& map, int width, int height) const;
    void DrawCone(const MapView& map, int width, int height, double factor) const;

    TerrainDocument& document_;
    CameraController& camera_;
    bool stale_ = true;
    Clock::time_point changed_{};  // when it became stale for the last time
    Clock::duration cost_{};       // of renewing it; the first one is wanted at once
};

}  // namespace tessara
