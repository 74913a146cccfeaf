#pragma once

#include "app/viewer/window_user.h"
#include "host/elevation/elevation_writer.h"
#include "host/host_classes.h"
#include "host/test_elevation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tessara::test {

/// Tests of the viewer's window, with folders of their own.
class ViewerWindow : public testing::Test {
protected:
    /// A valley in a file of its own.
    std::string Valley(const std::string& name, int columns = 90, double phase = 0.0) const
    {
        const std::string path = folders_.scratch / name;
        const auto height = [=](int x, int y) {
            return 400.0 + 150.0 * std::sin(x * 0.11 + phase) + 90.0 * std::cos(y * 0.13);
        };
        WriteElevationFile(MakeElevation(columns, 70, 30.0, 30.0, height), path);
        return path;
    }

    const OwnFolders folders_;
    const HostClasses classes_ = RegisterHostClasses();
};

}  // namespace tessara::test
