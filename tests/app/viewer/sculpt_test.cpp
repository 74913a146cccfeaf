#include "app/viewer/open_viewer.h"
#include "app/viewer/picture/node_survey.h"
#include "app/viewer/terrain/triangle_export.h"
#include "host/elevation/elevation_file.h"
#include "host/terrain_session.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>

namespace tessara {
namespace {

using test::Hills;
using test::OpenViewer;
using test::ScratchFolder;

constexpr PicturePoint kMiddle{OpenViewer::kWidth * 0.5, OpenViewer::kHeight * 0.5};

ViewSettings RealTime(BrushKind kind = BrushKind::Raise)
{
    ViewSettings settings;
    settings.realTime = true;
    settings.brush = {kind, 500.0, 1.0};
    settings.errorPixels = 0.5;
    return settings;
}

/// Draws one frame of the whole terrain. \return how many of its vertices within the grid don't have the grid's height
int WrongVertices(OpenViewer& open, std::size_t least)
{
    TerrainSession& session = open.viewer.Document().Session();
    FrameProbe probe(open.gl, OffscreenContext::Lookup());
    const auto camera = MakeObject<DetailCamera>();
    const auto eye = MakeObject<Camera>();
    eye->SetDrawUnits(session.Ground().DrawUnits());
    eye->SetPosition(open.viewer.Camera().Position());
    session.Follow(*camera, *eye);
    camera->SeeAll();
    const auto vertices = probe.Capture(session.Surface(), *camera, 1);
    EXPECT_GT(vertices.size(), least);
    int wrong = 0;
    for (const DrawnVertex& vertex : vertices) {
        const int x = static_cast<int>(vertex.x) - session.Border();
        const int z = static_cast<int>(vertex.z) - session.Border();
        if (x < 0 || z < 0 || x >= open.Data().width || z >= open.Data().height)
            continue;
        const float metres = open.Data().metres[static_cast<std::size_t>(x + z * open.Data().width)];
        wrong +=
            std::fabs(session.Ground().Normalise(static_cast<double>(metres)) - static_cast<double>(vertex.y)) > 2e-6;
    }
    return wrong;
}

TEST(Sculpting, ReachesTheDrawnTerrainInTheSameFrame)
{
    for (const auto kind : {BrushKind::Raise, BrushKind::Lower, BrushKind::Smooth, BrushKind::Flatten}) {
        OpenViewer open(Hills(129, 100), RealTime(kind));
        open.Settle();
        ASSERT_EQ(WrongVertices(open, 3000), 0);
        const std::vector<float> before = open.Data().metres;
        open.viewer.Pointer().BeginStroke(kMiddle);
        for (int frame = 0; frame < 12; ++frame) {
            open.viewer.Pointer().Drag({kMiddle.x + 6 * frame, kMiddle.y + 3 * frame});
            open.viewer.Pointer().ContinueStroke(0.03);
            ASSERT_EQ(WrongVertices(open, 3000), 0) << static_cast<int>(kind) << " " << frame;
        }
        open.viewer.Pointer().EndDrag();
        EXPECT_TRUE(open.viewer.Picture().WantsFrame());
        EXPECT_NE(open.Data().metres, before);
        EXPECT_TRUE(open.viewer.HasUnsavedWork());
        open.viewer.Sculptor().Undo();
        EXPECT_EQ(open.Data().metres, before);
        EXPECT_EQ(WrongVertices(open, 3000), 0);
        EXPECT_FALSE(open.viewer.HasUnsavedWork());
        open.viewer.Sculptor().Redo();
        EXPECT_TRUE(open.viewer.HasUnsavedWork());
        open.viewer.Sculptor().Redo();
        EXPECT_EQ(WrongVertices(open, 3000), 0);
    }
}

TEST(Sculpting, GroundThatRisesOutOfTheSeaIsLandAtOnce)
{
    OpenViewer open(MakeElevation(129, 129, 30.0, 30.0, [](int x, int) { return x < 100 ? 0 : 5 * (x - 99); }),
                    RealTime());
    open.viewer.Camera().FromTop();
    const auto middle = [&](const std::vector<std::uint8_t>& pixels, std::size_t channel) {
        return int{pixels[3 * (OpenViewer::kHeight / 2 * OpenViewer::kWidth + OpenViewer::kWidth / 2) + channel]};
    };
    const auto sea = open.Pixels();
    EXPECT_GT(middle(sea, 2), middle(sea, 0) + 20);
    open.viewer.Pointer().BeginStroke(kMiddle);
    for (int i = 0; i < 3; ++i)
        open.viewer.Pointer().ContinueStroke(0.1);
    const auto land = open.Pixels();
    EXPECT_LT(middle(land, 2), middle(land, 1));
}

TEST(Sculpting, LeavingTheRealTimeModeKeepsTheGround)
{
    OpenViewer open(Hills(129, 100), RealTime());
    open.Settle();
    open.viewer.Pointer().BeginStroke(kMiddle);
    open.viewer.Pointer().ContinueStroke(0.1);
    open.Set([](ViewSettings& settings) { settings.realTime = false; });
    EXPECT_FALSE(open.viewer.Sculptor().IsStroking());
    EXPECT_TRUE(open.viewer.Sculptor().CanUndo());
    open.Settle();
    EXPECT_EQ(WrongVertices(open, 3000), 0);
    // Heights may change outside of it too.
    open.viewer.Sculptor().Undo();
    EXPECT_EQ(WrongVertices(open, 3000), 0);
    open.viewer.Pointer().BeginStroke(kMiddle);
    EXPECT_FALSE(open.viewer.Sculptor().IsStroking());
}

TEST(Sculpting, OrdersThatComeInTheMiddleOfAStrokeEndIt)
{
    OpenViewer open(Hills(129, 100), RealTime());
    open.Settle();
    const std::vector<float> untouched = open.Data().metres;
    for (const auto& order : std::vector<std::function<void()>>{[&] { open.viewer.Pointer().BeginOrbit(kMiddle); },
                                                                [&] { open.viewer.Pointer().BeginPan(kMiddle); },
                                                                [&] { open.viewer.Pointer().BeginStroke(kMiddle); }}) {
        open.viewer.Pointer().BeginStroke(kMiddle);
        open.viewer.Pointer().ContinueStroke(0.1);
        order();
        open.viewer.Pointer().EndDrag();
    }
    open.viewer.Pointer().BeginStroke(kMiddle);
    open.viewer.Sculptor().Undo();
    while (open.viewer.Sculptor().CanUndo())
        open.viewer.Sculptor().Undo();
    EXPECT_EQ(open.Data().metres, untouched);
    // A new terrain has nothing to undo and no stroke.
    open.viewer.Pointer().BeginStroke(kMiddle);
    open.Open(Hills(40, 40));
    EXPECT_FALSE(open.viewer.Sculptor().IsStroking());
    EXPECT_FALSE(open.viewer.HasUnsavedWork());
    open.viewer.Pointer().ContinueStroke(0.1);
    open.viewer.Pointer().EndDrag();
    open.viewer.Sculptor().Undo();
    EXPECT_FALSE(open.viewer.Sculptor().CanRedo());
}

TEST(Sculpting, LiftsACameraThatTheGroundReaches)
{
    ViewSettings settings = RealTime();
    settings.brush.radius = 3000.0;
    OpenViewer open(MakeElevation(129, 129, 30.0, 30.0, [](int, int) { return 10; }), settings);
    open.viewer.Camera().Place({1900.0, open.viewer.Document().Ground().HeightAt(1900.0, 1900.0) + 20.0, 1900.0}, 0.0,
                               60.0);
    open.Draw();
    open.viewer.Pointer().BeginStroke(kMiddle);
    for (int frame = 0; frame < 20; ++frame) {
        open.viewer.Pointer().ContinueStroke(0.1);
        ASSERT_GT(open.viewer.Camera().HeightAboveGround(), 0.0);
    }
    EXPECT_GT(open.Data().maximum, 500.0f);
    // Dug down, the ground stays over the floor.
    open.Set([](ViewSettings& changed) { changed.brush.kind = BrushKind::Lower; });
    open.viewer.Pointer().EndDrag();
    open.viewer.Camera().FromTop();
    open.Draw();
    open.viewer.Pointer().BeginStroke(kMiddle);
    for (int frame = 0; frame < 200; ++frame)
        open.viewer.Pointer().ContinueStroke(0.1);
    open.viewer.Pointer().EndDrag();
    EXPECT_NEAR(static_cast<double>(open.Data().minimum), open.viewer.Document().Floor(), 1e-3);
}

TEST(Sculpting, SavedHeightsComeBackWithTheirPlaceAndTheirHoles)
{
    const ScratchFolder folder;
    ElevationData data = Hills(70, 50, 25.0);
    data.georeferenced = true;
    data.originX = 431012.5;
    data.originY = 5400987.5;
    data.stepX = 25.0;
    data.stepY = -25.0;
    data.referenceWkt = "LOCAL_CS[\"Somewhere\",UNIT[\"metre\",1]]";
    // Without data: the north-west cell, and the middle, where the brush will work.
    constexpr std::size_t kCentre = 35 + 25 * 70;
    data.holes.assign(data.metres.size(), 0);
    data.holes[0] = data.holes[kCentre] = 1;
    OpenViewer open(data, RealTime());
    open.Settle();
    open.viewer.Pointer().BeginStroke(kMiddle);
    open.viewer.Pointer().ContinueStroke(0.1);
    open.viewer.Pointer().EndDrag();
    EXPECT_TRUE(open.Data().HasData(kCentre));
    TerrainWork& work = open.viewer.Work();
    EXPECT_THROW(work.SaveHeights(folder / "no/such/folder.tif"), std::runtime_error);
    EXPECT_THROW(work.SaveHeights(folder / "heights.doc"), std::runtime_error);
    EXPECT_TRUE(work.IsUnsaved());
    work.SaveHeights(folder / "heights.tif");
    EXPECT_FALSE(work.IsUnsaved());
    ElevationData read = ReadElevationFile(folder / "heights.tif", {}, {});
    EXPECT_EQ(read.holes, open.Data().holes);
    EXPECT_EQ(read.missing, 1u);
    read.metres[0] = data.metres[0];
    EXPECT_EQ(read.metres, open.Data().metres);
    EXPECT_NE(read.metres, data.metres);
    EXPECT_EQ(read.originX, data.originX);
    EXPECT_EQ(read.originY, data.originY);
    EXPECT_EQ(read.stepX, 25.0);
    EXPECT_EQ(read.stepY, -25.0);
    // The file holds what undoing takes away, and what redoing brings back.
    open.viewer.Sculptor().Undo();
    EXPECT_TRUE(work.IsUnsaved());
    EXPECT_EQ(open.Data().holes, data.holes);
    open.viewer.Sculptor().Redo();
    EXPECT_FALSE(work.IsUnsaved());
    EXPECT_EQ(folder.Files().size(), 1u);
}

TEST(Sculpting, ExportsTheTrianglesOfTheChangedGround)
{
    const ScratchFolder folder;
    OpenViewer open(Hills(70, 50), RealTime());
    open.Settle();
    open.viewer.Pointer().BeginStroke(kMiddle);
    for (int i = 0; i < 5; ++i)
        open.viewer.Pointer().ContinueStroke(0.1);
    open.viewer.Pointer().EndDrag();
    const auto camera = MakeObject<Camera>();
    camera->SetViewport(400, 300);
    camera->SetLens(60.0, 1.0, 100000.0);
    camera->SetDirection({0.0, -1.0, 0.0});
    camera->SetPosition({1000.0, 6000.0, 750.0});
    const auto triangles = ExportTriangles(open.viewer.Document(), folder / "hills.obj", *camera, 50000.0);
    EXPECT_GT(triangles, 500u);
    std::ifstream file(folder / "hills.obj");
    double highest = -1e9;
    std::uint64_t faces = 0;
    for (std::string word; file >> word;) {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        if (word == "v" && file >> x >> y >> z)
            highest = std::max({highest, z, y > 1e5 ? 1e9 : 0.0});
        faces += word == "f" ? 1 : 0;
    }
    EXPECT_EQ(faces, triangles);
    EXPECT_NEAR(highest, static_cast<double>(open.Data().maximum), 1.0);
    EXPECT_THROW(ExportTriangles(open.viewer.Document(), folder / "no/such.obj", *camera, 500.0), std::runtime_error);
    EXPECT_EQ(folder.Files().size(), 1u);
}

}  // namespace
}  // namespace tessara
