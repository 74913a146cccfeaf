#pragma once

#include "dialog/detail_resources.h"
#include "services/gl_context.h"
#include "support/fake_image_file.h"
#include "support/scripted_window_system.h"
#include "surface/surface_fixture.h"

#include <optional>
#include <utility>

namespace tessara::test {

/// A database of keys and display names.
class FakeDatabase final : public Fake<ITextureDatabase> {
public:
    using Elements = std::vector<std::pair<std::string, std::string>>;

    explicit FakeDatabase(CallLog& log, Elements list = {}) : Fake(log), elements(std::move(list)) {}

    HRESULT STDMETHODCALLTYPE SetWidth(UINT width) override { return Log("SetWidth", width); }
    HRESULT STDMETHODCALLTYPE SetHeight(UINT height) override { return Log("SetHeight", height); }
    HRESULT STDMETHODCALLTYPE SetBitsPerPixel(WORD bits) override { return Log("SetBitsPerPixel", bits); }
    HRESULT STDMETHODCALLTYPE SetPixels(VARIANT* pixels) override
    {
        return Log("SetPixels", pixels->byref ? "some" : "none");
    }
    HRESULT STDMETHODCALLTYPE SetElementKey(BSTR key) override
    {
        target_ = NarrowText(key);
        return Log("SetElementKey", key);
    }
    HRESULT STDMETHODCALLTYPE SetTableName(BSTR table) override { return Log("SetTableName", table); }
    HRESULT STDMETHODCALLTYPE StoreElement() override
    {
        elements.emplace_back(target_, name_);
        return Log("StoreElement");
    }
    HRESULT STDMETHODCALLTYPE DeleteElement() override
    {
        std::erase_if(elements, [this](const auto& element) { return element.first == target_; });
        return Log("DeleteElement");
    }
    HRESULT STDMETHODCALLTYPE ListElements(std::vector<BSTR>* keys, std::vector<BSTR>* names) override
    {
        Log("ListElements");
        return Guard([&] {
            for (const auto& [key, name] : elements) {
                keys->reserve(keys->size() + 1);
                names->reserve(names->size() + 1);
                BstrHolder newKey(key);
                BstrHolder newName(name);
                keys->push_back(newKey.Detach());
                if (givesNames)
                    names->push_back(newName.Detach());
            }
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetDisplayName(BSTR name) override
    {
        name_ = NarrowText(name);
        return Log("SetDisplayName", name);
    }
    LONG STDMETHODCALLTYPE DisplayNameExists() override
    {
        Log("DisplayNameExists");
        for (const auto& [key, name] : elements) {
            if (name == name_) {
                target_ = key;
                return 7;
            }
        }
        return 0;
    }

    Elements elements;
    bool givesNames = true;

private:
    std::string target_;
    std::string name_;
};

/// A context that only tells whether it is current.
class FakeContext final : public Fake<IGLContext> {
public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE Create(VARIANT given, VARIANT* options, LONG bits, LONG buffers, LONG width, LONG height,
                                     LONG flags) override
    {
        device = given.byref;
        EXPECT_EQ(given.vt, VT_EMPTY);
        EXPECT_EQ(options->vt, VT_EMPTY);
        Log("Create", bits, buffers, width, height, flags);
        return createResult;
    }
    HRESULT STDMETHODCALLTYPE Destroy() override { return Log("Destroy"); }
    HRESULT STDMETHODCALLTYPE MakeCurrent() override
    {
        Log("MakeCurrent");
        if (SUCCEEDED(currentResult))
            ++current;
        return currentResult;
    }
    HRESULT STDMETHODCALLTYPE ReleaseCurrent() override
    {
        --current;
        return Log("ReleaseCurrent");
    }
    HRESULT STDMETHODCALLTYPE SwapBuffers(void* shown, LONG x, LONG y) override
    {
        EXPECT_NE(shown, nullptr);
        return Log("SwapBuffers", x, y);
    }

    void* device = nullptr;
    HRESULT createResult = S_OK;
    HRESULT currentResult = S_OK;
    int current = 0;
};

/// A surface that writes down what the dialog does to it.
class LoggedSurface final : public CoTessara {
public:
    explicit LoggedSurface(CallLog& log) : log_(log) {}
    HRESULT STDMETHODCALLTYPE UseTextureDetail(LONG b) override
    {
        Note([&] { return "UseTextureDetail(" + std::to_string(b) + ")"; });
        return CoTessara::UseTextureDetail(b);
    }
    HRESULT STDMETHODCALLTYPE SetTextureDetailTiling(float* x, float* y) override
    {
        Note([&] { return "SetTextureDetailTiling(" + Text(x) + ", " + Text(y) + ")"; });
        return CoTessara::SetTextureDetailTiling(x, y);
    }
    HRESULT STDMETHODCALLTYPE SetTextureDetailRGBGamma(int gamma) override
    {
        Note([&] { return "SetTextureDetailRGBGamma(" + std::to_string(gamma) + ")"; });
        return CoTessara::SetTextureDetailRGBGamma(gamma);
    }
    HRESULT STDMETHODCALLTYPE SetUserTextureName(BSTR name) override
    {
        Note([&] { return "SetUserTextureName(" + NarrowText(name) + ")"; });
        return CoTessara::SetUserTextureName(name);
    }

private:
    static std::string Text(const float* number) { return number ? std::to_string(*number) : "none"; }

    /// Writes a call down, unless there is no memory for it.
    template <class Line>
    void Note(Line&& line) noexcept
    {
        Guard([&] {
            log_.push_back(line());
            return S_OK;
        });
    }

    CallLog& log_;
};

/// The surface's dialog on a window system that the test plays the user of. The system's database holds Grass and an
/// element without a name, the user's one Lawn, Moss and Sand.
class DetailDialogTest : public SurfaceTest {
protected:
    DetailDialogTest()
    {
        surface = ComPtr<CoTessara>(MakeObject<LoggedSurface>(log).Get());
        host->systemDatabase = system.Get();
        host->userDatabase = user.Get();
        host->image = image.Get();
        host->previewTexture = 31;
        windows.prepare = [this](ScriptedDialog& opened) { prepare(opened); };
        Wire();
        log.clear();
    }
    ~DetailDialogTest() override
    {
        surface->StopServer();
        EXPECT_EQ(windows.waiting, 0);
        EXPECT_EQ(context->current, 0);
        for (const ULONG references : {system->References(), user->References(), image->References(),
                                       context->References(), progress->References()})
            EXPECT_EQ(references, 1u);
    }

    /// Runs the dialog. \param act what the user does in it, before pressing Cancel where it is still open; the log
    /// holds what came of it
    HRESULT Run(std::function<void(ScriptedDialog&)> act = [](ScriptedDialog&) {})
    {
        windows.user = [this, act](ScriptedDialog& opened) {
            opening = TakeLog();
            act(opened);
            closing = log.size();
        };
        const HRESULT result = surface->TextureDetailDlg();
        return result;
    }

    /// What came of a user's action, without the preview's.
    CallLog After(ScriptedDialog& dialog, const std::function<void(ScriptedDialog&)>& act)
    {
        log.clear();
        act(dialog);
        std::erase_if(log, [](const std::string& call) {
            return call == "MakeCurrent()" || call == "ReleaseCurrent()" || call == "SwapBuffers(0, 0)";
        });
        return TakeLog();
    }

    void SetDetail(const char* name, const char* database)
    {
        surface->SetUserTextureName(BstrHolder(name).Get());
        surface->SetDataBaseSource(BstrHolder(database).Get());
        log.clear();
    }
    std::pair<float, float> Tiling()
    {
        std::pair<float, float> tiling;
        surface->GetTextureDetailTiling(&tiling.first, &tiling.second);
        return tiling;
    }
    std::string Database()
    {
        BstrHolder database;
        surface->GetDataBaseSource(database.Out());
        return database.Narrow();
    }

    std::function<void(ScriptedDialog&)> prepare = [](ScriptedDialog&) {};
    CallLog opening;          ///< calls before the user could act
    std::size_t closing = 0;  ///< where in the log the calls after the user's actions begin
    ScriptedWindowSystem windows{log};
    ComPtr<FakeDatabase> system = MakeObject<FakeDatabase>(log, FakeDatabase::Elements{{"k1", "Grass"}, {"k2", ""}});
    ComPtr<FakeDatabase> user =
        MakeObject<FakeDatabase>(log, FakeDatabase::Elements{{"u1", "Lawn"}, {"u2", "Moss"}, {"u3", "Sand"}});
    ComPtr<FakeImageFile> image = MakeObject<FakeImageFile>(log);
    ComPtr<FakeContext> context = MakeObject<FakeContext>(log);
    std::optional<ServedClass> served{std::in_place, CLSID_GLContext, context.Get()};
};

}  // namespace tessara::test
