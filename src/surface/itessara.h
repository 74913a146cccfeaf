#pragma once

#include "../platform/com/unknown.h"

/// How the terrain treats its heights while drawing.
enum TESSARA_RENDER_MODE : std::int32_t {
    TESSARA_RENDER_MODE_NORMAL = 1,    ///< heights are those of the last build
    TESSARA_RENDER_MODE_REALTIME = 2,  ///< every active node reads its heights again, frame by frame
};

/// One terrain. A host calls InitServer, SetKVO, SetMatrix (with SetSize and InitMatrix for a new matrix, or
/// LoadSerializedMatrix), InitQuadTree, then Draw3D for each frame, and StopServer before its last Release.
///
/// All methods run on the thread that made the object; those that draw need its OpenGL context current. Objects that
/// come in as IUnknown are used as the interface named at the method, without a QueryInterface. A BSTR that goes out is
/// new and the caller's to free. Before InitServer, methods that use the terrain return E_FAIL.
struct ITessara : IUnknown {
    /// Makes the terrain object. \return S_OK, also when memory is short
    virtual HRESULT STDMETHODCALLTYPE InitServer() = 0;

    /// Releases the matrix, the terrain, the textures, the texture service and the host, in this order. Runs once; no
    /// other method follows it. \return S_OK
    virtual HRESULT STDMETHODCALLTYPE StopServer() = 0;

    /// Takes the host object (IKvoHost), with one reference, and its texture service. Follows InitServer. \return S_OK
    virtual HRESULT STDMETHODCALLTYPE SetKVO(IUnknown* kvo) = 0;

    /// Level of detail: distance units that one drawn unit of error is worth. The product with the elevation scale of
    /// this moment is what the terrain tests with, so SetElevationScale comes first. The host library's DetailCamera
    /// gives the factor at which errors stay below a number of pixels.
    virtual HRESULT STDMETHODCALLTYPE SetLOD(float f) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLOD(float* f) = 0;

    /// Builds the tree on the matrix: its size, grid and palette as they are now.
    /// \return S_OK; E_FAIL without matrix or host, or when the build failed, which leaves no tree
    virtual HRESULT STDMETHODCALLTYPE InitQuadTree() = 0;

    /// Builds the tree again from the grid of the last InitQuadTree. \return S_OK; a failed build leaves no tree
    virtual HRESULT STDMETHODCALLTYPE Build3D() = 0;

    /// Drawn height of the normalised elevation 1.0, in tree units. It reaches the level of detail at the next SetLOD.
    virtual HRESULT STDMETHODCALLTYPE SetElevationScale(float f) = 0;

    /// Draws one frame for a camera (ICameraObject). The polygon modes are as before afterwards. \return S_OK
    virtual HRESULT STDMETHODCALLTYPE Draw3D(IUnknown* cameraobj) = 0;

    /// Binds the source texture on unit 0. \return S_OK; E_FAIL without a source texture
    virtual HRESULT STDMETHODCALLTYPE ActivateSourceTexture() = 0;

    /// Binds the detail texture on unit 1. \return S_OK
    virtual HRESULT STDMETHODCALLTYPE ActivateDetailTexture() = 0;

    /// Binds the canvas. \return S_OK; E_FAIL when the host gives no texture service
    virtual HRESULT STDMETHODCALLTYPE ActivateCanvasTexture() = 0;

    /// Arguments of glPolygonMode in each later frame.
    virtual HRESULT STDMETHODCALLTYPE SetGLPolygonMode(UINT face, UINT mode) = 0;

    /// Switches: 0 is off, everything else on. Colour means vertex colours from the matrix's palette.
    virtual HRESULT STDMETHODCALLTYPE UseTextureSource(LONG b) = 0;
    virtual HRESULT STDMETHODCALLTYPE UseTextureDetail(LONG b) = 0;
    virtual HRESULT STDMETHODCALLTYPE UseColor(LONG b) = 0;

    /// Writes the three floats of SetTranslation3D.
    virtual HRESULT STDMETHODCALLTYPE GetTranslation(float* t) = 0;

    /// \return S_OK; E_FAIL, with nothing changed, for a value that is not of the enumeration
    virtual HRESULT STDMETHODCALLTYPE SetRenderMode(TESSARA_RENDER_MODE mode) = 0;

    /// Takes the height field (IElevationMatrix), with one reference. The first one stays: a second call does nothing.
    /// \return S_OK
    virtual HRESULT STDMETHODCALLTYPE SetMatrix(IUnknown* ptr) = 0;

