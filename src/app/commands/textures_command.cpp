#include "app/commands/commands.h"
#include "app/input/image_reader.h"
#include "app/input/texture_lookup.h"
#include "app/options/number_range.h"
#include "app/options/text_checks.h"
#include "app/output/output_check.h"
#include "app/output/png_file.h"
#include "host/element_keys.h"
#include "host/textures/texture_store.h"
#include "platform/system/replacement_file.h"
#include "platform/system/terminal_text.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>

namespace tessara {

namespace {

constexpr int kMostTiles = 16;

struct TexturesOptions {
    std::string database;  // "system", "user" or empty for both
    std::string name;
    std::vector<std::string> names;
    std::string file;
    std::string output;
    int tiles = 1;
    bool replace = false;
};

DatabasePlace PlaceOf(const std::string& database)
{
    return database == "user" ? UserDatabase() : SystemDatabase();
}

/// The databases to look at, the user's own first.
std::vector<std::string> Databases(const TexturesOptions& options)
{
    return options.database.empty() ? std::vector<std::string>{"user", "system"} : std::vector{options.database};
}

std::string SizeText(const TextureEntry& entry)
{
    return std::to_string(entry.width) + " x " + std::to_string(entry.height);
}

/// Width of a column of the list: of its longest text, in characters, and a gap.
std::size_t Letters(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width)
{
    return text + std::string(width - std::min(width, Letters(text)), ' ');
}

void List(const TexturesOptions& options)
{
    std::vector<std::vector<std::string>> rows = {{"DATABASE", "NAME", "SIZE", "BITS", "KEY"}};
    for (const std::string& database : Databases(options)) {
        TryDatabase(PlaceOf(database), [&](TextureStore& store) {
            for (const TextureEntry& entry : store.List(kDetailTable))
                rows.push_back({database, TerminalText(entry.displayName), SizeText(entry),
                                std::to_string(entry.bitsPerPixel), TerminalText(entry.key)});
        });
    }
    std::vector<std::size_t> widths(rows[0].size());
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Letters(row[i]) + 2);
    }
    for (const auto& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            std::cout << Padded(row[i], widths[i]);
        std::cout << row.back() << '\n';
    }
}

struct Found {
    std::string database;
    TextureElement element;
};

Found Find(const TexturesOptions& options)
{
    for (const std::string& database : Databases(options)) {
        std::optional<TextureElement> element;
        TryDatabase(PlaceOf(database), [&](TextureStore& store) {
            if (const auto key = KeyOf(store, options.name))
                element = store.Load(kDetailTable, *key);
        });
        if (element)
            return {database, *std::move(element)};
    }
    throw std::runtime_error("There is no texture \"" + options.name +
                             "\". \"tessara textures list\" tells what there is.");
}

/// The picture, repeated, as red, green and blue from the top row down. Alpha is left out.
std::vector<std::uint8_t> Tiled(const TextureElement& element, int tiles)
{
    const auto times = static_cast<std::size_t>(tiles);
    const std::size_t columns = element.width;
    const std::size_t rows = element.height;
    const std::size_t bytes = element.bitsPerPixel / 8u;
    std::vector<std::uint8_t> picture;
    picture.reserve(columns * rows * times * times * 3);
    for (std::size_t y = 0; y < rows * times; ++y) {
        const std::uint8_t* row = &element.pixels[(y % rows) * columns * bytes];
        for (std::size_t x = 0; x < columns * times; ++x) {
            const std::uint8_t* pixel = row + x % columns * bytes;
            for (const std::size_t channel : {2u, 1u, 0u})
                picture.push_back(pixel[bytes == 1 ? 0 : channel]);
        }
    }
    return picture;
}

