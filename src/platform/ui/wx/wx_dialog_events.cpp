#include "platform/ui/wx/compact_style.h"
#include "platform/ui/wx/dialog_controls.h"
#include "platform/ui/wx/gl_surface.h"
#include "platform/ui/wx/spin_arrows.h"
#include "platform/ui/wx/tool_tip_window.h"
#include "platform/ui/wx/wx_dialog_window.h"

#include <gtk/gtk.h>
#include <wx/dcclient.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

constexpr int kClosedListHeight = 13;  // dialog units
constexpr int kSpinWidth = 10;

long StyleOf(const DialogTemplate& form)
{
    return wxCAPTION | wxFRAME_TOOL_WINDOW | (form.systemMenu ? wxSYSTEM_MENU | wxCLOSE_BOX : 0);
}

}  // namespace

WxDialogWindow::WxDialogWindow(const DialogTemplate& form, DialogEvents& events, wxWindow* parent)
    : form_(form),
      events_(events),
      dialog_(parent, wxID_ANY, wxString::FromUTF8(form.title), wxDefaultPosition, wxDefaultSize, StyleOf(form))
{
    wxFont font = dialog_.GetFont();
    font.SetPointSize(form.fontPoints);
    dialog_.SetFont(font);
    Build();
    dialog_.CentreOnParent();
}

WxDialogWindow::~WxDialogWindow() = default;

int WxDialogWindow::Run()
{
    const ContextKeeper keeper;
    hostContext_ = keeper.Kept();
    Realize();
    alive_ = true;
    wxEvtHandler::AddFilter(this);
    const gulong keys = g_signal_connect(dialog_.GetHandle(), "event", G_CALLBACK(&KeyPressed), this);
    bool focusFirst = true;
    WithHostContext([&] { focusFirst = events_.Created(*this); });
    if (!ended_) {
        if (focusFirst)
            FocusNext(false);
        dialog_.ShowModal();
    }
    ended_ = true;
    toolTips_.reset();
    WithHostContext([&] { events_.Dispatch(WM_DESTROY, 0, 0); });
    alive_ = false;
    g_signal_handler_disconnect(dialog_.GetHandle(), keys);
    wxEvtHandler::RemoveFilter(this);
    dialog_.DeletePendingEvents();
    return result_;
}

/// Gives the surfaces their windows, so that the dialog can draw textures into them before anything is shown.
void WxDialogWindow::Realize()
{
    gtk_widget_realize(GTK_WIDGET(dialog_.GetHandle()));
    for (const auto& [id, control] : controls_) {
        if (control.surface)
            gtk_widget_realize(GTK_WIDGET(control.surface->Window().GetHandle()));
    }
}

void WxDialogWindow::Build()
{
    dialog_.SetClientSize(dialog_.ConvertDialogToPixels(wxSize(form_.width, form_.height)));
    // What lies under others comes first.
    for (const bool backdrop : {true, false}) {
        for (const ControlTemplate& control : form_.controls) {
            if (IsBackdrop(control.kind) == backdrop)
                Add(control);
        }
    }
    dialog_.Bind(wxEVT_CHAR_HOOK, &WxDialogWindow::OnKey, this);
    dialog_.Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Notify(IDCANCEL, BN_CLICKED); });
    const bool hasSurface = std::any_of(controls_.begin(), controls_.end(),
                                        [](const auto& entry) { return entry.second.surface != nullptr; });
    if (hasSurface)
        return;
    dialog_.Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
        event.Skip();
        const wxPaintDC validated(&dialog_);
        Dispatch(WM_PAINT, 0, 0);
    });
}

wxRect WxDialogWindow::PlaceOf(const ControlTemplate& form) const
{
    const short height = form.kind == ControlKind::DropList ? kClosedListHeight : form.height;
    const wxPoint corner = dialog_.ConvertDialogToPixels(wxPoint(form.x, form.y));
    const wxPoint end = dialog_.ConvertDialogToPixels(wxPoint(form.x + form.width, form.y + height));
    return wxRect(corner, wxSize(wxMax(1, end.x - corner.x), wxMax(1, end.y - corner.y)));
}

