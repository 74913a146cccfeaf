#include "host/textures/texture_store.h"

#include <filesystem>
#include <system_error>

namespace tessara {

namespace {

constexpr std::uint32_t kMaxSide = 16384;

constexpr SqliteFile::Kind kKind = {
    0x54455854,  // "TEXT"
    "texture database",
    "CREATE TABLE elements ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " table_name TEXT NOT NULL,"
    " key TEXT NOT NULL,"
    " display_name TEXT NOT NULL,"
    " width INTEGER NOT NULL,"
    " height INTEGER NOT NULL,"
    " bits_per_pixel INTEGER NOT NULL,"
    " checksum INTEGER NOT NULL,"
    " pixels BLOB NOT NULL,"
    " UNIQUE (table_name, key));"
    "CREATE INDEX elements_by_name ON elements (table_name, display_name);",
};

/// FNV-1a, 64 bits: finds pixels that went bad on the disk.
std::int64_t Checksum(std::span<const std::uint8_t> bytes)
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const std::uint8_t byte : bytes)
        hash = (hash ^ byte) * 0x100000001B3u;
    return static_cast<std::int64_t>(hash);
}

std::string Folder(const std::string& path)
{
    return std::filesystem::path(path).parent_path().string();
}

std::string Prepared(const std::string& path, SqliteFile::Access access)
{
    std::error_code error;
    if (access == SqliteFile::Access::ReadWrite && !Folder(path).empty()) {
        std::filesystem::create_directories(Folder(path), error);
        if (error)
            throw StorageError("Can't make the folder \"" + Folder(path) + "\": " + error.message());
    }
    return path;
}

/// Numbers that don't fit are no picture's.
template <class T>
T Narrowed(std::int64_t value)
{
    return value == static_cast<T>(value) ? static_cast<T>(value) : T{};
}

/// \param row begins with key, display name, width, height and depth
TextureEntry EntryOf(const SqliteStatement& row)
{
    return {row.Text(0), row.Text(1), Narrowed<std::uint32_t>(row.Number(2)), Narrowed<std::uint32_t>(row.Number(3)),
            Narrowed<std::uint16_t>(row.Number(4))};
}

bool HasKey(SqliteFile& file, std::string_view table, std::string_view key)
{
    SqliteStatement row(file, "SELECT 1 FROM elements WHERE table_name = ? AND key = ?");
    return row.Bind(table).Bind(key).Step();
}

}  // namespace

TextureStore::TextureStore(const std::string& path, SqliteFile::Access access)
    : file_(Prepared(path, access), access, kKind)
{
}

std::optional<std::size_t> TextureEntry::PixelSize() const
{
    if (width == 0 || height == 0 || width > kMaxSide || height > kMaxSide ||
        (bitsPerPixel != 8 && bitsPerPixel != 24 && bitsPerPixel != 32))
        return std::nullopt;
    return std::size_t{width} * height * (bitsPerPixel / 8u);
}

std::vector<TextureEntry> TextureStore::List(std::string_view table)
{
    SqliteStatement rows(file_, "SELECT key, display_name, width, height, bits_per_pixel FROM elements"
                                " WHERE table_name = ? ORDER BY id");
    rows.Bind(table);
    std::vector<TextureEntry> entries;
    while (rows.Step())
        entries.push_back(EntryOf(rows));
    return entries;
}

std::optional<std::string> TextureStore::FindName(std::string_view table, std::string_view displayName)
{
    SqliteStatement row(file_, "SELECT key FROM elements WHERE table_name = ? AND display_name = ? ORDER BY id");
    row.Bind(table).Bind(displayName);
    return row.Step() ? std::optional(row.Text(0)) : std::nullopt;
}

std::optional<TextureElement> TextureStore::Load(std::string_view table, std::string_view key)
{
    SqliteStatement row(file_, "SELECT key, display_name, width, height, bits_per_pixel, checksum, pixels FROM elements"
                               " WHERE table_name = ? AND key = ?");
    row.Bind(table).Bind(key);
    if (!row.Step())
        return std::nullopt;
    TextureElement element{EntryOf(row), {}};
    const std::span<const std::uint8_t> pixels = row.Bytes(6);
    if (element.PixelSize() != pixels.size() || Checksum(pixels) != row.Number(5))
        file_.Damaged("the element \"" + std::string(key) + "\" is not what was stored");
    element.pixels.assign(pixels.begin(), pixels.end());
    return element;
}

void TextureStore::Add(std::string_view table, const TextureEntry& entry, std::span<const std::uint8_t> pixels)
{
    const auto refuse = [&](const std::string& why) {
        throw StorageError("Can't store the element \"" + entry.displayName + "\" in \"" + file_.Path() + "\": " + why);
    };
    if (entry.key.empty())
        refuse("it has no key");
    if (entry.PixelSize() != pixels.size())
        refuse("it is no picture of 8, 24 or 32 bits and at most " + std::to_string(kMaxSide) + " pixels a side");
    SqliteTransaction transaction(file_);
    if (HasKey(file_, table, entry.key))
        refuse("its key \"" + entry.key + "\" is taken");
    SqliteStatement insert(file_, "INSERT INTO elements (table_name, key, display_name, width, height, bits_per_pixel,"
                                  " checksum, pixels) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    insert.Bind(table).Bind(entry.key).Bind(entry.displayName);
    insert.Bind(std::int64_t{entry.width}).Bind(std::int64_t{entry.height}).Bind(std::int64_t{entry.bitsPerPixel});
    insert.Bind(Checksum(pixels)).Bind(pixels);
    insert.Step();
    transaction.Commit();
}

bool TextureStore::Remove(std::string_view table, std::string_view key)
{
    SqliteStatement(file_, "DELETE FROM elements WHERE table_name = ? AND key = ?").Bind(table).Bind(key).Step();
    return file_.ChangedRows() != 0;
}

std::unique_ptr<TextureStore> OpenStore(const DatabasePlace& place)
{
    std::error_code error;
    if (place.writable && std::filesystem::status(place.path, error).type() == std::filesystem::file_type::not_found)
        return nullptr;
    // What a program left behind that ended in the middle of a write can only be undone by who may write.
    return std::make_unique<TextureStore>(place.path, place.writable ? SqliteFile::Access::ReadWrite
                                                                     : SqliteFile::Access::ReadOnly);
}

}  // namespace tessara
