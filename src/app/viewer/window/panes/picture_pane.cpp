#include "app/viewer/window/panes/picture_pane.h"

#include "app/viewer/viewer.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessara {

namespace {

constexpr int kStrokeTick = 25;  // milliseconds
constexpr int kRest = 250;
constexpr auto kMeasureEvery = std::chrono::milliseconds(700);
constexpr auto kQuickMeasure = std::chrono::milliseconds(3);

constexpr double kStep = 0.08;  // of the distance to what is looked at, for a press of an arrow key
constexpr double kRise = 0.06;

/// Share of the last frame in the pace that is shown.
constexpr double kNewest = 0.2;

}  // namespace

PicturePane::PicturePane(wxWindow* parent, Listener listener)
    : GlPane(parent), listener_(std::move(listener)), fly_(*this, [this] { listener_.state(); })
{
    SetMinSize(FromDIP(wxSize(200, 150)));
    BindMouse();
    stroke_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { ContinueStroke(); });
    rest_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        if (smooth_)
            smooth_->Governor().Rest();
        fine_ = true;
        DrawNow();
        fine_ = false;
    });
}

void PicturePane::BindMouse()
{
    for (const auto& pressed : {wxEVT_LEFT_DOWN, wxEVT_MIDDLE_DOWN, wxEVT_RIGHT_DOWN})
        Bind(pressed, [this](wxMouseEvent& event) { OnPress(event); });
    for (const auto& released : {wxEVT_LEFT_UP, wxEVT_MIDDLE_UP, wxEVT_RIGHT_UP})
        Bind(released, [this](wxMouseEvent&) { OnRelease(); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { OnMotion(event); });
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) { OnWheel(event); });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
        event.Skip();
        if (!IsReady() || dragging_)
            return;
        viewer_->Pointer().Leave();
        listener_.hovered();
    });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent& event) {
        OnRelease();
        event.Skip();
    });
}

void PicturePane::Show(Viewer* viewer, TextPainter* text, SmoothFrame* smooth)
{
    fly_.Stop();
    stroke_.Stop();
    rest_.Stop();
    smooth_ = smooth;
    viewer_ = viewer;
    text_ = text;
    RequestDraw();
}

void PicturePane::RequestDraw()
{
    wanted_ = Part::Ground;
    GlPane::RequestDraw();
}

void PicturePane::RequestBrush()
{
    wanted_ = std::max(wanted_, Part::Brush);
    GlPane::RequestDraw();
}

bool PicturePane::HasBrush() const
{
    return viewer_ && viewer_->Pointer().HasBrush();
}

bool PicturePane::IsReady() const
{
    return viewer_ && viewer_->HasTerrain();
}

void PicturePane::SetFlying(bool flying)
{
    if (!flying)
        fly_.Stop();
    else if (IsReady()) {
        OnRelease();
        fly_.Start(viewer_->Camera());
    }
}

void PicturePane::SetBrush(bool atHand)
{
    if (!viewer_ || HasBrush() == atHand)
        return;
    OnRelease();
    SetCursor(atHand ? wxCursor(wxCURSOR_CROSS) : wxNullCursor);
    viewer_->Pointer().TakeBrush(atHand);
    listener_.state();
}

bool PicturePane::Steer(int key)
{
    struct Step {
        int key;
        double right, forward, up;
    };
    constexpr Step kSteps[] = {{WXK_LEFT, -kStep, 0.0, 0.0},  {WXK_RIGHT, kStep, 0.0, 0.0},
                               {WXK_UP, 0.0, kStep, 0.0},     {WXK_DOWN, 0.0, -kStep, 0.0},
                               {WXK_PAGEUP, 0.0, 0.0, kRise}, {WXK_PAGEDOWN, 0.0, 0.0, -kRise}};
    const auto* const step = std::ranges::find(kSteps, key, &Step::key);
    if (!IsReady() || step == std::end(kSteps))
        return false;
    viewer_->Camera().Step(step->right, step->forward, step->up);
    return true;
}

void PicturePane::OnPress(const wxMouseEvent& event)
{
    SetFocus();
    if (!IsReady() || fly_.IsOn() || dragging_ || !MakeCurrent())
        return;
    const PicturePoint point = PixelAt(event.GetPosition());
    if (event.LeftDown() && HasBrush() && !event.ControlDown() && !event.ShiftDown()) {
        viewer_->Pointer().BeginStroke(point);
        lastStroke_ = Clock::now();
        stroke_.Start(kStrokeTick);
    } else if (event.LeftDown() && !event.ShiftDown())
        viewer_->Pointer().BeginOrbit(point);
    else
        viewer_->Pointer().BeginPan(point);
    dragging_ = true;
    CaptureMouse();
}

