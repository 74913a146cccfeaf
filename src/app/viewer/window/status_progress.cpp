#include "app/viewer/window/status_progress.h"

#include "platform/com/bstr.h"
#include "platform/com/guard.h"

#include <wx/gauge.h>
#include <wx/msgdlg.h>
#include <wx/statusbr.h>

#include <algorithm>

namespace tessara {

namespace {

/// Drawing the bar takes longer than a step of most tasks.
constexpr LONG kShownSteps = 20;

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
    if (!window_ || !status_)
        return S_OK;
    status_->SetStatusText(wxString::FromUTF8(title_), field_);
    gauge_->SetRange(kShownSteps);
    gauge_->SetValue(0);
    gauge_->Show();
    status_->Update();
    return S_OK;
}

HRESULT StatusProgress::StepProgress(LONG steps)
{
    const auto shown = [&] { return range_ > 0 ? std::min<std::int64_t>(std::int64_t{done_} * kShownSteps / range_, kShownSteps) : 0; };
    const auto before = shown();
    done_ += steps;
    if (window_ && gauge_ && shown() != before) {
        gauge_->SetValue(static_cast<int>(shown()));
        gauge_->Update();
    }
    return S_OK;
}

HRESULT StatusProgress::EndProgress(LONG)
{
    if (window_ && status_) {
        gauge_->Hide();
        status_->SetStatusText(wxEmptyString, field_);
    }
    return S_OK;
}

HRESULT StatusProgress::ShowMessage(BSTR message)
{
    return Guard([&] {
        if (window_)
            wxMessageBox(wxString::FromUTF8(NarrowText(message)), "Tessara", wxOK | wxICON_WARNING, window_);
        return S_OK;
    });
}

HRESULT StatusProgress::RequestRedraw(LONG, LONG)
{
    if (window_)
        redraw_();
    return S_OK;
}

HRESULT StatusProgress::SetViewState(LONG, LONG)
{
    return S_OK;
}

}  // namespace tessara
