#include "app/picture.h"
#include "app/program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tessara {
namespace {

using testing::HasSubstr;

/// A Targa file of 2 x 2 pixels: red and green over blue and white.
void WriteTarga(const std::string& path)
{
    const unsigned char bytes[] = {0, 0,  2, 0,   0, 0, 0,   0,   0,   0, 0, 0,   2, 0,   2,
                                   0, 24, 0, 255, 0, 0, 255, 255, 255, 0, 0, 255, 0, 255, 0};
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes), sizeof bytes);
}

class TexturesCommand : public testing::Test {
protected:
    TexturesCommand() { setenv("XDG_DATA_HOME", (folder_ / "data").c_str(), 1); }
    ~TexturesCommand() override { unsetenv("XDG_DATA_HOME"); }

    static std::string Output(const std::vector<std::string>& arguments)
    {
        std::vector<std::string> all = {"textures"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ProgramRun run = RunTessara(all);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return run.output;
    }

    static std::string Failure(const std::vector<std::string>& arguments)
    {
        std::vector<std::string> all = {"textures"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ProgramRun run = RunTessara(all);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.output, "");
        return run.errors;
    }

    ScratchFolder folder_;
};

TEST_F(TexturesCommand, ListsAndShowsTheShippedTextures)
{
    EXPECT_THAT(Output({"list"}), HasSubstr("system    Forest floor  512 x 512  24    forest-floor\n"));
    EXPECT_EQ(Output({"list", "--database", "user"}), "DATABASE  NAME  SIZE  BITS  KEY\n");
    const std::string picture = folder_ / "grass.png";
    EXPECT_THAT(Output({"show", "Grass", "-o", picture, "--tiles", "2"}), HasSubstr("512 x 512 pixels of 24 bits"));
    const Picture grass = ReadPicture(picture);
    ASSERT_EQ(grass.width, 1024);
    EXPECT_EQ(Difference(grass.At(100, 50), grass.At(612, 562)), 0);
    EXPECT_GT(grass.Mean(0, 0, 1024, 1024).green, grass.Mean(0, 0, 1024, 1024).blue);
    EXPECT_EQ(Failure({"show", "Moss"}),
              "tessara: There is no texture \"Moss\". \"tessara textures list\" tells what there is.\n");
}

TEST_F(TexturesCommand, ImportsReplacesAndDeletes)
{
    const std::string image = folder_ / "image.tga";
    WriteTarga(image);
    EXPECT_EQ(Output({"import", image, "--name", "Grüner Rasen"}),
              "Imported \"Grüner Rasen\", 2 x 2 pixels of 24 bits\n");
    EXPECT_THAT(Output({"list", "--database", "user"}), HasSubstr("user      Grüner Rasen  2 x 2  24    "));
    Output({"show", "Grüner Rasen", "-o", folder_ / "back.png"});
    const Picture back = ReadPicture(folder_ / "back.png");
    EXPECT_EQ(back.bytes, (std::vector<std::uint8_t>{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));

    EXPECT_THAT(Failure({"import", image, "--name", "Grüner Rasen"}), HasSubstr("--replace replaces it"));
    EXPECT_THAT(Output({"import", image, "--name", "Grüner Rasen", "--replace"}), HasSubstr("Replaced"));
    EXPECT_THAT(Failure({"delete", "Grüner Rasen", "Moss"}), HasSubstr("no texture \"Moss\". Nothing was deleted."));
    EXPECT_EQ(Output({"delete", "Grüner Rasen"}), "Deleted \"Grüner Rasen\"\n");
    EXPECT_EQ(Output({"list", "--database", "user"}), "DATABASE  NAME  SIZE  BITS  KEY\n");
    EXPECT_THAT(Failure({"delete", "Grass"}), HasSubstr("The user's database has no texture \"Grass\""));
}

TEST_F(TexturesCommand, SaysWhatIsWrongWithAnImageOrADatabase)
{
    WriteText(folder_ / "text.png", "no picture");
    EXPECT_THAT(Failure({"import", folder_ / "text.png", "--name", "A"}),
                HasSubstr("Can't read the image \"" + (folder_ / "text.png") + "\""));
    EXPECT_THAT(Failure({"import", folder_ / "missing.png", "--name", "A"}), HasSubstr("there is no such file"));
    EXPECT_EQ(folder_.List(), std::vector<std::string>{"text.png"}) << "no database for nothing";

    std::filesystem::create_directories(folder_ / "data/tessara");
    WriteText(folder_ / "data/tessara/textures.db", "This is somebody's diary, and it is to stay as it is.");
    const std::string user = folder_ / "data/tessara/textures.db";
    const auto lists = [&](const std::string& why) {
        const ProgramRun run = RunTessara({"textures", "list"});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_THAT(run.errors, HasSubstr(user + "\"" + why + "\n"));
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
        EXPECT_THAT(run.output, HasSubstr("system    Grass ")) << "the rest keeps working";
    };
    lists(" is not a texture database");
    EXPECT_THAT(ReadText(user), HasSubstr("diary"));
    std::filesystem::remove(user);
    std::filesystem::create_symlink("textures.db", user);
    lists(": Too many levels of symbolic links");
    std::filesystem::remove(user);
    std::filesystem::create_directory(user);
    lists(": it is a folder");
}

}  // namespace
}  // namespace tessara
