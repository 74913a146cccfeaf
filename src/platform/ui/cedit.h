#pragma once

#include "platform/ui/cwnd.h"

/// A field for one line of text.
class CEdit : public CWnd {
public:
    /// Whether the user changed the text, or SetModify said so, since it was last set.
    BOOL GetModify() const;
    void SetModify(BOOL modified = TRUE);
};
