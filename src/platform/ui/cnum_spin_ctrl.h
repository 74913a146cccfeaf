#pragma once

#include "platform/ui/cwnd.h"

/// Text to register for the message that a spin control sends to its dialog after each step, in either direction. First
/// parameter: the id of the spin control.
inline constexpr char kSpinStepMessage[] = "UWM_SPINUP-{384D476A-93A7-45f1-812C-0E729C0D1CFC}";

/// A pair of arrows that steps the number in its buddy, the edit field that the dialog's template names.
///
/// A step goes from the number that the field holds, whatever was typed, by SetStep up or down, but never past the
/// range and never against the arrow; the field then shows it with SetDigits digits. By default: by 1 from 1 to 1000,
/// two digits.
class CNumSpinCtrl : public CWnd {
public:
    void SetStep(double step) noexcept { m_step = step; }
    void SetRange(double low, double high) noexcept
    {
        m_low = low;
        m_high = high;
    }
    void SetDigits(int digits) noexcept { m_digits = digits; }

private:
    void OnStep(CDialog& dialog, int buddy, int steps) override;
    double After(double number, int steps) const;

    double m_step = 1.0;
    double m_low = 1.0;
    double m_high = 1000.0;
    int m_digits = 2;
};
