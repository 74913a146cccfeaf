/* A host in plain C: what crosses the border is a table of function pointers per interface, and no class of anybody's
   compiler. It makes a registered CoTessara, hands it a host object, a height matrix and a place to save to, all of
   which are written in C, and reads back what it set.

     plain_c_host            the component is registered */

#define COBJMACROS
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const CLSID CLSID_CoTessara = {0xC10E608B, 0xED92, 0x4A87, {0x94, 0x1F, 0x01, 0x17, 0x85, 0x49, 0x4F, 0x43}};
static const IID IID_ITessara = {0xE375A947, 0x1891, 0x48F8, {0xAE, 0x07, 0x3A, 0x24, 0x40, 0xDE, 0xE2, 0x4B}};

typedef struct ITessara ITessara;

/* The 54 methods in the order of the interface. */
typedef struct {
    HRESULT (*QueryInterface)(ITessara*, REFIID, void**);
    ULONG (*AddRef)(ITessara*);
    ULONG (*Release)(ITessara*);
    HRESULT (*InitServer)(ITessara*);
    HRESULT (*StopServer)(ITessara*);
    HRESULT (*SetKVO)(ITessara*, IUnknown* kvo);
    HRESULT (*SetLOD)(ITessara*, float f);
    HRESULT (*GetLOD)(ITessara*, float* f);
    HRESULT (*InitQuadTree)(ITessara*);
    HRESULT (*Build3D)(ITessara*);
    HRESULT (*SetElevationScale)(ITessara*, float f);
    HRESULT (*Draw3D)(ITessara*, IUnknown* cameraobj);
    HRESULT (*ActivateSourceTexture)(ITessara*);
    HRESULT (*ActivateDetailTexture)(ITessara*);
    HRESULT (*ActivateCanvasTexture)(ITessara*);
    HRESULT (*SetGLPolygonMode)(ITessara*, UINT face, UINT mode);
    HRESULT (*UseTextureSource)(ITessara*, LONG b);
    HRESULT (*UseTextureDetail)(ITessara*, LONG b);
    HRESULT (*UseColor)(ITessara*, LONG b);
    HRESULT (*GetTranslation)(ITessara*, float* t);
    HRESULT (*SetRenderMode)(ITessara*, int mode);
    HRESULT (*SetMatrix)(ITessara*, IUnknown* ptr);
    HRESULT (*Draw2D)(ITessara*, int minY, int minX, int maxY, int maxX);
    HRESULT (*CreateTextureSurface2D)(ITessara*);
    HRESULT (*BuildTextureSrc)(ITessara*);
    HRESULT (*SetCanvasOffset)(ITessara*, float left, float top);
    HRESULT (*SetTranslation3D)(ITessara*, float x, float y, float z);
    HRESULT (*SetSize)(ITessara*, int Width, int Height);
    HRESULT (*InitMatrix)(ITessara*);
    HRESULT (*SetTextureDetailFromDB)(ITessara*, BSTR name, BSTR table, VARIANT* v);
    HRESULT (*ImportTextureSource)(ITessara*, IUnknown* parent);
    HRESULT (*BlendTextureDBToSource)(ITessara*, BSTR name, BSTR table, IUnknown* selection);
    HRESULT (*BlendTextureDBToSourceRegion)(ITessara*, BSTR name, BSTR table, VARIANT region);
    HRESULT (*ExportTextureSource)(ITessara*, IUnknown* parent);
    HRESULT (*ExportTextureCanvas)(ITessara*, IUnknown* parent);
    HRESULT (*GetDBTextureDetailName)(ITessara*, BSTR* name, BSTR* table);
    HRESULT (*IsUsingTextureDetail)(ITessara*, LONG* b);
    HRESULT (*IsUsingTextureSource)(ITessara*, LONG* b);
    HRESULT (*GetMatrix)(ITessara*, IUnknown** matrix);
    HRESULT (*SerializeSurfaceProperties)(ITessara*, IUnknown* pIParser);
    HRESULT (*SerializeMatrix)(ITessara*, IUnknown* pIParser);
    HRESULT (*SerializePalette)(ITessara*, IUnknown* pIParser);
    HRESULT (*SerializeTextures)(ITessara*, IUnknown* pIParser);
    HRESULT (*LoadSerializedSurfaceProperties)(ITessara*, IUnknown* pIParser);
    HRESULT (*LoadSerializedMatrix)(ITessara*, IUnknown* pIParser);
    HRESULT (*LoadSerializedPalette)(ITessara*, IUnknown* pIParser);
    HRESULT (*LoadSerializedTextures)(ITessara*, IUnknown* pIParser);
    HRESULT (*SetTextureDetailTiling)(ITessara*, float* x, float* y);
    HRESULT (*GetTextureDetailTiling)(ITessara*, float* x, float* y);
    HRESULT (*SetTextureDetailRGBGamma)(ITessara*, int gamma);
    HRESULT (*GetTextureDetailRGBGamma)(ITessara*, int* gamma);
    HRESULT (*TextureDetailDlg)(ITessara*);
    HRESULT (*GetDataBaseSource)(ITessara*, BSTR* database);
    HRESULT (*SetDataBaseSource)(ITessara*, BSTR database);
    HRESULT (*SetUserTextureName)(ITessara*, BSTR TextureName);
    HRESULT (*GetRenderedPolygons)(ITessara*, BSTR strFileName, IUnknown* cameraobj);
    HRESULT (*CreateTextureSurface3D)(ITessara*, int resolution);
} ITessaraVtbl;

