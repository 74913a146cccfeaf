// What the dialog looks like, what it leaves behind, and what it does to the windows and contexts around it.

#include "dialog/wx_dialog_fixture.h"
#include "host/test_elevation.h"
#include "host/textures/texture_service.h"

#include <malloc.h>
#include <wx/frame.h>
#include <wx/glcanvas.h>
#include <wx/timer.h>

namespace tessara::test {

namespace {

/// What a control needs to show its text whole.
int NeededWidth(wxWindow& window)
{
    int minimum = 0;
    int natural = 0;
    gtk_widget_get_preferred_width(GTK_WIDGET(window.GetHandle()), &minimum, &natural);
    return natural;
}

TEST_F(WxDialogTest, StandsAsTheTemplateSaysWithoutClippedTextOrOverlap)
{
    Run([](WxUser&, wxDialog& dialog) {
        EXPECT_EQ(dialog.GetTitle(), "Terrain Detail");
        const auto place = [&](const ControlTemplate& form) {
            const wxPoint from = dialog.ConvertDialogToPixels(wxPoint(form.x, form.y));
            const wxPoint to = dialog.ConvertDialogToPixels(wxPoint(form.x + form.width, form.y + form.height));
            return wxRect(from, wxSize(to.x - from.x, to.y - from.y));
        };
        std::vector<std::pair<int, wxRect>> seen;
        for (const ControlTemplate& form : DetailTemplates()[0].controls) {
            wxWindow* const window = form.id == 0 ? nullptr : wxWindow::FindWindowById(form.id, &dialog);
            if (!window || form.kind == ControlKind::Spin)
                continue;
            SCOPED_TRACE(form.id);
            wxRect rect = window->GetScreenRect();
            rect.Offset(-dialog.ClientToScreen(wxPoint(0, 0)));
            // A viewport stands inside its frame.
            const wxPoint frame(form.kind == ControlKind::Viewport, form.kind == ControlKind::Viewport);
            EXPECT_EQ(rect.GetPosition(), place(form).GetPosition() + frame);
            if (form.kind != ControlKind::DropList) {
                EXPECT_LE(rect.height, place(form).height);
                EXPECT_LE(rect.width, place(form).width + (form.kind == ControlKind::Label ? 8 : 0));
            }
            if (form.kind == ControlKind::Button || form.kind == ControlKind::DefaultButton ||
                form.kind == ControlKind::CheckBox || form.kind == ControlKind::Label) {
                EXPECT_LE(NeededWidth(*window), rect.width) << "clipped";
            }
            for (const auto& [other, taken] : seen)
                EXPECT_FALSE(rect.Intersects(taken)) << other;
            seen.emplace_back(form.id, rect);
        }
        EXPECT_GE(seen.size(), 14u);
        EXPECT_TRUE(gtk_widget_has_default(GTK_WIDGET(wxWindow::FindWindowById(IDOK)->GetHandle())));
        auto* const list = GTK_SCROLLED_WINDOW(wxWindow::FindWindowById(kElementList)->GetHandle());
        EXPECT_TRUE(gtk_widget_is_visible(gtk_scrolled_window_get_vscrollbar(list)));
        EXPECT_FALSE(gtk_scrolled_window_get_overlay_scrolling(list));
        for (wxWindow* child : dialog.GetChildren()) {
            const wxSize inside = dialog.GetClientSize();
            EXPECT_TRUE(wxRect(inside).Contains(child->GetRect())) << child->GetLabel();
            if (child->GetId() < 0 && !child->GetLabel().empty()) {
                EXPECT_LE(NeededWidth(*child), child->GetSize().x) << child->GetLabel();
            }
        }
    });
}

TEST(WxDialogInAProgramOfTheToolkit, LeavesTheCanvasAndItsContextAlone)
{
    ASSERT_TRUE(CurrentWindowSystem().CanOpenWindows());
    auto* const frame = new wxFrame(nullptr, wxID_ANY, "Host", wxPoint(800, 600), wxSize(200, 150));
    wxGLAttributes attributes;
    attributes.PlatformDefaults().RGBA().DoubleBuffer().Depth(24).EndList();
    auto* const canvas = new wxGLCanvas(frame, attributes);
    frame->Show();
    wxYield();
    const wxGLContext context(canvas);
    context.SetCurrent(*canvas);
    const CurrentContext hosts = CurrentContext::Take();
    glClearColor(0.0f, 1.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    canvas->SwapBuffers();
    {
        const HostClasses classes = RegisterHostClasses();
        const ScratchFolder folder;
        const ComPtr<ITextureMgr> textures(MakeObject<TextureService>().Get());
        TextureDatabases databases(SystemDatabase(), {folder / "textures.db", true});
        const ComPtr<IKvoHost> host(MakeObject<KvoHost>(textures, nullptr, std::move(databases)).Get());
        const TerrainSession session(MakeElevation(5, 5, 1.0, 1.0, [](int x, int) { return x; }), {}, host);
        const WhenModal user([&](wxDialog& dialog) {
            WxUser hands(dialog);
            hands.Pick(kElementList, 3);
            hands.Click(kApplyButton);
            EXPECT_TRUE(CurrentContext::Take() == hosts);
            EXPECT_NE(MiddleOf(kPreview), (Rgb{235, 235, 235}));
            hands.Click(IDOK);
        });
        EXPECT_EQ(session.Surface().TextureDetailDlg(), S_OK);
        EXPECT_TRUE(CurrentContext::Take() == hosts);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        GLfloat color[4] = {};
        GLint viewport[4] = {};
        glGetFloatv(GL_COLOR_CLEAR_VALUE, color);
        glGetIntegerv(GL_VIEWPORT, viewport);
        EXPECT_EQ(color[1], 1.0f);
        EXPECT_EQ(viewport[2], canvas->GetClientSize().x);
        EXPECT_FALSE(glIsEnabled(GL_BLEND));
    }
    CurrentContext::Clear();
    frame->Destroy();
    wxYield();
}

TEST_F(WxDialogTest, AHundredOpeningsLeaveNothingBehind)
{
    wxTimer closing;
    closing.Bind(wxEVT_TIMER, [](wxTimerEvent&) {
        for (wxWindow* window : wxTopLevelWindows) {
            auto* dialog = dynamic_cast<wxDialog*>(window);
            if (dialog && dialog->IsModal() && dialog->IsShownOnScreen())
                dialog->Close();
        }
    });
    closing.Start(10);
    std::size_t early = 0;
    for (int i = 1; i <= 100; ++i) {
        EXPECT_EQ(terrain.Surface().TextureDetailDlg(), S_FALSE);
        ASSERT_TRUE(terrain.HasContext());
        if (i == 20)
            early = mallinfo2().uordblks;
    }
    EXPECT_TRUE(wxTopLevelWindows.empty());
    // What fonts, themes and drivers keep settles in the first openings. A dialog and its context take megabytes.
    const std::size_t late = mallinfo2().uordblks;
    EXPECT_LT(late, early + 4 * 1024 * 1024);
}

}  // namespace

}  // namespace tessara::test
