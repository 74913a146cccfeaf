#pragma once

#include "../../platform/com/com_ptr.h"
#include "../../services/texture_database.h"
#include "../../services/texture_mgr.h"
#include "database_place.h"
#include "failure_report.h"

#include <string_view>

namespace tessara {

/// The two texture databases of a host. Textures made of them are called after database, table and key, so that all
/// surfaces share one upload.
class TextureDatabases {
public:
    /// \param report may be empty: failures then go to the debug output
    TextureDatabases(DatabasePlace system, DatabasePlace user, FailureReport report = {});

    /// Opens a database for one action. \param user false for the system's \throws std::bad_alloc
    ComPtr<ITextureDatabase> Open(bool user) const;

    /// Makes a texture of an element in the texture service, with one hold for the caller. The OpenGL context is
    /// current. \param name the element's key, or else its display name \param table empty for kDetailTable \param user
    /// false for the system's database \param id left alone on a failure \return E_FAIL when there is no such element,
    /// the database can't be read or the texture can't be made
    HRESULT LoadTexture(ITextureMgr& textures, std::string_view name, std::string_view table, bool user,
                        ULONG* id) const;

    /// Makes a plain OpenGL texture of an element outside any service, bound in the context that is current. The caller
    /// deletes it with glDeleteTextures. Arguments and results as LoadTexture.
    HRESULT LoadPreview(std::string_view name, std::string_view table, bool user, ULONG* textureName) const;

    const DatabasePlace& Place(bool user) const { return user ? user_ : system_; }

private:
    template <class Body>
    HRESULT WithElement(std::string_view name, std::string_view table, bool user, Body&& body) const;

    DatabasePlace system_;
    DatabasePlace user_;
    FailureReport report_;
};

}  // namespace tessara
