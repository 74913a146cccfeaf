#pragma once

#include "support/fake_services.h"
#include "support/recording_gl.h"
#include "surface/co_tessara.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessara::test {

/// A surface with all its outside objects, wired unless a test does it itself.
class SurfaceTest : public testing::Test {
protected:
    SurfaceTest()
    {
        RecordingGl::Reset();
        host->textures = textures.Get();
        host->progress = progress.Get();
    }

    ~SurfaceTest() override
    {
        if (surface)
            surface->StopServer();
    }

    void Wire()
    {
        surface->InitServer();
        surface->SetKVO(host.Get());
        surface->SetMatrix(matrix.Get());
        log.clear();
    }

    /// The calls since the last look.
    CallLog TakeLog() { return std::exchange(log, {}); }

    CallLog log;
    ComPtr<FakeHost> host = MakeObject<FakeHost>(log);
    ComPtr<FakeTextureMgr> textures = MakeObject<FakeTextureMgr>(log);
    ComPtr<FakeProgress> progress = MakeObject<FakeProgress>(log);
    ComPtr<FakeMatrix> matrix = MakeObject<FakeMatrix>(log, 4, 4);
    ComPtr<FakeCamera> camera = MakeObject<FakeCamera>(log);
    ComPtr<CoTessara> surface = MakeObject<CoTessara>();
};

}  // namespace tessara::test
