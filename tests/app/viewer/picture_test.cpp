#include "app/picture.h"
#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "app/viewer/open_viewer.h"
#include "host/terrain_session.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <thread>

namespace tessara {
namespace {

using test::Differing;
using test::Hills;
using test::Mean;
using test::OpenViewer;

constexpr PicturePoint kMiddle{OpenViewer::kWidth * 0.5, OpenViewer::kHeight * 0.5};

TEST(ViewerPicture, EachSettingShows)
{
    OpenViewer open(Hills(200, 160));
    const auto normal = open.Pixels();
    // Sky above, ground in the middle.
    EXPECT_GT(Mean(normal, 2, 0, 5), Mean(normal, 0, 0, 5) + 20.0);
    EXPECT_GT(Mean(normal, 1, 95, 105), Mean(normal, 2, 95, 105));
    struct Case {
        const char* what;
        void (*change)(ViewSettings&);
        double least;  // share of the pixels that change
        double most;
    };
    for (const Case& each : {Case{"wireframe", [](ViewSettings& s) { s.fill = FillMode::Wireframe; }, 0.5, 1.0},
                             Case{"points", [](ViewSettings& s) { s.fill = FillMode::Points; }, 0.5, 1.0},
                             Case{"no colours", [](ViewSettings& s) { s.vertexColors = false; }, 0.2, 0.9},
                             Case{"another ramp", [](ViewSettings& s) { s.ramp = "desert"; }, 0.2, 0.9},
                             Case{"fog", [](ViewSettings& s) { s.fog = 1.0; }, 0.1, 0.9},
                             Case{"levels", [](ViewSettings& s) { s.levelColors = true; }, 0.2, 0.9},
                             Case{"boxes", [](ViewSettings& s) { s.nodeBoxes = true; }, 0.02, 0.9},
                             Case{"exaggeration", [](ViewSettings& s) { s.exaggeration = 3.0; }, 0.2, 0.9},
                             Case{"coarser", [](ViewSettings& s) { s.errorPixels = 30.0; }, 0.0, 0.2}}) {
        open.Set(each.change);
        open.viewer.Camera().ShowAll();
        const double share = Differing(normal, open.Pixels());
        EXPECT_GE(share, each.least) << each.what;
        EXPECT_LE(share, each.most) << each.what;
        open.Set([](ViewSettings& settings) { settings = {}; });
        open.viewer.Camera().ShowAll();
        EXPECT_LT(Differing(normal, open.Pixels()), 0.01) << "after " << each.what;
    }
}

TEST(ViewerPicture, OverlaysOfTheLevelsEndAtTheEdgeOfTheTerrain)
{
    OpenViewer open(Hills(60, 60));
    open.viewer.Camera().FromTop();
    const auto plain = open.Pixels();
    open.Set([](ViewSettings& settings) { settings.levelColors = true; });
    const auto colored = open.Pixels();
    // Pixels outside of the terrain stay the sky's.
    const auto camera = MakeObject<Camera>();
    const TerrainDocument& document = open.viewer.Document();
    int outside = 0;
    for (int y = 0; y < OpenViewer::kHeight; ++y) {
        for (int x = 0; x < OpenViewer::kWidth; ++x) {
            bool far = true;
            for (const double dx : {-1.5, 2.5}) {
                for (const double dy : {-1.5, 2.5})
                    far = far && !open.viewer.Camera().PointAt({x + dx, y + dy});
            }
            const auto index = static_cast<std::size_t>(3 * (x + y * OpenViewer::kWidth));
            outside += far ? 1 : 0;
            ASSERT_TRUE(!far || std::equal(&plain[index], &plain[index] + 3, &colored[index])) << x << " " << y;
        }
    }
    EXPECT_GT(outside, 5000);
    EXPECT_GT(document.Data().width, 0);
}

/// State of OpenGL that a frame shall leave as it found it.
std::map<GLenum, double> GlState()
{
    std::map<GLenum, double> state;
    for (const GLenum query : {GL_DEPTH_TEST,
                               GL_LIGHTING,
                               GL_TEXTURE_2D,
                               GL_BLEND,
                               GL_CLIP_PLANE0,
                               GL_NORMALIZE,
                               GL_POLYGON_OFFSET_FILL,
                               GL_RASTERIZER_DISCARD,
                               GL_SCISSOR_TEST,
                               GL_CULL_FACE,
                               GL_DEPTH_WRITEMASK,
                               GL_DEPTH_FUNC,
                               GL_MATRIX_MODE,
                               GL_MODELVIEW_STACK_DEPTH,
                               GL_PROJECTION_STACK_DEPTH,
                               GL_ATTRIB_STACK_DEPTH,
                               GL_CLIENT_ATTRIB_STACK_DEPTH,
                               GL_LINE_WIDTH,
                               GL_POINT_SIZE,
                               GL_CURRENT_PROGRAM,
                               GL_ACTIVE_TEXTURE,
                               GL_VERTEX_ARRAY,
                               GL_COLOR_ARRAY,
                               GL_TEXTURE_COORD_ARRAY,
                               GL_FRAMEBUFFER_BINDING,
                               GL_TRANSFORM_FEEDBACK_BUFFER_BINDING,
                               GL_POLYGON_OFFSET_FACTOR,
                               GL_UNPACK_ROW_LENGTH}) {
        GLdouble value[4] = {};
        glGetDoublev(query, value);
        state[query] = value[0];
    }
    GLint modes[2] = {};
    glGetIntegerv(GL_POLYGON_MODE, modes);
    GLboolean mask[4] = {};
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    state[GL_POLYGON_MODE] = modes[0];
    state[GL_COLOR_WRITEMASK] = mask[0] + mask[1] + mask[2] + mask[3];
    return state;
}

TEST(ViewerPicture, LeavesTheStateOfOpenGlAsItWas)
{
    OpenViewer open(Hills(90, 70));
    open.viewer.Pointer().TakeBrush(true);
    open.viewer.Pointer().Hover(kMiddle);
    const auto before = GlState();
    for (const auto fill : {FillMode::Filled, FillMode::Wireframe, FillMode::Points}) {
        open.Set([&](ViewSettings& settings) {
            settings.fill = fill;
            settings.levelColors = settings.nodeBoxes = settings.realTime = true;
        });
        open.Draw();
        EXPECT_EQ(GlState(), before);
        open.viewer.Picture().Measure();
        EXPECT_EQ(GlState(), before);
        open.viewer.Map().Draw(100, 80, 1.0, open.text);
        EXPECT_EQ(GlState(), before);
        open.viewer.Pointer().BeginStroke(kMiddle);
        open.viewer.Pointer().EndDrag();
        EXPECT_EQ(GlState(), before);
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    }
}

TEST(ViewerPicture, SettlesFromEverywhereAndStaysSo)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> any(0.0, 1.0);
    OpenViewer open(Hills(257, 257));
    for (const bool realTime : {false, true}) {
        open.Set([&](ViewSettings& settings) { settings.realTime = realTime; });
        for (int round = 0; round < 12; ++round) {
            open.viewer.Camera().Place(
                {7700.0 * any(random), 5.0 + 3000.0 * any(random) * any(random), 7700.0 * any(random)},
                360.0 * any(random), 60.0 * any(random));
            EXPECT_LT(open.Settle(), 60) << round;
            EXPECT_FALSE(open.viewer.Picture().WantsFrame());
        }
    }
}

TEST(ViewerPicture, FiguresAreThoseOfTheFrame)
{
    const test::ScratchFolder folder;
    OpenViewer open(Hills(257, 200));
    for (const auto fill : {FillMode::Filled, FillMode::Wireframe}) {
        open.Set([&](ViewSettings& settings) { settings.fill = fill; });
        open.Settle();
        open.viewer.Picture().Measure();
        const FrameFigures figures = open.viewer.Picture().Figures();
        TerrainSession& session = open.viewer.Document().Session();
        // The program's own count, by the text that the component writes.
        const auto camera = MakeObject<Camera>();
        const Vector3 units = session.Ground().DrawUnits();
        camera->SetDrawUnits(units);
        const auto size = std::pair{OpenViewer::kWidth, OpenViewer::kHeight};
        camera->SetViewport(size.first, size.second);
        camera->SetLens(open.viewer.Camera().FieldOfView(), 1.0, 1e6);
        CameraController controller(*camera, open.viewer.Document().Ground(), session.Ground());
        controller.Resize(size.first, size.second);
        controller.SetOutline(OutlineOf(open.Data(), SpanOf(open.Data()), session.Ground()));
        controller.ShowAll();
        ASSERT_LT(Length(controller.Position() - open.viewer.Camera().Position()), 1e-6);
        const auto detail = MakeObject<DetailCamera>();
        session.Follow(*detail, *camera);
        session.DumpPolygons(folder / "frame.txt", *detail);
        const std::string text = test::ReadBytes(folder / "frame.txt");
        const auto lines = static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
        EXPECT_NEAR(figures.triangles, lines / 3, 0.001 * lines);
        EXPECT_GT(figures.triangles, 200u);
        EXPECT_GT(figures.activeNodes, figures.triangles / 16);
        EXPECT_LT(figures.activeNodes, 4u * figures.triangles);
        EXPECT_TRUE(figures.settled);
    }
}

TEST(ViewerPicture, FrozenDetailStaysWhileTheCameraMovesOn)
{
    OpenViewer open(Hills(257, 257));
    open.viewer.Camera().Zoom(kMiddle, 8.0);
    open.Settle();
    open.Set([](ViewSettings& settings) { settings.frozen = true; });
    open.Settle();
    const std::uint32_t triangles = open.viewer.Picture().Figures().triangles;
    for (int move = 0; move < 10; ++move) {
        open.viewer.Camera().Step(0.2, 0.3, 0.4);
        open.viewer.Camera().Look(30.0, 5.0);
        open.Draw();
        ASSERT_EQ(open.viewer.Picture().Figures().triangles, triangles) << move;
    }
    open.viewer.Picture().Draw(80, 50, 1.0, open.text);
    EXPECT_EQ(open.viewer.Picture().Figures().triangles, triangles);
    EXPECT_FALSE(open.Settle() > 50);
    open.Set([](ViewSettings& settings) { settings.frozen = false; });
    open.Settle();
    EXPECT_NE(open.viewer.Picture().Figures().triangles, triangles);
    // Another terrain begins thawed.
    open.Set([](ViewSettings& settings) { settings.frozen = true; });
    open.Open(Hills(129, 129));
    EXPECT_FALSE(open.viewer.Settings().frozen);
    open.Settle();
    const std::uint32_t first = open.viewer.Picture().Figures().triangles;
    open.viewer.Camera().Zoom(kMiddle, 12.0);
    open.Settle();
    EXPECT_NE(open.viewer.Picture().Figures().triangles, first);
}

TEST(ViewerPicture, TheLightFollowsSunAndHeights)
{
    OpenViewer open(Hills(60, 60));
    open.Settle();
    const auto orders = [&](const std::function<void()>& change) {
        change();
        while (open.viewer.IsLightBusy())
            std::this_thread::yield();
        const int before = open.pictures;
        open.viewer.TakeLight();
        return open.pictures > before;
    };
    const auto set = [&](void (*change)(ViewSettings&)) { return orders([&] { open.Set(change); }); };
    EXPECT_FALSE(orders([] {}));
    EXPECT_TRUE(set([](ViewSettings& settings) { settings.sunAzimuth = 100.0; }));
    EXPECT_TRUE(set([](ViewSettings& settings) { settings.sunHeight = 12.0; }));
    EXPECT_TRUE(set([](ViewSettings& settings) { settings.exaggeration = 2.0; }));
    EXPECT_FALSE(set([](ViewSettings& settings) {
        settings.fog = 0.9;
        settings.realTime = true;
    }));
    EXPECT_FALSE(orders([&] { open.viewer.Pointer().BeginStroke(kMiddle); })) << "a stroke goes on";
    EXPECT_FALSE(set([](ViewSettings& settings) { settings.sunHeight = 70.0; }));
    EXPECT_TRUE(orders([&] { open.viewer.Pointer().EndDrag(); }));
    EXPECT_TRUE(orders([&] { open.viewer.Sculptor().Undo(); }));
    EXPECT_TRUE(orders([&] { open.viewer.Sculptor().Redo(); }));
    // What was read comes with the light of the sun of then.
    OpenedTerrain read = PrepareTerrain({}, Hills(40, 40), {});
    EXPECT_TRUE(orders([&] { open.viewer.Open(std::move(read)); }));
}

TEST(ViewerPicture, SavesPicturesOfEverySize)
{
    const test::ScratchFolder folder;
    OpenViewer open(Hills(129, 129));
    const auto shown = open.Pixels();
    for (const auto& [width, height] :
         std::array<std::array<int, 2>, 5>{{{333, 77}, {4097, 100}, {1, 1}, {64, 500}, {320, 200}}}) {
        const std::string path = folder / "picture.png";
        open.frame->Bind();
        GLint before = 0;
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &before);
        open.viewer.Picture().Save(path, width, height);
        GLint after = 0;
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &after);
        EXPECT_EQ(after, before);
        const Picture picture = ReadPicture(path);
        ASSERT_EQ(picture.width, width);
        ASSERT_EQ(picture.height, height);
        std::set<int> colors;
        for (std::size_t i = 0; i + 2 < picture.bytes.size(); i += 3)
            colors.insert(picture.bytes[i] << 16 | picture.bytes[i + 1] << 8 | picture.bytes[i + 2]);
        EXPECT_GT(colors.size(), width * height > 1 ? 100u : 0u);
        if (width == OpenViewer::kWidth && height == OpenViewer::kHeight) {
            EXPECT_LT(Differing(shown, picture.bytes), 0.1);  // the window shows scale and compass, and smooths less
        }
    }
    for (const std::string& path : {folder / "no/such.png", folder / ""})
        EXPECT_THROW(open.viewer.Picture().Save(path, 100, 100), std::runtime_error);
    EXPECT_THROW(open.viewer.Picture().Save(folder / "huge.png", 1 << 24, 1 << 24), std::runtime_error);
    EXPECT_EQ(folder.Files().size(), 1u);
    // The window goes on with its own picture, whatever became of the file.
    EXPECT_DOUBLE_EQ(open.viewer.Camera().Aspect(), 1.6);
    EXPECT_LT(Differing(shown, open.Pixels()), 0.01);
}

