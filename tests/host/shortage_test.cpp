// Memory that runs out at any place of a whole session: the real component with every service of the host library. No
// exception leaves a method, nothing is held twice or lost, and with memory back everything works.

#include "host/camera.h"
#include "host/console_progress.h"
#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "host/kvo_host.h"
#include "host/project/project_writer.h"
#include "host/textures/texture_service.h"
#include "platform/com/bstr.h"
#include "platform/com/module_class.h"
#include "support/allocation_failure.h"
#include "support/fake_image_file.h"
#include "support/message_capture.h"
#include "support/recording_gl.h"
#include "support/scratch_folder.h"
#include "support/scripted_window_system.h"
#include "surface/itessara.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace {

using namespace tessara;
using namespace tessara::test;

constexpr int kApply = 201;

/// One terrain with its services, from its first call to its last.
class Session {
public:
    Session(const ScratchFolder& folder, ScriptedWindowSystem& windows) : folder_(folder), windows_(windows)
    {
        TextureDatabases databases(SystemDatabase(), {folder / "textures.db", true}, [](const std::string&) {});
        host_ = MakeObject<KvoHost>(ComPtr<ITextureMgr>(service_.Get()), ComPtr<IProgressWindow>(progress_.Get()),
                                    std::move(databases));
        windows_.files = {folder / "picture.tga", folder / "picture.tga"};
        windows_.answers = {IDYES, IDYES};
    }

    HRESULT Run(std::optional<MemoryShortage>& shortage, std::size_t n, std::size_t failures)
    {
        shortage.emplace(n, failures);
        const HRESULT created =
            CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain_.OutVoid());
        if (SUCCEEDED(created)) {
            Build();
            Texture();
            Save(shortage);
        }
        shortage.reset();
        if (SUCCEEDED(created))
            terrain_->StopServer();
        return created;
    }

    /// What is still held of the services, beside this object's own references.
    std::string Left()
    {
        CTextureMgrImp* textures = nullptr;
        service_->GetImplementation(&textures);
        const auto others = [](auto& object) { return std::to_string((object->AddRef(), object->Release()) - 1); };
        terrain_ = nullptr;
        const std::string left = others(matrix_) + others(camera_);
        host_ = nullptr;
        return left + others(service_) + others(progress_) + " " + std::to_string(textures->records.size());
    }

private:
    void Build()
    {
        terrain_->InitServer();
        terrain_->SetKVO(host_.Get());
        terrain_->SetMatrix(matrix_.Get());
        terrain_->SetSize(12, 9);
        terrain_->InitMatrix();
        terrain_->InitQuadTree();
        terrain_->Draw3D(camera_.Get());
        terrain_->Build3D();
        terrain_->GetRenderedPolygons(dump_.Get(), camera_.Get());
    }

    void Texture()
    {
        terrain_->CreateTextureSurface3D(8);
        terrain_->ImportTextureSource(nullptr);
        terrain_->CreateTextureSurface2D();
        terrain_->CreateTextureSurface2D();
        terrain_->SetTextureDetailFromDB(name_.Get(), table_.Get(), nullptr);
        for (int frame = 0; frame < 2; ++frame)
            terrain_->Draw3D(camera_.Get());
        terrain_->Draw2D(0, 0, 0, 0);
        BstrHolder name;
        BstrHolder table;
        terrain_->GetDBTextureDetailName(name.Out(), table.Out());
        terrain_->TextureDetailDlg();
        terrain_->ExportTextureSource(nullptr);
    }

    /// Saves into a project, loads what was saved, and draws it.
    void Save(std::optional<MemoryShortage>& shortage)
    {
        terrain_->SerializeSurfaceProperties(place_.Get());
        terrain_->SerializeMatrix(place_.Get());
        terrain_->SerializePalette(place_.Get());
        terrain_->SerializeTextures(place_.Get());
        terrain_->LoadSerializedSurfaceProperties(place_.Get());
        terrain_->LoadSerializedMatrix(place_.Get());
        terrain_->LoadSerializedPalette(place_.Get());
        terrain_->LoadSerializedTextures(place_.Get());
        terrain_->InitQuadTree();
        terrain_->Draw3D(camera_.Get());
        struck = shortage->Struck();
    }

public:
    bool struck = true;

private:
    const ScratchFolder& folder_;
    ScriptedWindowSystem& windows_;
    std::ostringstream said_;
    BstrHolder dump_{folder_ / "dump.txt"};
    BstrHolder name_{"Grass"};
    BstrHolder table_{"TerrainTextureDetail"};
    ComPtr<ElevationMatrix> matrix_ = MakeObject<ElevationMatrix>();
    ComPtr<Camera> camera_ = MakeObject<Camera>();
    ComPtr<TextureService> service_ = MakeObject<TextureService>();
    ComPtr<ConsoleProgress> progress_ = MakeObject<ConsoleProgress>(said_, false);
    ProjectWriter project_{folder_ / "project.tessara"};
    ComPtr<ProjectPlace> place_ = project_.AddElement("terrain");
    ComPtr<KvoHost> host_;
    ComPtr<ITessara> terrain_;
};

/// Each place once with all memory gone from there on, and once with a single request refused.
class Shortage : public testing::TestWithParam<std::size_t> {};

TEST_P(Shortage, AtAnyPlaceOfASessionLosesNothing)
{
    const MessageCapture messages;
    const HostClasses classes = RegisterHostClasses();
    const ScratchFolder folder;
    CallLog log;
    // Not the real reader: the image library ends the process where it has no memory.
    const auto image = MakeObject<FakeImageFile>(log);
    const ServedClass reader(CLSID_ImageFile, image.Get());
    ScriptedWindowSystem windows(log);
    windows.user = [](ScriptedDialog& dialog) {
        dialog.Click(kApply);
        dialog.Click(IDCANCEL);
    };
    ASSERT_EQ(RegisterModuleClass(CLSID_CoTessara, TESSARA_MODULE_PATH), S_OK);
    std::size_t sessions = 0;
    bool struck = true;
    for (std::size_t n = 1; struck && n < 200000; n += n < 200 ? 1 : 1 + n / 50, ++sessions) {
        RecordingGl::Reset();
        log.clear();
        log.reserve(4096);
        Session session(folder, windows);
        std::optional<MemoryShortage> shortage;
        session.Run(shortage, n, GetParam());
        struck = session.struck;
        ASSERT_EQ(session.Left(), "0000 0") << n;
    }
    EXPECT_FALSE(struck);
    RecordProperty("sessions", static_cast<int>(sessions));
    EXPECT_GT(sessions, 250u);
    CoFreeUnusedLibraries();
}

INSTANTIATE_TEST_SUITE_P(Memory, Shortage, testing::Values(1, SIZE_MAX),
                         [](const auto& failures) { return failures.param == 1 ? "OneRequest" : "AllFromThere"; });

}  // namespace
