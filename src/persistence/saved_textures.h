#pragma once

#include "persistence/saved_place.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessara {

/// The image that is stretched over a terrain, as it is saved.
struct SavedImage {
    LONG width = 0;
    LONG height = 0;
    LONG bits = 32;                ///< of a pixel: 8, 24 or 32
    std::span<const BYTE> pixels;  ///< without padding, the northernmost row first; belong to somebody else

    /// Bytes that the pixels take. \return 0 for a size without pixels, or beyond 2 GiB
    std::size_t Size() const { return BlockSize(width, height, static_cast<std::size_t>(bits / 8)); }
};

/// Where the detail texture lies. What isn't set wasn't there, and isn't written.
struct SavedDetail {
    std::optional<std::string> key;
    std::optional<std::string> table;
    std::optional<std::string> database;  ///< "USERDB", "APPDB" or empty
    std::optional<std::string> displayName;
};

/// How the textures are shown. What isn't set wasn't there or couldn't be read, and isn't written.
struct SavedTextureSettings {
    std::optional<LONG> usingDetail;
    std::optional<LONG> usingSource;
    std::optional<float> tilingX;
    std::optional<float> tilingY;
    std::optional<LONG> rgbGamma;
};

/// All that is saved of a terrain's textures.
struct SavedTextures {
    std::optional<SavedImage> source;  ///< not set: not written
    SavedDetail detail;
    SavedTextureSettings settings;

    /// \throws std::bad_alloc before anything is written
    void Write(IParser& parser) const;
};

/// Reads the textures of a terrain, in steps, since a surface takes the one before it looks for the next: source, then
/// detail, then settings. The steps behind the source allocate nothing.
class SavedTexturesReader {
public:
    /// \throws std::bad_alloc
    explicit SavedTexturesReader(IParser& parser);

    /// Whether there is a source image; its size is in `source` then, and its depth isn't known yet.
    bool FindSource(SavedImage& source);

    /// Reads the pixels of the image that was found, which `source` points at as long as this object lives.
    /// \return false when they can't be delivered \throws std::bad_alloc, and std::length_error for a size that no
    /// image has, both before anything is read
    bool ReadSource(SavedImage& source);

    SavedDetail ReadDetail();

    /// A switch that is missing is on, as before there were switches.
    SavedTextureSettings ReadSettings();

private:
    std::optional<std::string> ReadText(SavedId value, std::string& room);
    std::optional<float> ReadFloat(SavedId value);
    std::optional<LONG> ReadInteger(SavedId value);
    std::optional<LONG> ReadSwitch(SavedId value);

    SavedPlace place_;
    ParserNode sourceNode_ = nullptr;
    std::vector<BYTE> pixels_;
    std::string rooms_[4];  // for the texts of the detail texture
};

}  // namespace tessara
