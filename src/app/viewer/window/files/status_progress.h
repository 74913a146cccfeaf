#pragma once

#include "platform/com/com_object.h"
#include "services/progress_window.h"

#include <chrono>
#include <functional>
#include <string>

class wxWindow;

namespace tessara {

class LoadBar;

/// The host's progress and messages in the viewer's window: its bar and message boxes. Work that is done at once shows
/// no bar.
class StatusProgress final : public ComObject<IProgressWindow> {
public:
    /// \param bar shows the progress \param redraw draws the picture again at once
    StatusProgress(wxWindow& window, LoadBar& bar, std::function<void()> redraw)
        : window_(&window), bar_(bar), redraw_(std::move(redraw))
    {
    }

    /// The window is about to go; from now on nothing is shown.
    void Detach() noexcept { window_ = nullptr; }

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
    using Clock = std::chrono::steady_clock;

    wxWindow* window_;  // null once it has gone
    LoadBar& bar_;
    std::function<void()> redraw_;
    LONG range_ = 0;
    LONG done_ = 0;
    bool shown_ = false;
    Clock::time_point begin_;
    Clock::time_point lastStep_;
    std::string title_;
};

}  // namespace tessara
