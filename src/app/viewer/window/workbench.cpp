#include "app/viewer/window/workbench.h"

#include "app/viewer/view_request.h"
#include "app/viewer/window/pages/settings_book.h"
#include "app/viewer/window/panes/window_panes.h"

#include <wx/frame.h>

namespace tessara {

Workbench::Workbench(wxFrame& window, tessara::Viewer& shown, WindowPanes& parts, StatusLine& status,
                     SettingsStore& kept, const ViewRequest& request, std::function<bool()> isBusy,
                     std::function<void()> changed)
    : frame(window),
      viewer(shown),
      panes(parts),
      picture(parts.Picture()),
      store(kept),
      settings(viewer, picture, changed),
      textures(frame, viewer, picture, settings),
      watch(frame, viewer, picture, status),
      saves(frame, viewer, picture, status, store, watch),
      files({frame, viewer, panes, status, store, watch, saves}, request.reading,
            {std::move(isBusy), [this] { TerrainOpened(); }, changed})
{
}

void Workbench::TerrainOpened()
{
    textures.TerrainOpened();
    panes.Settings().SetTerrainSize(settings.TerrainSize());
    settings.FitBrush();
}

}  // namespace tessara
