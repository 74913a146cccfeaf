#include "app/program.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

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

TEST_F(Usage, MistakesOnTheCommandLineAreNamedAndEndWithTwo)
{
    const std::string grid = scratch / "grid.asc";
    const std::string out = scratch / "a.png";
    const struct {
        std::vector<std::string> arguments;
        std::string words;
    } cases[] = {
        {{}, "Usage"},
        {{"frobnicate"}, "tessara: there is no command \"frobnicate\"\nTry: tessara --help"},
        {{"-V"}, "tessara: there is no option -V\n"},
        {{"project", "frobnicate"}, "tessara project: there is no command \"frobnicate\"\nTry: tessara project --help"},
        {{"project"}, "a command must follow: create"},
        {{"project", "set"}, "\nTry: tessara project set --help"},
        {{"render", "--bogus"}, "tessara render: there is no option --bogus\nTry: tessara render --help"},
        {{"render", grid, grid, "-o", out}, "is one argument too many"},
        {{"render", grid}, "--output is required"},
        {{"render", "", "-o", out}, "FILE: expects a name, not an empty text"},
        {{"render", grid, "-o", ""}, "--output: expects a name, not an empty text"},
        {{"view", ""}, "FILE: expects a name"},
        {{"render", grid, "-o", out, "--size"}, "--size lacks a value"},
        {{"render", grid, "-o", out, "--size", "800"}, "not 800"},
        {{"render", grid, "-o", out, "--size", "0x9"}, "not 0x9"},
        {{"render", grid, "-o", out, "--size", "16384x16384"}, "67 million"},
        {{"render", grid, "-o", out, "--camera", "1,2"}, "not 1,2"},
        {{"render", grid, "-o", out, "--camera", "1,2,nan"}, "nan"},
        {{"render", grid, "-o", out, "--fov", "180"}, "expects a number from 1 to 170, not 180"},
        {{"render", grid, "-o", out, "--azimuth", "nan"}, "not nan"},
        {{"render", grid, "-o", out, "--exaggeration", "-1"}, "not -1"},
        {{"render", grid, "-o", out, "--fill", "holes"}, "--fill: expects smooth or lowest, not holes"},
        {{"render", grid, "-o", out, "--palette", "pink"}, "not pink"},
        {{"render", grid, "-o", out, "--max-cells=1e9"}, "expects a whole number from 4 to 1073741824, not 1e9"},
        {{"render", grid, "-o", out, "--no-data", "none"}, "--no-data: expects a number, not none"},
        {{"render", grid, "-o", out, "--sun", "10,95"}, "not 10,95"},
        {{"render", grid, "-o", out, "--frames", "0"}, "not 0"},
        {{"render", grid, "-o", out, "--window", "0,0,1,5"}, "2 columns and rows or more"},
        {{"render", grid, "-o", out, "--extent", "5,0,1,5"}, "west below east"},
        {{"sample", "-o", scratch / "s.tif", "--size", "1"}, "not 1"},
        {{"sample", "-o", scratch / "s.tif", "--seed", "-1"}, "not -1"},
        {{"render", grid, "-o", out, "--camera", "1,2,3", "--look-at", "4,5,6", "--tilt", "4"},
         "--tilt: has no effect"},
        {{"render", grid, "-o", out, "--color", "--no-color"}, "excludes"},
        {{"render", grid, "-o", out, "--tiling", "4", "4"}, "--tiling: has no effect without --detail"},
        {{"render", grid, "-o", out, "--terrain", "north"}, "--terrain: has no effect: " + grid + " is no project"},
        {{"render", "-o", out, "--spacing", "4"}, "--spacing: has no effect: the built-in sample"},
        {{"dump", grid, "-o", scratch / "a.txt", "--solid"}, "needs a file that ends in .obj, .ply or .stl"},
        {{"dump", grid, "-o", scratch / "a.stl", "--width", "90"}, "--width requires --solid"},
        {{"textures", "import", grid, "--name", "a\x1b[31mb"}, "--name: expects a name without control characters"},
    };
    for (const auto& [arguments, words] : cases) {
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_NE(run.errors.find(words), std::string::npos) << run.errors;
        EXPECT_EQ(run.output, "");
    }
    EXPECT_EQ(scratch.List(), std::vector<std::string>{"grid.asc"});
}

