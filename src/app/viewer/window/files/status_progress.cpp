#include "app/viewer/window/files/status_progress.h"

#include "app/viewer/window/panes/load_bar.h"
#include "app/viewer/window/window_text.h"
#include "platform/com/bstr.h"
#include "platform/com/guard.h"

#include <wx/msgdlg.h>

#include <utility>

namespace tessara {

namespace {

/// Work that takes less than this passes without a bar.
constexpr auto kPatience = std::chrono::milliseconds(400);

/// Drawing the bar takes longer than a step of most tasks.
constexpr auto kBetweenSteps = std::chrono::milliseconds(60);

}  // namespace

HRESULT StatusProgress::SetProgressTitle(BSTR title)
{
    return Guard([&] {
        title_ = NarrowText(title);
        return S_OK;
    });
}

HRESULT StatusProgress::SetProgressRange(LONG count)
{
    range_ = count;
    return S_OK;
}

HRESULT StatusProgress::BeginProgress(LONG)
{
    done_ = 0;
    shown_ = false;
    begin_ = lastStep_ = Clock::now();
    return S_OK;
}

HRESULT StatusProgress::StepProgress(LONG steps)
{
    return Guard([&] {
        done_ += steps;
        const Clock::time_point now = Clock::now();
        if (!window_ || range_ <= 0 || now - begin_ < kPatience || now - lastStep_ < kBetweenSteps)
            return S_OK;
        lastStep_ = now;
        if (!std::exchange(shown_, true))
            bar_.Begin(title_, nullptr);
        bar_.Step(static_cast<double>(done_) / static_cast<double>(range_));
        bar_.Update();
        return S_OK;
    });
}

HRESULT StatusProgress::EndProgress(LONG)
{
    return Guard([&] {
        if (std::exchange(shown_, false) && window_)
            bar_.End();
        return S_OK;
    });
}

HRESULT StatusProgress::ShowMessage(BSTR message)
{
    return Guard([&] {
        if (window_)
            wxMessageBox(Wide(NarrowText(message)), "Tessara", wxOK | wxICON_WARNING, window_);
        return S_OK;
    });
}

HRESULT StatusProgress::RequestRedraw(LONG, LONG)
{
    return Guard([&] {
        if (window_)
            redraw_();
        return S_OK;
    });
}

/// The window has one state for all that can be done in it.
HRESULT StatusProgress::SetViewState(LONG, LONG)
{
    return S_OK;
}

}  // namespace tessara
