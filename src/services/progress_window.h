#pragma once

#include "../platform/com/unknown.h"

/// The host's progress and message display. Order of a long task: SetProgressTitle, SetProgressRange, BeginProgress,
/// StepProgress as the work goes on, EndProgress. Results are not looked at.
struct IProgressWindow : IUnknown {
    /// One or more steps of the running task. The component passes 1.
    virtual HRESULT STDMETHODCALLTYPE StepProgress(LONG steps) = 0;

    /// Number of steps of the task that is about to begin.
    virtual HRESULT STDMETHODCALLTYPE SetProgressRange(LONG count) = 0;

    /// Shows the bar. The component passes 1.
    virtual HRESULT STDMETHODCALLTYPE BeginProgress(LONG show) = 0;

    /// Ends the bar. The component passes 1.
    virtual HRESULT STDMETHODCALLTYPE EndProgress(LONG hide) = 0;

    /// Text of the bar, copied during the call.
    virtual HRESULT STDMETHODCALLTYPE SetProgressTitle(BSTR title) = 0;

    /// Shows a message to the user; the text is copied during the call.
    virtual HRESULT STDMETHODCALLTYPE ShowMessage(BSTR message) = 0;

    /// Asks the host to draw its views again. The component passes 8 and 0.
    virtual HRESULT STDMETHODCALLTYPE RequestRedraw(LONG what, LONG reserved) = 0;

    /// Called with 0, 8 before the component's modal dialog and with 1, 2 after it.
    virtual HRESULT STDMETHODCALLTYPE SetViewState(LONG state, LONG mode) = 0;

protected:
    ~IProgressWindow() = default;
};

template <>
inline constexpr GUID InterfaceId<IProgressWindow> = {
    0x3B0C5A51, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