struct ITessara {
    const ITessaraVtbl* lpVtbl;
};

/* An object of ours: its table, and how often it is referred to. It lives as long as the program. */
typedef struct {
    const void* lpVtbl;
    ULONG references;
} Object;

static HRESULT Refuse(Object* self, REFIID iid, void** out)
{
    (void)self;
    (void)iid;
    *out = NULL;
    return E_NOINTERFACE;
}

static ULONG Hold(Object* self)
{
    return ++self->references;
}

static ULONG LetGo(Object* self)
{
    return --self->references;
}

#define UNKNOWN_METHODS                                                                                                \
    HRESULT (*QueryInterface)(Object*, REFIID, void**);                                                                \
    ULONG (*AddRef)(Object*);                                                                                          \
    ULONG (*Release)(Object*)

/* IElevationMatrix and IElevationCell: heights as plain floats. */
enum { kMost = 64 };
static float g_heights[kMost * kMost];
static LONG g_width, g_height;
static int g_cell;

typedef struct {
    UNKNOWN_METHODS;
    HRESULT (*SetElevation)(Object*, float elevation);
    HRESULT (*GetElevation)(Object*, float* elevation);
} CellVtbl;

static HRESULT SetElevation(Object* self, float elevation)
{
    (void)self;
    g_heights[g_cell] = elevation;
    return S_OK;
}

static HRESULT GetElevation(Object* self, float* elevation)
{
    (void)self;
    *elevation = g_heights[g_cell];
    return S_OK;
}

static const CellVtbl kCellMethods = {Refuse, Hold, LetGo, SetElevation, GetElevation};
static Object g_cellObject = {&kCellMethods, 0};

typedef struct {
    UNKNOWN_METHODS;
    HRESULT (*SetWidth)(Object*, LONG width);
    HRESULT (*SetHeight)(Object*, LONG height);
    HRESULT (*GetWidth)(Object*, LONG* width);
    HRESULT (*GetHeight)(Object*, LONG* height);
    HRESULT (*AllocateCells)(Object*);
    HRESULT (*GetCell)(Object*, LONG x, LONG y, Object** cell);
    HRESULT (*SetElevationRange)(Object*, float minimum, float maximum);
    HRESULT (*SetPalette)(Object*, void* palette);
    HRESULT (*ResetMatrix)(Object*);
    HRESULT (*BeginUpdate)(Object*, LONG reserved);
    HRESULT (*EndUpdate)(Object*, LONG reserved);
    HRESULT (*GetPalette)(Object*, void** palette);
    HRESULT (*GetGrid)(Object*, void** grid);
} MatrixVtbl;

