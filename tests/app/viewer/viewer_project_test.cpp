// An open terrain, its project and its unsaved work, on a context off the screen.

#include "app/viewer/picture/text_painter.h"
#include "app/viewer/viewer.h"
#include "app/viewer/work/work_keeper.h"
#include "host/kvo_host.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "host/project/project_writer.h"
#include "host/test_elevation.h"
#include "host/textures/texture_service.h"
#include "platform/gl/offscreen_context.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <utility>

namespace tessara::test {

namespace {

class NoText final : public TextPainter {
public:
    int WidthOf(const std::string&) override { return 0; }
    int LineHeight() override { return 0; }
    void Write(int, int, const std::string&) override {}
};

class ViewerProject : public testing::Test {
protected:
    static OpenedTerrain Hills()
    {
        return PrepareTerrain(
            "hills.tif",
            MakeElevation(60, 40, 30.0, 25.0, [](int x, int y) { return 200.0 + 80.0 * std::sin(0.2 * x + 0.3 * y); }),
            {});
    }

    static OpenedTerrain Read(const std::string& path, std::optional<std::string> recoveredFor = {})
    {
        TerrainLoader loader({.path = path, .recoveredFor = std::move(recoveredFor)});
        auto terrain = loader.Take();
        EXPECT_TRUE(terrain);
        return std::move(*terrain);
    }

    std::unique_ptr<Viewer> NewViewer()
    {
        const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()), nullptr);
        return std::make_unique<Viewer>(
            ComPtr<IKvoHost>(host.Get()), context_.Lookup(), ViewSettings(), [](const ViewerChange&) {}, [] {});
    }

    /// Raises the ground in the middle of the picture.
    void Dig(Viewer& viewer)
    {
        ViewSettings settings = viewer.Settings();
        settings.realTime = true;
        settings.brush.radius = 200.0;
        viewer.Apply(settings);
        NoText text;
        viewer.Camera().ShowAll();
        viewer.Picture().Draw(320, 200, 1.0, text);
        viewer.Pointer().BeginStroke({160.0, 100.0});
        viewer.Pointer().ContinueStroke(0.1);
        viewer.Pointer().EndDrag();
    }

    OffscreenContext context_;
    ScratchFolder folder_;
    const std::string path_ = folder_ / "hills.tessara";
    std::unique_ptr<Viewer> viewer_ = NewViewer();
};

TEST_F(ViewerProject, SavesAndOpensEverythingButWhatIsTheProgramsOwn)
{
    viewer_->Open(Hills());
    Dig(*viewer_);
    ViewSettings settings = viewer_->Settings();
    settings.exaggeration = 2.5;
    settings.fill = FillMode::Wireframe;
    settings.ramp = "desert";
    settings.sunAzimuth = 100.0;
    settings.sunHeight = 20.0;
    settings.fog = 0.8;
    settings.errorPixels = 3.0;
    settings.vertexColors = false;
    settings.mixColors = true;
    viewer_->Apply(settings);
    viewer_->SetColors(150.0, 250.0);
    viewer_->Camera().Place({400.0, 900.0, 700.0}, 77.0, 41.0);
    EXPECT_TRUE(viewer_->HasUnsavedWork());
    viewer_->Work().SaveProject(path_);
    EXPECT_FALSE(viewer_->HasUnsavedWork());
    EXPECT_EQ(viewer_->Work().ProjectPath(), path_);
    const std::vector<float> heights = viewer_->Document().Data().metres;
    const WorkState work = viewer_->Work().State();

    const auto other = NewViewer();
    other->Open(Read(path_));
    EXPECT_FALSE(other->HasUnsavedWork());
    EXPECT_EQ(other->Work().ProjectPath(), path_);
    EXPECT_EQ(other->Work().Element(), "hills");
    EXPECT_EQ(other->Work().State().look, work.look);
    EXPECT_NEAR(other->Camera().Azimuth(), 77.0, 1e-9);
    EXPECT_NEAR(other->Camera().Tilt(), 41.0, 1e-9);
    EXPECT_NEAR(Length(other->Camera().Position() - Vector3{400.0, 900.0, 700.0}), 0.0, 1e-6);
    ASSERT_EQ(other->Document().Data().metres.size(), heights.size());
    for (std::size_t i = 0; i < heights.size(); ++i)
        ASSERT_NEAR(other->Document().Data().metres[i], heights[i], 1e-3) << i;

    // What is saved again stays the same to the bit.
    const std::vector<float> once = other->Document().Data().metres;
    other->Work().SaveProject(path_);
    viewer_->Open(Read(path_));
    EXPECT_EQ(viewer_->Document().Data().metres, once);
}

