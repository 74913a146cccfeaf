#pragma once

#include "host/elevation/progress_callback.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

/// What a user names as an elevation file, checked and made into a name that GDAL opens: a file or folder, a file in
/// one of GDAL's virtual file systems, a grid of a file in GDAL's notation (NETCDF:"file.nc":height), an address, a
/// pipe.
class ElevationInput {
public:
    /// \param patience, waiting as ReadPipe has them
    /// \throws ElevationError for what isn't there, can't be opened, is empty, or is neither file nor folder
    ElevationInput(const std::string& path, double patience, const ProgressCallback& waiting);
    ~ElevationInput();
    ElevationInput(const ElevationInput&) = delete;
    ElevationInput& operator=(const ElevationInput&) = delete;

    const std::string& Name() const noexcept { return name_; }

    /// Whether the user asked for something on a network. Otherwise nothing may be fetched from one.
    bool IsOnNetwork() const noexcept { return isOnNetwork_; }

private:
    void TakePipe(const std::string& path, const std::string& shownPath, double patience,
                  const ProgressCallback& waiting);

    std::string name_;
    bool isOnNetwork_ = false;
    std::vector<std::uint8_t> bytes_;  // of a pipe; in GDAL's memory file name_
};

}  // namespace tessara
