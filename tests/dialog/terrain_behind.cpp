#include "dialog/terrain_behind.h"

#include "host/test_elevation.h"
#include "host/textures/texture_service.h"
#include "platform/com/bstr.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

namespace tessara::test {

namespace {

constexpr int kSide = 96;

ElevationData Hills()
{
    return MakeElevation(33, 33, 10.0, 10.0, [](int x, int y) { return 20.0 * std::sin(0.3 * x) * std::cos(0.2 * y); });
}

}  // namespace

class ViewProgress final : public ComObject<IProgressWindow> {
public:
    explicit ViewProgress(TerrainBehind& terrain) : terrain_(terrain) {}
    HRESULT STDMETHODCALLTYPE StepProgress(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetProgressRange(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE BeginProgress(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EndProgress(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetProgressTitle(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowMessage(BSTR message) override
    {
        terrain_.messages.push_back(NarrowText(message));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE RequestRedraw(LONG what, LONG reserved) override
    {
        EXPECT_EQ(what, 8);
        EXPECT_EQ(reserved, 0);
        terrain_.Draw();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetViewState(LONG, LONG) override { return S_OK; }

private:
    TerrainBehind& terrain_;
};

TerrainBehind::TerrainBehind()
{
    EXPECT_TRUE(gl_.Load(OffscreenContext::Lookup()));
    target_ = std::make_unique<RenderTarget>(gl_, kSide, kSide, false);
    target_->Bind();
    const ComPtr<IProgressWindow> progress(MakeObject<ViewProgress>(*this).Get());
    const auto report = [this](const std::string& sentence) { messages.push_back(sentence); };
    TextureDatabases databases(SystemDatabase(), {folder_ / "textures.db", true}, report);
    host_ = ComPtr<IKvoHost>(
        MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()), progress, std::move(databases))
            .Get());
    session_ = std::make_unique<TerrainSession>(Hills(), TerrainOptions{}, host_);
    camera_->SetDrawUnits(session_->Ground().DrawUnits());
    camera_->SetViewport(kSide, kSide);
    camera_->SetLens(50.0, 1.0, 2000.0);
    camera_->SetPosition({160.0, 240.0, 300.0});
    camera_->LookAt({160.0, 0.0, 150.0});
    // The tree settles, so that equal settings give equal pictures.
    for (int frame = 0; frame < 20; ++frame)
        Draw();
}

TerrainBehind::~TerrainBehind()
{
    context_.Restore();
    session_.reset();
    target_.reset();
}

const std::vector<std::uint8_t>& TerrainBehind::Draw()
{
    EXPECT_TRUE(HasContext()) << "another context is current than the terrain's";
    glEnable(GL_DEPTH_TEST);
    glClearColor(0.0f, 0.0f, 0.2f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    camera_->LoadMatrices();
    Surface().Draw3D(camera_.Get());
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    picture_ = target_->ReadPixels();
    return picture_;
}

std::size_t TerrainBehind::Count(bool user) const
{
    VARIANT selector;
    VariantInit(&selector);
    ComPtr<ITextureDatabase> database;
    host_->OpenTextureDatabase(database.Out(), user ? &selector : nullptr);
    std::vector<BSTR> keys;
    std::vector<BSTR> names;
    database->ListElements(&keys, &names);
    for (const auto& list : {keys, names}) {
        for (const BSTR text : list)
            SysFreeString(text);
    }
    return keys.size();
}

std::string TerrainBehind::WriteImage(const std::string& name) const
{
    std::string targa("\0\0\2\0\0\0\0\0\0\0\0\0\x10\0\x10\0\x20\x08", 18);
    for (int pixel = 0; pixel < 16 * 16; ++pixel)
        targa += std::string("\x20\x10\xE0\xFF", 4);  // blue, green, red, opaque
    return folder_.Write(name, targa);
}

}  // namespace tessara::test