TEST_F(ViewerProject, OtherTerrainsAndOtherProgramsValuesStay)
{
    viewer_->Open(Hills());
    viewer_->Work().SaveProject(path_);
    {
        ProjectWriter writer(path_, path_);
        writer.AddElement("second");
        const auto place = writer.Open("hills");
        place->Set("somebody's", 7.0);
        place->Write("FOREIGN", 1, "abc", 3);
        writer.Set("whole", std::string("project"));
        writer.Commit();
    }
    ViewSettings settings = viewer_->Settings();
    settings.fog = 0.9;
    viewer_->Apply(settings);
    EXPECT_TRUE(viewer_->HasUnsavedWork());
    const std::string theirs = test::ReadBytes(path_);
    EXPECT_THROW(viewer_->Work().SaveProject(path_), ProjectChanged);
    EXPECT_EQ(test::ReadBytes(path_), theirs);
    EXPECT_TRUE(viewer_->HasUnsavedWork());
    // Whoever saves all the same puts the changes into the project as it is now.
    viewer_->Work().SaveProject(path_, TerrainWork::IfChanged::Merge);
    EXPECT_FALSE(viewer_->HasUnsavedWork());
    const ProjectFile copy(path_);
    EXPECT_EQ(copy.Elements(), (std::vector<std::string>{"hills", "second"}));
    const auto place = copy.Open("hills");
    EXPECT_EQ(NumberOf(place->Settings(), "somebody's", 0.0), 7.0);
    EXPECT_EQ(NumberOf(place->Settings(), "fog", 0.0), 0.9);
    EXPECT_TRUE(place->Read("FOREIGN"));
    EXPECT_EQ(TextOf(copy.Settings(), "whole"), "project");
}

TEST_F(ViewerProject, EveryChangeButTheCamerasIsWork)
{
    viewer_->Open(Hills());
    const auto surface = [&]() -> ITessara& { return viewer_->Document().Session().Surface(); };
    const ViewSettings settings = viewer_->Settings();
    const auto set = [&](void (*change)(ViewSettings&)) {
        ViewSettings changed = settings;
        change(changed);
        viewer_->Apply(changed);
    };
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"exaggeration", [&] { set([](ViewSettings& changed) { changed.exaggeration = 3.0; }); }},
        {"colours", [&] { viewer_->SetColors(150.0, 250.0); }},
        {"image", [&] { viewer_->Work().TexturesChanged(); }},
        {"what a dialog left",
         [&] {
             float tiling = 77.0f;
             surface().SetTextureDetailTiling(&tiling, nullptr);
         }},
        {"switch", [&] { surface().UseTextureDetail(0); }},
        {"gamma", [&] { surface().SetTextureDetailRGBGamma(4); }},
        {"heights", [&] { Dig(*viewer_); }},
    };
    for (const bool project : {false, true}) {
        for (const auto& [what, change] : changes) {
            viewer_->Apply(settings);
            viewer_->Open(Hills());
            if (project)
                viewer_->Work().SaveProject(path_);
            surface().UseTextureDetail(1);
            if (project)
                viewer_->Work().SaveProject(path_);
            else
                viewer_->Work().Begin({});
            viewer_->Camera().FromTop();
            EXPECT_FALSE(viewer_->HasUnsavedWork()) << what << ", a camera moves all the time";
            change();
            EXPECT_TRUE(viewer_->HasUnsavedWork()) << what;
            viewer_->Work().SaveProject(path_);
            EXPECT_FALSE(viewer_->HasUnsavedWork()) << what;
        }
    }
    // Heights alone can be saved otherwise, and undone.
    viewer_->Open(Hills());
    Dig(*viewer_);
    viewer_->Apply(settings);
    viewer_->Work().SaveHeights(folder_ / "dug.tif");
    EXPECT_FALSE(viewer_->HasUnsavedWork());
    viewer_->Sculptor().Undo();
    EXPECT_TRUE(viewer_->HasUnsavedWork());
    viewer_->Work().SaveProject(path_);
    viewer_->Sculptor().Redo();
    viewer_->Work().SaveHeights(folder_ / "dug.tif");
    EXPECT_TRUE(viewer_->HasUnsavedWork()) << "the project doesn't hold them";
}

