#pragma once

class wxWindow;

namespace tessara {

class TerrainDocument;

/// Shows where a terrain comes from, its size and heights, and what was done to its file.
void ShowInformation(wxWindow* parent, const TerrainDocument& document);

}  // namespace tessara
