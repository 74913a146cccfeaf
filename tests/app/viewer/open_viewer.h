#pragma once

#include "app/viewer/picture/text_painter.h"
#include "app/viewer/viewer.h"
#include "host/camera.h"
#include "host/kvo_host.h"
#include "host/test_elevation.h"
#include "host/textures/texture_service.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"

#include <atomic>
#include <cmath>
#include <cstdlib>

namespace tessara::test {

/// Takes up room and writes nothing.
class BlankText final : public TextPainter {
public:
    int WidthOf(const std::string& text) override { return 7 * static_cast<int>(text.size()); }
    int LineHeight() override { return 14; }
    void Write(int, int, const std::string&) override {}
};

/// Hills over ground that falls to the south.
inline ElevationData Hills(int width, int height, double spacing = 30.0)
{
    return MakeElevation(width, height, spacing, spacing, [=](int x, int y) {
        const double u = 12.0 * x / width;
        const double v = 12.0 * y / height;
        return 400.0 + spacing * width * 0.03 * (std::sin(u) * std::cos(0.7 * v) + 0.3 * std::sin(3.1 * u + v)) -
               0.5 * y;
    });
}

/// A viewer of a terrain, which draws into a frame without a window.
class OpenViewer {
public:
    static constexpr int kWidth = 320;
    static constexpr int kHeight = 200;

    explicit OpenViewer(ElevationData data, const ViewSettings& settings = {})
        : viewer(
              ComPtr<IKvoHost>(host.Get()), OffscreenContext::Lookup(), settings,
              [this](const ViewerChange& change) { pictures += change.picture ? 1 : 0; }, [this] { ++lights; })
    {
        gl.Load(OffscreenContext::Lookup());
        frame = std::make_unique<RenderTarget>(gl, kWidth, kHeight, false);
        frame->Bind();
        Open(std::move(data));
    }

    void Open(ElevationData data)
    {
        viewer.Open(PrepareTerrain({}, std::move(data), viewer.Settings(), {kWidth, kHeight}));
    }

    /// Changes settings. \param change gets them
    template <class Change>
    void Set(const Change& change)
    {
        ViewSettings settings = viewer.Settings();
        change(settings);
        viewer.Apply(settings);
    }

    void Draw()
    {
        frame->Bind();
        viewer.Picture().Draw(kWidth, kHeight, 1.0, text);
    }

    /// Draws until the picture is final. \return frames that it took
    int Settle()
    {
        int frames = 0;
        do
            Draw();
        while (++frames < 100 && viewer.Picture().WantsFrame());
        return frames;
    }

    /// The picture, three bytes a pixel, the top row first.
    std::vector<std::uint8_t> Pixels()
    {
        Settle();
        return frame->ReadPixels();
    }

    const ElevationData& Data() { return viewer.Document().Data(); }

    /// One context for all viewers: a renderer in software starts threads for each.
    struct SharedContext {
        SharedContext()
        {
            static OffscreenContext context;
            context.MakeCurrent();
        }
    } context;
    GlFunctions gl;
    ComPtr<KvoHost> host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()), nullptr);
    std::atomic<int> lights{0};
    int pictures = 0;
    BlankText text;
    Viewer viewer;
    std::unique_ptr<RenderTarget> frame;
};

/// Share of the pixels that differ visibly.
inline double Differing(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b)
{
    std::size_t count = a.size() == b.size() ? 0 : a.size();
    for (std::size_t i = 0; i + 2 < a.size() && i + 2 < b.size(); i += 3) {
        int sum = 0;
        for (std::size_t k = i; k < i + 3; ++k)
            sum += std::abs(a[k] - b[k]);
        count += sum > 24 ? 1 : 0;
    }
    return 3.0 * static_cast<double>(count) / static_cast<double>(a.size());
}

/// Mean of a channel, 0 to 255. \param first,end rows
inline double Mean(const std::vector<std::uint8_t>& pixels, std::size_t channel, std::size_t first, std::size_t end)
{
    double sum = 0.0;
    std::size_t count = 0;
    for (std::size_t i = first * 3 * OpenViewer::kWidth + channel; i < end * 3 * OpenViewer::kWidth; i += 3, ++count)
        sum += pixels[i];
    return sum / static_cast<double>(count);
}

}  // namespace tessara::test
