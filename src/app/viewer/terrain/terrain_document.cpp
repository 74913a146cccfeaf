#include "app/viewer/terrain/terrain_document.h"

#include "app/output/frame_dump.h"
#include "app/output/mesh_file.h"
#include "app/output/temporary_file.h"
#include "host/camera.h"
#include "host/elevation/elevation_writer.h"
#include "host/kvo_host.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

/// Cells around the grid: enough for what the surface draws at the corner to lie outside.
constexpr int kBorder = 2;

/// The same view in the space of another terrain. \param lift height of that space's zero in the camera's own
void CopyView(Camera& from, Camera& to, const GroundFrame& ground, double lift)
{
    TerrainFrustum* frustum = nullptr;
    from.GetFrustum(&frustum);
    to.SetDrawUnits(ground.DrawUnits());
    to.SetViewport(from.Width(), from.Height());
    to.SetLens(static_cast<double>(frustum->FieldOfView), static_cast<double>(frustum->Near),
               static_cast<double>(frustum->Far));
    to.SetUp(from.Up());
    to.SetDirection(from.Forward());
    to.SetPosition(from.Position() - Vector3{0.0, lift, 0.0});
}

}  // namespace

TerrainDocument::TerrainDocument(std::string path, ElevationData data, double exaggeration, double levelOfDetail,
                                 const ComPtr<IKvoHost>& host)
    : path_(std::move(path)), data_(std::move(data))
{
    const double across = std::max(data_.width * data_.spacingX, data_.height * data_.spacingY);
    const double lowest = static_cast<double>(data_.minimum);
    const double highest = static_cast<double>(data_.maximum);
    const double relief = highest - lowest;
    // The palette's entries are spread from the floor to the top: most of them are for the ground that is there.
    const double room = 0.015 * across;
    floor_ = relief > 0.0 ? lowest - std::clamp(room, 0.1 * relief, 0.4 * relief) : lowest - room;
    floor_ = static_cast<double>(static_cast<float>(floor_));
    top_ = relief > 0.0 ? highest : lowest + 0.05 * across;
    top_ = static_cast<double>(static_cast<float>(top_));

    // The component's heights run from the floor to the top.
    const float ownLowest = std::exchange(data_.minimum, static_cast<float>(floor_));
    const float ownHighest = std::exchange(data_.maximum, static_cast<float>(top_));
    session_ =
        std::make_unique<TerrainSession>(data_, TerrainOptions{exaggeration, levelOfDetail, nullptr, kBorder}, host);
    data_.minimum = ownLowest;
    data_.maximum = ownHighest;
    ground_ = std::make_unique<GroundModel>(data_, session_->Ground());
}

void TerrainDocument::Write(const GridArea& area, std::span<const float> heights)
{
    if (area.IsEmpty())
        return;
    history_.Keep(data_, area);
    writing_ = true;
    const auto columns = static_cast<std::ptrdiff_t>(area.right - area.left);
    auto source = heights.begin();
    for (int row = area.top; row < area.bottom; ++row, source += columns)
        std::copy(source, source + columns,
                  data_.metres.begin() + area.left + static_cast<std::ptrdiff_t>(row) * data_.width);
    Changed(area);
}

/// The range only grows while a stroke lasts; it is exact again at its end.
void TerrainDocument::Changed(const GridArea& area)
{
    for (int row = area.top; row < area.bottom; ++row) {
        const auto first = data_.metres.begin() + area.left + static_cast<std::ptrdiff_t>(row) * data_.width;
        const auto [low, high] = std::minmax_element(first, first + (area.right - area.left));
        data_.minimum = std::min(data_.minimum, *low);
        data_.maximum = std::max(data_.maximum, *high);
    }
    CopyToMatrix(area);
}

/// Cells of the border repeat the outermost ones.
void TerrainDocument::CopyToMatrix(const GridArea& area)
{
    const int left = area.left == 0 ? -kBorder : area.left;
    const int top = area.top == 0 ? -kBorder : area.top;
    const int right = area.right == data_.width ? area.right + kBorder : area.right;
    const int bottom = area.bottom == data_.height ? area.bottom + kBorder : area.bottom;
    for (int row = top; row < bottom; ++row) {
        const auto y = static_cast<std::size_t>(std::clamp(row, 0, data_.height - 1));
        ElevationElement* element = session_->Matrix().ElementAt(left + kBorder, row + kBorder);
        for (int column = left; column < right; ++column, ++element) {
            const auto x = static_cast<std::size_t>(std::clamp(column, 0, data_.width - 1));
            const float metres = data_.metres[x + y * static_cast<std::size_t>(data_.width)];
            element->value = static_cast<float>(session_->Ground().Normalise(static_cast<double>(metres)));
        }
    }
}

void TerrainDocument::EndStroke()
{
    history_.End(data_);
    writing_ = false;
    ScanHeights(data_);
}

GridArea TerrainDocument::Undo()
{
    const GridArea area = history_.Undo(data_);
    if (!area.IsEmpty()) {
        Changed(area);
        ScanHeights(data_);
    }
    return area;
}

GridArea TerrainDocument::Redo()
{
    const GridArea area = history_.Redo(data_);
    if (!area.IsEmpty()) {
        Changed(area);
        ScanHeights(data_);
    }
    return area;
}

void TerrainDocument::Save(const std::string& path)
{
    WriteElevationFile(data_, path);
    HeightsSaved();
}

ElevationData TerrainDocument::Frame() const
{
    ElevationData frame = data_;
    frame.metres.clear();
    frame.minimum = static_cast<float>(floor_);
    frame.maximum = static_cast<float>(top_);
    return frame;
}

std::uint64_t TerrainDocument::ExportTriangles(const std::string& path, Camera& camera, double levelOfDetail) const
{
    RequireWritable(path, path_);
    const auto host = MakeObject<KvoHost>(nullptr, nullptr);
    const double exaggeration = session_->Ground().Exaggeration();
    const TerrainSession terrain(data_, {exaggeration, levelOfDetail}, ComPtr<IKvoHost>(host.Get()));
    TemporaryFile dump(path);
    // This terrain's lowest point is the zero of its heights, not the floor.
    const auto eye = MakeObject<Camera>();
    CopyView(camera, *eye, terrain.Ground(),
             session_->Ground().FromMap(0.0, 0.0, static_cast<double>(data_.minimum)).y);
    const std::uint64_t triangles = DumpFrame(terrain, *eye, 0, dump.Path());
    const MeshFormat format = MeshFormatOf(path);
    if (format == MeshFormat::Text)
        dump.Commit();
    else
        WriteMesh(dump.Path(), path, format, terrain.Ground());
    return triangles;
}

}  // namespace tessara
