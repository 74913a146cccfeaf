#include "host/console_progress.h"

#include "platform/com/bstr.h"
#include "platform/com/guard.h"
#include "platform/system/terminal_text.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace tessara {

namespace {

constexpr int kBarWidth = 30;

bool StandardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

}  // namespace

ConsoleProgress::ConsoleProgress() : ConsoleProgress(std::cerr, StandardErrorIsTerminal()) {}

ConsoleProgress::ConsoleProgress(std::ostream& output, bool showBars) : output_(output), showBars_(showBars) {}

ConsoleProgress::~ConsoleProgress()
{
    Guard([this] {
        Clear();
        return S_OK;
    });
}

HRESULT ConsoleProgress::StepProgress(LONG steps)
{
    return Guard([&] {
        done_ = std::clamp(steps, -done_, range_ - done_) + done_;
        DrawSteps();
        return S_OK;
    });
}

HRESULT ConsoleProgress::SetProgressRange(LONG count)
{
    range_ = std::max(count, 0);
    done_ = 0;
    return S_OK;
}

HRESULT ConsoleProgress::BeginProgress(LONG)
{
    return Guard([&] {
        running_ = true;
        done_ = 0;
        DrawSteps();
        return S_OK;
    });
}

HRESULT ConsoleProgress::EndProgress(LONG)
{
    return Guard([&] {
        running_ = false;
        Clear();
        return S_OK;
    });
}

HRESULT ConsoleProgress::SetProgressTitle(BSTR title)
{
    return Guard([&] {
        title_ = NarrowText(title);
        return S_OK;
    });
}

HRESULT ConsoleProgress::ShowMessage(BSTR message)
{
    return Guard([&] {
        Say(NarrowText(message));
        return S_OK;
    });
}

HRESULT ConsoleProgress::RequestRedraw(LONG, LONG)
{
    return S_OK;
}

HRESULT ConsoleProgress::SetViewState(LONG, LONG)
{
    return S_OK;
}

void ConsoleProgress::Show(std::string_view title, double fraction)
{
    if (!showBars_)
        return;
    const double part = std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
    const auto filled = static_cast<std::size_t>(part * kBarWidth);
    std::string line(title);
    line += " [" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] ";
    line += std::to_string(static_cast<int>(part * 100.0)) + " %";
    if (line == shown_)
        return;
    const std::size_t rest = shown_.size() > line.size() ? shown_.size() - line.size() : 0;
    output_ << '\r' << line << std::string(rest, ' ') << std::flush;
    shown_ = std::move(line);
}

void ConsoleProgress::Clear()
{
    if (shown_.empty())
        return;
    output_ << '\r' << std::string(shown_.size(), ' ') << '\r' << std::flush;
    shown_.clear();
}

void ConsoleProgress::Say(std::string_view message)
{
    Clear();
    output_ << TerminalText(message) << '\n' << std::flush;
}

void ConsoleProgress::DrawSteps()
{
    if (running_)
        Show(title_, range_ > 0 ? static_cast<double>(done_) / range_ : 0.0);
}

}  // namespace tessara
