#pragma once

#include "app/view/light_map.h"
#include "app/viewer/terrain/ground_model.h"
#include "app/viewer/terrain/made_up_heights.h"
#include "host/elevation/elevation_data.h"
#include "host/terrain_session.h"

#include <functional>
#include <memory>
#include <string>

namespace tessara {

/// One terrain that is open: its heights, in metres and in the component, which it keeps in step.
///
/// It needs no OpenGL and can be made on any thread, for one thread at a time.
///
/// Heights can be dug down to the floor, a little below the lowest point; beyond the highest one there is no limit.
class TerrainDocument {
public:
    /// \param path where the heights come from, empty for the built-in sample
    /// \throws std::runtime_error with one sentence for the user
    TerrainDocument(std::string path, ElevationData data, double exaggeration);

    /// From now on the component asks this host for services, on the thread of the caller.
    void Serve(IKvoHost& host) { session_->Surface().SetKVO(&host); }

    const std::string& Path() const noexcept { return path_; }
    const ElevationData& Data() const noexcept { return data_; }
    TerrainSession& Session() const noexcept { return *session_; }
    const GroundModel& Ground() const noexcept { return *ground_; }

    /// Heights in metres for which the palette's first and last colours stand.
    double Floor() const noexcept { return floor_; }
    double Top() const noexcept { return top_; }

    /// Changes heights. Cells without data that get another height have data from then on.
    /// \param change works on the data's heights and returns the area whose cells it has changed
    /// \return that area
    GridArea Edit(const std::function<GridArea(ElevationData&)>& change);

    /// Works out how low and how high the terrain is, exactly: Edit lets the range only grow.
    void Rescan();

    /// The heights, with the range that the component's elevations 0.0 and 1.0 stand for.
    ElevationData AsInSession() const;

private:
    void CopyToMatrix(const GridArea& area);
    void Changed(const GridArea& area);

    std::string path_;
    ElevationData data_;
    MadeUpHeights madeUp_;
    double floor_ = 0.0;
    double top_ = 0.0;
    std::unique_ptr<TerrainSession> session_;
    std::unique_ptr<GroundModel> ground_;
};

}  // namespace tessara
