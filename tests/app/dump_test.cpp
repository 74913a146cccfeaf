#include "app/program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace tessara {
namespace {

class DumpCommand : public testing::Test {
protected:
    DumpCommand()
    {
        WriteGrid(scratch / "grid.asc", 20, 12,
                  [](int x, int y) { return 300.0 + 20.0 * std::sin(0.9 * x + 0.5 * y * y); });
    }

    /// The file that a dump wrote.
    std::string Dump(const std::string& name)
    {
        const ProgramRun run = RunTessara({"dump", scratch / "grid.asc", "-o", scratch / name, "--lod", "1000"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return ReadText(scratch / name);
    }

    static std::size_t CountLines(const std::string& text, const std::string& start)
    {
        std::istringstream lines(text);
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line);)
            count += line.starts_with(start) ? 1 : 0;
        return count;
    }

    template <class T>
    static T NumberAt(const std::string& bytes, std::size_t at)
    {
        T value;
        std::memcpy(&value, bytes.data() + at, sizeof value);
        return value;
    }

    ScratchFolder scratch;
};

TEST_F(DumpCommand, EveryFormHasTheSameTriangles)
{
    const std::size_t triangles = CountLines(Dump("triangles.txt"), "") / 3;
    EXPECT_EQ(CountLines(Dump("mesh.obj"), "f "), triangles);

    const std::string ply = Dump("mesh.ply");
    EXPECT_NE(ply.find("element face " + std::to_string(triangles) + "\n"), std::string::npos);
    const std::size_t vertices = CountLines(ReadText(scratch / "mesh.obj"), "v ");
    EXPECT_NE(ply.find("element vertex " + std::to_string(vertices) + "\n"), std::string::npos);
    const std::size_t body = ply.find("end_header\n") + 11;
    EXPECT_EQ(ply.size(), body + vertices * 12 + triangles * 13);
    EXPECT_EQ(static_cast<unsigned char>(ply[body + vertices * 12]), 3);

    const std::string stl = Dump("mesh.STL");
    EXPECT_EQ(NumberAt<std::uint32_t>(stl, 80), triangles);
    EXPECT_EQ(stl.size(), 84 + triangles * 50);
}

TEST_F(DumpCommand, MeshesStandInMetresWithNorthPositive)
{
    // A step in the north-east: the high ground lies at x above 100 and y above 50.
    WriteGrid(scratch / "grid.asc", 20, 12, [](int x, int y) { return x >= 12 && y < 5 ? 350 : 300; });
    std::istringstream lines(Dump("mesh.obj"));
    double highest = 0.0;
    double lowest = 1e9;
    double east = 0.0;
    double north = 0.0;
    for (std::string line; std::getline(lines, line);) {
        char kind = 0;
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        if (std::istringstream(line) >> kind >> x >> y >> z && kind == 'v') {
            highest = std::max(highest, z);
            lowest = std::min(lowest, z);
            east = std::max(east, x);
            north = std::max(north, y);
            if (z > 349.0) {
                EXPECT_GE(x, 120.0);
                EXPECT_GE(y, 70.0);
            }
        }
    }
    EXPECT_EQ(highest, 350.0);
    EXPECT_EQ(lowest, 300.0);
    EXPECT_EQ(east, 190.0);
    EXPECT_EQ(north, 110.0);
}

TEST_F(DumpCommand, TrianglesFaceUp)
{
    const std::string stl = Dump("mesh.stl");
    const auto count = NumberAt<std::uint32_t>(stl, 80);
    std::size_t up = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const float z = NumberAt<float>(stl, 84 + i * 50 + 8);
        EXPECT_GE(z, 0.0f);
        up += z > 0.1f ? 1 : 0;
    }
    EXPECT_GT(up, count / 2);
}

TEST_F(DumpCommand, ACameraThatSeesNothingGivesAnEmptyFile)
{
    const ProgramRun run = RunTessara({"dump", scratch / "grid.asc", "-o", scratch / "none.txt", "--camera",
                                       "0,-500,900", "--look-at", "0,-1000,900"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(ReadText(scratch / "none.txt"), "");
    EXPECT_EQ(scratch.List(), (std::vector<std::string>{"grid.asc", "none.txt"}));
}

}  // namespace
}  // namespace tessara
