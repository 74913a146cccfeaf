#include "host/textures/texture_database.h"

#include "platform/com/bstr.h"
#include "platform/com/guard.h"

namespace tessara {

namespace {

/// Strings for a list of the caller's, which keep their memory only once they stand in it.
class NewStrings {
public:
    void Add(const std::string& text) { strings_.emplace_back(text); }
    std::size_t Size() const { return strings_.size(); }

    void MoveTo(std::vector<BSTR>& list)
    {
        list.reserve(list.size() + strings_.size());
        for (BstrHolder& string : strings_)
            list.push_back(string.Detach());
    }

private:
    std::vector<BstrHolder> strings_;
};

}  // namespace

TextureDatabase::TextureDatabase(DatabasePlace place, FailureReport report)
    : place_(std::move(place)), report_(std::move(report))
{
}

template <class Body>
HRESULT TextureDatabase::Run(Body&& body)
{
    return Guard([&]() -> HRESULT {
        try {
            return body();
        } catch (const StorageError& error) {
            if (report_)
                report_(error.what());
            return E_FAIL;
        }
    });
}

TextureStore* TextureDatabase::Reading()
{
    if (!store_)
        store_ = OpenStore(place_);
    return store_.get();
}

TextureStore& TextureDatabase::Writing()
{
    if (!store_)
        store_ = std::make_unique<TextureStore>(place_.path, SqliteFile::Access::ReadWrite);
    return *store_;
}

HRESULT TextureDatabase::SetWidth(UINT width)
{
    width_ = width;
    return S_OK;
}

HRESULT TextureDatabase::SetHeight(UINT height)
{
    height_ = height;
    return S_OK;
}

HRESULT TextureDatabase::SetBitsPerPixel(WORD bitsPerPixel)
{
    bitsPerPixel_ = bitsPerPixel;
    return S_OK;
}

HRESULT TextureDatabase::SetPixels(VARIANT* pixels)
{
    pixels_ = pixels ? pixels->byref : nullptr;
    return pixels ? S_OK : E_POINTER;
}

HRESULT TextureDatabase::SetElementKey(BSTR key)
{
    return Run([&] {
        key_ = NarrowText(key);
        target_ = key_;
        return S_OK;
    });
}

HRESULT TextureDatabase::SetTableName(BSTR table)
{
    return Run([&] {
        table_ = NarrowText(table);
        return S_OK;
    });
}

HRESULT TextureDatabase::SetDisplayName(BSTR name)
{
    return Run([&] {
        displayName_ = NarrowText(name);
        return S_OK;
    });
}

HRESULT TextureDatabase::StoreElement()
{
    if (!place_.writable)
        return E_ACCESSDENIED;
    if (!pixels_)
        return E_UNEXPECTED;
    return Run([&] {
        const TextureEntry entry{key_, displayName_, width_, height_, bitsPerPixel_};
        Writing().Add(table_, entry, {static_cast<const std::uint8_t*>(pixels_), entry.PixelSize().value_or(0)});
        return S_OK;
    });
}

HRESULT TextureDatabase::DeleteElement()
{
    if (!place_.writable)
        return E_ACCESSDENIED;
    return Run([&] {
        TextureStore* store = Reading();
        return store && store->Remove(table_, target_) ? S_OK : S_FALSE;
    });
}

HRESULT TextureDatabase::ListElements(std::vector<BSTR>* keys, std::vector<BSTR>* displayNames)
{
    if (!keys || !displayNames)
        return E_POINTER;
    return Run([&] {
        TextureStore* store = Reading();
        if (!store)
            return S_OK;
        NewStrings newKeys;
        NewStrings newNames;
        for (const TextureEntry& entry : store->List(table_)) {
            newKeys.Add(entry.key);
            newNames.Add(entry.displayName);
        }
        displayNames->reserve(displayNames->size() + newNames.Size());
        newKeys.MoveTo(*keys);
        newNames.MoveTo(*displayNames);
        return S_OK;
    });
}

LONG TextureDatabase::DisplayNameExists()
{
    return Run([&] {
               TextureStore* store = Reading();
               const auto found = store ? store->FindName(table_, displayName_) : std::nullopt;
               if (found)
                   target_ = *found;
               return found ? S_OK : S_FALSE;
           }) == S_OK;
}

}  // namespace tessara
