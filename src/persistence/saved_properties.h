#pragma once

struct IParser;

namespace tessara {

/// How a surface is drawn, as it is saved.
struct SavedProperties {
    float lod = 300.0f;
    float translation[3] = {};
    float elevationScale = 3.0f;

    /// What is missing or can't be read gets its default; a scale that is there and can't be read, 30.
    /// \throws std::bad_alloc before anything is looked for
    static SavedProperties Read(IParser& parser);

    /// \throws std::bad_alloc before anything is written
    void Write(IParser& parser) const;
};

}  // namespace tessara