void Show(const TexturesOptions& options)
{
    const std::string output = options.output.empty() ? std::string() : CheckedOutput(options.output, {}, {".png"});
    const Found found = Find(options);
    const TextureElement& element = found.element;
    if (!output.empty()) {
        WritePng(output, static_cast<int>(element.width) * options.tiles,
                 static_cast<int>(element.height) * options.tiles, Tiled(element, options.tiles));
    }
    if (output == kStandardOutput)
        return;
    const auto line = [](const char* name, const std::string& text) {
        std::cout << std::left << std::setw(12) << name << TerminalText(text) << '\n';
    };
    line("Name", element.displayName);
    line("Key", element.key);
    line("Database", found.database + " (" + PlaceOf(found.database).path + ")");
    line("Size", SizeText(element) + " pixels of " + std::to_string(element.bitsPerPixel) + " bits");
    if (!output.empty())
        std::cout << output << '\n';
}

void Import(const TexturesOptions& options)
{
    const DatabasePlace place = UserDatabase();
    if (const auto store = OpenStore(place); store && store->FindName(kDetailTable, options.name) && !options.replace)
        throw std::runtime_error("There is a texture \"" + options.name + "\" already; --replace replaces it.");
    TextureElement element = ReadImage(options.file);
    element.key = NewElementKey();
    element.displayName = options.name;
    TextureStore store(place.path, SqliteFile::Access::ReadWrite);
    const std::optional<std::string> old = store.FindName(kDetailTable, options.name);
    store.Add(kDetailTable, element, element.pixels);
    if (old)
        store.Remove(kDetailTable, *old);
    std::cout << (old ? "Replaced \"" : "Imported \"") << options.name << "\", " << SizeText(element) << " pixels of "
              << element.bitsPerPixel << " bits\n";
}

void Delete(const TexturesOptions& options)
{
    const auto store = OpenStore(UserDatabase());
    std::vector<std::string> keys;
    for (const std::string& name : options.names) {
        const auto key = store ? KeyOf(*store, name) : std::nullopt;
        if (!key)
            throw std::runtime_error("The user's database has no texture \"" + name + "\". Nothing was deleted.");
        keys.push_back(*key);
    }
    for (const std::string& key : keys)
        store->Remove(kDetailTable, key);
    for (const std::string& name : options.names)
        std::cout << "Deleted \"" << name << "\"\n";
}

void AddDatabase(CLI::App& command, TexturesOptions& options)
{
    command.add_option("--database", options.database, "Look at one database alone [both]")
        ->check(OneOf({"system", "user"}))
        ->option_text("system|user");
}

}  // namespace

void AddTexturesCommand(CLI::App& program)
{
    const auto options = std::make_shared<TexturesOptions>();
    CLI::App& textures =
        *program.add_subcommand("textures", "List, show, import and delete detail textures")->group("Commands");
    textures.require_subcommand(1);

    CLI::App& list = *textures.add_subcommand("list", "List the textures of the system's and the user's database");
    AddDatabase(list, *options);
    list.callback([options] { List(*options); });

    CLI::App& show = *textures.add_subcommand("show", "Tell about one texture, and write it as a picture");
    show.add_option("NAME", options->name, "Its name or its key")->required();
    AddDatabase(show, *options);
    show.add_option("-o,--output", options->output, "The picture to write; - writes it to the standard output")
        ->check(NotEmpty())
        ->option_text("PICTURE.png");
    show.add_option("--tiles", options->tiles, "Repeat it in the picture, across and down [1]")
        ->check(WholeNumberBetween(1, kMostTiles))
        ->option_text("N");
    show.callback([options] { Show(*options); });

    CLI::App& importer = *textures.add_subcommand("import", "Put an image file into the user's database");
    importer.add_option("FILE", options->file, "A JPEG, PNG, BMP, TGA, PSD or other image")
        ->check(NotEmpty())
        ->required();
    importer.add_option("--name", options->name, "The texture's name")
        ->check(NameText())
        ->required()
        ->option_text("NAME");
    importer.add_flag("--replace", options->replace, "Replace the texture that has the name");
    importer.callback([options] { Import(*options); });

    CLI::App& remove = *textures.add_subcommand("delete", "Delete textures from the user's database");
    remove.add_option("NAME", options->names, "Names or keys")->required();
    remove.callback([options] { Delete(*options); });
}

}  // namespace tessara
