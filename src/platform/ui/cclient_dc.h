#pragma once

#include "platform/ui/cwnd.h"

namespace tessara {
class DeviceContext;
}

/// The inside of a control, to draw on.
class CClientDC {
public:
    explicit CClientDC(const CWnd* control);

    /// The surface itself; it stays the window's and lives as long. Null for a control that nothing can be drawn on.
    tessara::DeviceContext* GetSafeHdc() const noexcept { return m_device; }

private:
    tessara::DeviceContext* m_device = nullptr;
};
