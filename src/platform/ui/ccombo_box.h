#pragma once

#include "platform/ui/cwnd.h"

/// A drop list.
class CComboBox : public CWnd {
public:
    /// \return the new row, -1 without a window
    int AddString(const std::string& text);
    void ResetContent();
    int GetCount() const;

    /// \return -1 when no row is selected
    int GetCurSel() const;

    /// Sends no notification. \param row -1 for none
    void SetCurSel(int row);

    /// \return empty for a row that isn't there
    std::string GetLBText(int row) const;
};