    /// Draws the canvas as one quad of the matrix's size at z = 0. The arguments play no part.
    /// \return S_OK; E_FAIL without host, texture service or matrix, or with an empty matrix
    virtual HRESULT STDMETHODCALLTYPE Draw2D(int minY, int minX, int maxY, int maxX) = 0;

    /// Paints the elevations through the palette into the canvas texture. Needs the texture service of SetKVO.
    /// \return S_OK, also when the texture couldn't be made; E_FAIL without matrix, cells or palette
    virtual HRESULT STDMETHODCALLTYPE CreateTextureSurface2D() = 0;

    /// Not offered. \return E_FAIL
    virtual HRESULT STDMETHODCALLTYPE BuildTextureSrc() = 0;

    /// Place of the canvas's top left corner in Draw2D.
    virtual HRESULT STDMETHODCALLTYPE SetCanvasOffset(float left, float top) = 0;

    /// Offset of the terrain in draw space, in tree units.
    virtual HRESULT STDMETHODCALLTYPE SetTranslation3D(float x, float y, float z) = 0;

    /// Cells wanted for the matrix; InitMatrix makes them.
    virtual HRESULT STDMETHODCALLTYPE SetSize(int Width, int Height) = 0;

    /// Gives the matrix its cells, all at the elevation 0.05. A tree that was built on the old ones goes: nothing is
    /// drawn until InitQuadTree. \return S_OK; E_FAIL without matrix or with a size of 0
    virtual HRESULT STDMETHODCALLTYPE InitMatrix() = 0;

    /// Takes a detail texture from a database. \param v null for the system database, non-null for the user database
    /// \return the result of the host's load; a failure leaves the slot as it was
    virtual HRESULT STDMETHODCALLTYPE SetTextureDetailFromDB(BSTR name, BSTR table, VARIANT* v) = 0;

    /// Lets the user pick an image file for the source slot, and switches the source texture on. The picture's first
    /// row lies along the north edge. \param parent owner window, or null \return the result of the texture service's
    /// create; a success of the reader's Open where it delivers no pixels;
    ///         E_FAIL when the user cancels, when there is no reader, when the file can't be read (said on the progress
    ///         display), with the slot as it was. After a failed create the slot is empty
    virtual HRESULT STDMETHODCALLTYPE ImportTextureSource(IUnknown* parent) = 0;

    /// Not offered. \return E_FAIL
    virtual HRESULT STDMETHODCALLTYPE BlendTextureDBToSource(BSTR name, BSTR table, IUnknown* selection) = 0;
    virtual HRESULT STDMETHODCALLTYPE BlendTextureDBToSourceRegion(BSTR name, BSTR table, VARIANT region) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExportTextureSource(IUnknown* parent) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExportTextureCanvas(IUnknown* parent) = 0;

    /// Key and table of the detail texture.
    virtual HRESULT STDMETHODCALLTYPE GetDBTextureDetailName(BSTR* name, BSTR* table) = 0;

    /// Gives 0 or 1.
    virtual HRESULT STDMETHODCALLTYPE IsUsingTextureDetail(LONG* b) = 0;
    virtual HRESULT STDMETHODCALLTYPE IsUsingTextureSource(LONG* b) = 0;

    /// Gives the matrix, or null, without a reference: the caller borrows it.
    virtual HRESULT STDMETHODCALLTYPE GetMatrix(IUnknown** matrix) = 0;

    /// Saving. Each writes one group of values through the host's parser (IParser), which stands at the place of this
    /// terrain in a project, and looks at no result of it. Without parser, and when memory is short, each gives E_FAIL.
    ///
    /// Level of detail, translation, elevation scale. \return S_OK
    virtual HRESULT STDMETHODCALLTYPE SerializeSurfaceProperties(IUnknown* pIParser) = 0;

    /// Size and elevations. \return S_OK; E_FAIL without matrix or cells, or with more cells than 2 GiB of floats hold
    virtual HRESULT STDMETHODCALLTYPE SerializeMatrix(IUnknown* pIParser) = 0;

    /// The 256 colours, their nodes, the range. \return S_OK, also without a matrix, with nothing written; E_FAIL
    /// without palette
    virtual HRESULT STDMETHODCALLTYPE SerializePalette(IUnknown* pIParser) = 0;

    /// The source texture's pixels, the detail texture's place in its database, switches, tiling, brightness. \return
    /// S_OK
    virtual HRESULT STDMETHODCALLTYPE SerializeTextures(IUnknown* pIParser) = 0;

