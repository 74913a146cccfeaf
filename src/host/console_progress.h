#pragma once

#include "../platform/com/com_object.h"
#include "../services/progress_window.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace tessara {

/// Progress of long work on a terminal: one line with a title and a bar, wiped when the work is done. Where the output
/// is no terminal there is no bar. Messages are lines of their own in either case.
class ConsoleProgress final : public ComObject<IProgressWindow> {
public:
    /// Writes to the standard error output, with bars if that is a terminal.
    ConsoleProgress();

    /// \param output outlives this object \param showBars the output understands carriage returns
    ConsoleProgress(std::ostream& output, bool showBars);

    HRESULT STDMETHODCALLTYPE StepProgress(LONG steps) override;
    HRESULT STDMETHODCALLTYPE SetProgressRange(LONG count) override;
    HRESULT STDMETHODCALLTYPE BeginProgress(LONG show) override;
    HRESULT STDMETHODCALLTYPE EndProgress(LONG hide) override;
    HRESULT STDMETHODCALLTYPE SetProgressTitle(BSTR title) override;
    HRESULT STDMETHODCALLTYPE ShowMessage(BSTR message) override;

    /// A terminal has no views: these do nothing.
    HRESULT STDMETHODCALLTYPE RequestRedraw(LONG what, LONG reserved) override;
    HRESULT STDMETHODCALLTYPE SetViewState(LONG state, LONG mode) override;

    /// The same for callers in C++: a bar at a fraction from 0.0 to 1.0 of the task of that title.
    void Show(std::string_view title, double fraction);

    /// Wipes the bar.
    void Clear();

    /// Writes a line.
    void Say(std::string_view message);

protected:
    ~ConsoleProgress() override;

private:
    void DrawSteps();

    std::ostream& output_;
    const bool showBars_;
    std::string title_;
    std::string shown_;  // the line that stands on the terminal, empty when there is none
    LONG range_ = 0;
    LONG done_ = 0;
    bool running_ = false;
};

}  // namespace tessara
