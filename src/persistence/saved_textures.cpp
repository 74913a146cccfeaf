#include "persistence/saved_textures.h"

#include <stdexcept>

namespace tessara {

namespace {

constexpr LONG kDefaultBits = 32;

template <class T>
void WriteIfSet(SavedPlace& place, SavedId value, const std::optional<T>& item)
{
    if (item)
        place.Write(value, *item);
}

void WriteIfSet(SavedPlace& place, SavedId value, const std::optional<std::string>& text)
{
    if (text)
        place.WriteText(value, *text);
}

}  // namespace

void SavedTextures::Write(IParser& parser) const
{
    SavedPlace place(parser, SavedId::SourceWidth, SavedId::SourceBits);
    if (source) {
        place.Write(SavedId::SourceWidth, source->width);
        place.Write(SavedId::SourceHeight, source->height);
        place.Write(SavedId::SourceData, source->pixels.data(), source->pixels.size());
    }
    WriteIfSet(place, SavedId::DetailName, detail.key);
    WriteIfSet(place, SavedId::DetailTable, detail.table);
    WriteIfSet(place, SavedId::Database, detail.database);
    WriteIfSet(place, SavedId::DetailDisplayName, detail.displayName);
    WriteIfSet(place, SavedId::UsingDetail, settings.usingDetail);
    WriteIfSet(place, SavedId::UsingSource, settings.usingSource);
    WriteIfSet(place, SavedId::TilingX, settings.tilingX);
    WriteIfSet(place, SavedId::TilingY, settings.tilingY);
    WriteIfSet(place, SavedId::RgbGamma, settings.rgbGamma);
    if (source && source->bits != kDefaultBits)
        place.Write(SavedId::SourceBits, source->bits);
}

SavedTexturesReader::SavedTexturesReader(IParser& parser) : place_(parser, SavedId::SourceWidth, SavedId::SourceBits)
{
    for (std::string& room : rooms_)
        room.reserve(kTextCapacity);
}

bool SavedTexturesReader::FindSource(SavedImage& source)
{
    source = {};
    place_.ReadInteger(SavedId::SourceWidth, &source.width);
    place_.ReadInteger(SavedId::SourceHeight, &source.height);
    return source.width != 0 && source.height != 0 && place_.Find(SavedId::SourceData, &sourceNode_);
}

/// The stored bytes may be fewer than 32 bits a pixel need, never more.
bool SavedTexturesReader::ReadSource(SavedImage& source)
{
    const std::size_t size = BlockSize(source.width, source.height, kDefaultBits / 8);
    if (size == 0)
        throw std::length_error("no size of an image");
    pixels_.resize(size);
    if (place_.Fetch(SavedId::SourceData, sourceNode_, pixels_.data()) != Reading::Read)
        return false;
    if (place_.ReadInteger(SavedId::SourceBits, &source.bits) != Reading::Read || !IsDepth(source.bits))
        source.bits = kDefaultBits;
    source.pixels = std::span(pixels_).first(source.Size());
    return true;
}

SavedDetail SavedTexturesReader::ReadDetail()
{
    SavedDetail detail;
    detail.key = ReadText(SavedId::DetailName, rooms_[0]);
    detail.displayName = ReadText(SavedId::DetailDisplayName, rooms_[1]);
    detail.table = ReadText(SavedId::DetailTable, rooms_[2]);
    detail.database = ReadText(SavedId::Database, rooms_[3]);
    return detail;
}

SavedTextureSettings SavedTexturesReader::ReadSettings()
{
    SavedTextureSettings settings;
    settings.tilingX = ReadFloat(SavedId::TilingX);
    settings.tilingY = ReadFloat(SavedId::TilingY);
    settings.rgbGamma = ReadInteger(SavedId::RgbGamma);
    settings.usingDetail = ReadSwitch(SavedId::UsingDetail);
    settings.usingSource = ReadSwitch(SavedId::UsingSource);
    return settings;
}

std::optional<std::string> SavedTexturesReader::ReadText(SavedId value, std::string& room)
{
    if (place_.ReadText(value, &room) != Reading::Read)
        return std::nullopt;
    return std::move(room);
}

std::optional<float> SavedTexturesReader::ReadFloat(SavedId value)
{
    float number = 0.0f;
    return place_.ReadFloats(value, {&number, 1}) == Reading::Read ? std::optional(number) : std::nullopt;
}

std::optional<LONG> SavedTexturesReader::ReadInteger(SavedId value)
{
    LONG number = 0;
    return place_.ReadInteger(value, &number) == Reading::Read ? std::optional(number) : std::nullopt;
}

std::optional<LONG> SavedTexturesReader::ReadSwitch(SavedId value)
{
    LONG on = 0;
    switch (place_.ReadInteger(value, &on)) {
    case Reading::Missing:
        return 1;
    case Reading::Unreadable:
        return std::nullopt;
    case Reading::Read:
        break;
    }
    return on;
}

}  // namespace tessara
