#pragma once

#include "host/textures/failure_report.h"
#include "host/textures/texture_store.h"
#include "platform/com/com_object.h"
#include "services/texture_database.h"

#include <memory>
#include <string>

namespace tessara {

/// A texture database for one action of its caller, on a file that is opened by the first method that needs it. A
/// database that may be written to and has no file yet is empty; the first element makes the file.
///
/// Until SetTableName it works on kDetailTable. Failures are E_FAIL and go to the report; E_ACCESSDENIED stands for a
/// database that users may not write to.
class TextureDatabase final : public ComObject<ITextureDatabase> {
public:
    TextureDatabase(DatabasePlace place, FailureReport report);

    HRESULT STDMETHODCALLTYPE SetWidth(UINT width) override;
    HRESULT STDMETHODCALLTYPE SetHeight(UINT height) override;
    HRESULT STDMETHODCALLTYPE SetBitsPerPixel(WORD bitsPerPixel) override;
    HRESULT STDMETHODCALLTYPE SetPixels(VARIANT* pixels) override;
    HRESULT STDMETHODCALLTYPE SetElementKey(BSTR key) override;
    HRESULT STDMETHODCALLTYPE SetTableName(BSTR table) override;
    HRESULT STDMETHODCALLTYPE StoreElement() override;

    /// \return S_FALSE when there is no such element
    HRESULT STDMETHODCALLTYPE DeleteElement() override;
    HRESULT STDMETHODCALLTYPE ListElements(std::vector<BSTR>* keys, std::vector<BSTR>* displayNames) override;
    HRESULT STDMETHODCALLTYPE SetDisplayName(BSTR name) override;
    LONG STDMETHODCALLTYPE DisplayNameExists() override;

protected:
    ~TextureDatabase() override = default;

private:
    template <class Body>
    HRESULT Run(Body&& body);

    /// The store, or null where the file isn't there yet.
    TextureStore* Reading();
    TextureStore& Writing();

    DatabasePlace place_;
    FailureReport report_;
    std::unique_ptr<TextureStore> store_;
    std::string table_ = kDetailTable;
    std::string key_;     // of the element to store
    std::string target_;  // key of the element to delete
    std::string displayName_;
    UINT width_ = 0;
    UINT height_ = 0;
    WORD bitsPerPixel_ = 0;
    const void* pixels_ = nullptr;  // the caller's
};

}  // namespace tessara
