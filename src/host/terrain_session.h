#pragma once

#include "../services/camera_object.h"
#include "../services/kvo_host.h"
#include "../surface/itessara.h"
#include "elevation_matrix.h"
#include "ground_frame.h"
#include "height_pyramid.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessara {

class Camera;
class DetailCamera;
struct ElevationData;

struct TerrainOptions {
    double exaggeration = 1.0;     ///< factor on heights; 1 shows true proportions
    double levelOfDetail = 500.0;  ///< a drawn height error of 1 m counts out to this many metres

    /// Colours of the heights, copied; null takes the matrix's default.
    const ElevationPalette* palette = nullptr;

    /// Cells that repeat the outermost heights around the grid, so that whatever the surface draws beyond the grid's
    /// outermost points can be cut off. The terrain stands at the same place with and without.
    int border = 0;

    /// Normalised elevations to take, to the bit, in place of the data's heights; as many as those. Null takes the
    /// heights.
    const std::vector<float>* elevations = nullptr;

    /// False leaves the tree out: the terrain can be saved but not drawn.
    bool buildTree = true;

    /// Heights in metres that the elevations 0.0 and 1.0 stand for; without them those of the data's range.
    std::optional<std::pair<float, float>> range{};
};

/// A terrain of the component, made of elevation data: from the load of the module to a built quadtree, and down again.
class TerrainSession {
public:
    /// \param host may hand out no services \throws std::runtime_error with one sentence for the user
    TerrainSession(const ElevationData& data, const TerrainOptions& options, const ComPtr<IKvoHost>& host);
    TerrainSession(const TerrainSession&) = delete;
    TerrainSession& operator=(const TerrainSession&) = delete;
    ~TerrainSession();

    ITessara& Surface() const noexcept { return *surface_; }
    ElevationMatrix& Matrix() const noexcept { return *matrix_; }
    const GroundFrame& Ground() const noexcept { return ground_; }

    /// Columns and rows of the matrix, the border included.
    LONG Columns() const noexcept { return columns_; }
    LONG Rows() const noexcept { return rows_; }
    LONG Border() const noexcept { return border_; }

    /// Draws heights multiplied with another factor, positive, from the next frame on.
    void SetExaggeration(double exaggeration);

    /// A drawn height error of 1 m counts out to this many metres, for cameras that stand at a DetailCamera from the
    /// next Follow on.
    void SetLevelOfDetail(double metres);
    double LevelOfDetail() const noexcept { return levelOfDetail_; }

    /// Takes the terrain's detail to where a camera stands, and leads another one there, for whom it is to be drawn:
    /// then no drawn height in the picture is off by more than a metre for each so many metres of distance as the level
    /// of detail says.
    void Follow(DetailCamera& detail, const Camera& camera);

    /// Heights in the matrix have changed, of the data's columns and rows from left and top up to, without, right and
    /// bottom.
    void HeightsChanged(int left, int top, int right, int bottom);

    /// What the process grew by while the tree was built, in bytes; 0 where the system doesn't tell.
    std::size_t TreeMemory() const noexcept { return treeMemory_; }

    /// One step of the level of detail towards the camera, and the triangles of the frame as text: one vertex a line,
    /// three lines a triangle. The file appears in full or not at all. \throws FileError
    void DumpPolygons(const std::string& path, ICameraObject& camera) const;

    /// The same without a file. \param text gets the text piece by piece, on another thread
    void ReadPolygons(ICameraObject& camera, const std::function<void(std::string_view)>& text) const;

private:
    void FillMatrix(const ElevationData& data, const std::vector<float>* elevations);
    void Start(const TerrainOptions& options, IKvoHost& host);

    GroundFrame ground_;
    ComPtr<ElevationMatrix> matrix_;
    ComPtr<ITessara> surface_;
    LONG columns_ = 0;
    LONG rows_ = 0;
    LONG border_ = 0;
    double levelOfDetail_;
    double levelFactor_ = 1.0;              // of the camera that was followed last
    std::optional<HeightPyramid> heights_;  // once somebody needs it
    std::size_t treeMemory_ = 0;
};

}  // namespace tessara
