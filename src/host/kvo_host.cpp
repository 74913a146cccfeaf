#include "host/kvo_host.h"

#include "platform/com/bstr.h"
#include "platform/com/guard.h"

namespace tessara {

namespace {

/// Shows failures where there is a display, else sends them to the debug output.
FailureReport ReportTo(const ComPtr<IProgressWindow>& progress)
{
    if (!progress)
        return {};
    return [progress](const std::string& sentence) { progress->ShowMessage(BstrHolder(sentence).Get()); };
}

}  // namespace

KvoHost::KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress)
    : KvoHost(std::move(textures), progress, TextureDatabases(SystemDatabase(), UserDatabase(), ReportTo(progress)))
{
}

KvoHost::KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress, TextureDatabases databases)
    : BasicHost(std::move(textures), std::move(progress)), databases_(std::move(databases))
{
}

HRESULT KvoHost::OpenTextureDatabase(ITextureDatabase** database, VARIANT* selector)
{
    if (!database)
        return E_POINTER;
    *database = nullptr;
    return Guard([&] {
        *database = databases_.Open(selector != nullptr).Detach();
        return S_OK;
    });
}

HRESULT KvoHost::LoadTextureFromDB(BSTR name, BSTR table, ULONG* id, VARIANT* selector)
{
    if (!id)
        return E_POINTER;
    if (!Textures())
        return E_FAIL;
    return Guard([&] {
        return databases_.LoadTexture(*Textures(), NarrowText(name), NarrowText(table), selector != nullptr, id);
    });
}

HRESULT KvoHost::LoadPreviewTexture(BSTR key, BSTR table, ULONG* textureName, VARIANT* selector)
{
    if (!textureName)
        return E_POINTER;
    *textureName = 0;
    return Guard(
        [&] { return databases_.LoadPreview(NarrowText(key), NarrowText(table), selector != nullptr, textureName); });
}

}  // namespace tessara
