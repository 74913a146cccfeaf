#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/raster_fixture.h"

#include <fcntl.h>
#include <gdal_priv.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <new>
#include <thread>

namespace tessara {
namespace {

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();

using ElevationFileTest = RasterFixture;

TEST_F(ElevationFileTest, EveryFormatGivesItsHeightsRowByRowFromTheNorth)
{
    const struct {
        const char* name;
        const char* driver;
        const char* type;
        std::vector<std::string> options;
    } cases[] = {
        {"short.tif", "GTiff", "Int16", {}},   {"double.tif", "GTiff", "Float64", {"TILED=YES", "COMPRESS=LZW"}},
        {"byte.tif", "GTiff", "Byte", {}},     {"grid.asc", "AAIGrid", "Float32", {}},
        {"whole.asc", "AAIGrid", "Int32", {}}, {"picture.png", "PNG", "UInt16", {}},
        {"raw.bil", "EHdr", "Int16", {}},      {"imagine.img", "HFA", "Float32", {}},
    };
    for (const auto& [name, driver, type, options] : cases) {
        SCOPED_TRACE(name);
        RasterSpec spec;
        spec.driver = driver;
        spec.type = type;
        spec.width = 5;
        spec.height = 3;
        spec.values = GridOf(5, 3, [](int x, int y) { return 10 * y + x; });
        spec.options = options;
        const ElevationData data = ReadElevationFile(Make(name, spec));
        EXPECT_EQ(data.width, 5);
        EXPECT_EQ(data.height, 3);
        EXPECT_THAT(data.metres, testing::ElementsAreArray(spec.values));
        EXPECT_EQ(data.minimum, 0.0f);
        EXPECT_EQ(data.maximum, 24.0f);
        EXPECT_EQ(data.missing, 0u);
        EXPECT_TRUE(data.holes.empty());
        EXPECT_FALSE(data.format.empty());
    }
}

TEST_F(ElevationFileTest, AnSrtmTileIsKnownByItsNameAndItsHolesAreFilled)
{
    constexpr int kSide = 1201;
    std::string bytes;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const int height = x == 600 && y == 600 ? -32768 : x + 1;
            bytes += static_cast<char>(height >> 8);
            bytes += static_cast<char>(height);
        }
    }
    const ElevationData data = ReadElevationFile(MakeText("N45E006.hgt", bytes));
    EXPECT_EQ(data.width, kSide);
    EXPECT_TRUE(data.geographic);
    EXPECT_NEAR(data.originX, 6.0, 1e-9);
    EXPECT_NEAR(data.originY, 46.0, 1e-9);
    // Three seconds of arc at 45.5 degrees north.
    EXPECT_NEAR(data.spacingX, 65.1, 0.1);
    EXPECT_NEAR(data.spacingY, 92.6, 0.1);
    EXPECT_EQ(data.missing, 1u);
    EXPECT_EQ(data.minimum, 1.0f);
    EXPECT_EQ(data.metres[600 + 600 * kSide], 601.0f);
}

TEST_F(ElevationFileTest, CellsWithoutDataAreFoundHoweverTheFileMarksThem)
{
    RasterSpec plain;
    plain.width = 3;
    plain.height = 1;
    plain.type = "Float64";
    RasterSpec declared = plain;
    declared.noData = 32767.0;
    RasterSpec largest = plain;
    largest.type = "Float32";
    largest.noData = static_cast<double>(-std::numeric_limits<float>::max());
    RasterSpec ascii = declared;
    ascii.driver = "AAIGrid";
    RasterSpec alpha = plain;
    alpha.type = "UInt16";
    alpha.bands = 2;
    alpha.alpha = true;
    const struct {
        const char* name;
        const RasterSpec& spec;
        double value;
        std::optional<double> asked;
        std::optional<double> mark;
        std::string note = "1 of 3 cells (33 %) had no data";
    } cases[] = {
        {"declared.tif", declared, 32767.0, std::nullopt, 32767.0},
        {"declared.asc", ascii, 32767.0, std::nullopt, 32767.0},
        {"largest_negative.tif", largest, *largest.noData, std::nullopt, largest.noData},
        {"nan.tif", plain, kNothing, std::nullopt, std::nullopt},
        {"infinite.tif", plain, std::numeric_limits<double>::infinity(), std::nullopt, std::nullopt},
        {"asked.tif", plain, 0.0, 0.0, 0.0},
        {"alpha.tif", alpha, 0.0, std::nullopt, std::nullopt},
        {"huge.tif", plain, 1e20, std::nullopt, 1e20, "1e+20 was taken as such a mark"},
        {"usual_9999.tif", plain, -9999.0, std::nullopt, -9999.0, "-9999 was taken as such a mark"},
        {"usual_99999.tif", plain, -99999.0, std::nullopt, -99999.0, "-99999 was taken as such a mark"},
        {"usual_32767.tif", plain, -32767.0, std::nullopt, -32767.0, "-32767 was taken as such a mark"},
        {"usual_32768.tif", plain, -32768.0, std::nullopt, -32768.0, "-32768 was taken as such a mark"},
    };
    for (const auto& [name, spec, value, asked, mark, note] : cases) {
        SCOPED_TRACE(name);
        RasterSpec marked = spec;
        marked.values = {100.0, value, 200.0};
        ElevationReadOptions options;
        options.noData = asked;
        options.fill = ElevationFill::Lowest;
        const ElevationData data = ReadElevationFile(Make(name, marked), options);
        EXPECT_THAT(data.metres, testing::ElementsAre(100.0f, 100.0f, 200.0f));
        EXPECT_THAT(data.holes, testing::ElementsAre(0, 1, 0));
        EXPECT_EQ(data.missing, 1u);
        EXPECT_EQ(data.noDataMark, mark);
        EXPECT_TRUE(HasNote(data, note));
    }
}

