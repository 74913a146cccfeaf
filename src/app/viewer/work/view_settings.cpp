#include "app/viewer/work/view_settings.h"

#include "app/view/palettes.h"
#include "platform/system/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>
#include <utility>

namespace tessara {

namespace {

constexpr const char* kFillNames[] = {"filled", "wireframe", "points"};
constexpr const char* kBrushNames[] = {"raise", "lower", "smooth", "flatten"};

/// Reads or writes one value after the other, so that both ways name the same things.
class Writer {
public:
    explicit Writer(SettingsMap& stored) : stored_(stored) {}
    void Number(const char* name, double& value, double, double) { stored_[name] = FixedText(value, 4); }
    void Whole(const char* name, int& value, int, int) { stored_[name] = std::to_string(value); }
    void Switch(const char* name, bool& value) { stored_[name] = value ? "1" : "0"; }
    void Text(const char* name, std::string& value, const std::vector<std::string>&) { stored_[name] = value; }
    template <class Enum, std::size_t Count>
    void Choice(const char* name, Enum& value, const char* const (&names)[Count])
    {
        stored_[name] = names[static_cast<std::size_t>(value)];
    }

private:
    SettingsMap& stored_;
};

class Reader {
public:
    explicit Reader(const SettingsMap& stored) : stored_(stored) {}
    void Number(const char* name, double& value, double low, double high)
    {
        if (const auto number = Parse<double>(name); number && !std::isnan(*number))
            value = std::clamp(*number, low, high);
    }
    void Whole(const char* name, int& value, int low, int high)
    {
        if (const auto number = Parse<int>(name))
            value = std::clamp(*number, low, high);
    }
    void Switch(const char* name, bool& value)
    {
        const std::string* text = Find(name);
        if (text && (*text == "0" || *text == "1"))
            value = *text == "1";
    }
    void Text(const char* name, std::string& value, const std::vector<std::string>& allowed)
    {
        const std::string* text = Find(name);
        if (text && std::find(allowed.begin(), allowed.end(), *text) != allowed.end())
            value = *text;
    }
    template <class Enum, std::size_t Count>
    void Choice(const char* name, Enum& value, const char* const (&names)[Count])
    {
        const std::string* text = Find(name);
        for (std::size_t i = 0; text && i < Count; ++i) {
            if (*text == names[i])
                value = static_cast<Enum>(i);
        }
    }

private:
    /// A value that is a number from its first to its last character.
    template <class Number>
    std::optional<Number> Parse(const char* name) const
    {
        const std::string* text = Find(name);
        Number number{};
        if (!text)
            return std::nullopt;
        const char* end = text->data() + text->size();
        const auto result = std::from_chars(text->data(), end, number);
        return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
    }

    const std::string* Find(const char* name) const
    {
        const auto found = stored_.find(name);
        return found == stored_.end() ? nullptr : &found->second;
    }

    const SettingsMap& stored_;
};

template <class Archive>
void Visit(Archive& archive, ViewSettings& view)
{
    archive.Number("View/ErrorPixels", view.errorPixels, 0.25, 32.0);
    archive.Number("View/Exaggeration", view.exaggeration, 0.1, 10.0);
    archive.Choice("View/Fill", view.fill, kFillNames);
    archive.Switch("View/VertexColors", view.vertexColors);
    archive.Switch("View/SourceTexture", view.sourceTexture);
    archive.Number("Light/SunAzimuth", view.sunAzimuth, 0.0, 360.0);
    archive.Number("Light/SunHeight", view.sunHeight, 1.0, 90.0);
    archive.Number("Light/Fog", view.fog, 0.0, 1.0);
    archive.Text("Colors/Ramp", view.ramp, PaletteNames());
    archive.Switch("Sculpt/RealTime", view.realTime);
    archive.Choice("Sculpt/Brush", view.brush.kind, kBrushNames);
    archive.Number("Sculpt/Radius", view.brush.radius, 0.01, 1e6);
    archive.Number("Sculpt/Strength", view.brush.strength, 0.01, 1.0);
}

template <class Archive>
void Visit(Archive& archive, WindowPlace& window)
{
    archive.Whole("Window/X", window.x, -1, 100000);
    archive.Whole("Window/Y", window.y, -1, 100000);
    archive.Whole("Window/Width", window.width, 400, 100000);
    archive.Whole("Window/Height", window.height, 300, 100000);
    archive.Switch("Window/Maximised", window.maximised);
    archive.Whole("Window/SideWidth", window.sideWidth, 100, 100000);
    archive.Whole("Window/MapHeight", window.mapHeight, 50, 100000);
    archive.Switch("Window/SideShown", window.sideShown);
    archive.Switch("Window/MapShown", window.mapShown);
}

}  // namespace

void RecentFiles::Add(std::string path)
{
    Remove(path);
    paths_.insert(paths_.begin(), std::move(path));
    paths_.resize(std::min(paths_.size(), kMost));
}

void RecentFiles::Remove(std::string path)
{
    std::erase(paths_, path);
}

SettingsMap Store(const KeptSettings& settings)
{
    SettingsMap stored;
    KeptSettings copy = settings;
    Writer writer(stored);
    Visit(writer, copy.view);
    Visit(writer, copy.window);
    for (std::size_t i = 0; i < copy.recent.Paths().size(); ++i)
        stored["Recent/File" + std::to_string(i + 1)] = copy.recent.Paths()[i];
    return stored;
}

KeptSettings Restore(const SettingsMap& stored)
{
    KeptSettings settings;
    Reader reader(stored);
    Visit(reader, settings.view);
    Visit(reader, settings.window);
    for (std::size_t i = RecentFiles::kMost; i > 0; --i) {
        const auto found = stored.find("Recent/File" + std::to_string(i));
        if (found != stored.end() && !found->second.empty())
            settings.recent.Add(found->second);
    }
    return settings;
}

}  // namespace tessara
