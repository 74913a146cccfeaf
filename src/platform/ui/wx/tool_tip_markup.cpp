#include "platform/ui/wx/tool_tip_markup.h"

namespace tessara {

namespace {

constexpr std::string_view kLinkStart = "<a msg=\"";

/// Takes `prefix` off the text, if it begins with it.
bool Take(std::string_view& text, std::string_view prefix)
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

void AppendEscaped(std::string& page, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
        case '<':
            page += "&lt;";
            break;
        case '>':
            page += "&gt;";
            break;
        case '&':
            page += "&amp;";
            break;
        case '"':
            page += "&quot;";
            break;
        default:
            page += c;
        }
    }
}

/// Takes <a msg="N"> off the text and writes it as a link to N.
bool TakeLink(std::string_view& text, std::string& page, std::string_view color)
{
    if (!text.starts_with(kLinkStart))
        return false;
    const std::size_t end = text.find("\">", kLinkStart.size());
    if (end == std::string_view::npos)
        return false;
    page += "<a href=\"";
    AppendEscaped(page, text.substr(kLinkStart.size(), end - kLinkStart.size()));
    page += "\"><font color=\"";
    page += color;
    page += "\">";
    text.remove_prefix(end + 2);
    return true;
}

/// Takes one mark or one character off the text.
void TakeNext(std::string_view& text, std::string& page, std::string_view linkColor)
{
    if (Take(text, "<h5>"))
        page += "<b>";
    else if (Take(text, "</h5>"))
        page += "</b>";
    else if (Take(text, "<hr color=gray><br>") || Take(text, "<hr color=gray>"))
        page += "<hr>";
    else if (Take(text, "<br>"))
        page += "<br>";
    else if (Take(text, "</a>"))
        page += "</font></a>";
    else if (!TakeLink(text, page, linkColor)) {
        AppendEscaped(page, text.substr(0, 1));
        text.remove_prefix(1);
    }
}

}  // namespace

std::string ToolTipPage(std::string_view markup, std::string_view textColor, std::string_view background,
                        std::string_view linkColor)
{
    std::string page = "<html><body bgcolor=\"";
    page.append(background).append("\" text=\"").append(textColor).append("\">");
    while (!markup.empty())
        TakeNext(markup, page, linkColor);
    return page + "</body></html>";
}

}  // namespace tessara