TEST_F(ViewerProject, ADetailTextureThatWasChosenDuringTheLoadIsWork)
{
    viewer_->Open(Hills());
    viewer_->Work().SaveProject(path_);
    viewer_->Open(Read(path_));
    EXPECT_FALSE(viewer_->HasUnsavedWork());
    {
        ProjectWriter writer(path_, path_);
        writer.Open("hills")->Write("TEXTURE_DET_NAME", 8, "gone", 5);
        writer.Commit();
    }
    // The project names another one than the surface has.
    viewer_->Work().Begin(Read(path_).saved);
    EXPECT_TRUE(viewer_->HasUnsavedWork());
}

TEST_F(ViewerProject, ACoarseTerrainIsToLookAtAndLeavesTheOldOneAsItWas)
{
    OpenedTerrain first = Hills();
    const auto coarse = [] { return PrepareTerrain("big.tif", Coarse(Hills().document->Data(), 17), {}); };
    viewer_->ShowCoarse(coarse());
    viewer_->GiveUp();
    EXPECT_FALSE(viewer_->HasTerrain()) << "there was none";
    viewer_->Open(std::move(first));
    Dig(*viewer_);
    const std::vector<float> dug = viewer_->Document().Data().metres;
    viewer_->SetColors(150.0, 250.0);
    const WorkState before = viewer_->Work().State();
    viewer_->ShowCoarse(coarse());
    EXPECT_TRUE(viewer_->IsCoarse());
    EXPECT_EQ(viewer_->Document().Path(), "big.tif");
    const std::vector<float> shown = viewer_->Document().Data().metres;
    Dig(*viewer_);
    EXPECT_EQ(viewer_->Document().Data().metres, shown);
    EXPECT_FALSE(viewer_->HasUnsavedWork());
    viewer_->GiveUp();
    EXPECT_EQ(viewer_->Document().Data().metres, dug);
    EXPECT_EQ(viewer_->Work().State(), before);
    EXPECT_TRUE(viewer_->HasUnsavedWork());
    Dig(*viewer_);
    EXPECT_NE(viewer_->Document().Data().metres, dug);
    // Where somebody has gone meanwhile, the whole terrain is shown from there.
    viewer_->ShowCoarse(coarse());
    viewer_->Camera().Place({400.0, 900.0, 700.0}, 77.0, 41.0);
    viewer_->Open(Hills());
    EXPECT_FALSE(viewer_->IsCoarse());
    EXPECT_NEAR(viewer_->Camera().Azimuth(), 77.0, 1e-9);
    EXPECT_NEAR(Length(viewer_->Camera().Position() - Vector3{400.0, 900.0, 700.0}), 0.0, 1e-6);
    EXPECT_FALSE(viewer_->HasUnsavedWork());
}

