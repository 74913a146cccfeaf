#pragma once

#include "platform/ui/cwnd.h"

namespace tessara {

/// The mouse shows that the user has to wait, for as long as this object lives.
class WaitCursor {
public:
    WaitCursor() { CWnd::BeginWaitCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { CWnd::EndWaitCursor(); }
};

}  // namespace tessara
