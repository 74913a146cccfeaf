#include "app/program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>
#include <tuple>

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

    template <class T>
    static T NumberAt(const std::string& bytes, std::size_t at)
    {
        T value;
        std::memcpy(&value, bytes.data() + at, sizeof value);
        return value;
    }

    ScratchFolder scratch;
};

/// A mesh as an OBJ file holds it, with what a checker of meshes asks of it.
struct ObjMesh {
    explicit ObjMesh(const std::string& text)
    {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string kind;
            std::array<double, 3> numbers{};
            words >> kind >> numbers[0] >> numbers[1] >> numbers[2];
            if (kind == "v")
                points.push_back(numbers);
            else if (kind == "f")
                triangles.push_back({static_cast<std::size_t>(numbers[0]) - 1, static_cast<std::size_t>(numbers[1]) - 1,
                                     static_cast<std::size_t>(numbers[2]) - 1});
        }
        for (const auto& [a, b, c] : triangles) {
            for (const auto& edge : {std::pair(a, b), std::pair(b, c), std::pair(c, a)})
                ++edges[edge];
        }
    }

    double PlanArea(const std::array<std::size_t, 3>& corners) const
    {
        const auto& [a, b, c] = corners;
        return 0.5 * ((points[b][0] - points[a][0]) * (points[c][1] - points[a][1]) -
                      (points[b][1] - points[a][1]) * (points[c][0] - points[a][0]));
    }

    /// Edges of one triangle alone, as a way round: where each point leads. Also checks that no edge has more than two.
    std::map<std::size_t, std::size_t> Border() const
    {
        std::map<std::size_t, std::size_t> next;
        for (const auto& [edge, count] : edges) {
            EXPECT_EQ(count, 1) << "two triangles on the same side of an edge";
            if (edges.contains({edge.second, edge.first}))
                continue;
            EXPECT_TRUE(next.emplace(edge).second) << "the border touches itself";
        }
        return next;
    }

    std::vector<std::array<double, 3>> points;
    std::vector<std::array<std::size_t, 3>> triangles;
    std::map<std::pair<std::size_t, std::size_t>, int> edges;
};

/// Whether an edge lies on one of the four sides of a rectangle.
bool OnOneSide(const std::array<double, 3>& a, const std::array<double, 3>& b, double width, double height)
{
    return (a[0] == b[0] && (a[0] == 0.0 || a[0] == width)) || (a[1] == b[1] && (a[1] == 0.0 || a[1] == height));
}

double Rough(int x, int y)
{
    return 300.0 + 0.25 * std::round(80.0 * std::sin(0.9 * x + 0.5 * y * y));
}

TEST_F(DumpCommand, MeshesAreTheGroundAndNothingElse)
{
    const struct {
        int columns;
        int rows;
        const char* detail;
    } cases[] = {{20, 12, "1000"}, {17, 17, "1000"}, {33, 16, "40"}, {5, 64, "15"},
                 {2, 2, "1000"},   {50, 3, "5"},     {31, 31, "0"}};
    for (const auto& [columns, rows, detail] : cases) {
        WriteGrid(scratch / "grid.asc", columns, rows, Rough);
        const std::string camera = "30,30,900";
        const auto run = RunTessara({"dump", scratch / "grid.asc", "-o", scratch / "mesh.obj", "--lod", detail,
                                     "--camera", camera, "--look-at", "90,60,300"});
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        const ObjMesh mesh(ReadText(scratch / "mesh.obj"));
        for (const auto& point : mesh.points) {
            const int column = static_cast<int>(point[0]) / 10;
            const int row = rows - 1 - static_cast<int>(point[1]) / 10;
            EXPECT_EQ(point[2], Rough(column, row)) << column << ", " << row;
            EXPECT_EQ(std::fmod(point[0], 10.0) + std::fmod(point[1], 10.0), 0.0);
        }
        double area = 0.0;
        for (const auto& triangle : mesh.triangles) {
            EXPECT_GT(mesh.PlanArea(triangle), 0.0) << columns << " x " << rows;
            area += mesh.PlanArea(triangle);
        }
        EXPECT_EQ(area, 100.0 * (columns - 1) * (rows - 1));
        const auto border = mesh.Border();
        std::size_t length = 0;
        for (std::size_t at = border.begin()->first; length == 0 || at != border.begin()->first; ++length)
            at = border.at(at);
        EXPECT_EQ(length, border.size()) << "one border";
        // Where it isn't one of the grid's edges, two triangles share an edge.
        for (const auto& [from, to] : border)
            EXPECT_TRUE(OnOneSide(mesh.points[from], mesh.points[to], 10.0 * (columns - 1), 10.0 * (rows - 1)));
        const auto info =
            RunTessara({"info", scratch / "grid.asc", "--lod", detail, "--camera", camera, "--look-at", "90,60,300"});
        EXPECT_NE(info.output.find(" " + std::to_string(mesh.triangles.size()) + " from the camera"), std::string::npos)
            << info.output;
    }
}

