#include "fuzz/targets.h"
#include "host/project/project_surfaces.h"
#include "host/storage/sqlite_file.h"
#include "support/sqlite_shell.h"

#include <string>
#include <vector>

namespace tessara::test {

namespace {

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
        whole_ = ReadBytes(path_);
    }

    bool Use(Damage damage)
    {
        const std::size_t kind = damage.Take(1) % 4;
        std::string file = whole_;
        if (kind == 0)
            damage.Cut(file);
        if (kind == 1)
            damage.Apply(file, kPage);
        folder_.Write("project.tessara", file);
        if (kind > 1)
            DamageValues(damage);
        const bool opened = Open();
        Require(opened || kind < 2, "a sound file with bad values was refused");
        log_.clear();
        RecordingGl::Reset();
        return opened;
    }

private:
    static constexpr std::size_t kPage = 32768;

    void TestBody() override {}

    void DamageValues(Damage& damage)
    {
        std::string sql = "PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF; BEGIN;";
        while (damage.IsLeft()) {
            const std::string& name = names_[damage.Take(1) % names_.size()];
            const std::size_t size = damage.Take(1);
            const auto bytes = damage.TakeBlock(size < 200 ? 4 : size < 250 ? size - 200 : damage.Take(2));
            sql += "UPDATE value SET bytes = " + SqlBlob(bytes) + " WHERE name = '" + name + "';";
        }
        RunSql(path_, sql + "COMMIT");
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

bool UseDamagedProject(Damage damage)
{
    static DamagedProject project;
    return project.Use(damage);
}

}  // namespace tessara::test
