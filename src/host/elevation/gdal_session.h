#pragma once

#include <array>
#include <string>

namespace tessara {

/// While it lives, GDAL of this thread keeps its complaints to itself, to be asked for here, and reaches no network
/// unless it is let. The first one of the process registers GDAL's drivers.
class GdalSession {
public:
    explicit GdalSession(bool mayUseNetwork = false);
    ~GdalSession();
    GdalSession(const GdalSession&) = delete;
    GdalSession& operator=(const GdalSession&) = delete;

    /// Whether GDAL has reported a failure, which some of its drivers do while they return success.
    bool HasFailed() const { return !firstFailure_.empty(); }

    /// What was wrong: `what`, with GDAL's first failure in brackets if it reported one. When a file wanted data from a
    /// network, that alone.
    /// \param name under which GDAL knows the file, cut from the front of its report
    std::string Reason(const std::string& what, const std::string& name) const;

    void ForgetFailures() { firstFailure_.clear(); }

private:
    static constexpr std::size_t kOptionCount = 3;

    std::array<std::string, kOptionCount> before_;  // the thread's own settings, empty for none
    std::string firstFailure_;
};

}  // namespace tessara
