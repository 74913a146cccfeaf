#include "textures/ctexture_mgr_imp.h"

CTextureMgrImp::~CTextureMgrImp() = default;

bool CTextureMgrImp::FindTextureIndex(std::uint32_t id, std::int32_t* index) const
{
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i]->id == id) {
            *index = static_cast<std::int32_t>(i);
            return true;
        }
    }
    return false;
}

bool CTextureMgrImp::BindTexture(std::uint32_t id)
{
    std::int32_t index = 0;
    if (!FindTextureIndex(id, &index))
        return false;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, id);
    return true;
}
