// Damaged and hostile project files: whatever a file holds, it is refused in words, or loads what is sound in it.

#include "host/storage/sqlite_file.h"
#include "project_surfaces.h"

#include <sqlite3.h>

#include <fstream>
#include <random>
#include <sstream>

namespace tessara::test {

namespace {

class ProjectDamageTest : public ProjectSurfacesTest {
protected:
    ProjectDamageTest()
    {
        ProjectWriter writer(path_);
        const auto surface = NewTerrain(9, 7, 5);
        Save(*surface, *writer.AddElement("terrain"));
        writer.AddElement("empty")->Set("number", 5.0);
        surface->StopServer();
        writer.Commit();
        std::ostringstream text;
        text << std::ifstream(path_, std::ios::binary).rdbuf();
        whole_ = text.str();
        for (std::size_t i = 0; i < whole_.size(); ++i) {
            if (whole_[i] != 0)
                used_.push_back(i);
        }
    }

    /// Opens the file and takes everything out of it, up to a drawn frame.
    /// \return whether it opened at all
    bool Use()
    {
        try {
            const ProjectFile project(path_);
            project.Settings();
            for (const std::string& name : project.Elements()) {
                const auto place = project.Open(name);
                place->Settings();
                place->Values();
                const auto surface = NewSurface();
                if (Load(*surface, *place) && surface->InitQuadTree() == S_OK)
                    surface->Draw3D(camera_.Get());
                surface->StopServer();
            }
        } catch (const StorageError& error) {
            EXPECT_NE(std::string(error.what()).find(path_), std::string::npos) << error.what();
            return false;
        }
        log_.clear();
        RecordingGl::Reset();
        return true;
    }
    void Write(const std::string& content) { std::ofstream(path_, std::ios::binary | std::ios::trunc) << content; }
    std::size_t Pick(std::size_t end) { return random_() % end; }

    std::string whole_;
    std::vector<std::size_t> used_;
    std::mt19937 random_{7};
};

TEST_F(ProjectDamageTest, CutsAreRefusedOrRead)
{
    for (int round = 0; round < 150; ++round) {
        Write(whole_.substr(0, Pick(whole_.size())));
        Use();
    }
    Write(whole_.substr(0, 50));
    EXPECT_FALSE(Use());
    Write(whole_);
    EXPECT_TRUE(Use());
}

TEST_F(ProjectDamageTest, FlippedBitsAreRefusedOrRead)
{
    int opened = 0;
    for (int round = 0; round < 600; ++round) {
        std::string damaged = whole_;
        for (std::size_t flips = 1 + Pick(12); flips > 0; --flips) {
            // Numbers of SQLite's own lie in the first bytes of a page and of what is in use.
            const std::size_t at =
                Pick(4) != 0 ? used_[Pick(used_.size())] : Pick(whole_.size() / 32768) * 32768 + Pick(64);
            char& byte = damaged[at];
            byte = static_cast<char>(Pick(3) != 0 ? byte ^ static_cast<char>(1u << Pick(8))
                                                  : static_cast<char>(random_()));
        }
        Write(damaged);
        opened += Use() ? 1 : 0;
    }
    EXPECT_GT(opened, 50) << "hardly any damage got past the opening";
    EXPECT_LT(opened, 600);
}

TEST_F(ProjectDamageTest, ExchangedPagesAreRefusedOrRead)
{
    for (int round = 0; round < 100; ++round) {
        std::string damaged = whole_;
        const std::size_t pages = whole_.size() / 32768;
        damaged.replace(Pick(pages) * 32768, 32768, whole_, Pick(pages) * 32768, 32768);
        Write(damaged);
        Use();
    }
}

sqlite3* OpenRaw(const std::string& path)
{
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr), SQLITE_OK);
    return database;
}

TEST_F(ProjectDamageTest, ValuesOfAnySizeAndContentAreRefusedOrRead)
{
    sqlite3* database = OpenRaw(path_);
    std::vector<std::string> names;
    for (const ProjectPlace::Value& value : ProjectFile(path_).Open("terrain")->Values())
        names.push_back(value.name);
    for (int round = 0; round < 400; ++round) {
        std::vector<char> bytes(Pick(4) != 0 ? 4 : Pick(3000));
        for (char& byte : bytes)
            byte = static_cast<char>(Pick(2) != 0 ? Pick(3) : random_());
        sqlite3_stmt* statement = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(database, "UPDATE value SET bytes = ? WHERE name = ?", -1, &statement, nullptr),
                  SQLITE_OK);
        sqlite3_bind_blob(statement, 1, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC);
        const std::string& name = names[Pick(names.size())];
        sqlite3_bind_text(statement, 2, name.c_str(), -1, SQLITE_STATIC);
        sqlite3_step(statement);
        sqlite3_finalize(statement);
        EXPECT_TRUE(Use()) << "the file itself is sound";
        if (Pick(8) == 0) {
            sqlite3_close(database);
            Write(whole_);
            database = OpenRaw(path_);
        }
    }
    sqlite3_close(database);
}

}  // namespace

}  // namespace tessara::test
