// Projects on the command line.

#include "app/picture.h"
#include "app/program.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

namespace tessara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Project : public testing::Test {
protected:
    Project()
    {
        WriteGrid(grid, 24, 20, [](int x, int y) { return 100 + 30 * std::sin(0.4 * x) + 2.0 * y; });
    }

    static ProgramRun Succeed(const std::vector<std::string>& arguments)
    {
        ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 0) << testing::PrintToString(arguments) << run.errors;
        return run;
    }

    /// The picture of a file.
    Picture Draw(const std::string& file, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> arguments = {"render", file, "-o", scratch / "picture.png", "--size", "200x120"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        said = Succeed(arguments).errors;
        return ReadPicture(scratch / "picture.png");
    }

    /// Largest difference of any channel.
    static int Farthest(const Picture& a, const Picture& b)
    {
        int farthest = a.bytes.size() == b.bytes.size() ? 0 : 255;
        for (std::size_t i = 0; i < std::min(a.bytes.size(), b.bytes.size()); ++i)
            farthest = std::max(farthest, std::abs(a.bytes[i] - b.bytes[i]));
        return farthest;
    }

    ScratchFolder scratch;
    const std::string grid = scratch / "grid.asc";
    const std::string project = scratch / "grid.tessara";
    std::string said;
};

TEST_F(Project, ShowsWhatTheFileShowedWithTheSameOptions)
{
    Succeed({"map", grid, "-o", scratch / "map.png"});
    std::vector<std::string> options = {"--azimuth",
                                        "200",
                                        "--tilt",
                                        "50",
                                        "--fov",
                                        "30",
                                        "--sun",
                                        "90,20",
                                        "--palette",
                                        "desert",
                                        "--exaggeration",
                                        "2",
                                        "--source",
                                        scratch / "map.png",
                                        "--detail",
                                        "Gravel",
                                        "--tiling",
                                        "5",
                                        "7"};
    const Picture direct = Draw(grid, options);
    options.insert(options.begin(), {"project", "create", grid, "-o", project});
    EXPECT_TRUE(Succeed(options).output.ends_with("\n" + project + "\n"));
    const Picture saved = Draw(project);
    EXPECT_LE(Farthest(direct, saved), 1);
    EXPECT_GT(Farthest(saved, Draw(project, {"--no-source", "--no-detail"})), 20);
    EXPECT_GT(Farthest(saved, Draw(project, {"--azimuth", "20"})), 20) << "an option outweighs the project";
}

TEST_F(Project, HasTheMeshOfTheFileToTheBit)
{
    Succeed({"project", "create", grid, "-o", project, "--lod", "900", "--exaggeration", "1.7"});
    const std::vector<std::string> camera = {"--camera", "20,-100,300", "--look-at", "100,100,120"};
    const auto dump = [&](std::vector<std::string> arguments, const std::string& to) {
        arguments.insert(arguments.begin(), "dump");
        arguments.insert(arguments.end(), {"-o", scratch / to});
        arguments.insert(arguments.end(), camera.begin(), camera.end());
        Succeed(arguments);
        return ReadText(scratch / to);
    };
    const std::string direct = dump({grid, "--lod", "900", "--exaggeration", "1.7"}, "direct.txt");
    EXPECT_FALSE(direct.empty());
    EXPECT_TRUE(direct == dump({project}, "saved.txt"));
}

TEST_F(Project, HoldsSeveralTerrainsThatCanBeChangedAndTakenOut)
{
    Succeed({"project", "create", grid, "-o", project, "--name", "one", "--palette", "grey"});
    Succeed({"project", "create", grid, "-o", project, "--add", "--name", "two", "--exaggeration", "3"});
    EXPECT_THAT(ProjectFile(project).Elements(), ElementsAre("one", "two"));
    Succeed({"project", "set", project, "--terrain", "two", "--name", "zwei", "--sun", "10,20", "--camera", "1,2,3"});
    const std::string info = Succeed({"project", "info", project}).output;
    EXPECT_THAT(info, HasSubstr("Terrains            2\n"));
    EXPECT_THAT(info, HasSubstr("Terrain             zwei\n"));
    EXPECT_THAT(info, HasSubstr("Heights             24 columns x 20 rows\n"));
    EXPECT_THAT(info, HasSubstr("Exaggeration        3\n"));
    EXPECT_THAT(info, HasSubstr("Camera              1 m east, 2 m north, 3 m high\n"));
    EXPECT_THAT(info, HasSubstr("Sun                 10 degrees, 20 high\n"));
    EXPECT_THAT(info, Not(HasSubstr("Not loaded")));
    EXPECT_THAT(Succeed({"project", "info", project, "--values"}).output, HasSubstr("MATRIX_DATA          1920 bytes"));
    Succeed({"project", "set", project, "--terrain", "zwei", "--forget-view"});
    EXPECT_THAT(Succeed({"project", "info", project}).output, Not(HasSubstr("Camera")));
    Succeed({"project", "set", project, "--terrain", "one", "--remove"});
    EXPECT_THAT(ProjectFile(project).Elements(), ElementsAre("zwei"));
}

