#pragma once

#include "host/elevation/elevation_input.h"
#include "host/elevation/gdal_session.h"

#include <memory>
#include <string>
#include <vector>

class GDALDataset;
class GDALRasterBand;

namespace tessara {

struct ElevationReadOptions;

/// An elevation file, open in GDAL, and the band of it that holds the heights: which grid of a file with several, and
/// which of its bands.
class RasterFile {
public:
    /// \param options grid, band and patience count
    /// \throws ElevationError for anything that is not an elevation file, and where a choice is left to the user
    RasterFile(const std::string& path, const ElevationReadOptions& options, const ProgressCallback& waiting);
    ~RasterFile();
    RasterFile(const RasterFile&) = delete;
    RasterFile& operator=(const RasterFile&) = delete;

    GDALDataset& Dataset() const { return *dataset_; }
    GDALRasterBand& Band() const { return *band_; }

    /// Sentences on what was chosen.
    const std::vector<std::string>& Notes() const noexcept { return notes_; }

    void ForgetFailures() { session_.ForgetFailures(); }

    /// Whether GDAL has reported a failure since then.
    bool HasFailed() const { return session_.HasFailed(); }

    /// Says that the file is of no use. \throws ElevationError always
    [[noreturn]] void Fail(const std::string& reason) const;

    /// The same with what GDAL reported, if it did, in brackets.
    [[noreturn]] void FailWithReport(const std::string& reason) const;

private:
    struct CloseDataset {
        void operator()(GDALDataset* dataset) const;
    };

    void Open();
    void OpenGrid(const std::string& grid);
    void ChooseBand(int number);

    std::string path_;
    ElevationInput input_;
    std::string name_;  // for GDAL
    GdalSession session_;
    std::unique_ptr<GDALDataset, CloseDataset> dataset_;
    GDALRasterBand* band_ = nullptr;  // of the dataset
    std::vector<std::string> notes_;
};

}  // namespace tessara
