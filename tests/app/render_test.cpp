#include "app/picture.h"
#include "app/program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tessara {
namespace {

class Render : public testing::Test {
protected:
    /// The picture of a file, 240 x 160 pixels unless the options say otherwise.
    Picture Draw(const std::string& file, std::vector<std::string> options = {})
    {
        std::vector<std::string> arguments = {"render", file, "-o", scratch / "picture.png", "--size", "240x160"};
        if (file.empty())
            arguments.erase(arguments.begin() + 1);
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return ReadPicture(scratch / "picture.png");
    }

    /// A hill on a plain.
    std::string Hill()
    {
        const std::string path = scratch / "hill.asc";
        WriteGrid(path, 40, 40,
                  [](int x, int y) { return 90.0 * std::exp(-(std::pow(x - 20, 2) + std::pow(y - 20, 2)) / 40.0); });
        return path;
    }

    /// Share of the pixels in which two pictures differ visibly.
    static double Differing(const Picture& a, const Picture& b)
    {
        int count = 0;
        for (int y = 0; y < a.height; ++y) {
            for (int x = 0; x < a.width; ++x)
                count += Difference(a.At(x, y), b.At(x, y)) > 24 ? 1 : 0;
        }
        return static_cast<double>(count) / (a.width * a.height);
    }

