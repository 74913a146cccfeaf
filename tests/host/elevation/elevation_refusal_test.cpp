#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/raster_fixture.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace tessara {
namespace {

class ElevationRefusalTest : public RasterFixture {
protected:
    /// Expects one sentence that names the file and holds a text, and nothing on the error stream.
    static void ExpectRefused(const std::string& path, const std::string& text)
    {
        SCOPED_TRACE(path);
        testing::internal::CaptureStderr();
        try {
            ElevationReadOptions options;
            options.patience = 0.0;
            ReadElevationFile(path, options);
            ADD_FAILURE() << "was read";
        } catch (const ElevationError& error) {
            const std::string sentence = error.what();
            EXPECT_THAT(sentence, testing::HasSubstr(path));
            EXPECT_THAT(sentence, testing::HasSubstr(text));
            EXPECT_THAT(sentence, testing::EndsWith("."));
            EXPECT_EQ(std::count(sentence.begin(), sentence.end(), '\n'), 0);
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }

    static RasterSpec Relief(const std::string& driver, const std::string& type)
    {
        RasterSpec spec;
        spec.driver = driver;
        spec.type = type;
        spec.width = 120;
        spec.height = 90;
        spec.values = GridOf(120, 90, [](int x, int y) { return (x * 7919 + y * 104729) % 251; });
        return spec;
    }
};

TEST_F(ElevationRefusalTest, WhatIsNoFileToReadIsNamed)
{
    ExpectRefused(Path("nowhere.tif"), "there is no such file");
    ExpectRefused(Path("nowhere/at/all.tif"), "there is no such file");
    ExpectRefused("", "without a name");
    ExpectRefused(MakeText("empty.tif", ""), "it is empty");
    ExpectRefused(Path(""), "folder");
    MakeText("notes.txt", "Mountains are high.\n");
    ExpectRefused(Path(""), "a folder that holds no elevations");
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    ExpectRefused(Path("pipe"), "a pipe that nobody writes to");
    ExpectRefused("/dev/null", "neither a file nor a folder nor a pipe");
    ExpectRefused("/vsizip/" + Path("nowhere.zip") + "/heights.tif", "there is no such file");
}

TEST_F(ElevationRefusalTest, AFileThatCantBeOpenedSaysWhy)
{
    const std::string path = Make("secret.tif", Relief("GTiff", "Int16"));
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    if (access(path.c_str(), R_OK) == 0)
        GTEST_SKIP() << "this user may read every file";
    ExpectRefused(path, "Permission denied");
}

TEST_F(ElevationRefusalTest, WhatHoldsNoElevationsIsRefused)
{
    ExpectRefused(MakeText("notes.txt", "Mountains are high.\n"), "not in a format that holds elevations");
    ExpectRefused(MakeText("noise.tif", std::string(5000, '\x9d')), "not in a format");

    RasterSpec photograph = Relief("PNG", "Byte");
    photograph.bands = 3;
    ExpectRefused(Make("rgb.png", photograph), "a colour picture with 3 channels");
    photograph.driver = "GTiff";
    photograph.type = "UInt16";
    photograph.bands = 4;
    ExpectRefused(Make("rgbn.tif", photograph), "a colour picture with 4 channels");
    RasterSpec paletted = Relief("PNG", "Byte");
    paletted.palette = true;
    std::fill(paletted.values.begin(), paletted.values.end(), 0.0);
    ExpectRefused(Make("map.png", paletted), "colour table");
    ExpectRefused(Make("waves.tif", Relief("GTiff", "CFloat32")), "complex numbers");

    RasterSpec hole = Relief("GTiff", "Float32");
    std::fill(hole.values.begin(), hole.values.end(), -1.0);
    hole.noData = -1.0;
    ExpectRefused(Make("hole.tif", hole), "none of its 120 x 90 cells has data");
}

TEST_F(ElevationRefusalTest, AFileThatIsCutShortIsRefusedWhereverItEnds)
{
    const struct {
        const char* name;
        const char* driver;
        std::vector<std::string> options;
    } cases[] = {
        {"strips.tif", "GTiff", {}},
        {"packed.tif", "GTiff", {"COMPRESS=DEFLATE", "TILED=YES", "BLOCKXSIZE=16", "BLOCKYSIZE=16"}},
        {"picture.png", "PNG", {}},
        {"grid.asc", "AAIGrid", {}},
        {"imagine.img", "HFA", {}},
    };
    for (const auto& [name, driver, options] : cases) {
        for (const double share : {0.1, 0.5, 0.98}) {
            RasterSpec spec = Relief(driver, "UInt16");
            spec.options = options;
            const std::string path = Make(name, spec);
            Truncate(path, share);
            ExpectRefused(path, "damaged");
        }
    }
}

TEST_F(ElevationRefusalTest, AFileThatLiesAboutItsSizeCostsNoMemory)
{
    const struct {
        const char* size;
        const char* text;
    } cases[] = {
        {"2000000000", "2000000000 x 2000000000 cells, more than can be read"},
        {"500000", "500000 x 500000 cells, more than can be read"},
    };
    for (const auto& [size, text] : cases)
        ExpectRefused(MakeText("large.vrt", "<VRTDataset rasterXSize=\"" + std::string(size) + "\" rasterYSize=\"" +
                                                size +
                                                "\"><VRTRasterBand dataType=\"Float32\" band=\"1\"/></VRTDataset>"),
                      text);
    ExpectRefused(MakeHollow("hollow.tif", 200000, {"TILED=YES", "BLOCKXSIZE=4096", "BLOCKYSIZE=4096"}),
                  "200000 x 200000 cells, more than can be read");
    ExpectRefused(MakeHollow("tile.tif", 46400, {"TILED=YES", "BLOCKXSIZE=46400", "BLOCKYSIZE=46400"}),
                  "pieces of 46400 x 46400 cells");
    ExpectRefused(MakeText("header.asc", "ncols 100000\nnrows 100000\nxllcorner 0\nyllcorner 0\ncellsize 1\n1 2 3\n"),
                  "damaged or cut short");
}

TEST_F(ElevationRefusalTest, OnlyWhatTheUserNamesIsFetchedOverANetwork)
{
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(listen(listener, 4), 0);
    ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
    const std::string url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/heights.tif";

    for (const std::string& source : {url, "/vsicurl/" + url})
        ExpectRefused(MakeText("link.vrt", "<VRTDataset rasterXSize=\"9\" rasterYSize=\"9\"><VRTRasterBand "
                                           "dataType=\"Float32\" band=\"1\"><SimpleSource><SourceFilename>" +
                                               source +
                                               "</SourceFilename><SourceBand>1</SourceBand></SimpleSource>"
                                               "</VRTRasterBand></VRTDataset>"),
                      "read");
    EXPECT_EQ(accept(listener, nullptr, nullptr), -1) << "somebody called";

    // GDAL remembers what it couldn't reach.
    for (const std::string& named : {url + "?first", "/vsicurl/" + url + "?second"}) {
        int calls = 0;
        std::atomic<bool> enough{false};
        std::thread server([&] {
            while (!enough) {
                pollfd waiting{listener, POLLIN, 0};
                poll(&waiting, 1, 10);
                if (const int caller = accept(listener, nullptr, nullptr); caller >= 0) {
                    ++calls;
                    close(caller);  // without a word
                }
            }
        });
        ExpectRefused(named, "nothing could be fetched");
        enough = true;
        server.join();
        EXPECT_GT(calls, 0) << named;
    }
    close(listener);
}

}  // namespace
}  // namespace tessara
