#pragma once

// The outside objects of a surface, faked: they write each call into one log and answer as told.

#include "platform/com/bstr.h"
#include "platform/com/com_object.h"
#include "platform/com/guard.h"
#include "services/camera_object.h"
#include "services/elevation_matrix.h"
#include "services/image_file.h"
#include "services/kvo_host.h"
#include "services/progress_window.h"
#include "services/texture_database.h"
#include "services/texture_mgr.h"
#include "terrain/terrain_frustum.h"
#include "textures/elevation_element.h"
#include "textures/elevation_palette.h"

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace tessara::test {

using CallLog = std::vector<std::string>;

/// Base of the fakes: a name for the log, and the number of references that others hold.
template <class Interface>
class Fake : public ComObject<Interface> {
public:
    explicit Fake(CallLog& log) : log_(log) {}
    ULONG References()
    {
        this->AddRef();
        return this->Release();
    }

protected:
    /// Writes a call down, unless there is no memory for it.
    template <class... Args>
    HRESULT Log(const char* call, const Args&... args) noexcept
    {
        return Guard(
            [&] {
                std::string line = std::string(call) + "(";
                [[maybe_unused]] const char* separator = "";
                ((line += separator, line += Text(args), separator = ", "), ...);
                log_.push_back(line + ")");
                return S_OK;
            },
            S_OK);
    }

    /// The same for a call that hands something out.
    template <class Out, class... Args>
    HRESULT Give(Out* out, const std::type_identity_t<Out>& value, const char* call, const Args&... args) noexcept
    {
        *out = value;
        return Log(call, args...);
    }
    template <class Out, class... Args>
    HRESULT GiveCounted(Out** out, Out* object, const char* call, const Args&... args) noexcept
    {
        return Give(out, ComPtr<Out>(object).Detach(), call, args...);
    }
    static std::string Text(BSTR text) { return NarrowText(text); }
    static std::string Text(const char* text) { return text; }
    template <class Number>
    static std::string Text(Number number)
    {
        return std::to_string(number);
    }

    CallLog& log_;
};

class FakeCell final : public Fake<IElevationCell> {
public:
    FakeCell(CallLog& log, ElevationElement& element) : Fake(log), element_(element) {}
    HRESULT STDMETHODCALLTYPE SetElevation(float elevation) override
    {
        element_.value = elevation;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetElevation(float* elevation) override
    {
        *elevation = element_.value;
        return S_OK;
    }

private:
    ElevationElement& element_;
};

class FakeMatrix final : public Fake<IElevationMatrix> {
public:
    explicit FakeMatrix(CallLog& log, LONG columns = 0, LONG rows = 0) : Fake(log) { Resize(columns, rows); }
    void Resize(LONG columns, LONG rows)
    {
        width = columns;
        height = rows;
        elements.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
        for (ElevationElement& element : elements)
            element.value = 0.5f;
    }
    ElevationElement& At(LONG x, LONG y) { return elements[static_cast<std::size_t>(x + y * width)]; }

    HRESULT STDMETHODCALLTYPE SetWidth(LONG columns) override
    {
        pendingWidth_ = columns;
        return Log("SetWidth", columns);
    }
    HRESULT STDMETHODCALLTYPE SetHeight(LONG rows) override
    {
        pendingHeight_ = rows;
        return Log("SetHeight", rows);
    }
    HRESULT STDMETHODCALLTYPE GetWidth(LONG* columns) override { return Give(columns, width, "GetWidth"); }
    HRESULT STDMETHODCALLTYPE GetHeight(LONG* rows) override { return Give(rows, height, "GetHeight"); }
    HRESULT STDMETHODCALLTYPE AllocateCells() override
    {
        Resize(pendingWidth_, pendingHeight_);
        return Log("AllocateCells");
    }
    HRESULT STDMETHODCALLTYPE GetCell(LONG x, LONG y, IElevationCell** cell) override
    {
        return Give(cell, MakeObject<FakeCell>(log_, At(x, y)).Detach(), "GetCell", x, y);
    }
    HRESULT STDMETHODCALLTYPE SetElevationRange(float low, float high) override
    {
        return Log("SetElevationRange", low, high);
    }
    HRESULT STDMETHODCALLTYPE SetPalette(ElevationPalette* given) override
    {
        takenPalette_.reset(given);
        palette = given;
        return Log("SetPalette");
    }
    HRESULT STDMETHODCALLTYPE ResetMatrix() override { return Log("ResetMatrix"); }
    HRESULT STDMETHODCALLTYPE BeginUpdate(LONG reserved) override { return Log("BeginUpdate", reserved); }
    HRESULT STDMETHODCALLTYPE EndUpdate(LONG reserved) override { return Log("EndUpdate", reserved); }
    HRESULT STDMETHODCALLTYPE GetPalette(ElevationPalette** out) override { return Give(out, palette, "GetPalette"); }
    HRESULT STDMETHODCALLTYPE GetGrid(ElevationElement** grid) override
    {
        return Give(grid, elements.data(), "GetGrid");
    }

    ElevationPalette ownPalette;
    ElevationPalette* palette = &ownPalette;
    LONG width = 0;
    LONG height = 0;
    std::vector<ElevationElement> elements;

private:
    std::unique_ptr<ElevationPalette> takenPalette_;
    LONG pendingWidth_ = 0;
    LONG pendingHeight_ = 0;
};

class FakeCamera final : public Fake<ICameraObject> {
public:
    explicit FakeCamera(CallLog& log) : Fake(log)
    {
        for (FrustumPlane& plane : frustum.WorldPlanes)
            plane = {0.0f, 1.0f, 0.0f, -1e9f};
    }
    HRESULT STDMETHODCALLTYPE GetPosition(float* out) override
    {
        std::copy(position, position + 3, out);
        return Log("GetPosition");
    }
    HRESULT STDMETHODCALLTYPE GetFrustum(TerrainFrustum** out) override { return Give(out, &frustum, "GetFrustum"); }
    float position[3] = {1e6f, 1e6f, 1e6f};
    TerrainFrustum frustum;
};

class FakeTextureMgr final : public Fake<ITextureMgr> {
public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE CreateTexture(LONG width, LONG height, LONG bits, const void* pixels, ULONG* id) override
    {
        const auto* bytes = static_cast<const BYTE*>(pixels);
        if (bytes)
            lastPixels.assign(bytes, bytes + static_cast<std::ptrdiff_t>(width) * height * bits / 8);
        *id = FAILED(createResult) ? 0 : nextId++;
        Log("CreateTexture", width, height, bits);
        return createResult;
    }
    HRESULT STDMETHODCALLTYPE UnbindTexture() override { return Log("UnbindTexture"); }
    HRESULT STDMETHODCALLTYPE ReleaseTexture(ULONG id) override { return Log("ReleaseTexture", id); }
    HRESULT STDMETHODCALLTYPE BindTexture(ULONG id) override
    {
        Log("BindTexture", id);
        return bindResult;
    }
    HRESULT STDMETHODCALLTYPE GetTextureData(ULONG id, LONG* width, LONG* height, LONG* bits, LONG reserved,
                                             void** pixels) override
    {
        Log("GetTextureData", id, reserved);
        *width = image.width;
        *height = image.height;
        if (bits)
            *bits = image.bits;
        *pixels = nullptr;
        if (FAILED(image.result))
            return image.result;
        *pixels = CoTaskMemAlloc(image.pixels.size());
        std::copy(image.pixels.begin(), image.pixels.end(), static_cast<BYTE*>(*pixels));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SelectTextureUnit(ULONG unit) override { return Log("SelectTextureUnit", unit); }
    LONG STDMETHODCALLTYPE HasMultitexture() override { return multitexture; }
    HRESULT STDMETHODCALLTYPE SetElementName(BSTR name) override { return Log("SetElementName", name); }
    HRESULT STDMETHODCALLTYPE SetTextureName(BSTR name) override { return Log("SetTextureName", name); }
    HRESULT STDMETHODCALLTYPE GetImplementation(CTextureMgrImp** out) override
    {
        return Give(out, implementation, "GetImplementation");
    }
    HRESULT STDMETHODCALLTYPE ResetTextureUnit() override { return Log("ResetTextureUnit"); }

    /// What GetTextureData answers for any texture.
    struct {
        LONG width = 0;
        LONG height = 0;
        LONG bits = 32;
        std::vector<BYTE> pixels;
        HRESULT result = S_OK;
    } image;

    CTextureMgrImp* implementation = nullptr;
    HRESULT createResult = S_OK;
    HRESULT bindResult = S_OK;
    ULONG nextId = 100;
    LONG multitexture = 1;
    std::vector<BYTE> lastPixels;
};

class FakeProgress final : public Fake<IProgressWindow> {
public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE StepProgress(LONG steps) override { return Log("StepProgress", steps); }
    HRESULT STDMETHODCALLTYPE SetProgressRange(LONG count) override { return Log("SetProgressRange", count); }
    HRESULT STDMETHODCALLTYPE BeginProgress(LONG show) override { return Log("BeginProgress", show); }
    HRESULT STDMETHODCALLTYPE EndProgress(LONG hide) override { return Log("EndProgress", hide); }
    HRESULT STDMETHODCALLTYPE SetProgressTitle(BSTR title) override { return Log("SetProgressTitle", title); }
    HRESULT STDMETHODCALLTYPE ShowMessage(BSTR message) override { return Log("ShowMessage", message); }
    HRESULT STDMETHODCALLTYPE RequestRedraw(LONG what, LONG reserved) override
    {
        return Log("RequestRedraw", what, reserved);
    }
    HRESULT STDMETHODCALLTYPE SetViewState(LONG state, LONG mode) override { return Log("SetViewState", state, mode); }
};

class FakeHost final : public Fake<IKvoHost> {
public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE GetTextureMgr(ITextureMgr** out) override
    {
        return GiveCounted(out, textures, "GetTextureMgr");
    }
    HRESULT STDMETHODCALLTYPE CreateImageFile(IImageFile** out) override
    {
        return GiveCounted(out, image, "CreateImageFile");
    }
    HRESULT STDMETHODCALLTYPE OpenTextureDatabase(ITextureDatabase** out, VARIANT* selector) override
    {
        return GiveCounted(out, selector ? userDatabase : systemDatabase, "OpenTextureDatabase",
                           selector ? "user" : "system");
    }
    HRESULT STDMETHODCALLTYPE NewElementKey(BSTR* key) override
    {
        return Give(key, MakeBstr("key" + std::to_string(++keys_)), "NewElementKey");
    }
    HRESULT STDMETHODCALLTYPE LoadTextureFromDB(BSTR name, BSTR table, ULONG* id, VARIANT* selector) override
    {
        *id = loadedId;
        Log("LoadTextureFromDB", name, table, selector ? "user" : "system");
        return loadResult;
    }
    HRESULT STDMETHODCALLTYPE LoadPreviewTexture(BSTR key, BSTR table, ULONG* name, VARIANT* selector) override
    {
        if (previewTexture != 0)
            *name = previewTexture;
        return Log("LoadPreviewTexture", key, table, selector ? "user" : "system");
    }
    HRESULT STDMETHODCALLTYPE GetProgressWindow(IProgressWindow** out) override
    {
        return GiveCounted(out, progress, "GetProgressWindow");
    }

    ITextureMgr* textures = nullptr;  // none of these is counted
    IProgressWindow* progress = nullptr;
    IImageFile* image = nullptr;
    ITextureDatabase* systemDatabase = nullptr;
    ITextureDatabase* userDatabase = nullptr;
    HRESULT loadResult = S_OK;
    ULONG loadedId = 77;       ///< that LoadTextureFromDB writes, also when it fails
    ULONG previewTexture = 0;  ///< 0 for none

private:
    int keys_ = 0;
};

}  // namespace tessara::test