static HRESULT SetWidth(Object* self, LONG width)
{
    (void)self;
    g_width = width;
    return width <= kMost ? S_OK : E_INVALIDARG;
}

static HRESULT SetHeight(Object* self, LONG height)
{
    (void)self;
    g_height = height;
    return height <= kMost ? S_OK : E_INVALIDARG;
}

static HRESULT GetWidth(Object* self, LONG* width)
{
    (void)self;
    *width = g_width;
    return S_OK;
}

static HRESULT GetHeight(Object* self, LONG* height)
{
    (void)self;
    *height = g_height;
    return S_OK;
}

static HRESULT Agree(Object* self)
{
    (void)self;
    return S_OK;
}

static HRESULT GetCell(Object* self, LONG x, LONG y, Object** cell)
{
    (void)self;
    g_cell = (int)(y * g_width + x);
    *cell = &g_cellObject;
    Hold(*cell);
    return S_OK;
}

static HRESULT SetElevationRange(Object* self, float minimum, float maximum)
{
    (void)self;
    (void)minimum;
    (void)maximum;
    return S_OK;
}

static HRESULT SetPalette(Object* self, void* palette)
{
    (void)self;
    (void)palette;
    return E_NOTIMPL;
}

static HRESULT Update(Object* self, LONG reserved)
{
    (void)self;
    (void)reserved;
    return S_OK;
}

/* Palette and grid are C++ classes: a host that draws is built with the component's compiler. */
static HRESULT GiveNothing(Object* self, void** out)
{
    (void)self;
    *out = NULL;
    return E_NOTIMPL;
}

static const MatrixVtbl kMatrixMethods = {Refuse,    Hold,     LetGo,   SetWidth,          SetHeight,  GetWidth,
                                          GetHeight, Agree,    GetCell, SetElevationRange, SetPalette, Agree,
                                          Update,    Update,   GiveNothing, GiveNothing};

/* IKvoHost without services, but for new keys. */
typedef struct {
    UNKNOWN_METHODS;
    HRESULT (*GetTextureMgr)(Object*, void** textures);
    HRESULT (*CreateImageFile)(Object*, void** image);
    HRESULT (*OpenTextureDatabase)(Object*, void** database, VARIANT* selector);
    HRESULT (*NewElementKey)(Object*, BSTR* key);
    HRESULT (*LoadTextureFromDB)(Object*, BSTR name, BSTR table, ULONG* id, VARIANT* selector);
    HRESULT (*LoadPreviewTexture)(Object*, BSTR key, BSTR table, ULONG* textureName, VARIANT* selector);
    HRESULT (*GetProgressWindow)(Object*, void** progress);
} HostVtbl;

static int g_keys;
static int g_loads;

static HRESULT NewElementKey(Object* self, BSTR* key)
{
    wchar_t text[] = L"key A";
    (void)self;
    text[4] = (wchar_t)(text[4] + g_keys++);
    *key = SysAllocString(text);
    return S_OK;
}

static HRESULT OpenNothing(Object* self, void** database, VARIANT* selector)
{
    (void)self;
    (void)selector;
    *database = NULL;
    return S_FALSE;
}

/* Answers with the texture 77 for the element "gravel" of the user's database. */
static HRESULT LoadTexture(Object* self, BSTR name, BSTR table, ULONG* id, VARIANT* selector)
{
    (void)self;
    (void)table;
    ++g_loads;
    if (!selector || !name || wcscmp(name, L"gravel") != 0)
        return E_FAIL;
    *id = 77;
    return S_OK;
}

static const HostVtbl kHostMethods = {Refuse,        Hold,        LetGo,       GiveNothing, GiveNothing, OpenNothing,
                                      NewElementKey, LoadTexture, LoadTexture, GiveNothing};

