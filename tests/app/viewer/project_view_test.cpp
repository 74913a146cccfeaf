// Projects of the program in the viewer: the same picture, and nothing lost by opening and saving them.

#include "app/picture.h"
#include "app/program.h"
#include "app/viewer/open_viewer.h"
#include "host/project/project_file.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>

namespace tessara {
namespace {

using Options = std::vector<std::string>;

struct Case {
    const char* name;
    Options options;
};

class ProjectView : public testing::TestWithParam<Case> {
protected:
    ProjectView()
    {
        WriteGrid(scratch / "hills.asc", 70, 50,
                  [](int x, int y) { return 120.0 + 90.0 * std::sin(0.14 * x) * std::cos(0.11 * y) + 0.8 * x; });
        Options create = {"project", "create", scratch / "hills.asc", "-o", project, "--exaggeration", "1.5"};
        create.insert(create.end(), GetParam().options.begin(), GetParam().options.end());
        Succeed(create);
        open.viewer.Open(*TerrainLoader({.path = project}).Take());
    }

    static void Succeed(const Options& arguments)
    {
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
    }

    /// Everything that a project holds, by name.
    std::map<std::string, std::vector<std::uint8_t>> Values() const
    {
        const auto place = ProjectFile(project).Open("hills");
        std::map<std::string, std::vector<std::uint8_t>> values;
        for (const auto& value : place->Values())
            values["value " + value.name] = *place->Read(value.name);
        for (const auto& [name, setting] : place->Settings()) {
            const ProjectSettings one{{name, setting}};
            const std::string text = TextOf(one, name);
            values["text " + name].assign(text.begin(), text.end());
            const double number = NumberOf(one, name, 0.0);
            const auto* bytes = reinterpret_cast<const std::uint8_t*>(&number);
            values["number " + name].assign(bytes, bytes + sizeof number);
        }
        return values;
    }

    /// Share of the channels in which the program's picture of the project isn't the viewer's. Of a triangle that stays
    /// from an earlier camera a pixel may tell.
    double DifferingFromTheProgram(int width, int height)
    {
        const std::string size = std::to_string(width) + "x" + std::to_string(height);
        Succeed({"render", project, "-o", scratch / "render.png", "--size", size});
        open.viewer.Picture().Save(scratch / "viewer.png", width, height);
        const Picture a = ReadPicture(scratch / "render.png");
        const Picture b = ReadPicture(scratch / "viewer.png");
        EXPECT_EQ(a.bytes.size(), static_cast<std::size_t>(width * height * 3));
        EXPECT_EQ(a.bytes.size(), b.bytes.size());
        int differing = 0;
        for (std::size_t i = 0; i < a.bytes.size(); ++i)
            differing += std::abs(a.bytes[i] - b.bytes[i]) > 1 ? 1 : 0;
        return static_cast<double>(differing) / static_cast<double>(a.bytes.size());
    }

    ScratchFolder scratch;
    const std::string project = scratch / "hills.tessara";
    test::OpenViewer open{test::Hills(20, 20)};
};

TEST_P(ProjectView, IsTheSameInTheProgramAndTheViewer)
{
    for (const auto& [width, height] : {std::pair{240, 160}, {90, 170}})
        EXPECT_LT(DifferingFromTheProgram(width, height), 2e-4) << width << " x " << height;
    open.viewer.Camera().Zoom({100.0, 100.0}, 3.0);
    open.Set([](ViewSettings& settings) {
        settings.exaggeration *= 1.2;
        settings.fog = 0.7;
        settings.errorPixels = 1.3;
        settings.ramp = "desert";
    });
    while (open.viewer.IsLightBusy())
        std::this_thread::yield();
    open.viewer.TakeLight();
    open.viewer.Work().SaveProject(project);
    EXPECT_LT(DifferingFromTheProgram(200, 130), 2e-4) << "after changes that were saved";
}

TEST_P(ProjectView, LosesNothingByBeingSaved)
{
    const auto before = Values();
    EXPECT_GT(before.size(), 30u);
    open.Settle();
    open.viewer.Work().SaveProject(project);
    EXPECT_EQ(Values(), before);
    open.viewer.Camera().Zoom({100.0, 100.0}, 3.0);
    open.viewer.Work().SaveProject(project);
    auto moved = Values();
    EXPECT_NE(moved, before);
    for (const auto& [name, value] : before) {
        if (name.find(" camera.") == std::string::npos && name.find(" target.") == std::string::npos) {
            EXPECT_EQ(moved[name], value) << name << " changed with the camera";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Aims, ProjectView,
    testing::Values(Case{"nothing", {}},
                    Case{"target", {"--fov", "20", "--azimuth", "90", "--tilt", "45", "--look-at", "300,200,150"}},
                    Case{"camera",
                         {"--camera", "-150,-200,700", "--look-at", "350,250,130", "--fov", "70", "--sun", "-45,0"}},
                    Case{"place", {"--camera", "350,250,900", "--lod", "700", "--palette", "grey", "--no-color"}},
                    Case{"map", {"--azimuth", "30", "--tilt", "90", "--camera", "350,250,900", "--sun", "100,60"}}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace tessara
