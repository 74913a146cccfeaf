// A picture of four quarters on each way that it can take to the screen: its upper edge lies in the north, and whoever
// looks at it sees it upright and unmirrored.

#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "host/images/image_samples.h"
#include "host/kvo_host.h"
#include "host/textures/texture_service.h"
#include "platform/com/module_class.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"
#include "services/image_file.h"
#include "support/fake_services.h"
#include "support/scratch_folder.h"
#include "support/scripted_window_system.h"
#include "surface/itessara.h"

#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace tessara;
using namespace tessara::test;

constexpr int kColumns = 48;
constexpr int kRows = 32;

/// Red, green and blue in the order north-west, north-east, south-west, south-east.
constexpr std::array<std::array<int, 3>, 4> kQuarters = {
    {{220, 30, 30}, {30, 200, 30}, {30, 30, 220}, {240, 240, 240}}};

std::string Samples(int channel)
{
    std::string samples;
    for (int i = 0; i < kColumns * kRows; ++i) {
        const auto quarter = static_cast<std::size_t>((i % kColumns >= kColumns / 2) + 2 * (i / kColumns >= kRows / 2));
        for (const int c : {0, 1, 2}) {
            if (channel < 0 || channel == c)
                samples += static_cast<char>(kQuarters[quarter][static_cast<std::size_t>(c)]);
        }
    }
    return samples;
}

class PictureWay : public testing::TestWithParam<const char*> {
protected:
    PictureWay()
    {
        path_ = folder_.Path(std::string("quarters.") + GetParam());
        if (std::string_view(GetParam()) == "psd") {
            folder_.Write(path_, Psd(3, 3, kColumns, kRows, 8, Samples(0) + Samples(1) + Samples(2)));
        } else {
            const OIIO::ImageSpec spec(kColumns, kRows, 3, OIIO::TypeDesc::UINT8);
            const auto output = OIIO::ImageOutput::create(path_);
            EXPECT_TRUE(output && output->open(path_, spec));
            EXPECT_TRUE(output->write_image(OIIO::TypeDesc::UINT8, Samples(-1).data()));
            output->close();
        }
    }

    void SetUp() override
    {
        try {
            context_.emplace();
        } catch (const std::exception& error) {
            GTEST_SKIP() << error.what();
        }
        ASSERT_TRUE(gl_.Load(OffscreenContext::Lookup()));
        target_.emplace(gl_, 2 * kColumns, 2 * kRows, false);
        target_->Bind();
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
    }

    /// The middles of the four quarters of what was drawn, near enough to those of the picture.
    void ExpectUpright()
    {
        const std::vector<std::uint8_t> pixels = target_->ReadPixels();
        for (std::size_t quarter = 0; quarter < 4; ++quarter) {
            const std::size_t x = kColumns / 2 + (quarter % 2) * kColumns;
            const std::size_t y = kRows / 2 + (quarter / 2) * kRows;
            for (std::size_t c = 0; c < 3; ++c)
                EXPECT_NEAR(pixels[(y * 2 * kColumns + x) * 3 + c], kQuarters[quarter][c], 12) << quarter << " " << c;
        }
    }

    ScratchFolder folder_;
    std::string path_;
    HostClasses classes_ = RegisterHostClasses();
    std::optional<OffscreenContext> context_;
    GlFunctions gl_;
    std::optional<RenderTarget> target_;
};

TEST_P(PictureWay, ThroughAnImportOntoTheTerrain)
{
    ASSERT_EQ(RegisterModuleClass(CLSID_CoTessara, TESSARA_MODULE_PATH), S_OK);
    ComPtr<ITessara> terrain;
    ASSERT_EQ(
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid()),
        S_OK);
    CallLog log;
    ScriptedWindowSystem windows(log);
    windows.files = {path_};
    const auto matrix = MakeObject<ElevationMatrix>();
    matrix->SetWidth(kColumns + 1);
    matrix->SetHeight(kRows + 1);
    ASSERT_EQ(matrix->AllocateCells(), S_OK);
    terrain->InitServer();
    terrain->SetKVO(MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()), nullptr).Get());
    terrain->SetMatrix(matrix.Get());
    ASSERT_EQ(terrain->InitQuadTree(), S_OK);
    EXPECT_EQ(terrain->ImportTextureSource(nullptr), S_OK);
    terrain->UseColor(0);

    glOrtho(0.0, kColumns, -kRows, 0.0, -100.0, 100.0);  // from above, the north at the top
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glRotatef(90.0f, 1.0f, 0.0f, 0.0f);
    EXPECT_EQ(terrain->Draw3D(MakeObject<FakeCamera>(log).Get()), S_OK);
    ExpectUpright();
    terrain->StopServer();
}

TEST_P(PictureWay, ThroughADatabaseIntoThePreviewOfTheDialog)
{
    const TextureDatabases databases({folder_ / "system.db", false}, {folder_ / "user.db", true});
    const auto host = MakeObject<KvoHost>(nullptr, nullptr, databases);
    ComPtr<IImageFile> image;
    ASSERT_EQ(host->CreateImageFile(image.Out()), S_OK);
    image->SetFileName(BstrHolder(path_).Get());
    ASSERT_EQ(image->Open(), S_OK);
    VARIANT pixels{};
    WORD bits = 0;
    image->GetPixels(&pixels);
    image->GetBitsPerPixel(&bits);
    VARIANT user{};
    ComPtr<ITextureDatabase> database;
    host->OpenTextureDatabase(database.Out(), &user);
    const BstrHolder key("quarters");
    database->SetElementKey(key.Get());
    database->SetWidth(kColumns);
    database->SetHeight(kRows);
    database->SetBitsPerPixel(bits);
    database->SetPixels(&pixels);
    ASSERT_EQ(database->StoreElement(), S_OK);
    ULONG name = 0;
    ASSERT_EQ(host->LoadPreviewTexture(key.Get(), BstrHolder(kDetailTable).Get(), &name, &user), S_OK);

    glOrtho(0.0, 1.0, 0.0, 1.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, name);
    glBegin(GL_QUADS);  // the dialog's
    for (const auto& [s, t, x, y] : {std::array{1, 1, 0, 1}, {0, 1, 1, 1}, {0, 0, 1, 0}, {1, 0, 0, 0}}) {
        glTexCoord2i(s, t);
        glVertex2i(x, y);
    }
    glEnd();
    ExpectUpright();
    glDeleteTextures(1, &name);
}

INSTANTIATE_TEST_SUITE_P(Formats, PictureWay, testing::Values("png", "tga", "bmp", "jpg", "psd"),
                         [](const auto& format) { return std::string(format.param); });

}  // namespace