    ScratchFolder scratch;
};

TEST_F(Render, TheWholeTerrainStandsInTheMiddleOfTheSky)
{
    const Picture picture = Draw(Hill());
    ASSERT_EQ(picture.width, 240);
    ASSERT_EQ(picture.height, 160);
    const Picture::Pixel sky = picture.At(120, 0);
    EXPECT_GT(sky.blue, sky.red);
    const Picture::Pixel ground = picture.At(120, 100);
    EXPECT_GT(ground.green, ground.blue);
    // The left and the right edge see past the model, up to a margin: its corners come near both.
    int left = 240;
    int right = 0;
    for (int y = 40; y < 160; ++y) {
        for (int x = 0; x < 240; ++x) {
            const Picture::Pixel pixel = picture.At(x, y);
            if (pixel.green > pixel.blue + 8) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    EXPECT_GT(left, 2);
    EXPECT_LT(left, 24);
    EXPECT_LT(right, 237);
    EXPECT_GT(right, 214);
}

TEST_F(Render, TheSunLightsTheSlopesThatFaceIt)
{
    const std::vector<std::string> map = {"--tilt", "90", "--azimuth", "0", "--palette", "grey"};
    auto west = map;
    west.insert(west.end(), {"--sun", "270,25"});
    const Picture picture = Draw(Hill(), west);
    const int lit = picture.Mean(103, 75, 8, 10).red;
    const int shaded = picture.Mean(129, 75, 8, 10).red;
    EXPECT_GT(lit, shaded + 40);
}

TEST_F(Render, WiresDifferFromSurfaces)
{
    const std::string hill = Hill();
    const Picture filled = Draw(hill);
    const Picture wires = Draw(hill, {"--wireframe"});
    EXPECT_GT(Differing(filled, wires), 0.5);
    EXPECT_LT(Difference(wires.At(2, 2), {9, 11, 15}), 6);  // dark around the model
}

TEST_F(Render, AnExaggeratedHillStandsHigher)
{
    const std::string hill = Hill();
    const std::vector<std::string> low = {"--camera", "195,-400,60", "--look-at", "195,195,30"};
    auto high = low;
    high.insert(high.end(), {"--exaggeration", "0.2"});
    const auto top = [](const Picture& picture) {
        for (int y = 0; y < picture.height; ++y) {
            const Picture::Pixel pixel = picture.At(picture.width / 2, y);
            if (pixel.blue < pixel.red + 10)
                return y;
        }
        return picture.height;
    };
    EXPECT_LT(top(Draw(hill, low)) + 5, top(Draw(hill, high)));
}

TEST_F(Render, SteepGroundWithoutColoursIsLitAndNothingBurnsOut)
{
    const std::string steep = scratch / "steep.asc";
    WriteGrid(steep, 60, 60, [](int x, int y) { return 60.0 * (std::sin(x * 0.5) + std::cos(y * 0.4)); });
    for (const char* sun : {"300,8", "300,38", "0,90"}) {
        const Picture picture = Draw(steep, {"--no-color", "--tilt", "90", "--azimuth", "0", "--sun", sun});
        double sum = 0.0;
        double squares = 0.0;
        for (int y = 20; y < 140; ++y) {
            for (int x = 60; x < 180; ++x) {
                const Picture::Pixel pixel = picture.At(x, y);
                ASSERT_LT(std::min({pixel.red, pixel.green, pixel.blue}), 250) << sun << ": " << x << ", " << y;
                sum += pixel.green / 14400.0;
                squares += pixel.green * pixel.green / 14400.0;
            }
        }
        EXPECT_GT(std::sqrt(squares - sum * sum), 15.0) << sun;
    }
}

TEST_F(Render, NoSkyShowsBetweenTheTerrainAndItsPlinthHoweverCoarseItIs)
{
    const std::string rough = scratch / "rough.asc";
    WriteGrid(rough, 120, 120, [](int x, int y) { return 40.0 * std::sin(x * 0.9) + 60.0 * std::cos(y * 0.7 + x); });
    for (const char* detail : {"30", "300"}) {
        for (const char* tilt : {"12", "35"}) {
            // Ground, earth and whatever lies between them is reddish or dark, and only the sky is bright and bluish.
            const Picture picture =
                Draw(rough, {"--lod", detail, "--tilt", tilt, "--palette", "desert", "--sea", "off", "--no-antialias"});
            const auto isSky = [&](int x, int y) {
                return picture.At(x, y).blue >= std::max(picture.At(x, y).red, 150);
            };
            for (int x = 0; x < picture.width; ++x) {
                int changes = 0;
                for (int y = 1; y < picture.height; ++y)
                    changes += isSky(x, y) != isSky(x, y - 1) ? 1 : 0;
                EXPECT_LE(changes, 2) << "detail " << detail << ", tilt " << tilt << ", column " << x;
            }
        }
    }
}

TEST_F(Render, SmoothEdgesAreTheDefault)
{
    const std::string hill = Hill();
    EXPECT_GT(Differing(Draw(hill), Draw(hill, {"--no-antialias"})), 0.0005);
}

TEST_F(Render, ThePictureDoesNotDependOnTheFramesAfterTheTerrainHasSettled)
{
    const std::string hill = Hill();
    EXPECT_EQ(Draw(hill).bytes, Draw(hill, {"--frames", "40"}).bytes);
}

TEST_F(Render, NoCornerOfTheTerrainIsMissing)
{
    // The surface draws one corner at the lowest height; on a high plateau that would be a hole.
    for (const int side : {7, 16, 33}) {
        const std::string path = scratch / "plateau.asc";
        WriteGrid(path, side, side, [side](int x, int y) { return x == side / 2 && y == side / 2 ? 0 : 100; });
        const Picture picture = Draw(path, {"--tilt", "90", "--azimuth", "0", "--palette", "grey", "--sun", "0,90"});
        int top = 0;
        while (Difference(picture.At(120, top), picture.At(2, top)) < 40)
            ++top;
        const int half = 80 - top;
        for (const int x : {120 - half + 2, 120 + half - 3}) {
            for (const int y : {top + 2, 157 - top})
                EXPECT_GT(picture.At(x, y).red, 215) << side << ": " << x << ", " << y;
        }
    }
}

TEST_F(Render, TinyFlatAndOddGridsGiveAPicture)
{
    const std::pair<int, int> sizes[] = {{1, 1}, {2, 1}, {1, 9}, {5, 3}, {64, 2}};
    for (const auto& [columns, rows] : sizes) {
        const std::string path = scratch / "grid.asc";
        for (const int slope : {0, 1}) {
            WriteGrid(path, columns, rows, [slope](int x, int y) { return 5 + slope * (x + y); });
            const Picture picture = Draw(path);
            ASSERT_EQ(picture.width, 240) << columns << " x " << rows;
            EXPECT_GT(Difference(picture.Mean(110, 70, 20, 20), picture.At(0, 80)), 24) << columns << " x " << rows;
        }
    }
}

TEST_F(Render, TheSampleNeedsNoFile)
{
    const Picture picture = Draw("", {"--lod", "100"});
    EXPECT_EQ(picture.width, 240);
    EXPECT_EQ(scratch.List(), std::vector<std::string>{"picture.png"});
}

}  // namespace
}  // namespace tessara