TEST_F(ElevationFileTest, HeightsComeInMetresWhateverTheFileCountsIn)
{
    const struct {
        const char* unit;
        const char* told;
        const char* reference;
        double scale;
        double offset;
        float expected;  // of 1000 in the file
        const char* name;
        const char* note;
    } cases[] = {
        {"m", "", "", 1.0, 0.0, 1000.0f, "", ""},
        {"ft", "", "", 1.0, 0.0, 304.8f, "ft", "from the file's unit, ft"},
        {"US survey foot", "", "", 1.0, 0.0, 304.80061f, "US survey foot", "US survey foot"},
        {"", "", "", 0.1, 50.0, 150.0f, "", ""},
        {"cm", "", "", 2.0, 100.0, 21.0f, "cm", "cm"},
        {"parsec", "", "", 1.0, 0.0, 1000.0f, "", "parsec, is not known"},
        {"", "", "EPSG:2286", 1.0, 0.0, 1000.0f, "", "in the unit US survey foot and it doesn't say what its heights"},
        {"", "us-ft", "EPSG:2286", 1.0, 0.0, 304.80061f, "us-ft", ""},
        {"ft", "m", "", 1.0, 0.0, 1000.0f, "", ""},
        {"", "FT", "EPSG:32632", 1.0, 0.0, 304.8f, "FT", ""},
    };
    for (const auto& [unit, told, reference, scale, offset, expected, name, note] : cases) {
        SCOPED_TRACE(std::string(unit) + " " + told + " " + reference);
        RasterSpec spec;
        spec.width = spec.height = 1;
        spec.values = {1000.0};
        spec.unit = unit;
        spec.scale = scale;
        spec.offset = offset;
        spec.reference = reference;
        spec.transform = {1000000, 100, 0, 500000, 0, -100};
        ElevationReadOptions options;
        options.heightUnit = told;
        const ElevationData data = ReadElevationFile(Make("unit.tif", spec), options);
        EXPECT_FLOAT_EQ(data.metres[0], expected);
        EXPECT_EQ(data.notes.size(), (*note != '\0' ? 1u : 0u) + (*reference == '\0' ? 1u : 0u));  // one on the spacing
        EXPECT_TRUE(*note == '\0' || HasNote(data, note));
        EXPECT_EQ(data.heightUnitName, name);
        EXPECT_FLOAT_EQ(static_cast<float>((1000.0 * scale + offset) * data.heightUnit), expected);
    }
}

TEST_F(ElevationFileTest, HighAndDeepAreHeightsToo)
{
    RasterSpec spec;
    spec.width = 3;
    spec.height = 1;
    spec.values = {-2.0e6, 1.0e7, 12.0};
    EXPECT_THAT(ReadElevationFile(Make("far.tif", spec)).metres, testing::ElementsAre(-2.0e6f, 1.0e7f, 12.0f));
}

TEST_F(ElevationFileTest, AnAsciiGridMayHaveItsFirstFractionFarDown)
{
    std::string text = "ncols 100\nnrows 400\nxllcorner 0\nyllcorner 0\ncellsize 10\n";
    for (int i = 0; i < 39999; ++i)
        text += "1000\n";
    const ElevationData data = ReadElevationFile(MakeText("late.asc", text + "7.25\n"));
    EXPECT_EQ(data.metres.back(), 7.25f);
}

