#include "app/viewer/window_user.h"

#include "app/viewer/start_toolkit.h"
#include "app/viewer/window/panes/map_pane.h"
#include "app/viewer/window/panes/picture_pane.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/menu.h>
#include <wx/statusbr.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tessara::test {

namespace {

constexpr int kPatience = 30000;  // milliseconds
constexpr int kRaster = 8;

}  // namespace

OwnFolders::OwnFolders()
{
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME"})
        setenv(name, scratch.Path(name).c_str(), 1);
    // Timers need it.
    EXPECT_TRUE(StartToolkit()) << "no display answers";
}

WindowUser::WindowUser(const std::string& file, int width, int height)
{
    EXPECT_TRUE(StartToolkit()) << "no display answers";
    loop_ = std::make_unique<wxGUIEventLoop>();
    active_ = std::make_unique<wxEventLoopActivator>(loop_.get());
    KeptSettings kept;
    kept.window = {.x = 0, .y = 0, .width = width, .height = height, .sideWidth = 260, .mapHeight = 190};
    window_ = new MainWindow({file, {}, {}, 0.0}, kept);
    wxTheApp->SetTopWindow(window_);
    window_->Show();
    EXPECT_TRUE(WaitFor([this] { return window_->GetViewer() != nullptr; }));
    Focus();
    EXPECT_TRUE(WaitForPicture());
}

WindowUser::~WindowUser()
{
    if (IsOpen())
        window_->Destroy();
    wxTheApp->SetTopWindow(nullptr);
    Wait(50);
    wxTheApp->ProcessIdle();
    Wait(50);
}

bool WindowUser::IsOpen() const
{
    return wxTopLevelWindows.Find(window_) && !window_->IsBeingDeleted();
}

/// Without a window manager nobody else gives the window the keyboard.
void WindowUser::Focus() const
{
    gdk_window_focus(gtk_widget_get_window(window_->GetHandle()), GDK_CURRENT_TIME);
    Wait(60);
    window_->Picture().SetFocus();
    Wait(60);
}

void WindowUser::Wait(int milliseconds) const
{
    const wxLongLong end = wxGetLocalTimeMillis() + milliseconds;
    do {
        loop_->YieldFor(wxEVT_CATEGORY_ALL);
        wxTheApp->ProcessIdle();
        wxMilliSleep(3);
    } while (wxGetLocalTimeMillis() < end);
}

bool WindowUser::WaitFor(const std::function<bool()>& done) const
{
    for (int waited = 0; waited < kPatience; waited += 20) {
        if (done())
            return true;
        Wait(20);
    }
    return false;
}

bool WindowUser::WaitForPicture() const
{
    const bool settled =
        WaitFor([this] { return !window_->IsLoading() && Viewer().HasTerrain() && !Viewer().Picture().WantsFrame(); });
    // The frame with smooth edges comes a little later.
    Wait(450);
    for (int i = 0; i < 20; ++i) {
        const auto look = Look(window_->Picture());
        Wait(250);
        if (Look(window_->Picture()) == look)
            break;
    }
    return settled;
}

bool WindowUser::Open(const std::string& file) const
{
    window_->Load(file);
    return WaitForPicture();
}

void WindowUser::Move(const wxWindow& pane, double x, double y) const
{
    const wxRect rect = pane.GetScreenRect();
    wxUIActionSimulator().MouseMove(rect.x + static_cast<int>(rect.width * x),
                                    rect.y + static_cast<int>(rect.height * y));
    Wait(40);
}

void WindowUser::Click(const wxWindow& pane, double x, double y) const
{
    Move(pane, x, y);
    wxUIActionSimulator().MouseClick();
    Wait(60);
}

void WindowUser::Drag(const wxWindow& pane, std::array<double, 2> from, std::array<double, 2> to, int button) const
{
    constexpr int kSteps = 6;
    Move(pane, from[0], from[1]);
    wxUIActionSimulator().MouseDown(button);
    Wait(40);
    for (int i = 1; i <= kSteps; ++i)
        Move(pane, from[0] + (to[0] - from[0]) * i / kSteps, from[1] + (to[1] - from[1]) * i / kSteps);
    wxUIActionSimulator().MouseUp(button);
    WaitForPicture();
}

void WindowUser::Wheel(double x, double y, int steps) const
{
    PicturePane& picture = window_->Picture();
    Move(picture, x, y);
    for (int i = 0; i < std::abs(steps); ++i) {
        wxMouseEvent turned(wxEVT_MOUSEWHEEL);
        turned.m_wheelRotation = steps > 0 ? 120 : -120;
        turned.m_wheelDelta = 120;
        const wxSize size = picture.GetClientSize();
        turned.SetPosition(wxPoint(static_cast<int>(size.x * x), static_cast<int>(size.y * y)));
        picture.GetEventHandler()->ProcessEvent(turned);
    }
    WaitForPicture();
}

