#include "platform/ui/wx/wx_window_system.h"

#include "platform/gl/current_context.h"
#include "platform/ui/wx/wx_dialog_window.h"

#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>

#include <algorithm>

namespace tessara {

namespace {

wxString Wide(const std::string& text)
{
    return wxString::FromUTF8(text.data(), text.size());
}

/// The toolkit's own window for a native one, or null for a window that it didn't make.
wxWindow* FindWindow(NativeWindow native)
{
    if (!native)
        return wxTheApp->GetTopWindow();
    for (wxWindow* window : wxTopLevelWindows) {
        if (window->GetHandle() == native)
            return window;
    }
    return nullptr;
}

/// Keeps a dialog above a window that the toolkit didn't make.
void KeepAbove(const wxWindow& dialog, NativeWindow native)
{
    if (!native || FindWindow(native))
        return;
    GtkWidget* top = gtk_widget_get_toplevel(GTK_WIDGET(native));
    if (GTK_IS_WINDOW(top))
        gtk_window_set_transient_for(GTK_WINDOW(dialog.GetHandle()), GTK_WINDOW(top));
}

/// Takes what was closed off the screen in a program that has no event loop of the toolkit's running.
void Flush()
{
    wxTheApp->ProcessPendingEvents();
    gdk_display_flush(gdk_display_get_default());
}

wxString Wildcard(const FileQuestion& question)
{
    wxString wildcard;
    for (const FileQuestion::Filter& filter : question.filters) {
        if (!wildcard.empty())
            wildcard += '|';
        wildcard += Wide(filter.name) + '|' + Wide(ToolkitPatterns(filter.patterns));
    }
    return wildcard;
}

}  // namespace

std::string ToolkitPatterns(const std::string& patterns)
{
    std::string result;
    for (std::size_t start = 0; start <= patterns.size();) {
        const std::size_t end = std::min(patterns.find(';', start), patterns.size());
        const std::string pattern = patterns.substr(start, end - start);
        if (!result.empty())
            result += ';';
        if (pattern == "*.*")
            result += '*';
        else {
            for (const char c : pattern) {
                const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
                if (letter)
                    (((result += '[') += static_cast<char>(c | 0x20)) += static_cast<char>(c & ~0x20)) += ']';
                else
                    result += c;
            }
        }
        start = end + 1;
    }
    return result;
}

int WxWindowSystem::RunDialog(const DialogTemplate& form, DialogEvents& events, NativeWindow parent)
{
    int result = IDCANCEL;
    {
        WxDialogWindow window(form, events, FindWindow(parent));
        KeepAbove(window.Window(), parent);
        result = window.Run();
    }
    Flush();
    return result;
}

int WxWindowSystem::ShowMessage(const std::string& text, const std::string& caption, UINT buttons, NativeWindow parent)
{
    const ContextKeeper keeper;
    const bool question = buttons == MB_YESNO;
    wxMessageDialog dialog(FindWindow(parent), Wide(text), Wide(caption.empty() ? "Tessara" : caption),
                           question ? wxYES_NO | wxICON_QUESTION : wxOK | wxICON_INFORMATION);
    const int answer = dialog.ShowModal();
    Flush();
    return !question ? IDOK : answer == wxID_YES ? IDYES : IDNO;
}

std::optional<std::string> WxWindowSystem::AskForFile(const FileQuestion& question, NativeWindow parent)
{
    const ContextKeeper keeper;
    const long style = question.open ? wxFD_OPEN | wxFD_FILE_MUST_EXIST
                                     : wxFD_SAVE | (question.confirmOverwrite ? wxFD_OVERWRITE_PROMPT : 0);
    std::optional<std::string> path;
    {
        wxFileDialog dialog(FindWindow(parent), question.open ? "Open" : "Save As", folder_, Wide(question.name),
                            Wildcard(question), style);
        KeepAbove(dialog, parent);
        if (dialog.ShowModal() == wxID_OK) {
            wxFileName file(dialog.GetPath());
            if (!question.open && !file.HasExt() && !question.extension.empty() && question.extension != "*.*")
                file.SetExt(Wide(question.extension));
            folder_ = file.GetPath();
            path = file.GetFullPath().utf8_string();
        }
    }
    Flush();
    return path;
}

void WxWindowSystem::BeginWaitCursor()
{
    wxBeginBusyCursor();
}

void WxWindowSystem::EndWaitCursor()
{
    if (wxIsBusy())
        wxEndBusyCursor();
}

bool WxWindowSystem::OpenAddress(const std::string& address)
{
    return wxLaunchDefaultBrowser(Wide(address));
}

}  // namespace tessara
