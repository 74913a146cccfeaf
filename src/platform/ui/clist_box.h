#pragma once

#include "platform/ui/cwnd.h"

#include <vector>

/// A list of rows, several of which can be selected.
class CListBox : public CWnd {
public:
    /// \return the new row, which is the last one; -1 without a window
    int AddString(const std::string& text);
    void ResetContent();
    int GetCount() const;

    /// The row that has the focus, -1 when none has.
    int GetCurSel() const;

    /// The selected rows in ascending order. \param limit the most that are wanted
    std::vector<int> GetSelItems(int limit) const;

    /// Sends no notification. A row that is selected gets the focus where no row has it.
    void SetSel(int row, BOOL select = TRUE);
};
