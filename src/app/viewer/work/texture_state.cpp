#include "app/viewer/work/texture_state.h"

#include "host/project/project_place.h"
#include "persistence/saved_textures.h"
#include "platform/com/bstr.h"
#include "surface/itessara.h"

namespace tessara {

TextureState TexturesOf(ITessara& surface, unsigned images)
{
    TextureState state;
    BstrHolder detail;
    BstrHolder table;
    BstrHolder database;
    surface.GetDBTextureDetailName(detail.Out(), table.Out());
    surface.GetDataBaseSource(database.Out());
    state.detail = detail.Narrow();
    state.table = table.Narrow();
    state.database = database.Narrow();
    LONG used = 0;
    surface.IsUsingTextureDetail(&used);
    state.usesDetail = used != 0;
    used = 0;
    surface.IsUsingTextureSource(&used);
    state.usesSource = used != 0;
    surface.GetTextureDetailTiling(&state.tilingX, &state.tilingY);
    surface.GetTextureDetailRGBGamma(&state.gamma);
    state.images = images;
    return state;
}

void TakeSavedDetail(TextureState& state, ProjectPlace& saved)
{
    const SavedDetail detail = SavedTexturesReader(saved).ReadDetail();
    state.detail = detail.key.value_or(state.detail);
    state.table = detail.table.value_or(state.table);
    state.database = detail.database.value_or(state.database);
}

}  // namespace tessara