TEST_F(ElevationFileTest, ALargeGridIsReducedToMeansOverTheAreaOfACell)
{
    struct Case {
        int width;
        int height;
        std::int64_t most;
        std::vector<float> expected;
        double spacingX = 0.0;
        double spacingY = 0.0;
    };
    // Heights are 3 y + x in a grid of 3 x 3 and so on; each mean is worked out by hand.
    const Case cases[] = {
        {3, 3, 9, {0, 1, 2, 3, 4, 5, 6, 7, 8}, 10, 10},
        {3, 3, 4, {4.0f / 3, 8.0f / 3, 16.0f / 3, 20.0f / 3}, 15, 15},
        {3, 3, 1, {4}, 30, 30},
        {4, 4, 4, {2.5f, 4.5f, 10.5f, 12.5f}, 20, 20},
        {6, 1, 3, {0.5f, 2.5f, 4.5f}, 20, 10},
        {1, 6, 3, {0.5f, 2.5f, 4.5f}, 10, 20},
        {1, 6, 0, {2.5f}, 10, 60},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(std::to_string(test.width) + " x " + std::to_string(test.height) + " to " +
                     std::to_string(test.most));
        RasterSpec spec;
        spec.width = test.width;
        spec.height = test.height;
        spec.values = GridOf(test.width, test.height, [&](int x, int y) { return test.width * y + x; });
        spec.transform = {1000, 10, 0, 2000, 0, -10};
        ElevationReadOptions options;
        options.maximumCells = test.most;
        const ElevationData data = ReadElevationFile(Make("large.tif", spec), options);
        EXPECT_THAT(data.metres, testing::Pointwise(testing::FloatEq(), test.expected));
        EXPECT_EQ(data.sourceWidth, test.width);
        EXPECT_EQ(data.sourceHeight, test.height);
        EXPECT_EQ(data.spacingX, test.spacingX);
        EXPECT_EQ(data.spacingY, test.spacingY);
        EXPECT_EQ(data.originX, 1000 + test.spacingX / 2);
        EXPECT_EQ(data.originY, 2000 - test.spacingY / 2);
        EXPECT_EQ(data.notes.size(), test.most < 9 && test.expected.size() < spec.values.size() ? 2u : 1u);
    }
}

TEST_F(ElevationFileTest, AReducedCellKnowsOnlyItsCellsWithData)
{
    RasterSpec spec;
    spec.width = spec.height = 4;
    spec.values = {1, 3, kNothing, kNothing, 5, kNothing, kNothing, kNothing, 7, 7, 9, 9, 7, 7, 9, 9};
    ElevationReadOptions options;
    options.maximumCells = 4;
    options.fill = ElevationFill::Lowest;
    const ElevationData data = ReadElevationFile(Make("holes.tif", spec), options);
    EXPECT_THAT(data.metres, testing::ElementsAre(3.0f, 3.0f, 7.0f, 9.0f));
    EXPECT_THAT(data.holes, testing::ElementsAre(0, 1, 0, 0));
}

