#pragma once

#include "platform/com/bstr.h"
#include "platform/com/com_object.h"
#include "platform/com/guard.h"
#include "surface/itessara.h"

#include <memory>
#include <string>

class ElevationPalette;
class TerrainLod;
struct IElevationMatrix;
struct IImageFile;
struct IKvoHost;
struct IProgressWindow;
struct ITextureMgr;

namespace tessara {
class SavedTexturesReader;
struct SavedTextureSettings;
}  // namespace tessara

/// The component's one object: a terrain with the host's services wired to it. See ITessara for the methods.
///
/// A method whose result is always S_OK keeps it when memory is short: a string that can't be copied then stays as it
/// was, and one that should go out is null. After StopServer every method that needs a service fails.
class CoTessara : public ComObject<ITessara> {
public:
    explicit CoTessara(IUnknown* outer = nullptr) : ComObject(outer) {}

    HRESULT STDMETHODCALLTYPE InitServer() override;
    HRESULT STDMETHODCALLTYPE StopServer() override;
    HRESULT STDMETHODCALLTYPE SetKVO(IUnknown* kvo) override;
    HRESULT STDMETHODCALLTYPE SetLOD(float f) override;
    HRESULT STDMETHODCALLTYPE GetLOD(float* f) override;
    HRESULT STDMETHODCALLTYPE InitQuadTree() override;
    HRESULT STDMETHODCALLTYPE Build3D() override;
    HRESULT STDMETHODCALLTYPE SetElevationScale(float f) override;
    HRESULT STDMETHODCALLTYPE Draw3D(IUnknown* cameraobj) override;
    HRESULT STDMETHODCALLTYPE ActivateSourceTexture() override;
    HRESULT STDMETHODCALLTYPE ActivateDetailTexture() override;
    HRESULT STDMETHODCALLTYPE ActivateCanvasTexture() override;
    HRESULT STDMETHODCALLTYPE SetGLPolygonMode(UINT face, UINT mode) override;
    HRESULT STDMETHODCALLTYPE UseTextureSource(LONG b) override;
    HRESULT STDMETHODCALLTYPE UseTextureDetail(LONG b) override;
    HRESULT STDMETHODCALLTYPE UseColor(LONG b) override;
    HRESULT STDMETHODCALLTYPE GetTranslation(float* t) override;
    HRESULT STDMETHODCALLTYPE SetRenderMode(TESSARA_RENDER_MODE mode) override;
    HRESULT STDMETHODCALLTYPE SetMatrix(IUnknown* ptr) override;
    HRESULT STDMETHODCALLTYPE Draw2D(int minY, int minX, int maxY, int maxX) override;
    HRESULT STDMETHODCALLTYPE CreateTextureSurface2D() override;
    HRESULT STDMETHODCALLTYPE BuildTextureSrc() override;
    HRESULT STDMETHODCALLTYPE SetCanvasOffset(float left, float top) override;
    HRESULT STDMETHODCALLTYPE SetTranslation3D(float x, float y, float z) override;
    HRESULT STDMETHODCALLTYPE SetSize(int Width, int Height) override;
    HRESULT STDMETHODCALLTYPE InitMatrix() override;
    HRESULT STDMETHODCALLTYPE SetTextureDetailFromDB(BSTR name, BSTR table, VARIANT* v) override;
    HRESULT STDMETHODCALLTYPE ImportTextureSource(IUnknown* parent) override;
    HRESULT STDMETHODCALLTYPE BlendTextureDBToSource(BSTR name, BSTR table, IUnknown* selection) override;
    HRESULT STDMETHODCALLTYPE BlendTextureDBToSourceRegion(BSTR name, BSTR table, VARIANT region) override;
    HRESULT STDMETHODCALLTYPE ExportTextureSource(IUnknown* parent) override;
    HRESULT STDMETHODCALLTYPE ExportTextureCanvas(IUnknown* parent) override;
    HRESULT STDMETHODCALLTYPE GetDBTextureDetailName(BSTR* name, BSTR* table) override;
    HRESULT STDMETHODCALLTYPE IsUsingTextureDetail(LONG* b) override;
    HRESULT STDMETHODCALLTYPE IsUsingTextureSource(LONG* b) override;
    HRESULT STDMETHODCALLTYPE GetMatrix(IUnknown** matrix) override;
    HRESULT STDMETHODCALLTYPE SerializeSurfaceProperties(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE SerializeMatrix(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE SerializePalette(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE SerializeTextures(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE LoadSerializedSurfaceProperties(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE LoadSerializedMatrix(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE LoadSerializedPalette(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE LoadSerializedTextures(IUnknown* pIParser) override;
    HRESULT STDMETHODCALLTYPE SetTextureDetailTiling(float* x, float* y) override;
    HRESULT STDMETHODCALLTYPE GetTextureDetailTiling(float* x, float* y) override;
    HRESULT STDMETHODCALLTYPE SetTextureDetailRGBGamma(int gamma) override;
    HRESULT STDMETHODCALLTYPE GetTextureDetailRGBGamma(int* gamma) override;
    HRESULT STDMETHODCALLTYPE TextureDetailDlg() override;
    HRESULT STDMETHODCALLTYPE GetDataBaseSource(BSTR* database) override;
    HRESULT STDMETHODCALLTYPE SetDataBaseSource(BSTR database) override;
    HRESULT STDMETHODCALLTYPE SetUserTextureName(BSTR TextureName) override;
    HRESULT STDMETHODCALLTYPE GetRenderedPolygons(BSTR strFileName, IUnknown* cameraobj) override;
    HRESULT STDMETHODCALLTYPE CreateTextureSurface3D(int resolution) override;

protected:
    /// Frees the strings alone: what the other fields hold is StopServer's to release.
    ~CoTessara() override = default;

    /// The palette that a loaded matrix takes over, and may keep for longer than this object lives. Who serves surfaces
    /// from a module that can be unloaded gives one that keeps the module. \throws std::bad_alloc
    virtual std::unique_ptr<ElevationPalette> NewPalette() const;

private:
    enum Slot { Source, Detail, Canvas };

    /// The host's texture service with a reference of its own, or null.
    ComPtr<ITextureMgr> HostTextures() const;
    void ActivateOnUnit(ULONG id, UINT unit) const;
    bool BindCanvas(ITextureMgr& textures) const;
    HRESULT ImportImage(ComPtr<IImageFile> image, const std::string& path);
    bool RunDetailDialog();
    HRESULT ReplaceSource(LONG width, LONG height, LONG bitsPerPixel, const void* pixels);
    HRESULT CreateSlotTexture(Slot slot, LONG width, LONG height, LONG bitsPerPixel, const void* pixels);
    void RepaintCanvas(LONG width, LONG height, const BYTE* pixels) const;
    void PaintCanvasPixels(BYTE* pixels, LONG width, LONG height, const ElevationPalette& palette,
                           IProgressWindow* progress) const;

    // The saved form.
    void CreateMatrix(LONG width, LONG height, std::unique_ptr<ElevationPalette> palette);
    tessara::SavedTextureSettings TextureSettings();
    HRESULT LoadSource(tessara::SavedTexturesReader& reader);
    HRESULT LoadDetail();
    void TakeTextureSettings(const tessara::SavedTextureSettings& saved);

    IKvoHost* m_pKvo = nullptr;                // counted
    IElevationMatrix* m_pMatrix = nullptr;     // counted
    TerrainLod* m_pTerrain = nullptr;          // owned, from InitServer to StopServer
    std::uint32_t m_textureId[3] = {0, 0, 0};  // one hold each where not 0; the terrain points here
    std::string m_textureKey[3];               // second name of the slot's texture
    float m_canvasLeft = 0.0f;
    float m_canvasTop = 0.0f;
    ITextureMgr* m_pTextureMgr = nullptr;  // counted
    LONG m_matrixWidth = 0;                // cells wanted for the matrix
    LONG m_matrixHeight = 0;
    std::string m_elementName = "TESSARA_SURFACE";  // first name of every texture of the surface
    std::string m_detailName;                       // key of the detail texture
    std::string m_userTextureName;                  // its display name
    std::string m_detailTable;
    std::string m_database;  // "USERDB", "APPDB" or empty
    float m_minElevation = 0.0f;
    float m_maxElevation = 255.0f;
    float m_elevationScale = 0.0f;  // the value of the last SetElevationScale
};