void WxDialogWindow::Add(const ControlTemplate& form)
{
    Control control;
    control.form = &form;
    if (form.kind == ControlKind::Viewport)
        control.window = AddViewport(form, control);
    else if (form.kind == ControlKind::Spin)
        control.window = AddSpin(form);
    else
        control.window = MakeControl(&dialog_, form, PlaceOf(form));
    if (!control.window)
        return;
    if (!IsBackdrop(form.kind) && form.kind != ControlKind::Viewport) {
        MakeCompact(*control.window);
        wxRect place = PlaceOf(form);
        // Dialog units are rounded, and a label in large letters may need a little more than its own.
        if (form.kind == ControlKind::Label)
            place.width = wxMax(place.width, control.window->GetBestSize().x);
        if (form.kind != ControlKind::Spin)
            control.window->SetSize(place);
    }
    Listen(form, *control.window);
    if (form.id != 0)
        controls_[form.id] = std::move(control);
}

wxWindow* WxDialogWindow::AddViewport(const ControlTemplate& form, Control& control)
{
    const wxRect place = PlaceOf(form);
    auto* frame = new wxPanel(&dialog_, wxID_ANY, place.GetPosition(), place.GetSize(), wxBORDER_NONE);
    frame->SetBackgroundColour(*wxWHITE);
    const wxRect inside(1, 1, wxMax(1, place.width - 2), wxMax(1, place.height - 2));
    control.surface = GlSurface::Make(frame, inside, [this] { Dispatch(WM_PAINT, 0, 0); });
    wxWindow* const window = control.surface ? &control.surface->Window() : frame;
    window->SetId(form.id);
    return window;
}

/// The arrows stand inside the right edge of their field.
wxWindow* WxDialogWindow::AddSpin(const ControlTemplate& form)
{
    const auto buddy = std::find_if(form_.controls.begin(), form_.controls.end(),
                                    [&](const ControlTemplate& other) { return other.id == form.buddy; });
    if (buddy == form_.controls.end())
        return nullptr;
    wxRect place = PlaceOf(*buddy);
    const int width = dialog_.ConvertDialogToPixels(wxSize(kSpinWidth, 1)).x;
    if (const Control* edit = Find(form.buddy))
        edit->window->SetSize(wxRect(place.x, place.y, place.width - width, place.height));
    place.x = place.GetRight() + 1 - width;
    place.width = width;
    const int id = form.id;
    return new SpinArrows(&dialog_, id, place, [this, id](int steps) { Step(id, steps); });
}

void WxDialogWindow::Listen(const ControlTemplate& form, wxWindow& window)
{
    const int id = form.id;
    const auto tell = [this, id](UINT notification) {
        return [this, id, notification](wxEvent&) { Notify(id, notification); };
    };
    switch (form.kind) {
    case ControlKind::Button:
    case ControlKind::DefaultButton:
        window.Bind(wxEVT_BUTTON, tell(BN_CLICKED));
        break;
    case ControlKind::CheckBox:
        window.Bind(wxEVT_CHECKBOX, tell(BN_CLICKED));
        break;
    case ControlKind::DropList:
        window.Bind(wxEVT_CHOICE, tell(CBN_SELCHANGE));
        break;
    case ControlKind::ListBox:
        window.Bind(wxEVT_LISTBOX, tell(LBN_SELCHANGE));
        break;
    case ControlKind::Edit:
        window.Bind(wxEVT_KILL_FOCUS, [this, id](wxFocusEvent& event) {
            event.Skip();
            if (!ended_)
                Notify(id, EN_KILLFOCUS);
        });
        break;
    default:
        break;
    }
}

/// Handlers draw and load textures in the context of the terrain: it is current whatever the desktop did in between.
template <class Body>
void WxDialogWindow::WithHostContext(Body&& body)
{
    hostContext_.Restore();
    body();
}

void WxDialogWindow::Dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (alive_ && !ended_)
        WithHostContext([&] { events_.Dispatch(message, wParam, lParam); });
}

void WxDialogWindow::Notify(int control, UINT notification)
{
    if (toolTips_)
        toolTips_->DialogUsed();
    Dispatch(WM_COMMAND, MakeCommand(control, notification), 0);
}

void WxDialogWindow::Step(int spin, int steps)
{
    if (alive_ && !ended_)
        WithHostContext([&] { events_.Step(spin, steps); });
}

