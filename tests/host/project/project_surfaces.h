#pragma once

#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "support/fake_services.h"
#include "support/recording_gl.h"
#include "support/scratch_folder.h"
#include "support/test_grid.h"
#include "surface/co_tessara.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tessara::test {

/// Surfaces that are saved into project files and loaded from them.
class ProjectSurfacesTest : public testing::Test {
protected:
    ProjectSurfacesTest()
    {
        RecordingGl::Reset();
        host_->textures = textures_.Get();
        textures_->image = {4, 4, 24, std::vector<BYTE>(48, 99), S_OK};
    }

    ComPtr<CoTessara> NewSurface()
    {
        auto surface = MakeObject<CoTessara>();
        surface->InitServer();
        surface->SetKVO(host_.Get());
        return surface;
    }

    /// A surface with something in every value.
    ComPtr<CoTessara> NewTerrain(LONG columns, LONG rows, std::uint32_t seed)
    {
        auto surface = NewSurface();
        const auto matrix = MakeObject<ElevationMatrix>();
        surface->SetMatrix(matrix.Get());
        surface->SetSize(columns, rows);
        surface->InitMatrix();
        for (LONG y = 0; y < rows; ++y) {
            for (LONG x = 0; x < columns; ++x)
                matrix->ElementAt(x, y)->value = HashNoise(x, y, seed);
        }
        surface->SetElevationScale(12.5f);
        surface->SetLOD(static_cast<float>(seed));
        surface->SetTranslation3D(1.0f, 2.0f, 3.0f);
        surface->CreateTextureSurface3D(4);
        const BstrHolder name("Grass");
        surface->SetUserTextureName(name.Get());
        return surface;
    }

    static void Save(CoTessara& surface, IParser& place)
    {
        EXPECT_EQ(surface.SerializeSurfaceProperties(&place), S_OK);
        EXPECT_EQ(surface.SerializeMatrix(&place), S_OK);
        EXPECT_EQ(surface.SerializePalette(&place), S_OK);
        EXPECT_EQ(surface.SerializeTextures(&place), S_OK);
    }

    /// \return whether there was a matrix to load
    static bool Load(CoTessara& surface, IParser& place)
    {
        surface.LoadSerializedSurfaceProperties(&place);
        const HRESULT result = surface.LoadSerializedMatrix(&place);
        surface.LoadSerializedPalette(&place);
        surface.LoadSerializedTextures(&place);
        return SUCCEEDED(result);
    }

    ScratchFolder folder_;
    const std::string path_ = folder_ / "project.tessara";
    const HostClasses classes_ = RegisterHostClasses();
    CallLog log_;
    ComPtr<FakeHost> host_ = MakeObject<FakeHost>(log_);
    ComPtr<FakeTextureMgr> textures_ = MakeObject<FakeTextureMgr>(log_);
    ComPtr<FakeCamera> camera_ = MakeObject<FakeCamera>(log_);
};

}  // namespace tessara::test
