#include "support/scripted_window_system.h"

namespace tessara::test {

int ScriptedWindowSystem::RunDialog(const DialogTemplate& form, DialogEvents& events, NativeWindow parent)
{
    log_.push_back(std::string("RunDialog(") + form.title + ")");
    lastParent = parent;
    ScriptedDialog dialog(form, events);
    if (prepare)
        prepare(dialog);
    const bool focusFirst = events.Created(dialog);
    if (!dialog.result && focusFirst)
        dialog.Press(VK_TAB);
    if (!dialog.result)
        dialog.Paint();
    if (!dialog.result && user)
        user(dialog);
    dialog.Press(VK_ESCAPE);
    events.Dispatch(WM_DESTROY, 0, 0);
    log_.push_back("DialogEnded(" + std::to_string(dialog.result.value_or(IDCANCEL)) + ")");
    return dialog.result.value_or(IDCANCEL);
}

int ScriptedWindowSystem::ShowMessage(const std::string& text, const std::string& caption, UINT buttons,
                                      NativeWindow parent)
{
    lastParent = parent;
    int answer = buttons == MB_YESNO ? IDNO : IDOK;
    if (!answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    }
    log_.push_back("ShowMessage(" + caption + ", " + text + ", " + std::to_string(buttons) + ")");
    return answer;
}

std::optional<std::string> ScriptedWindowSystem::AskForFile(const FileQuestion& question, NativeWindow parent)
{
    lastParent = parent;
    lastQuestion = question;
    log_.push_back("AskForFile()");
    if (files.empty())
        return std::nullopt;
    std::optional<std::string> file = files.front();
    files.pop_front();
    return file;
}

void ScriptedWindowSystem::BeginWaitCursor()
{
    ++waiting;
    log_.push_back("BeginWaitCursor()");
}

void ScriptedWindowSystem::EndWaitCursor()
{
    --waiting;
    log_.push_back("EndWaitCursor()");
}

bool ScriptedWindowSystem::OpenAddress(const std::string& address)
{
    log_.push_back("OpenAddress(" + address + ")");
    return true;
}

}  // namespace tessara::test