void WindowUser::Key(int key, int modifiers) const
{
    wxUIActionSimulator().Char(key, modifiers);
    Wait(80);
}

std::vector<std::uint8_t> WindowUser::Pixels(const wxWindow& pane) const
{
    const wxRect rect = pane.GetScreenRect();
    GdkPixbuf* const shot =
        gdk_pixbuf_get_from_window(gdk_get_default_root_window(), rect.x, rect.y, rect.width, rect.height);
    const guchar* const pixels = gdk_pixbuf_get_pixels(shot);
    const int channels = gdk_pixbuf_get_n_channels(shot);
    std::vector<std::uint8_t> copy;
    for (int y = 0; y < rect.height; ++y) {
        for (int x = 0; x < rect.width; ++x) {
            const guchar* const pixel = pixels + y * gdk_pixbuf_get_rowstride(shot) + x * channels;
            copy.insert(copy.end(), pixel, pixel + 3);
        }
    }
    g_object_unref(shot);
    return copy;
}

std::vector<int> WindowUser::Look(const wxWindow& pane) const
{
    const std::vector<std::uint8_t> pixels = Pixels(pane);
    const wxSize size = pane.GetScreenRect().GetSize();
    std::vector<int> means(kRaster * kRaster * 3);
    std::vector<int> counts(kRaster * kRaster);
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const auto field = static_cast<std::size_t>(y * kRaster / size.y * kRaster + x * kRaster / size.x);
            ++counts[field];
            for (std::size_t c = 0; c < 3; ++c)
                means[field * 3 + c] += pixels[static_cast<std::size_t>(y * size.x + x) * 3 + c];
        }
    }
    for (std::size_t i = 0; i < means.size(); ++i)
        means[i] /= std::max(counts[i / 3], 1);
    return means;
}

int Difference(const std::vector<int>& a, const std::vector<int>& b)
{
    int sum = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        sum += std::abs(a[i] - b[i]);
    return sum;
}

std::string WindowUser::Status() const
{
    std::string all;
    for (int i = 0; i < window_->GetStatusBar()->GetFieldsCount(); ++i)
        all += window_->GetStatusBar()->GetStatusText(i).utf8_string() + "|";
    return all;
}

Answers::Answers()
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
    timer_.Start(50);
}

Answers& Answers::Message(int response)
{
    answers_.push_back({false, response, {}});
    return *this;
}

Answers& Answers::File(const std::string& path)
{
    answers_.push_back({false, GTK_RESPONSE_ACCEPT, path});
    return *this;
}

Answers& Answers::Escape()
{
    answers_.push_back({true, 0, {}});
    return *this;
}

void Answers::Press()
{
    for (wxWindow* window : wxTopLevelWindows) {
        auto* dialog = dynamic_cast<wxDialog*>(window);
        if (!dialog || !dialog->IsModal() || !dialog->IsShownOnScreen())
            continue;
        if (++seen_ < 8)
            return;
        seen_ = 0;
        messages_.push_back(dialog->GetTitle().utf8_string());
        answers_.erase(answers_.begin());
        gdk_window_focus(gtk_widget_get_window(dialog->GetHandle()), GDK_CURRENT_TIME);
        wxUIActionSimulator().Char(WXK_ESCAPE);
        return;
    }
}

void Answers::Look()
{
    if (!answers_.empty() && answers_.front().escape) {
        Press();
        return;
    }
    GtkWidget* shown = nullptr;
    GList* const windows = gtk_window_list_toplevels();
    for (GList* window = windows; window; window = window->next) {
        const bool asks = GTK_IS_MESSAGE_DIALOG(window->data) || GTK_IS_FILE_CHOOSER_DIALOG(window->data);
        if (asks && gtk_widget_get_mapped(GTK_WIDGET(window->data)))
            shown = GTK_WIDGET(window->data);
    }
    g_list_free(windows);
    if (!shown || answers_.empty()) {
        seen_ = 0;
        return;
    }
    ++seen_;
    const Answer answer = answers_.front();
    if (seen_ == 6 && !answer.path.empty()) {
        auto* chooser = GTK_FILE_CHOOSER(shown);
        const std::filesystem::path path(answer.path);
        if (gtk_file_chooser_get_action(chooser) == GTK_FILE_CHOOSER_ACTION_SAVE) {
            gtk_file_chooser_set_current_folder(chooser, path.parent_path().c_str());
            gtk_file_chooser_set_current_name(chooser, path.filename().c_str());
        } else
            gtk_file_chooser_select_filename(chooser, path.c_str());
    }
    if (seen_ < (answer.path.empty() ? 4 : 16))
        return;
    seen_ = 0;
    answers_.erase(answers_.begin());
    if (answer.path.empty()) {
        gchar* text = nullptr;
        g_object_get(shown, "text", &text, nullptr);
        messages_.emplace_back(text ? text : "");
        g_free(text);
    }
    gtk_dialog_response(GTK_DIALOG(shown), answer.response);
}

}  // namespace tessara::test