TEST_F(Project, GivesItsHeightsBack)
{
    Succeed({"project", "create", grid, "-o", project});
    Succeed({"project", "export", project, "-o", scratch / "back.tif"});
    const std::string before = Succeed({"info", grid}).output;
    const std::string after = Succeed({"info", scratch / "back.tif"}).output;
    const auto line = [](const std::string& text, const std::string& name) {
        const std::size_t at = text.find(name);
        return at == std::string::npos ? name : text.substr(at, text.find('\n', at) - at);
    };
    for (const char* name : {"Heights", "Spacing", "Lowest, highest", "Reference system", "North-west point"})
        EXPECT_EQ(line(after, name), line(before, name));

    // Cells without data are without again, and the others as they were measured.
    const std::string holes = scratch / "holes.asc";
    std::ofstream(holes) << "ncols 3\nnrows 3\nxllcorner 0\nyllcorner 0\ncellsize 10\nNODATA_value -9999\n"
                            "1.5 -9999 3.1\n4.7 3000.3 -9999\n7 8 1000.1\n";
    Succeed({"project", "create", holes, "-o", scratch / "holes.tessara"});
    Succeed({"project", "export", scratch / "holes.tessara", "-o", scratch / "holes-back.asc"});
    std::ifstream back(scratch / "holes-back.asc");
    for (std::string text; text != "NODATA_value" && back >> text;)
        continue;
    std::vector<float> numbers;
    for (float number = 0.0f; back >> number;)
        numbers.push_back(number);
    EXPECT_THAT(numbers, ElementsAre(-9999.0f, 1.5f, -9999.0f, 3.1f, 4.7f, 3000.3f, -9999.0f, 7.0f, 8.0f, 1000.1f));
}

TEST_F(Project, ALostDetailTextureIsLeftOutAndSaidSo)
{
    Succeed({"project", "create", grid, "-o", project, "--detail", "Rock"});
    {
        ProjectWriter writer(project, project);
        writer.Open("grid")->Write("TEXTURE_DET_NAME", 0x40, "gone", 5);
        writer.Commit();
    }
    const Picture without = Draw(project);
    EXPECT_THAT(said, HasSubstr("\"gone\""));
    EXPECT_LE(Farthest(without, Draw(grid)), 1);
}

TEST_F(Project, FailuresTellWhyAndChangeNothing)
{
    Succeed({"project", "create", grid, "-o", project});
    const std::string before = ReadText(project);
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"project", "create", grid, "-o", project}, "already"},
        {{"project", "create", grid, "-o", project, "--add"}, "has a terrain \"grid\" already; --name gives"},
        {{"project", "info", scratch / ""}, "is a folder and no Tessara project"},
        {{"project", "create", project, "-o", scratch / "copy.tessara"}, "is a project already"},
        {{"project", "create", grid, "-o", grid, "--replace"}, "it is what is read"},
        {{"project", "create", scratch / "none.tif", "-o", scratch / "new.tessara"}, "none.tif"},
        {{"project", "create", grid, "-o", scratch / "new.tessara", "--detail", "Moon"},
         "There is no texture \"Moon\""},
        {{"project", "create", grid, "-o", scratch / "new.tessara", "--source", grid}, "Can't read the image"},
        {{"project", "info", grid}, "is not a Tessara project"},
        {{"project", "info", scratch / "none.tessara"}, "There is no project"},
        {{"project", "set", project, "--terrain", "none"}, "has no terrain of the name \"none\""},
        {{"project", "set", project, "--remove"}, "has no other terrain"},
        {{"project", "set", project, "--detail", "Moon"}, "There is no texture \"Moon\""},
        {{"project", "export", project, "-o", project}, "can't be written"},
        {{"render", project, "--terrain", "none", "-o", scratch / "new.png"}, "has no terrain of the name \"none\""},
    };
    for (const auto& [arguments, words] : cases) {
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 1) << testing::PrintToString(arguments);
        EXPECT_THAT(run.errors, HasSubstr(words)) << testing::PrintToString(arguments);
        EXPECT_EQ(run.output, "");
    }
    EXPECT_TRUE(ReadText(project) == before);
    EXPECT_THAT(scratch.List(), ElementsAre("grid.asc", "grid.tessara"));
    EXPECT_EQ(RunTessara({"project"}).exitCode, 2);
    EXPECT_THAT(RunTessara({"project", "create", grid, "-o", project, "--add", "--name", ""}).errors,
                HasSubstr("the name of a terrain is empty"));
    EXPECT_THAT(RunTessara({"project", "set", project, "--name", "a\tb"}).errors,
                HasSubstr("the name of a terrain has a control character"));
    EXPECT_EQ(RunTessara({"project", "create", grid}).exitCode, 2);
    EXPECT_EQ(RunTessara({"project", "create", grid, "-o", project, "--add", "--replace"}).exitCode, 2);
}

}  // namespace
}  // namespace tessara
