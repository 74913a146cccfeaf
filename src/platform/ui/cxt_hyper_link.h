#pragma once

#include "platform/ui/cwnd.h"

/// A link to a page.
class CXTHyperLink : public CWnd {
public:
    /// Opens a page in the user's browser. \param show how the browser shows itself, which is its own matter here
    /// \return FALSE when no browser took it
    static BOOL GotoURL(const std::string& address, int show);
};
