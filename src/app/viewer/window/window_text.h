#pragma once

#include <wx/string.h>

#include <string>

namespace tessara {

/// A text of the program as the toolkit takes it.
inline wxString Wide(const std::string& text)
{
    return wxString::FromUTF8(text.data(), text.size());
}

/// How a terrain is called in titles and messages: the name of its file without folders, or the sample.
std::string TerrainName(const std::string& path);

}  // namespace tessara
