#include "platform/ui/cnum_spin_ctrl.h"

#include "platform/system/number_text.h"
#include "platform/ui/cdialog.h"
#include "platform/ui/dialog_window.h"
#include "platform/ui/registered_message.h"

#include <algorithm>

void CNumSpinCtrl::OnStep(CDialog& dialog, int buddy, int steps)
{
    if (!m_window)
        return;
    const double number = tessara::LeadingNumber(m_window->GetText(buddy));
    m_window->SetText(buddy, tessara::FixedText(After(number, steps), m_digits));
    dialog.SendMessage(RegisterWindowMessage(kSpinStepMessage), static_cast<WPARAM>(m_control), 0);
}

double CNumSpinCtrl::After(double number, int steps) const
{
    const double wanted = number + m_step * steps;
    return steps > 0 ? std::max(number, std::min(wanted, m_high)) : std::min(number, std::max(wanted, m_low));
}