/* IParser: keeps what is saved, by name. Names that come in are its own to free. */
typedef struct {
    UNKNOWN_METHODS;
    HRESULT (*AddNode)(Object*, void* parent, BSTR name, const void* bytes, LONG size, LONG typeCode);
    HRESULT (*GetNodeValue)(Object*, void* node, void* buffer, LONG* count, LONG typeCode);
    HRESULT (*FindNode)(Object*, void* parent, BSTR name, LONG index, void** node);
} ParserVtbl;

typedef struct {
    wchar_t name[32];
    unsigned char bytes[kMost * kMost * sizeof(float)];
    LONG size;
} Value;

enum { kMostValues = 16 };
static Value g_values[kMostValues];
static int g_valueCount;

static HRESULT AddNode(Object* self, void* parent, BSTR name, const void* bytes, LONG size, LONG typeCode)
{
    Value* value = &g_values[g_valueCount];
    (void)self;
    (void)parent;
    (void)typeCode;
    if (g_valueCount == kMostValues || SysStringLen(name) >= 32 || (size_t)size > sizeof value->bytes) {
        SysFreeString(name);
        return E_FAIL;
    }
    wcscpy(value->name, name);
    memcpy(value->bytes, bytes, (size_t)size);
    value->size = size;
    ++g_valueCount;
    SysFreeString(name);
    return S_OK;
}

static HRESULT GetNodeValue(Object* self, void* node, void* buffer, LONG* count, LONG typeCode)
{
    const Value* value = node;
    (void)self;
    (void)typeCode;
    memcpy(buffer, value->bytes, (size_t)value->size);
    *count = value->size;
    return S_OK;
}

static HRESULT FindNode(Object* self, void* parent, BSTR name, LONG index, void** node)
{
    HRESULT result = E_FAIL;
    (void)self;
    (void)parent;
    (void)index;
    for (int i = 0; i < g_valueCount; ++i) {
        if (wcscmp(g_values[i].name, name) == 0) {
            *node = &g_values[i];
            result = S_OK;
        }
    }
    SysFreeString(name);
    return result;
}

static const ParserVtbl kParserMethods = {Refuse, Hold, LetGo, AddNode, GetNodeValue, FindNode};

static void Require(int holds, const char* what)
{
    if (holds)
        return;
    fprintf(stderr, "plain_c_host: %s\n", what);
    exit(1);
}

static void TrySettings(ITessara* terrain)
{
    float number = 0.0f, place[3] = {0};
    LONG flag = 7;
    BSTR text = SysAllocString(L"USERDB"), back = NULL;
    Require(terrain->lpVtbl->SetElevationScale(terrain, 2.0f) == S_OK, "SetElevationScale");
    Require(terrain->lpVtbl->SetLOD(terrain, 12.5f) == S_OK, "SetLOD");
    Require(terrain->lpVtbl->GetLOD(terrain, &number) == S_OK && number == 12.5f, "GetLOD gave another number");
    Require(terrain->lpVtbl->SetTranslation3D(terrain, 1.0f, -2.0f, 3.5f) == S_OK, "SetTranslation3D");
    Require(terrain->lpVtbl->GetTranslation(terrain, place) == S_OK && place[0] == 1.0f && place[1] == -2.0f &&
                place[2] == 3.5f,
            "GetTranslation gave another place");
    Require(terrain->lpVtbl->IsUsingTextureSource(terrain, &flag) == S_OK && flag == 0, "IsUsingTextureSource");
    Require(terrain->lpVtbl->SetRenderMode(terrain, 3) == E_FAIL, "SetRenderMode took a mode that there isn't");
    Require(terrain->lpVtbl->SetDataBaseSource(terrain, text) == S_OK, "SetDataBaseSource");
    Require(terrain->lpVtbl->GetDataBaseSource(terrain, &back) == S_OK && wcscmp(back, text) == 0,
            "GetDataBaseSource gave another text");
    SysFreeString(back);
    SysFreeString(text);
}

