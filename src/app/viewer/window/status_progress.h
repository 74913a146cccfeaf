#pragma once

#include "platform/com/com_object.h"
#include "services/progress_window.h"

#include <functional>
#include <string>

class wxGauge;
class wxStatusBar;
class wxWindow;

namespace tessara {

/// The host's progress and messages in the viewer's window: a bar beside the status texts, and message boxes.
class StatusProgress final : public ComObject<IProgressWindow> {
public:
    /// \param redraw draws the picture again at once
    StatusProgress(wxWindow& window, std::function<void()> redraw) : window_(&window), redraw_(std::move(redraw)) {}

    /// The window is about to go; from now on nothing is shown.
    void Detach() noexcept { window_ = nullptr; }

    /// Where texts and bars go: the field of the status bar, counted from 0, and the gauge in it.
    void SetBar(wxStatusBar* status, int field, wxGauge* gauge)
    {
        status_ = status;
        field_ = field;
        gauge_ = gauge;
    }

    HRESULT STDMETHODCALLTYPE StepProgress(LONG steps) override;
    HRESULT STDMETHODCALLTYPE SetProgressRange(LONG count) override;
    HRESULT STDMETHODCALLTYPE BeginProgress(LONG show) override;
    HRESULT STDMETHODCALLTYPE EndProgress(LONG hide) override;
    HRESULT STDMETHODCALLTYPE SetProgressTitle(BSTR title) override;
    HRESULT STDMETHODCALLTYPE ShowMessage(BSTR message) override;
    HRESULT STDMETHODCALLTYPE RequestRedraw(LONG what, LONG reserved) override;
    HRESULT STDMETHODCALLTYPE SetViewState(LONG state, LONG mode) override;

protected:
    ~StatusProgress() override = default;

private:
    wxWindow* window_;  // null once it has gone
    std::function<void()> redraw_;
    wxStatusBar* status_ = nullptr;
    wxGauge* gauge_ = nullptr;
    int field_ = 0;
    LONG range_ = 0;
    LONG done_ = 0;
    std::string title_;
};

}  // namespace tessara