TEST_F(ElevationFileTest, AnOverviewServesWhereItIsFineEnough)
{
    RasterSpec spec;
    spec.width = spec.height = 64;
    spec.values = GridOf(64, 64, [](int, int) { return 1.0; });
    const std::string path = Make("pyramid.tif", spec);
    {
        const GDALDatasetUniquePtr file(GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        int levels[] = {2, 4};
        ASSERT_EQ(file->BuildOverviews("NEAREST", 2, levels, 0, nullptr, nullptr, nullptr), CE_None);
        for (int i = 0; i < 2; ++i)  // so that the values tell what was read
            ASSERT_EQ(file->GetRasterBand(1)->GetOverview(i)->Fill(10.0 * (i + 1)), CE_None);
    }
    for (const auto& [most, value] : {std::pair{4096, 1.0f}, {1024, 10.0f}, {300, 10.0f}, {256, 20.0f}, {100, 20.0f}}) {
        ElevationReadOptions options;
        options.maximumCells = most;
        const ElevationData data = ReadElevationFile(path, options);
        EXPECT_EQ(data.maximum, value) << most;
        EXPECT_EQ(data.sourceWidth, 64);
    }
    // Who wants the file's own heights gets them, whatever its overviews say.
    ElevationReadOptions options;
    options.maximumCells = 256;
    options.exactRange = true;
    {
        const GDALDatasetUniquePtr file(GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        float peak = 500.0f;
        ASSERT_EQ(file->GetRasterBand(1)->RasterIO(GF_Write, 63, 0, 1, 1, &peak, 1, 1, GDT_Float32, 0, 0, nullptr),
                  CE_None);
    }
    EXPECT_EQ(ReadElevationFile(path, options).sourceRange, (std::pair{1.0f, 500.0f}));
}

TEST_F(ElevationFileTest, ProgressRisesToTheEndAndMayStopTheReading)
{
    RasterSpec spec;
    spec.width = 2000;
    spec.height = 1500;
    spec.values.assign(2000 * 1500, 3.0);
    const std::string path = Make("long.tif", spec);
    std::vector<double> heard;
    ReadElevationFile(path, {}, [&](double fraction) { heard.push_back(fraction); });
    EXPECT_GT(heard.size(), 3u);
    EXPECT_TRUE(std::is_sorted(heard.begin(), heard.end()));
    EXPECT_EQ(heard.back(), 1.0);
    EXPECT_THROW(ReadElevationFile(path, {}, [](double) { throw 7; }), int);
    EXPECT_THROW(ReadElevationFile(path, {}, [](double) { throw std::bad_alloc(); }), ElevationError);
}

TEST_F(ElevationFileTest, OneOfSeveralGridsOrBandsIsChosenByNameOrNumber)
{
    RasterSpec spec;
    spec.driver = "netCDF";
    spec.width = 3;
    spec.height = 2;
    spec.bands = 3;
    spec.bandStep = 1000.0;
    spec.values = {1, 2, 3, 4, 5, 6};
    spec.transform = {100, 10, 0, 200, 0, -10};
    spec.reference = "EPSG:32632";
    const std::string grids = Make("grids.nc", spec);
    spec.driver = "GTiff";
    const std::string bands = Make("bands.tif", spec);
    const struct {
        std::string path;
        const char* grid;
        int band;
        float expected;  // in the north-west; 0 for a refusal
        const char* text;
    } cases[] = {
        {grids, "", 0, 0, "several grids, of which one must be named: Band1 (2x3), Band2 (2x3), Band3 (2x3)"},
        {grids, "Band2", 0, 1001, ""},
        {grids, "Band4", 0, 0, "no grid \"Band4\"; it holds Band1 (2x3), "},
        {"NETCDF:\"" + grids + "\":Band3", "", 0, 2001, ""},
        {"NETCDF:" + grids + ":Band3", "", 0, 2001, ""},
        {"NETCDF:\"" + Path("none.nc") + "\":Band3", "", 0, 0, "there is no such file"},
        {bands, "", 0, 1, "Only the first of the file's 3 bands was read"},
        {bands, "", 1, 1, ""},
        {bands, "", 3, 2001, ""},
        {bands, "", 4, 0, "it has 3 bands, not 4"},
        {bands, "Band2", 0, 0, "one grid only"},
    };
    for (const auto& [path, grid, band, expected, text] : cases) {
        SCOPED_TRACE(path + " " + grid + " " + std::to_string(band));
        ElevationReadOptions options;
        options.grid = grid;
        options.band = band;
        try {
            const ElevationData data = ReadElevationFile(path, options);
            EXPECT_EQ(data.metres.front(), expected);
            EXPECT_EQ(data.notes.size(), *text != '\0' ? 1u : 0u);
            EXPECT_TRUE(*text == '\0' || HasNote(data, text));
        } catch (const ElevationError& error) {
            EXPECT_EQ(expected, 0.0f);
            EXPECT_THAT(error.what(), testing::HasSubstr(text));
        }
    }
}

TEST_F(ElevationFileTest, ArchivesAndPipesAreReadLikeFiles)
{
    RasterSpec spec;
    spec.width = 30;
    spec.height = 20;
    spec.values = GridOf(30, 20, [](int x, int y) { return 7 * y + x; });
    const std::string path = Make("plain.tif", spec);
    const std::string archive = "/vsizip/" + Path("heights.zip") + "/in/plain.tif";
    ASSERT_EQ(CPLCopyFile(archive.c_str(), path.c_str()), 0);
    EXPECT_THAT(ReadElevationFile(archive).metres, testing::ElementsAreArray(spec.values));

    const std::string pipe = Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(pipe, std::ios::binary) << std::ifstream(path, std::ios::binary).rdbuf(); });
    EXPECT_THAT(ReadElevationFile(pipe).metres, testing::ElementsAreArray(spec.values));
    writer.join();

    const int before = dup(STDIN_FILENO);
    const int file = open(path.c_str(), O_RDONLY);
    dup2(file, STDIN_FILENO);
    EXPECT_THAT(ReadElevationFile("/vsistdin/").metres, testing::ElementsAreArray(spec.values));
    dup2(before, STDIN_FILENO);
    close(file);
    close(before);
}

TEST_F(ElevationFileTest, AFlatOrTinyGridIsNoError)
{
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 1}, {1, 2}, {7, 5}}) {
        RasterSpec spec;
        spec.width = width;
        spec.height = height;
        spec.values.assign(static_cast<std::size_t>(width * height), -12.5);
        const ElevationData data = ReadElevationFile(Make("flat.tif", spec));
        EXPECT_EQ(data.metres.size(), spec.values.size());
        EXPECT_EQ(data.minimum, -12.5f);
        EXPECT_EQ(data.maximum, -12.5f);
    }
}

}  // namespace
}  // namespace tessara
