#include "app/program.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessara {
namespace {

using testing::Test;

class Usage : public Test {
protected:
    Usage()
    {
        WriteGrid(scratch / "grid.asc", 6, 5, [](int x, int y) { return x * y; });
    }

    ScratchFolder scratch;
};

TEST_F(Usage, MistakesOnTheCommandLineEndWithTwo)
{
    const std::string grid = scratch / "grid.asc";
    const std::string out = scratch / "a.png";
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"frobnicate"},
        {"render", grid},
        {"render", grid, "-o", out, "--size", "800"},
        {"render", grid, "-o", out, "--size", "0x9"},
        {"render", grid, "-o", out, "--size", "16384x16384"},
        {"render", grid, "-o", out, "--camera", "1,2"},
        {"render", grid, "-o", out, "--camera", "1,2,nan"},
        {"render", grid, "-o", out, "--fov", "180"},
        {"render", grid, "-o", out, "--azimuth", "nan"},
        {"render", grid, "-o", out, "--exaggeration", "-1"},
        {"render", grid, "-o", out, "--fill", "holes"},
        {"render", grid, "-o", out, "--sun", "10,95"},
        {"render", grid, "-o", out, "--frames", "0"},
        {"render", grid, "-o", out, "--nonsense"},
        {"sample", "-o", scratch / "s.tif", "--size", "1"},
    };
    for (const auto& arguments : cases) {
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_NE(run.errors, "");
        EXPECT_EQ(run.output, "");
    }
    EXPECT_EQ(scratch.List(), std::vector<std::string>{"grid.asc"});
}

TEST_F(Usage, FailuresEndWithOneAndOneSentenceAndLeaveNothing)
{
    WriteText(scratch / "noise.tif", "this is no elevation file");
    const std::string grid = scratch / "grid.asc";
    const std::vector<std::vector<std::string>> cases = {
        {"render", scratch / "missing.tif", "-o", scratch / "a.png"},
        {"render", scratch / "noise.tif", "-o", scratch / "a.png"},
        {"render", grid, "-o", scratch / "no-folder/a.png"},
        {"render", grid, "-o", grid},
        {"dump", scratch / "missing.tif", "-o", scratch / "a.txt"},
        {"dump", grid, "-o", scratch / "no-folder/a.stl"},
        {"dump", grid, "-o", scratch / "."},
        {"info", scratch / "missing.tif"},
        {"sample", "-o", scratch / "no-folder/a.tif"},
        {"sample", "-o", scratch / "a.unknown"},
    };
    const std::string before = ReadText(grid);
    for (const auto& arguments : cases) {
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 1) << testing::PrintToString(arguments);
        EXPECT_EQ(run.output, "");
        const std::size_t said = run.errors.find("tessara: ");
        ASSERT_NE(said, std::string::npos) << run.errors;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), run.errors.starts_with("tessara: ") ? 1 : 2)
            << run.errors;
    }
    EXPECT_EQ(scratch.List(), (std::vector<std::string>{"grid.asc", "noise.tif"}));
    EXPECT_EQ(ReadText(grid), before);
}

TEST_F(Usage, HelpAndVersionAreNoMistakes)
{
    for (const char* command : {"render", "dump", "info", "sample"}) {
        const ProgramRun run = RunTessara({command, "--help"});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_NE(run.output.find("Usage: tessara"), std::string::npos);
        EXPECT_EQ(run.errors, "");
    }
    const ProgramRun help = RunTessara({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.output.find("Examples:"), std::string::npos);
    EXPECT_NE(help.output.find("Exit codes:"), std::string::npos);
    EXPECT_EQ(RunTessara({"--version"}).output, "tessara " TESSARA_VERSION "\n");
}

TEST_F(Usage, InfoTellsWhatAFileHolds)
{
    WriteGrid(scratch / "holes.asc", 9, 5, [](int x, int y) { return x == 3 && y > 2 ? -9999 : 100 + x; });
    ProgramRun run = RunTessara({"info", scratch / "holes.asc"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const auto says = [&](const std::string& name, const std::string& text) {
        const std::size_t at = run.output.find(name);
        ASSERT_NE(at, std::string::npos) << name;
        const std::string line = run.output.substr(at, run.output.find('\n', at) - at);
        EXPECT_NE(line.find(text), std::string::npos) << line;
    };
    says("Heights", "9 columns x 5 rows");
    says("Spacing", "10 m east, 10 m south");
    says("Lowest, highest", "100 m, 108 m");
    says("Cells without data", "2");
    says("Quadtree", "4 levels");
    says("Triangles", "the whole grid has 64");
    // Read reduced, it tells the file's own heights.
    run = RunTessara({"info", scratch / "holes.asc", "--max-cells", "4"});
    says("In the file", "9 columns x 5 rows");
    says("Lowest, highest", "100 m, 108 m");
}

TEST_F(Usage, WorkIsSilentInAPipe)
{
    const ProgramRun run = RunTessara({"sample", "-o", scratch / "sample.tif", "--size", "65"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.ends_with("\n" + (scratch / "sample.tif") + "\n")) << run.output;
    const ProgramRun info = RunTessara({"info", scratch / "sample.tif"});
    EXPECT_EQ(info.exitCode, 0);
    EXPECT_EQ(info.errors.find('\r'), std::string::npos);
    EXPECT_NE(info.output.find("65 columns x 65 rows"), std::string::npos);
}

}  // namespace
}  // namespace tessara
