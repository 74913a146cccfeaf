#pragma once

#include "host/storage/sqlite_file.h"
#include "host/textures/database_place.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// One picture of a texture database, without its pixels.
struct TextureEntry {
    std::string key;
    std::string displayName;  ///< may be empty
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t bitsPerPixel = 0;  ///< 8, 24 or 32

    /// Number of bytes of the pixels, rows without padding. \return nothing for what is no picture: another depth, or a
    /// side that is empty or longer than 16384 pixels
    std::optional<std::size_t> PixelSize() const;
};

/// One picture of a texture database.
struct TextureElement : TextureEntry {
    std::vector<std::uint8_t> pixels;  ///< rows without padding, the top row first
};

/// A file of texture elements in named tables. Within a table keys are unique, display names need not be. Methods throw
/// StorageError, with one sentence that names the file, and std::bad_alloc.
class TextureStore {
public:
    /// Opens a store; ReadWrite makes it, with its folder, where there is none.
    TextureStore(const std::string& path, SqliteFile::Access access);

    /// The elements of a table, oldest first.
    std::vector<TextureEntry> List(std::string_view table);

    /// Key of the oldest element with a display name.
    std::optional<std::string> FindName(std::string_view table, std::string_view displayName);

    /// \return nothing for an unknown key
    std::optional<TextureElement> Load(std::string_view table, std::string_view key);

    /// Adds an element as a whole. Fails for a key that exists and for what is no picture.
    /// \param pixels rows without padding, the top row first
    void Add(std::string_view table, const TextureEntry& entry, std::span<const std::uint8_t> pixels);

    /// \return false for an unknown key
    bool Remove(std::string_view table, std::string_view key);

private:
    SqliteFile file_;
};

/// Opens the store at a place. \return null for a writable place without a file, which counts as an empty database
/// \throws StorageError; std::bad_alloc
std::unique_ptr<TextureStore> OpenStore(const DatabasePlace& place);

}  // namespace tessara