TEST_F(ViewerProject, AFailedSaveLeavesTheWorkUnsaved)
{
    viewer_->Open(Hills());
    Dig(*viewer_);
    EXPECT_THROW(viewer_->Work().SaveProject(folder_ / "missing/hills.tessara"), std::runtime_error);
    EXPECT_TRUE(viewer_->HasUnsavedWork());
    EXPECT_EQ(viewer_->Work().ProjectPath(), "");
}

TEST_F(ViewerProject, ForeignColoursShowAsTheyAre)
{
    viewer_->Open(Hills());
    viewer_->Work().SaveProject(path_);
    const ProjectTerrain before = ReadTerrain(*ProjectFile(path_).Open("hills"));
    {
        ProjectWriter writer(path_, path_);
        writer.Open("hills")->Forget("palette");
        writer.Commit();
    }
    viewer_->Open(Read(path_));
    EXPECT_EQ(viewer_->Colors().ramp, "");
    viewer_->Work().SaveProject(path_);
    EXPECT_EQ(ReadTerrain(*ProjectFile(path_).Open("hills")).palette.green, before.palette.green);
}

class UnsavedWork : public ViewerProject {
protected:
    UnsavedWork() { setenv("XDG_STATE_HOME", (folder_ / "state").c_str(), 1); }
    ~UnsavedWork() override { unsetenv("XDG_STATE_HOME"); }
};

TEST_F(UnsavedWork, IsKeptOnceAndRecovered)
{
    viewer_->Open(Hills());
    viewer_->Work().SaveProject(path_);
    auto keeper = std::make_unique<WorkKeeper>();
    keeper->Update(viewer_->Work());
    EXPECT_FALSE(std::filesystem::exists(AutosaveFolder())) << "there is nothing to keep";
    Dig(*viewer_);
    keeper->Update(viewer_->Work());
    const std::vector<float> heights = viewer_->Document().Data().metres;
    EXPECT_TRUE(FindRecoveries().empty()) << "the program still runs";

    // A copy that nobody has locked is what a crash leaves.
    std::string left;
    for (const auto& entry : std::filesystem::directory_iterator(AutosaveFolder())) {
        if (entry.path().extension() == ".tessara")
            left = entry.path().string();
    }
    ASSERT_FALSE(left.empty());
    const auto kept = std::filesystem::last_write_time(left);
    keeper->Update(viewer_->Work());
    EXPECT_EQ(std::filesystem::last_write_time(left), kept) << "the same work was kept twice";
    std::filesystem::copy_file(left, AutosaveFolder() + "/crashed.tessara");
    std::ofstream(AutosaveFolder() + "/crashed.lock").flush();
    keeper = nullptr;
    EXPECT_FALSE(std::filesystem::exists(left)) << "an ordinary end leaves nothing behind";

    auto recoveries = FindRecoveries();
    ASSERT_EQ(recoveries.size(), 1u);
    EXPECT_EQ(recoveries[0].ProjectPath(), path_);
    const auto other = NewViewer();
    other->Open(Read(recoveries[0].Path(), recoveries[0].ProjectPath()));
    EXPECT_TRUE(other->HasUnsavedWork());
    EXPECT_EQ(other->Work().ProjectPath(), path_);
    EXPECT_EQ(other->Work().Element(), "hills");
    for (std::size_t i = 0; i < heights.size(); ++i)
        ASSERT_NEAR(other->Document().Data().metres[i], heights[i], 1e-3) << i;
    WorkKeeper next;
    next.Adopt(std::move(recoveries[0]));
    other->Work().SaveProject(path_);
    next.Update(other->Work());
    EXPECT_TRUE(FindRecoveries().empty()) << "saved work is offered again";
    EXPECT_FALSE(std::filesystem::exists(AutosaveFolder() + "/crashed.tessara"));
}

}  // namespace

}  // namespace tessara::test
