#pragma once

#include "app/viewer/terrain/ground_model.h"
#include "app/viewer/terrain/height_history.h"
#include "host/elevation/elevation_data.h"
#include "host/terrain_session.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tessara {

class Camera;

/// One terrain that is open: its heights, in metres and in the component, and what was changed about them.
///
/// Heights can be dug down to the floor, a little below the lowest point; beyond the highest one there is no limit.
class TerrainDocument {
public:
    /// \param path where the heights come from, empty for the built-in sample
    /// \throws std::runtime_error with one sentence for the user
    TerrainDocument(std::string path, ElevationData data, double exaggeration, double levelOfDetail,
                    const ComPtr<IKvoHost>& host);

    const std::string& Path() const noexcept { return path_; }
    const ElevationData& Data() const noexcept { return data_; }
    TerrainSession& Session() const noexcept { return *session_; }
    const GroundModel& Ground() const noexcept { return *ground_; }

    /// Heights in metres for which the palette's first and last colours stand.
    double Floor() const noexcept { return floor_; }
    double Top() const noexcept { return top_; }

    /// Changes heights. \param heights of the area's cells, row by row
    void Write(const GridArea& area, std::span<const float> heights);

    // Strokes of a brush: what is written between the two can be undone as one.
    void BeginStroke() { history_.Begin(); }
    void EndStroke();
    bool CanUndo() const noexcept { return history_.CanUndo(); }
    bool CanRedo() const noexcept { return history_.CanRedo(); }

    /// \return the area that changed
    GridArea Undo();
    GridArea Redo();

    /// Whether there are changes that no file holds.
    bool IsModified() const noexcept { return writing_ || history_.State() != savedState_; }

    /// Tells two states of the heights apart. Undone changes lead back to an earlier state.
    std::uint64_t HeightState() const noexcept { return history_.State(); }

    /// Writes the heights as a GeoTIFF, or what else the name's ending asks for.
    /// \throws std::runtime_error with one sentence that names the file
    void Save(const std::string& path);

    /// The heights as they are now are in a file.
    void HeightsSaved() noexcept { savedState_ = history_.State(); }

    /// Where the heights lie and what the component's elevations 0.0 and 1.0 stand for, without the heights.
    ElevationData Frame() const;

    /// Adapts a terrain of its own to a camera and writes the triangles, as the program's command for that does.
    /// \return the number of triangles \throws std::runtime_error with one sentence that names the file
    std::uint64_t ExportTriangles(const std::string& path, Camera& camera, double levelOfDetail) const;

private:
    void CopyToMatrix(const GridArea& area);
    void Changed(const GridArea& area);

    std::string path_;
    ElevationData data_;
    double floor_ = 0.0;
    double top_ = 0.0;
    std::unique_ptr<TerrainSession> session_;
    std::unique_ptr<GroundModel> ground_;
    HeightHistory history_;
    std::uint64_t savedState_ = 0;  // of the history, when the heights were as a file holds them
    bool writing_ = false;          // a stroke that isn't ended has changed heights
};

}  // namespace tessara
