#pragma once

#include <string>
#include <string_view>

namespace tessara {

/// Tooltip text as a page of HTML: headings, lines and links as CPPToolTip names them, everything else as text.
/// \param textColor,background,linkColor such as "#202020"
std::string ToolTipPage(std::string_view markup, std::string_view textColor, std::string_view background,
                        std::string_view linkColor);

}  // namespace tessara
