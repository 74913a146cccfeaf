#include "platform/ui/wx_user.h"

#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

namespace tessara::test {

namespace {

int KeyOf(WPARAM key)
{
    switch (key) {
    case VK_RETURN:
        return WXK_RETURN;
    case VK_TAB:
        return WXK_TAB;
    case VK_ESCAPE:
        return WXK_ESCAPE;
    default:
        return static_cast<int>(key);
    }
}

}  // namespace

wxWindow* WxUser::Find(int control)
{
    wxWindow* window = wxWindow::FindWindowById(control, &dialog_);
    EXPECT_NE(window, nullptr) << "the dialog has no control " << control;
    return window;
}

void WxUser::MoveTo(const wxWindow& window, double shareX, double shareY)
{
    const wxRect rect = window.GetScreenRect();
    wxUIActionSimulator().MouseMove(rect.x + static_cast<int>(rect.width * shareX),
                                    rect.y + static_cast<int>(rect.height * shareY));
    Rest();
}

void WxUser::Click(int control)
{
    wxWindow* window = Find(control);
    if (!window)
        return;
    MoveTo(*window, 0.3, 0.5);
    wxUIActionSimulator().MouseClick();
    Rest();
}

void WxUser::Type(int control, const std::string& text)
{
    auto* edit = static_cast<wxTextCtrl*>(Find(control));
    if (!edit)
        return;
    Click(control);
    wxUIActionSimulator hands;
    hands.Char('A', wxMOD_CONTROL);
    Rest();
    hands.Text(text.c_str());
    Rest();
    EXPECT_EQ(edit->GetValue().utf8_string(), text);
}

void WxUser::MoveToRow(wxListBox& list, int row)
{
    GtkTreePath* path = gtk_tree_path_new_from_indices(row, -1);
    GdkRectangle area{};
    gtk_tree_view_get_cell_area(list.m_treeview, path, gtk_tree_view_get_column(list.m_treeview, 0), &area);
    gtk_tree_path_free(path);
    int x = 0;
    int y = 0;
    gtk_tree_view_convert_bin_window_to_widget_coords(list.m_treeview, area.x + 8, area.y + area.height / 2, &x, &y);
    const wxPoint place = list.ClientToScreen(wxPoint(x, y));
    wxUIActionSimulator().MouseMove(place.x, place.y);
    Rest();
}

void WxUser::Pick(int control, int row)
{
    wxWindow* window = Find(control);
    if (auto* list = dynamic_cast<wxListBox*>(window)) {
        MoveToRow(*list, row);
        wxUIActionSimulator().MouseClick();
    } else if (auto* choice = dynamic_cast<wxChoice*>(window)) {
        Click(control);
        WaitForPopup(*choice, true);
        wxUIActionSimulator hands;
        for (int i = 0; i < static_cast<int>(choice->GetCount()); ++i)
            hands.Char(WXK_UP);
        hands.Char(WXK_HOME);
        for (int i = 0; i < row; ++i)
            hands.Char(WXK_DOWN);
        hands.Char(WXK_RETURN);
        WaitForPopup(*choice, false);
    }
    Rest();
}

/// Waits until a drop list is open, or closed.
void WxUser::WaitForPopup(const wxChoice& choice, bool open)
{
    gboolean shown = open ? FALSE : TRUE;
    for (int tries = 0; tries < 200 && (shown != FALSE) != open; ++tries) {
        Wait(25);
        g_object_get(choice.GetHandle(), "popup-shown", &shown, nullptr);
    }
    EXPECT_EQ(shown != FALSE, open);
    Rest();
}

void WxUser::PickRange(int control, int first, int last)
{
    auto* list = static_cast<wxListBox*>(Find(control));
    Pick(control, first);
    MoveToRow(*list, last);
    wxUIActionSimulator hands;
    hands.KeyDown(WXK_SHIFT);
    hands.MouseClick();
    hands.KeyUp(WXK_SHIFT);
    Rest();
}

void WxUser::Press(WPARAM key)
{
    wxUIActionSimulator().Char(KeyOf(key));
    Rest();
}

void WxUser::ClickArrow(int spin, double height)
{
    MoveTo(*Find(spin), 0.5, height);
    wxUIActionSimulator().MouseClick();
    Rest();
}

/// Input comes back from the display server a little later than it was sent.
void WxUser::Rest()
{
    Wait(40);
}

void WxUser::Wait(int milliseconds)
{
    const wxLongLong end = wxGetLocalTimeMillis() + milliseconds;
    do {
        wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_ALL);
        wxMilliSleep(2);
    } while (wxGetLocalTimeMillis() < end);
}

WhenModal::WhenModal(std::function<void(wxDialog&)> act, bool leave) : act_(std::move(act)), leave_(leave)
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
    timer_.Start(20);
}

void WhenModal::Look()
{
    if (busy_)
        return;
    for (wxWindow* window : wxTopLevelWindows) {
        auto* dialog = dynamic_cast<wxDialog*>(window);
        if (!dialog || !dialog->IsModal() || !dialog->IsShownOnScreen())
            continue;
        busy_ = true;
        timer_.Stop();
        WxUser(*dialog).Wait(150);
        act_(*dialog);
        if (leave_ && wxTopLevelWindows.Find(window) && dialog->IsModal()) {
            // Without a window manager the keyboard goes to the window below the mouse.
            WxUser(*dialog).MoveTo(*dialog, 0.01, 0.01);
            wxUIActionSimulator().Char(WXK_ESCAPE);
        }
        return;
    }
}

WhenAsked::WhenAsked(int key) : key_(key)
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
    timer_.Start(50);
}

void WhenAsked::Look()
{
    GtkWidget* shown = nullptr;
    GList* const windows = gtk_window_list_toplevels();
    for (GList* window = windows; window; window = window->next) {
        if (GTK_IS_MESSAGE_DIALOG(window->data) && gtk_widget_get_mapped(GTK_WIDGET(window->data)))
            shown = GTK_WIDGET(window->data);
    }
    g_list_free(windows);
    if (!shown || ++seen_ < 4)
        return;
    timer_.Stop();
    // Without a window manager the keyboard goes to the window below the mouse.
    int x = 0;
    int y = 0;
    gdk_window_get_origin(gtk_widget_get_window(shown), &x, &y);
    GdkDevice* const mouse = gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default()));
    gdk_device_warp(mouse, gdk_screen_get_default(), x + 5, y + 5);
    wxUIActionSimulator().Char(key_, key_ >= 'a' && key_ <= 'z' ? wxMOD_ALT : wxMOD_NONE);
}

}  // namespace tessara::test
