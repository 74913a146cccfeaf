#include "platform/ui/cfile_dialog.h"

#include "platform/ui/window_system.h"

#include <string_view>
#include <utility>

namespace {

/// The part before the next '|', which is taken off with it.
std::string NextPart(std::string_view& text)
{
    const std::size_t end = text.find('|');
    std::string part(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

std::vector<tessara::FileQuestion::Filter> SplitFilters(std::string_view text)
{
    std::vector<tessara::FileQuestion::Filter> filters;
    while (!text.empty()) {
        std::string name = NextPart(text);
        std::string patterns = NextPart(text);
        if (!patterns.empty())
            filters.push_back({std::move(name), std::move(patterns)});
    }
    return filters;
}

}  // namespace

CFileDialog::CFileDialog(BOOL open, const char* extension, const char* fileName, DWORD flags, const char* filter,
                         CWnd* parent)
    : m_open(open),
      m_extension(extension ? extension : ""),
      m_fileName(fileName ? fileName : ""),
      m_flags(flags),
      m_filter(filter ? filter : ""),
      m_parent(parent)
{
}

int CFileDialog::DoModal()
{
    tessara::WindowSystem& system = tessara::CurrentWindowSystem();
    if (!system.CanOpenWindows())
        return IDCANCEL;
    tessara::FileQuestion question;
    question.open = m_open != FALSE;
    question.confirmOverwrite = (m_flags & OFN_OVERWRITEPROMPT) != 0;
    question.name = m_fileName;
    question.extension = m_extension;
    question.filters = SplitFilters(m_filter);
    std::optional<std::string> path = system.AskForFile(question, m_parent ? m_parent->GetSafeHwnd() : nullptr);
    if (!path)
        return IDCANCEL;
    m_path = std::move(*path);
    return IDOK;
}
