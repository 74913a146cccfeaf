#include "project_surfaces.h"

#include <map>

namespace tessara::test {

namespace {

using Values = std::map<std::string, std::vector<std::uint8_t>>;

Values ValuesOf(const ProjectPlace& place)
{
    Values values;
    for (const ProjectPlace::Value& value : place.Values()) {
        EXPECT_TRUE(value.deliverable) << value.name;
        values[value.name] = *place.Read(value.name);
    }
    return values;
}

class ProjectSurfaceTest : public ProjectSurfacesTest {};

TEST_F(ProjectSurfaceTest, SeveralTerrainsComeBackFromOneFile)
{
    {
        ProjectWriter writer(path_);
        for (const std::uint32_t seed : {1u, 2u, 3u}) {
            const auto surface = NewTerrain(static_cast<LONG>(20 + seed), 30, seed);
            Save(*surface, *writer.AddElement("terrain " + std::to_string(seed)));
            surface->StopServer();
        }
        writer.Commit();
    }
    const ProjectFile project(path_);
    ProjectWriter again(folder_ / "again.tessara");
    for (const std::string& name : project.Elements()) {
        const auto saved = project.Open(name);
        const auto surface = NewSurface();
        EXPECT_TRUE(Load(*surface, *saved));
        const auto place = again.AddElement(name);
        Save(*surface, *place);
        const Values values = ValuesOf(*saved);
        EXPECT_EQ(values.size(), 27u) << "all of a terrain with a source image of 24 bits, without a detail texture";
        EXPECT_TRUE(ValuesOf(*place) == values) << name;
        EXPECT_EQ(surface->InitQuadTree(), S_OK);
        surface->StopServer();
    }
}

TEST_F(ProjectSurfaceTest, ASurfaceThatIsSavedTwiceIntoAPlaceIsTheLastOne)
{
    ProjectWriter writer(path_);
    const auto place = writer.AddElement("terrain");
    for (const LONG side : {50, 10}) {
        textures_->image = {side, 2, side == 50 ? 24 : 32, std::vector<BYTE>(side == 50 ? 300 : 80), S_OK};
        const auto surface = NewTerrain(side, side, 4);
        Save(*surface, *place);
        surface->StopServer();
    }
    EXPECT_EQ(place->Read("MATRIX_DATA")->size(), 400u);
    EXPECT_EQ(ValuesOf(*place).at("TEXTURE_SRC_DATA").size(), 80u);
    EXPECT_FALSE(place->Read("TEXTURE_SRC_BITS")) << "the depth of the image before";
}

}  // namespace

}  // namespace tessara::test