int WxDialogWindow::FilterEvent(wxEvent& event)
{
    const bool pressed = event.GetEventType() == wxEVT_LEFT_DOWN || event.GetEventType() == wxEVT_LEFT_DCLICK;
    if ((event.GetEventType() != wxEVT_MOTION && !pressed) || !alive_ || ended_)
        return Event_Skip;
    auto* window = dynamic_cast<wxWindow*>(event.GetEventObject());
    if (!window || wxGetTopLevelParent(window) != &dialog_)
        return Event_Skip;
    if (pressed) {
        if (toolTips_)
            toolTips_->DialogUsed();
        return Event_Skip;
    }
    InputMessage message{WM_MOUSEMOVE, 0, 0, IdOf(window)};
    bool taken = false;
    WithHostContext([&] { taken = events_.Translate(message); });
    return taken ? Event_Processed : Event_Skip;
}

void WxDialogWindow::OnKey(wxKeyEvent& event)
{
    const int key = event.GetKeyCode() == WXK_NUMPAD_ENTER ? static_cast<int>(VK_RETURN) : event.GetKeyCode();
    if (alive_ && !ended_ && !TakeKey(key, event.ShiftDown()))
        event.Skip();
}

bool WxDialogWindow::TakeKey(int key, bool shift)
{
    if (toolTips_)
        toolTips_->Hide();
    InputMessage message{WM_KEYDOWN, static_cast<WPARAM>(key), 0, GetFocus()};
    bool taken = false;
    WithHostContext([&] { taken = events_.Translate(message); });
    return taken || HandleKey(key, shift);
}

/// A list box would keep the Return key to itself and make letters keys of its own, so its keys are looked at before
/// the toolkit has them.
int WxDialogWindow::KeyPressed(void*, void* event, WxDialogWindow* self)
{
    const auto& key = *static_cast<const GdkEventKey*>(event);
    if (key.type != GDK_KEY_PRESS)
        return FALSE;
    const int focused = self->GetFocus();
    const Control* const list = self->Find(focused, ControlKind::ListBox);
    if (!list || !self->alive_ || self->ended_ || (key.state & (GDK_CONTROL_MASK | GDK_MOD1_MASK)) != 0)
        return FALSE;
    if (key.keyval == GDK_KEY_Return || key.keyval == GDK_KEY_KP_Enter)
        return self->TakeKey(static_cast<int>(VK_RETURN), false) ? TRUE : FALSE;
    const gunichar letter = gdk_keyval_to_unicode(key.keyval);
    if (!g_unichar_isgraph(letter))
        return FALSE;
    if (GoToListRow(*list->window, static_cast<wxChar>(letter)))
        self->Notify(focused, LBN_SELCHANGE);
    return TRUE;
}

bool WxDialogWindow::HandleKey(int key, bool shift)
{
    switch (key) {
    case static_cast<int>(VK_TAB):
        FocusNext(shift);
        return true;
    case static_cast<int>(VK_RETURN):
        PressDefault();
        return true;
    case static_cast<int>(VK_ESCAPE):
        Notify(IDCANCEL, BN_CLICKED);
        return true;
    case WXK_UP:
    case WXK_DOWN:
        return StepBuddy(GetFocus(), key == WXK_UP ? 1 : -1);
    default:
        return false;
    }
}

/// The arrow keys step a field that has spin arrows.
bool WxDialogWindow::StepBuddy(int edit, int steps)
{
    for (const ControlTemplate& control : form_.controls) {
        if (control.kind == ControlKind::Spin && control.buddy == edit && edit != 0) {
            Step(control.id, steps);
            return true;
        }
    }
    return false;
}

void WxDialogWindow::FocusNext(bool previous)
{
    const auto controls = form_.controls;
    const std::size_t count = controls.size();
    const int focused = GetFocus();
    std::size_t place = previous ? 0 : count - 1;
    for (std::size_t i = 0; i < count; ++i) {
        if (focused != 0 && controls[i].id == focused)
            place = i;
    }
    for (std::size_t tried = 0; tried < count; ++tried) {
        place = (place + (previous ? count - 1 : 1)) % count;
        if (controls[place].tabStop && IsEnabled(controls[place].id)) {
            SetFocus(controls[place].id);
            return;
        }
    }
}

void WxDialogWindow::PressDefault()
{
    const int focused = GetFocus();
    if (Find(focused, ControlKind::Button)) {
        Notify(focused, BN_CLICKED);
        return;
    }
    for (const ControlTemplate& control : form_.controls) {
        if (control.kind == ControlKind::DefaultButton && IsEnabled(control.id))
            Notify(control.id, BN_CLICKED);
    }
}

}  // namespace tessara
