#pragma once

#include "app/view/height_colors.h"
#include "app/view/texture.h"
#include "app/viewer/picture/map_view.h"

#include <chrono>
#include <memory>

namespace tessara {

class TerrainDocument;
class TextPainter;

/// The terrain as a map, north up, with the camera on it. Belongs to the OpenGL context that is current while it draws.
class MapPicture {
public:
    /// \param gl,document,camera,colors outlive this object
    MapPicture(const GlFunctions& gl, const TerrainDocument& document, CameraController& camera,
               const HeightColors& colors)
        : gl_(gl), document_(document), camera_(camera), colors_(colors)
    {
    }

    /// \param sea over the ground, or null; outlives this object, or is replaced before it goes
    void SetSea(const Sea* sea) { sea_ = sea; }

    /// Heights or their colours have changed.
    void MakeStale();

    /// Milliseconds after which the map is to be drawn again because it is stale: one that takes long to renew waits
    /// until nothing has changed for a while. \return 0 where it shows heights and colours as they are
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

    const GlFunctions& gl_;
    const TerrainDocument& document_;
    CameraController& camera_;
    const HeightColors& colors_;
    const Sea* sea_ = nullptr;
    std::unique_ptr<Texture> heights_;
    bool stale_ = true;
    Clock::time_point changed_{};  // when it became stale for the last time
    Clock::duration cost_{};       // of renewing it; the first one is wanted at once
};

}  // namespace tessara