TEST(ViewerPicture, OpeningManyTerrainsLeavesNothingBehind)
{
    OpenViewer open(Hills(65, 65));
    const auto objects = [&] {
        open.Settle();
        open.viewer.Picture().Measure();
        open.viewer.Map().Draw(64, 64, 1.0, open.text);
        int count = 0;
        for (const char* name : {"glIsTexture", "glIsQuery", "glIsProgram", "glIsShader", "glIsBuffer"}) {
            const auto exists = reinterpret_cast<GLboolean (*)(GLuint)>(OffscreenContext::Lookup()(name));
            for (GLuint object = 1; object < 2000; ++object)
                count += exists(object) ? 1 : 0;
        }
        return count;
    };
    const int before = objects();
    EXPECT_GT(before, 4);
    for (int i = 0; i < 50; ++i) {
        open.Open(Hills(30 + i, 65));
        open.Draw();
        open.viewer.Map().Draw(64, 64, 1.0, open.text);
    }
    EXPECT_EQ(objects(), before);
}

TEST(ViewerMap, ShowsTheHeightsAndGoesWhereItIsClicked)
{
    OpenViewer open(MakeElevation(100, 50, 20.0, 20.0, [](int x, int) { return x < 50 ? 0 : 300; }));
    open.Set([](ViewSettings& settings) { settings.ramp = "grey"; });
    open.frame->Bind();
    open.viewer.Camera().Place({-9000.0, 3000.0, -9000.0}, 315.0, 10.0);  // off the map, with its cone
    open.viewer.Map().Draw(OpenViewer::kWidth, OpenViewer::kHeight, 1.0, open.text);
    const auto map = open.frame->ReadPixels();
    const auto at = [&](int x, int y) { return int{map[static_cast<std::size_t>(3 * (x + y * OpenViewer::kWidth))]}; };
    EXPECT_NEAR(at(100, 100), 70, 8);
    EXPECT_NEAR(at(220, 100), 245, 8);
    for (const auto& [pixel, x, z] :
         {std::tuple{PicturePoint{160.0, 100.0}, 990.0, 490.0}, {PicturePoint{-50.0, 500.0}, 0.0, 980.0}}) {
        open.viewer.Camera().ShowAll();
        open.viewer.Map().GoTo(pixel, OpenViewer::kWidth, OpenViewer::kHeight, 1.0);
        const Vector3 focus = open.viewer.Camera().Focus();
        EXPECT_NEAR(focus.x, x, 30.0);
        EXPECT_NEAR(focus.z, z, 30.0);
    }
}

}  // namespace
}  // namespace tessara
