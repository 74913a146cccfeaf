#include "fuzz/targets.h"
#include "host/textures/texture_store.h"
#include "support/scratch_folder.h"
#include "support/sqlite_shell.h"

#include <string>
#include <vector>

namespace tessara::test {

namespace {

constexpr char kTable[] = "Grounds";
constexpr std::size_t kPage = 4096;

/// Sets a column of an element to bytes, to a number or to nothing.
void DamageValues(const std::string& path, Damage& damage)
{
    std::string sql = "PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF; BEGIN;";
    while (damage.IsLeft()) {
        static constexpr const char* kColumns[] = {"key",    "display_name",   "table_name", "width",
                                                   "height", "bits_per_pixel", "checksum",   "pixels"};
        const std::string column = kColumns[damage.Take(1) % 8];
        const std::size_t how = damage.Take(1);
        const std::string value = how < 128   ? std::to_string(static_cast<std::int32_t>(damage.Take(4)))
                                  : how < 192 ? SqlBlob(damage.TakeBlock(how - 128))
                                              : "''";
        sql += "UPDATE OR IGNORE elements SET " + column + " = " + value +
               " WHERE id = " + std::to_string(how % 3 + 1) + ";";
    }
    RunSql(path, sql + "COMMIT");
}

void TakeAll(const std::string& path)
{
    TextureStore store(path, SqliteFile::Access::ReadOnly);
    for (const TextureEntry& entry : store.List(kTable)) {
        store.FindName(kTable, entry.displayName);
        const auto element = store.Load(kTable, entry.key);
        Require(!element || element->PixelSize() == element->pixels.size(), "an element of another size was loaded");
    }
}

}  // namespace

bool UseDamagedDatabase(Damage damage)
{
    static const ScratchFolder folder;
    static const std::string whole = [] {
        TextureStore store(folder / "whole.db", SqliteFile::Access::ReadWrite);
        for (std::uint8_t i = 0; i < 3; ++i)
            store.Add(kTable, {std::to_string(i), "name", 16, 8, 24}, std::vector<std::uint8_t>(16 * 8 * 3, i));
        return ReadBytes(folder / "whole.db");
    }();
    std::string file = whole;
    const std::size_t kind = damage.Take(1) % 4;
    if (kind == 0)
        damage.Cut(file);
    if (kind == 1)
        damage.Apply(file, kPage);
    const std::string path = folder.Write("damaged.db", file);
    if (kind > 1)
        DamageValues(path, damage);
    try {
        TakeAll(path);
        return true;
    } catch (const StorageError& error) {
        Require(std::string(error.what()).find(path) != std::string::npos,
                std::string("no file named: ") + error.what());
        return false;
    }
}

}  // namespace tessara::test