/* Calls with a structure by value, and with one that says which database is meant. */
static void TryVariants(ITessara* terrain)
{
    BSTR name = SysAllocString(L"gravel"), table = SysAllocString(L"ground"), key = NULL, place = NULL;
    VARIANT variant;
    VariantInit(&variant);
    Require(terrain->lpVtbl->BlendTextureDBToSourceRegion(terrain, name, table, variant) == E_FAIL,
            "BlendTextureDBToSourceRegion");
    Require(FAILED(terrain->lpVtbl->SetTextureDetailFromDB(terrain, name, table, NULL)), "the system's database");
    Require(terrain->lpVtbl->SetTextureDetailFromDB(terrain, name, table, &variant) == S_OK, "the user's database");
    Require(g_loads == 2, "the host object wasn't asked for textures");
    Require(terrain->lpVtbl->GetDBTextureDetailName(terrain, &key, &place) == S_OK && wcscmp(key, name) == 0 &&
                wcscmp(place, table) == 0,
            "GetDBTextureDetailName");
    SysFreeString(key);
    SysFreeString(place);
    SysFreeString(name);
    SysFreeString(table);
}

static void TryMatrix(ITessara* terrain, IUnknown* matrix, IUnknown* parser)
{
    IUnknown* borrowed = NULL;
    float number = 0.0f;
    Require(terrain->lpVtbl->SetMatrix(terrain, matrix) == S_OK, "SetMatrix");
    Require(terrain->lpVtbl->GetMatrix(terrain, &borrowed) == S_OK && borrowed == matrix, "GetMatrix");
    Require(terrain->lpVtbl->SetSize(terrain, 9, 5) == S_OK, "SetSize");
    Require(terrain->lpVtbl->InitMatrix(terrain) == S_OK, "InitMatrix");
    Require(g_width == 9 && g_height == 5 && g_heights[44] == 0.05f, "the matrix wasn't filled");
    g_heights[13] = 0.75f;
    Require(terrain->lpVtbl->SerializeMatrix(terrain, parser) == S_OK, "SerializeMatrix");
    Require(terrain->lpVtbl->SerializeSurfaceProperties(terrain, parser) == S_OK, "SerializeSurfaceProperties");
    Require(g_valueCount == 8, "other values were saved than a terrain has");
    terrain->lpVtbl->SetLOD(terrain, 1.0f);
    Require(terrain->lpVtbl->LoadSerializedSurfaceProperties(terrain, parser) == S_OK, "loading");
    Require(terrain->lpVtbl->GetLOD(terrain, &number) == S_OK && number == 12.5f, "another level of detail was loaded");
}

int main(void)
{
    Object matrix = {&kMatrixMethods, 1}, host = {&kHostMethods, 1}, parser = {&kParserMethods, 1};
    ITessara* terrain = NULL;
    Require(SUCCEEDED(CoInitialize(NULL)), "COM doesn't start");
    Require(SUCCEEDED(CoCreateInstance(&CLSID_CoTessara, NULL, CLSCTX_INPROC_SERVER, &IID_ITessara, (void**)&terrain)),
            "the component isn't registered");
    Require(terrain->lpVtbl->InitServer(terrain) == S_OK, "InitServer");
    Require(terrain->lpVtbl->SetKVO(terrain, (IUnknown*)&host) == S_OK && g_keys == 3, "SetKVO asked for no keys");
    TrySettings(terrain);
    TryVariants(terrain);
    TryMatrix(terrain, (IUnknown*)&matrix, (IUnknown*)&parser);
    Require(terrain->lpVtbl->StopServer(terrain) == S_OK, "StopServer");
    Require(terrain->lpVtbl->Release(terrain) == 0, "the object is still held");
    Require(matrix.references == 1 && host.references == 1 && parser.references == 1 && g_cellObject.references == 0,
            "the component keeps references");
    CoUninitialize();
    printf("a host in C worked with a CoTessara\n");
    return 0;
}
