#include "fuzz/targets.h"
#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/elevation_writer.h"
#include "host/test_elevation.h"
#include "support/scratch_folder.h"

#include <array>
#include <cmath>
#include <string>

namespace tessara::test {

namespace {

constexpr std::size_t kPage = 64;
constexpr std::array kEndings = {".tif", ".asc", ".png"};

void RequireSound(const ElevationData& data)
{
    Require(data.width > 0 && data.height > 0, "a grid without cells");
    Require(data.metres.size() == static_cast<std::size_t>(data.width) * static_cast<std::size_t>(data.height),
            "a grid of another size");
    Require(data.holes.empty() || data.holes.size() == data.metres.size(), "marks for other cells");
    for (const float height : data.metres)
        Require(height >= data.minimum && height <= data.maximum, "a height outside of the range");
    Require(std::isfinite(data.minimum) && std::isfinite(data.maximum), "a range without an end");
    Require(data.spacingX > 0.0 && data.spacingY > 0.0 && std::isfinite(data.spacingX + data.spacingY),
            "a bad spacing");
}

}  // namespace

bool UseDamagedElevation(Damage damage)
{
    static const ScratchFolder folder;
    static const std::array<std::string, kEndings.size()> whole = [] {
        ElevationData data = MakeElevation(24, 17, 30.0, 30.0, [](int x, int y) { return 100.0 + x * 7 + y * y; });
        data.georeferenced = true;
        data.stepX = 30.0;
        data.stepY = -30.0;
        std::array<std::string, kEndings.size()> files;
        for (std::size_t i = 0; i < kEndings.size(); ++i) {
            WriteElevationFile(data, folder / (std::string("whole") + kEndings[i]));
            files[i] = ReadBytes(folder / (std::string("whole") + kEndings[i]));
        }
        return files;
    }();
    const std::size_t kind = damage.Take(1);
    std::string file = whole[kind % kEndings.size()];
    if (kind >= 224)
        damage.Cut(file);
    damage.Apply(file, kPage);
    const std::string path = folder.Write(std::string("damaged") + kEndings[kind % kEndings.size()], file);
    ElevationReadOptions options;
    options.maximumCells = 300;
    try {
        RequireSound(ReadElevationFile(path, options));
        return true;
    } catch (const ElevationError& error) {
        Require(std::string(error.what()).find(path) != std::string::npos,
                std::string("no file named: ") + error.what());
        return false;
    }
}

}  // namespace tessara::test
