#pragma once

namespace tessara {

/// Some of a file's cells, counted from 0 at the north-west one, whichever way round the file has its rows.
struct CellWindow {
    int column = 0;
    int row = 0;
    int columns = 0;
    int rows = 0;
};

/// A rectangle on the map, in the file's coordinates; in degrees of longitude and latitude where it doesn't meet the
/// file otherwise.
struct MapExtent {
    double west = 0.0;
    double south = 0.0;
    double east = 0.0;
    double north = 0.0;
};

}  // namespace tessara
