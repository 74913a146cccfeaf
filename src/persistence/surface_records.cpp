#include "persistence/saved_place.h"
#include "surface/co_tessara.h"

using tessara::Reading;

namespace {

enum Property : std::size_t { Lod, Translation, ElevationScale };

constexpr tessara::SavedValue kProperties[] = {
    {"KVOxml_LOD", tessara::kFloats, tessara::kFloats},
    {"TRANSLATION", tessara::kFloats, tessara::kFloats},
    {"ELEVATION_SCALE", tessara::kFloats, tessara::kFloats},
};

constexpr float kDefaultLod = 300.0f;
constexpr float kDefaultScale = 3.0f;
constexpr float kScaleForUnreadable = 30.0f;

}  // namespace

HRESULT CoTessara::SerializeSurfaceProperties(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&] {
            float lod = 0.0f;
            float translation[3] = {};
            GetLOD(&lod);
            GetTranslation(translation);
            tessara::SavedPlace place(pIParser, kProperties);
            place.Write(Lod, &lod, sizeof lod);
            place.Write(Translation, translation, sizeof translation);
            place.Write(ElevationScale, &m_elevationScale, sizeof m_elevationScale);
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::LoadSerializedSurfaceProperties(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&] {
            tessara::SavedPlace place(pIParser, kProperties);
            float lod[1] = {kDefaultLod};
            float translation[3] = {};
            float scale[1] = {kDefaultScale};
            place.ReadFloats(Lod, lod);
            place.ReadFloats(Translation, translation);
            if (place.ReadFloats(ElevationScale, scale) == Reading::Unreadable)
                scale[0] = kScaleForUnreadable;
            // The level of detail goes by the scale from before the load.
            SetLOD(lod[0]);
            SetTranslation3D(translation[0], translation[1], translation[2]);
            SetElevationScale(scale[0]);
            return S_OK;
        },
        E_FAIL);
}
