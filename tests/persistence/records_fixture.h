#pragma once

#include "support/fake_parser.h"
#include "surface/surface_fixture.h"

namespace tessara::test {

/// A surface whose dialog only tells that it was opened.
class SurfaceWithDialog final : public CoTessara {
public:
    explicit SurfaceWithDialog(CallLog& log) : log_(log) {}
    HRESULT STDMETHODCALLTYPE TextureDetailDlg() override
    {
        return Guard(
            [this] {
                log_.push_back("TextureDetailDlg()");
                return S_FALSE;
            },
            S_FALSE);
    }

private:
    CallLog& log_;
};

/// A wired surface and a place to save it at.
class RecordsTest : public SurfaceTest {
protected:
    RecordsTest()
    {
        surface = ComPtr<CoTessara>(MakeObject<SurfaceWithDialog>(log).Get());
        Wire();
    }
    ~RecordsTest() override { surface->StopServer(); }

    /// The calls to the parser since the last look.
    CallLog TakeParserCalls()
    {
        CallLog calls;
        for (const std::string& call : TakeLog()) {
            if (call.find("Node") != std::string::npos)
                calls.push_back(call);
        }
        return calls;
    }

    float Lod() const
    {
        float lod = 0.0f;
        surface->GetLOD(&lod);
        return lod;
    }
    std::vector<float> Translation() const
    {
        std::vector<float> translation(3);
        surface->GetTranslation(translation.data());
        return translation;
    }
    /// The surface tells its elevation scale to nobody but a parser.
    float SavedScale()
    {
        const auto place = MakeObject<FakeParser>(log);
        surface->SerializeSurfaceProperties(place.Get());
        return place->Get<float>("ELEVATION_SCALE").at(0);
    }

    ComPtr<FakeParser> parser = MakeObject<FakeParser>(log);
};

}  // namespace tessara::test
