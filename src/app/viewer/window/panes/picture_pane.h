#pragma once

#include "app/viewer/picture/terrain_view.h"
#include "app/viewer/window/panes/fly_mode.h"
#include "app/viewer/window/panes/gl_pane.h"
#include "app/viewer/window/panes/smooth_frame.h"

#include <chrono>
#include <functional>

namespace tessara {

class TextPainter;
class Viewer;

/// The terrain in space, and the mouse over it.
class PicturePane final : public GlPane {
public:
    struct Listener {
        std::function<void()> hovered;  ///< the mouse points at something else
        std::function<void()> drawn;    ///< a frame is on the screen, its figures are there
        std::function<void()> state;    ///< flying, or the brush, began or ended
    };

    PicturePane(wxWindow* parent, Listener listener);

    /// \param viewer,text,smooth outlive their use; null ends it
    void Show(Viewer* viewer, TextPainter* text, SmoothFrame* smooth);

    /// What is seen of the terrain has changed.
    void RequestDraw() override;

    /// Only the outline of the brush has changed.
    void RequestBrush();

    void SetFlying(bool flying);
    bool IsFlying() const noexcept { return fly_.IsOn(); }

    /// Whether the left mouse button works on the heights.
    void SetBrush(bool atHand);
    bool HasBrush() const;

    /// Moves the camera where a key asks for that. \param key as key events number them \return whether it does
    bool Steer(int key);

    /// Whether somebody is in the middle of something.
    bool IsBusy() const noexcept { return dragging_ || fly_.IsOn(); }

    /// \return null while nothing is shown
    SmoothFrame* Graphics() const noexcept { return smooth_; }

    /// Frames that a second would hold at the pace of the last ones; 0 before the first one.
    double FramesPerSecond() const;

    /// Of the last frame, leaving out those that only smooth the edges of a picture at rest.
    const FrameFigures& Figures() const noexcept { return figures_; }

protected:
    void Draw(int width, int height, double factor) override;
    void Drawn() override;

private:
    using Clock = std::chrono::steady_clock;

    /// What has to be drawn anew, with all before it.
    enum class Part { None, Brush, Ground };

    bool IsReady() const;
    void BindMouse();
    void OnPress(const wxMouseEvent& event);
    void OnMotion(wxMouseEvent& event);
    void OnRelease();
    void OnWheel(const wxMouseEvent& event);
    void ContinueStroke();
    void DrawSmooth(int width, int height, double factor);
    void DrawMoving(int width, int height, double factor);
    void MeasureFrame();

    Listener listener_;
    Viewer* viewer_ = nullptr;
    TextPainter* text_ = nullptr;
    SmoothFrame* smooth_ = nullptr;
    FlyMode fly_;
    wxTimer stroke_;
    wxTimer rest_;  // runs from the last frame on
    Clock::time_point lastStroke_;
    Clock::time_point frameStart_;
    Clock::time_point lastMeasure_;
    Clock::duration measuring_{};  // what the last measurement took
    FrameFigures figures_;
    double frameSeconds_ = 0.0;  // smoothed
    bool dragging_ = false;
    bool measured_ = false;
    bool fine_ = false;  // the next frame gets smooth edges though that takes long
    Part wanted_ = Part::Ground;
    Part drawn_ = Part::None;  // in the last frame
};

}  // namespace tessara
