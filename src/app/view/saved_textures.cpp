#include "app/view/saved_textures.h"

#include "app/output/debug_reasons.h"
#include "host/project/project_place.h"
#include "platform/com/bstr.h"
#include "platform/gl/gl.h"
#include "surface/itessara.h"

#include <algorithm>
#include <stdexcept>

namespace tessara {

namespace {

/// What its users call the detail texture of a project, or its key.
std::string DetailName(ITessara& surface, const ProjectPlace& saved)
{
    const auto shown = saved.Read("TEXTURE_DET_NAME_USER");
    const std::string text = shown ? std::string(shown->begin(), std::find(shown->begin(), shown->end(), 0)) : "";
    if (!text.empty())
        return text;
    BstrHolder name;
    BstrHolder table;
    surface.GetDBTextureDetailName(name.Out(), table.Out());
    return name.Narrow();
}

bool HasDetail(ITessara& surface)
{
    surface.ActivateDetailTexture();
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    surface.ActivateCanvasTexture();  // there is none: both units are off again
    return bound != 0;
}

}  // namespace

bool HasSource(ITessara& surface)
{
    glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT);
    const bool has = SUCCEEDED(surface.ActivateSourceTexture());
    glPopAttrib();
    return has;
}

std::string TakeSavedTextures(ITessara& surface, ProjectPlace& saved)
{
    const DebugReasons quiet;  // a texture that is lost is told by its name
    const HRESULT result = surface.LoadSerializedTextures(&saved);
    if (FAILED(result))
        throw std::runtime_error("OpenGL can't hold the source image of the terrain \"" + saved.Name() + "\".");
    if (!HasSource(surface))
        surface.UseTextureSource(0);
    if (HasDetail(surface))
        return {};
    surface.UseTextureDetail(0);
    return result == S_FALSE ? DetailName(surface, saved) : std::string();
}

}  // namespace tessara