void PicturePane::OnMotion(wxMouseEvent& event)
{
    event.Skip();
    if (!IsReady() || fly_.IsOn())
        return;
    const PicturePoint point = PixelAt(event.GetPosition());
    if (dragging_)
        viewer_->Pointer().Drag(point);
    else
        viewer_->Pointer().Hover(point);
    listener_.hovered();
}

void PicturePane::OnRelease()
{
    if (!std::exchange(dragging_, false))
        return;
    stroke_.Stop();
    if (HasCapture())
        ReleaseMouse();
    if (IsReady() && MakeCurrent())
        viewer_->Pointer().EndDrag();
}

void PicturePane::OnWheel(const wxMouseEvent& event)
{
    if (!IsReady() || fly_.IsOn() || event.GetWheelAxis() != wxMOUSE_WHEEL_VERTICAL)
        return;
    const double steps = static_cast<double>(event.GetWheelRotation()) / event.GetWheelDelta();
    viewer_->Pointer().Zoom(PixelAt(event.GetPosition()), steps);
    listener_.hovered();
}

void PicturePane::ContinueStroke()
{
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - std::exchange(lastStroke_, now)).count();
    if (IsReady() && MakeCurrent())
        viewer_->Pointer().ContinueStroke(seconds);
}

void PicturePane::Draw(int width, int height, double factor)
{
    frameStart_ = Clock::now();
    drawn_ = std::exchange(wanted_, Part::None);
    if (!IsReady()) {
        TerrainPicture::Clear(width, height);
        return;
    }
    drawn_ = fine_ ? Part::Ground : drawn_;
    if (drawn_ != Part::Ground && smooth_->ShowKept(width, height)) {
        viewer_->Picture().DrawBrush();
        return;
    }
    drawn_ = Part::Ground;
    if (fine_ || smooth_->IsQuick())
        DrawSmooth(width, height, factor);
    else
        DrawMoving(width, height, factor);
}

void PicturePane::DrawSmooth(int width, int height, double factor)
{
    TerrainPicture& picture = viewer_->Picture();
    if (!smooth_->Begin(width, height)) {
        picture.Draw(width, height, factor, *text_);
        return;
    }
    picture.DrawGround(width, height);
    picture.DrawScales(width, height, factor, *text_);
    smooth_->Keep();
    picture.DrawBrush();
    smooth_->End();
}

/// What is drawn over the terrain is never coarser than the window.
void PicturePane::DrawMoving(int width, int height, double factor)
{
    TerrainPicture& picture = viewer_->Picture();
    if (!smooth_->BeginCoarse(width, height)) {
        picture.Draw(width, height, factor, *text_);
        return;
    }
    picture.DrawGround(width, height);
    smooth_->End();
    picture.DrawScales(width, height, factor, *text_);
    picture.DrawBrush();
}

void PicturePane::Drawn()
{
    if (!IsReady() || fine_)
        return;
    if (drawn_ == Part::Ground) {
        const double seconds = std::chrono::duration<double>(Clock::now() - frameStart_).count();
        frameSeconds_ = frameSeconds_ > 0.0 ? frameSeconds_ + kNewest * (seconds - frameSeconds_) : seconds;
        smooth_->Governor().Saw(seconds);
        MeasureFrame();
        figures_ = viewer_->Picture().Figures();
    }
    listener_.drawn();
    if (viewer_->Picture().WantsFrame())
        RequestDraw();
    else if (!smooth_->IsQuick() && drawn_ != Part::None)
        rest_.StartOnce(kRest);
}

/// What costs extra is measured when the picture has come to rest and, where it is quick, now and then while it moves.
void PicturePane::MeasureFrame()
{
    const bool settled = !viewer_->Picture().WantsFrame();
    const Clock::time_point start = Clock::now();
    const bool isDue = start - lastMeasure_ >= kMeasureEvery && measuring_ <= kQuickMeasure;
    if (!isDue && (!settled || measured_)) {
        measured_ = measured_ && settled;
        return;
    }
    viewer_->Picture().Measure();
    lastMeasure_ = Clock::now();
    measuring_ = lastMeasure_ - start;
    measured_ = settled;
}

double PicturePane::FramesPerSecond() const
{
    return frameSeconds_ > 0.0 ? 1.0 / frameSeconds_ : 0.0;
}

}  // namespace tessara