TEST_F(Usage, FailuresEndWithOneAndOneSentenceAndLeaveNothing)
{
    WriteText(scratch / "noise.tif", "this is no elevation file");
    WriteText(scratch / "noise.png", "this is no image");
    const std::string grid = scratch / "grid.asc";
    std::filesystem::create_hard_link(grid, scratch / "same.png");
    std::filesystem::create_symlink("grid.asc", scratch / "link.png");
    ASSERT_EQ(mkfifo((scratch / "pipe").c_str(), 0600), 0);
    const struct {
        std::vector<std::string> arguments;
        std::string words;
    } cases[] = {
        {{"render", scratch / "missing.tif", "-o", scratch / "a.png"}, "missing.tif"},
        {{"render", scratch / "noise.tif", "-o", scratch / "a.png"}, "noise.tif"},
        {{"render", grid, "-o", scratch / "no-folder/a.png"}, "there is no folder"},
        {{"render", grid, "-o", scratch / "a.jpg"}, "\".jpg\" is not what is written; the name must end in .png"},
        {{"map", grid, "-o", scratch / "a.tif"}, "must end in .png"},
        {{"map", grid, "-o", scratch / "same.png"}, "it is what is read"},
        {{"map", grid, "-o", scratch / "link.png"}, "it is what is read"},
        {{"render", grid, "-o", scratch / "noise.png", "--source", scratch / "noise.png"}, "it is what is read"},
        {{"render", grid, "-o", scratch / "a.png", "--source", scratch / "noise.png"}, "noise.png\": Not a PNG file"},
        {{"map", "/vsizip/" + (scratch / "noise.png") + "/a.tif", "-o", scratch / "noise.png"}, "is made of it"},
        {{"dump", scratch / "missing.tif", "-o", scratch / "a.txt"}, "missing.tif"},
        {{"dump", grid, "-o", scratch / "no-folder/a.stl"}, "there is no folder"},
        {{"dump", grid, "-o", scratch / "a.gltf"}, "must end in .txt, .obj, .ply or .stl"},
        {{"dump", grid, "-o", scratch / "."}, "it is a folder"},
        {{"dump", grid, "-o", "/dev/full"}, "The file /dev/full can't be written: No space left on device"},
        {{"info", scratch / "missing.tif"}, "missing.tif"},
        {{"info", scratch / "a\x1b[31m.tif"}, "a\\x1b[31m.tif"},
        {{"sample", "-o", scratch / "no-folder/a.tif"}, "there is no folder"},
        {{"sample", "-o", scratch / "a.unknown"}, "must end in .tif, .tiff, .asc or .png"},
        {{"register", scratch / "pipe"}, "it is no regular file"},
        {{"register", scratch / "."}, "it is a folder"},
        {{"project", "create", grid, "-o", "-"}, "it is no regular file"},
    };
    const std::string before = ReadText(grid);
    const auto files = scratch.List();
    for (const auto& [arguments, words] : cases) {
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 1) << testing::PrintToString(arguments);
        EXPECT_EQ(run.output, "");
        const std::size_t said = run.errors.find("tessara: ");
        ASSERT_NE(said, std::string::npos) << run.errors;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), said == 0 ? 1 : 2) << run.errors;
        EXPECT_NE(run.errors.find(words), std::string::npos) << run.errors;
    }
    EXPECT_EQ(scratch.List(), files);
    EXPECT_EQ(ReadText(grid), before);
}

TEST_F(Usage, OutputGoesThroughPipesAndADiskThatIsFullIsAFailure)
{
    const std::string grid = scratch / "grid.asc";
    const ProgramRun map = RunTessara({"map", grid, "-o", "-"});
    EXPECT_EQ(map.exitCode, 0) << map.errors;
    EXPECT_TRUE(map.output.starts_with("\x89PNG"));
    EXPECT_EQ(map.output.substr(map.output.size() - 8, 4), "IEND") << "the picture and nothing else";
    EXPECT_EQ(RunTessara({"dump", grid, "-o", "-"}).output, RunTessara({"dump", grid, "-o", "/dev/stdout"}).output);
    EXPECT_TRUE(RunTessara({"sample", "--size", "33", "-o", "-"}).output.starts_with("II*"));
    const ProgramRun full = RunTessara({"info", grid}, "/dev/full");
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_NE(full.errors.find("standard output can't be written"), std::string::npos) << full.errors;
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