TEST_F(DumpCommand, EveryFormHasTheSameTriangles)
{
    const ObjMesh mesh(Dump("mesh.obj"));
    const std::size_t points = mesh.points.size();
    const std::size_t triangles = mesh.triangles.size();
    const std::string ply = Dump("mesh.ply");
    EXPECT_NE(ply.find("element face " + std::to_string(triangles) + "\n"), std::string::npos);
    EXPECT_NE(ply.find("element vertex " + std::to_string(points) + "\n"), std::string::npos);
    const std::size_t body = ply.find("end_header\n") + 11;
    ASSERT_EQ(ply.size(), body + points * 12 + triangles * 13);
    EXPECT_EQ(static_cast<unsigned char>(ply[body + points * 12]), 3);
    const std::string stl = Dump("mesh.STL");
    EXPECT_EQ(NumberAt<std::uint32_t>(stl, 80), triangles);
    ASSERT_EQ(stl.size(), 84 + triangles * 50);
    for (std::size_t i = 0; i < triangles; ++i)
        EXPECT_GT(NumberAt<float>(stl, 84 + i * 50 + 8), 0.0f) << "every triangle faces up";
}

TEST_F(DumpCommand, ASolidIsClosedAndHasTheSizeThatWasAskedFor)
{
    WriteGrid(scratch / "grid.asc", 20, 12, Rough);
    const struct {
        std::vector<std::string> options;
        double width;
        double height;  // of 40 m relief over the base
    } cases[] = {{{}, 100.0, 100.0 * 40.0 / 190.0 + 3.0},
                 {{"--width", "190", "--base", "5", "--exaggeration", "2"}, 190.0, 80.0 + 5.0},
                 {{"--scale", "2000"}, 95.0, 20.0 + 3.0}};
    for (const auto& [options, width, height] : cases) {
        std::vector<std::string> words{"dump",   scratch / "grid.asc", "-o", scratch / "solid.obj", "--lod", "1000",
                                       "--solid"};
        words.insert(words.end(), options.begin(), options.end());
        ASSERT_EQ(RunTessara(words).exitCode, 0);
        const ObjMesh mesh(ReadText(scratch / "solid.obj"));
        EXPECT_TRUE(mesh.Border().empty()) << "watertight";
        double volume = 0.0;
        std::array<double, 3> high{};
        std::array<double, 3> low{};
        for (const auto& [a, b, c] : mesh.triangles) {
            const auto& [p, q, r] = std::tie(mesh.points[a], mesh.points[b], mesh.points[c]);
            volume += (p[0] * (q[1] * r[2] - q[2] * r[1]) - p[1] * (q[0] * r[2] - q[2] * r[0]) +
                       p[2] * (q[0] * r[1] - q[1] * r[0])) /
                      6.0;
        }
        for (const auto& point : mesh.points) {
            for (std::size_t i = 0; i < 3; ++i) {
                high[i] = std::max(high[i], point[i]);
                low[i] = std::min(low[i], point[i]);
            }
        }
        EXPECT_NEAR(high[0], width, 1e-4);
        EXPECT_NEAR(high[1], width * 110.0 / 190.0, 1e-4);
        EXPECT_NEAR(high[2], height, 1e-3);
        EXPECT_EQ(low, (std::array<double, 3>{}));
        EXPECT_GT(volume, 0.3 * high[0] * high[1] * high[2]) << "faces outwards";
        EXPECT_LT(volume, high[0] * high[1] * high[2]);
    }
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
