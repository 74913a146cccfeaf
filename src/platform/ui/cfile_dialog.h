#pragma once

#include "platform/ui/cwnd.h"

/// The question for a file.
class CFileDialog {
public:
    /// \param open TRUE for a file that is there, FALSE for one to write
    /// \param extension for a name typed without one, null or "*.*" for none \param fileName proposed; may be null
    /// \param flags OFN_ constants \param filter pairs of a name and patterns, each part ended by '|': "Pictures
    ///        (*.png)|*.png|All (*.*)|*.*|" \param parent isn't touched where no window can be opened
    CFileDialog(BOOL open, const char* extension, const char* fileName, DWORD flags, const char* filter, CWnd* parent);

    /// \return IDOK, or IDCANCEL
    int DoModal();

    /// The path of the chosen file, empty before DoModal gave IDOK.
    const std::string& GetPathName() const noexcept { return m_path; }

private:
    BOOL m_open;
    std::string m_extension;
    std::string m_fileName;
    DWORD m_flags;
    std::string m_filter;
    CWnd* m_parent;
    std::string m_path;
};
