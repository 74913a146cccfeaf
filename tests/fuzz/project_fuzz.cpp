#include "fuzz/project_fuzz.h"

#include "host/project/project_surfaces.h"
#include "host/storage/sqlite_file.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tessara::test {

namespace {

void Require(bool held, const std::string& what)
{
    if (held)
        return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

/// Takes numbers and bytes from the input; zeros when it is used up.
class Bytes {
public:
    explicit Bytes(std::span<const std::uint8_t> input) : input_(input) {}

    bool AreLeft() const { return !input_.empty(); }

    std::size_t Take(int count)
    {
        std::size_t number = 0;
        for (int i = 0; i < count; ++i) {
            number = number << 8 | (AreLeft() ? input_.front() : 0u);
            input_ = input_.subspan(AreLeft() ? 1 : 0);
        }
        return number;
    }

    std::vector<std::uint8_t> TakeBlock(std::size_t size)
    {
        const auto block = input_.first(std::min(size, input_.size()));
        input_ = input_.subspan(block.size());
        std::vector<std::uint8_t> taken(block.begin(), block.end());
        taken.resize(size);
        return taken;
    }

private:
    std::span<const std::uint8_t> input_;
};

class DamagedProject final : public ProjectSurfacesTest {
public:
    DamagedProject()
    {
        ProjectWriter writer(path_);
        const auto surface = NewTerrain(9, 7, 5);
        const auto place = writer.AddElement("terrain");
        Save(*surface, *place);
        surface->StopServer();
        writer.AddElement("empty")->Set("number", 5.0);
        writer.Commit();
        for (const ProjectPlace::Value& value : ProjectFile(path_).Open("terrain")->Values())
            names_.push_back(value.name);
        std::ostringstream text;
        text << std::ifstream(path_, std::ios::binary).rdbuf();
        whole_ = text.str();
    }

    bool Use(Bytes input)
    {
        const std::size_t kind = input.Take(1) % 4;
        std::string file = whole_;
        if (kind == 0)
            file.resize(input.Take(3) % whole_.size());
        while (kind == 1 && input.AreLeft())
            DamageBytes(file, input);
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << file;
        if (kind > 1)
            DamageValues(input);
        const bool opened = Open();
        Require(opened || kind < 2, "a sound file with bad values was refused");
        log_.clear();
        RecordingGl::Reset();
        return opened;
    }

private:
    static constexpr std::size_t kPage = 32768;

    void TestBody() override {}

    /// Another byte, one near the beginning of a page, where SQLite's own numbers lie, or a page in the place of
    /// another.
    static void DamageBytes(std::string& file, Bytes& input)
    {
        const std::size_t pages = file.size() / kPage;
        const std::size_t how = input.Take(1);
        const std::size_t page = how % pages * kPage;
        if (how < 16)
            file.replace(page, kPage, std::string(file), input.Take(1) % pages * kPage, kPage);
        else if (how < 128)
            file[page + input.Take(1)] = static_cast<char>(input.Take(1));
        else
            file[input.Take(3) % file.size()] = static_cast<char>(input.Take(1));
    }

    void DamageValues(Bytes& input)
    {
        sqlite3* database = nullptr;
        sqlite3_open(path_.c_str(), &database);
        sqlite3_exec(database, "PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF; BEGIN", nullptr, nullptr, nullptr);
        while (input.AreLeft()) {
            const std::string& name = names_[input.Take(1) % names_.size()];
            const std::size_t size = input.Take(1);
            const auto bytes = input.TakeBlock(size < 200 ? 4 : size < 250 ? size - 200 : input.Take(2));
            sqlite3_stmt* statement = nullptr;
            const char sql[] = "UPDATE value SET bytes = ? WHERE name = ?";
            Require(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) == SQLITE_OK, "no statement");
            sqlite3_bind_blob(statement, 1, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC);
            sqlite3_bind_text(statement, 2, name.c_str(), -1, SQLITE_STATIC);
            sqlite3_step(statement);
            sqlite3_finalize(statement);
        }
        sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(database);
    }

    bool Open()
    {
        try {
            const ProjectFile project(path_);
            project.Settings();
            for (const std::string& name : project.Elements())
                Draw(*project.Open(name));
            return true;
        } catch (const StorageError& error) {
            Require(std::string(error.what()).find(path_) != std::string::npos,
                    std::string("an error names no file: ") + error.what());
            return false;
        }
    }

    void Draw(ProjectPlace& place)
    {
        place.Settings();
        place.Values();
        const auto surface = NewSurface();
        if (Load(*surface, place) && surface->InitQuadTree() == S_OK)
            surface->Draw3D(camera_.Get());
        surface->StopServer();
    }

    std::string whole_;
    std::vector<std::string> names_;
};

}  // namespace

bool UseDamagedProject(std::span<const std::uint8_t> damage)
{
    static DamagedProject project;
    return project.Use(Bytes(damage));
}

}  // namespace tessara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tessara::test::UseDamagedProject({data, size});
    return 0;
}
