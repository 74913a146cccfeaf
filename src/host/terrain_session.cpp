#include "host/terrain_session.h"

#include "host/camera.h"
#include "host/detail_camera.h"
#include "host/elevation/elevation_data.h"
#include "host/module_path.h"
#include "host/process_memory.h"
#include "platform/com/bstr.h"
#include "platform/com/module_class.h"
#include "platform/system/replacement_stream.h"
#include "platform/system/text_pipe.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <stdexcept>

namespace tessara {

namespace {

std::string ResultText(HRESULT result)
{
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(result), 16);
    return "0x" + std::string(digits, end.ptr);
}

/// Enters the component into the class table, once.
void RegisterComponent()
{
    static const bool registered = [] {
        if (FAILED(RegisterModuleClass(CLSID_CoTessara, FindModulePath().c_str())))
            throw std::bad_alloc();
        return true;
    }();
    static_cast<void>(registered);
}

ComPtr<ITessara> CreateSurface()
{
    RegisterComponent();
    ComPtr<ITessara> surface;
    const HRESULT result =
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, surface.OutVoid());
    if (FAILED(result))
        throw std::runtime_error("The terrain component " + FindModulePath() + " can't be loaded (" +
                                 ResultText(result) + ").");
    return surface;
}

}  // namespace

TerrainSession::TerrainSession(const ElevationData& data, const TerrainOptions& options, const ComPtr<IKvoHost>& host)
    : ground_(data, options.exaggeration, options.range.value_or(std::pair(data.minimum, data.maximum))),
      matrix_(MakeObject<ElevationMatrix>()),
      surface_(CreateSurface()),
      border_(options.border),
      levelOfDetail_(options.levelOfDetail)
{
    const auto [minimum, maximum] = options.range.value_or(std::pair(data.minimum, data.maximum));
    matrix_->SetElevationRange(minimum, maximum);
    FillMatrix(data, options.elevations);
    if (options.palette) {
        auto palette = std::make_unique<ElevationPalette>(*options.palette);
        if (FAILED(matrix_->SetPalette(palette.get())))
            throw std::bad_alloc();
        palette.release();
    }
    surface_->InitServer();
    try {
        Start(options, *host);
    } catch (...) {
        surface_->StopServer();
        throw;
    }
}

TerrainSession::~TerrainSession()
{
    surface_->StopServer();
}

void TerrainSession::FillMatrix(const ElevationData& data, const std::vector<float>* elevations)
{
    columns_ = data.width + 2 * border_;
    rows_ = data.height + 2 * border_;
    matrix_->SetWidth(columns_);
    matrix_->SetHeight(rows_);
    ElevationElement* element = nullptr;
    if (FAILED(matrix_->AllocateCells()) || FAILED(matrix_->GetGrid(&element)))
        throw std::runtime_error("There is not enough memory for a terrain of " + std::to_string(columns_) + " x " +
                                 std::to_string(rows_) + " cells.");
    for (LONG row = 0; row < rows_; ++row) {
        const auto y = static_cast<std::size_t>(std::clamp(row - border_, 0, data.height - 1));
        const float* from = (elevations ? *elevations : data.metres).data() + y * static_cast<std::size_t>(data.width);
        for (LONG column = 0; column < columns_; ++column, ++element) {
            const LONG x = std::clamp(column - border_, 0, data.width - 1);
            element->value = elevations ? from[x] : static_cast<float>(ground_.Normalise(static_cast<double>(from[x])));
        }
    }
}

void TerrainSession::Start(const TerrainOptions& options, IKvoHost& host)
{
    surface_->SetKVO(&host);
    surface_->SetMatrix(matrix_.Get());
    SetExaggeration(options.exaggeration);
    const auto border = static_cast<float>(border_);
    surface_->SetTranslation3D(0.0f - border, 0.0f, 0.0f - border);
    if (!options.buildTree)
        return;
    const std::size_t before = ResidentBytes();
    if (FAILED(surface_->InitQuadTree()))
        throw std::runtime_error("There is not enough memory for the terrain's tree over " + std::to_string(columns_) +
                                 " x " + std::to_string(rows_) + " cells.");
    const std::size_t after = ResidentBytes();
    treeMemory_ = after > before ? after - before : 0;
}

/// The surface takes its scale into the level of detail when that is set.
void TerrainSession::SetExaggeration(double exaggeration)
{
    ground_.SetExaggeration(exaggeration);
    surface_->SetElevationScale(static_cast<float>(ground_.ElevationScale()));
    SetLevelOfDetail(levelOfDetail_);
}

void TerrainSession::SetLevelOfDetail(double metres)
{
    levelOfDetail_ = metres;
    surface_->SetLOD(static_cast<float>(metres * levelFactor_));
}

void TerrainSession::Follow(DetailCamera& detail, const Camera& camera)
{
    if (!heights_) {
        ElevationElement* grid = nullptr;
        matrix_->GetGrid(&grid);
        heights_.emplace(grid, columns_, rows_, border_);
    }
    const double border = border_;
    detail.Follow(camera, {*heights_, ground_.ElevationScale(), {-border, 0.0, -border}});
    levelFactor_ = detail.Factor();
    SetLevelOfDetail(levelOfDetail_);
}

void TerrainSession::HeightsChanged(int left, int top, int right, int bottom)
{
    if (heights_)
        heights_->Update(left, top, right, bottom);
}

void TerrainSession::DumpPolygons(const std::string& path, ICameraObject& camera) const
{
    ReplacementStream file(path);
    ReadPolygons(camera, [&](std::string_view text) { file.Stream() << text; });
    file.PutInPlace();
}

/// The surface reports no failure of a file that it writes; a pipe takes all of it.
void TerrainSession::ReadPolygons(ICameraObject& camera, const std::function<void(std::string_view)>& text) const
{
    PipeText(
        [&](const std::string& path) {
            const BstrHolder name(path);
            surface_->GetRenderedPolygons(name.Get(), &camera);
        },
        text);
}

}  // namespace tessara
