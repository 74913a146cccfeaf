#include "app/viewer/window/panes/map_pane.h"

#include "app/viewer/viewer.h"

namespace tessara {

MapPane::MapPane(wxWindow* parent) : GlPane(parent)
{
    SetMinSize(FromDIP(wxSize(80, 60)));
    SetCursor(wxCursor(wxCURSOR_CROSS));
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) { Go(event); });
    renewal_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { RequestDraw(); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        if (event.LeftIsDown())
            Go(event);
    });
}

void MapPane::Show(Viewer* viewer, TextPainter* text)
{
    viewer_ = viewer;
    text_ = text;
    RequestDraw();
}

void MapPane::Draw(int width, int height, double factor)
{
    if (!viewer_ || !viewer_->HasTerrain()) {
        MapPicture::Clear(width, height);
        return;
    }
    viewer_->Map().Draw(width, height, factor, *text_);
    if (const int delay = viewer_->Map().Delay())
        renewal_.StartOnce(delay);
}

void MapPane::Go(const wxMouseEvent& event)
{
    if (viewer_ && viewer_->HasTerrain() && MakeCurrent())
        viewer_->Map().GoTo(PixelAt(event.GetPosition()), PixelWidth(), PixelHeight(), Factor());
}

}  // namespace tessara