    /// Loading, in the order of these methods, with InitQuadTree after them and before the next Draw3D. Without parser
    /// each gives E_FAIL; when memory is short too, with the surface as it was.
    ///
    /// A value that isn't there gets its default: level of detail 300, no translation, elevation scale 3 (30 where
    /// there is one that can't be read). \return S_OK
    virtual HRESULT STDMETHODCALLTYPE LoadSerializedSurfaceProperties(IUnknown* pIParser) = 0;

    /// Gives the matrix, which is made where there is none, new cells and the default palette. The tree goes.
    /// \return S_OK, also when no matrix could be made or it couldn't allocate its cells, which leaves it
    ///         without any; E_FAIL without size or elevations, with the matrix as it was
    virtual HRESULT STDMETHODCALLTYPE LoadSerializedMatrix(IUnknown* pIParser) = 0;

    /// Fills the matrix's palette, or leaves it as it is where one of the six values isn't there.
    /// \return S_OK; E_FAIL without matrix or palette
    virtual HRESULT STDMETHODCALLTYPE LoadSerializedPalette(IUnknown* pIParser) = 0;

    /// Opens the dialog of TextureDetailDlg where the detail texture isn't in its database any more.
    /// \return S_OK; S_FALSE, a success, where the project names a detail texture; E_FAIL when the source texture
    ///         couldn't be made, with everything behind it unread
    virtual HRESULT STDMETHODCALLTYPE LoadSerializedTextures(IUnknown* pIParser) = 0;

    /// Repeats of the detail texture across the terrain. Each pointer may be null and is then left out.
    virtual HRESULT STDMETHODCALLTYPE SetTextureDetailTiling(float* x, float* y) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTextureDetailTiling(float* x, float* y) = 0;

    /// Factor on the colour behind the detail texture: 1 low, 2 high brightness.
    virtual HRESULT STDMETHODCALLTYPE SetTextureDetailRGBGamma(int gamma) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTextureDetailRGBGamma(int* gamma) = 0;

    /// Opens the "Terrain Detail" dialog. Changes show on the terrain at once.
    /// \return S_OK after OK; S_FALSE otherwise, with tiling, brightness and the detail texture as they were; E_FAIL
    ///         without host or terrain
    virtual HRESULT STDMETHODCALLTYPE TextureDetailDlg() = 0;

    /// Which database holds the detail texture: "USERDB", "APPDB" or empty.
    virtual HRESULT STDMETHODCALLTYPE GetDataBaseSource(BSTR* database) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDataBaseSource(BSTR database) = 0;

    /// Display name of the detail texture.
    virtual HRESULT STDMETHODCALLTYPE SetUserTextureName(BSTR TextureName) = 0;

    /// Writes the triangles of a frame from the camera to a text file: one vertex a line, three lines a triangle, x, y
    /// and z in tree units with the normalised height in y. \return S_OK, also when the file can't be written
    virtual HRESULT STDMETHODCALLTYPE GetRenderedPolygons(BSTR strFileName, IUnknown* cameraobj) = 0;

    /// Fills the source slot with a white image of resolution x resolution pixels, after giving the old one back.
    /// \return S_OK; E_FAIL for a negative size and without memory, with the slot as it was, and when the texture
    /// service doesn't make the texture, which leaves the slot empty
    virtual HRESULT STDMETHODCALLTYPE CreateTextureSurface3D(int resolution) = 0;

protected:
    ~ITessara() = default;
};

/// The class that makes terrains.
inline constexpr CLSID CLSID_CoTessara = {0xC10E608B, 0xED92, 0x4A87, {0x94, 0x1F, 0x01, 0x17, 0x85, 0x49, 0x4F, 0x43}};

template <>
inline constexpr GUID InterfaceId<ITessara> = {
    0xE375A947, 0x1891, 0x48F8, {0xAE, 0x07, 0x3A, 0x24, 0x40, 0xDE, 0xE2, 0x4B}};

/// The type library TESSARALib and its enumeration.
inline constexpr GUID LIBID_TESSARALib = {0xB1EBF9BA, 0x3A62, 0x4193, {0x99, 0x25, 0x81, 0xA9, 0x4A, 0x00, 0x7E, 0x87}};
inline constexpr GUID ID_TESSARA_RENDER_MODE = {
    0x1C7ACE81, 0x6445, 0x4598, {0x89, 0x28, 0x5E, 0xE6, 0xFF, 0xEA, 0x5C, 0x64}};
