#pragma once

#include "platform/ui/ccombo_box.h"
#include "platform/ui/cdialog.h"
#include "platform/ui/cedit.h"
#include "platform/ui/clist_box.h"
#include "platform/ui/cnum_spin_ctrl.h"
#include "platform/ui/cpp_tool_tip.h"
#include "platform/ui/cxt_button.h"

#include <functional>
#include <string>
#include <vector>

namespace tessara::test {

/// Ids of the controls of SampleDialog.
enum SampleId : int {
    kCheck = 301,
    kNumber = 302,
    kSpin = 303,
    kChoice = 304,
    kList = 305,
    kButton = 306,
    kViewport = 307,
    kLabel = 308,
    kPlainEdit = 309,
};
inline constexpr UINT kPosted = 0x8100;
inline constexpr UINT kSampleTemplate = 900;
inline constexpr UINT kSampleToolTip = 901;
inline constexpr UINT kSampleStrip = 902;

/// A dialog with one control of each kind that writes down what it hears.
class SampleDialog final : public CDialog {
public:
    SampleDialog() : CDialog(kSampleTemplate) {}

    std::vector<std::string> events;
    bool takesReturn = false;
    bool endsAtOnce = false;
    bool throws = false;
    std::function<void(SampleDialog&)> atStart = [](SampleDialog&) {};
    std::function<void(SampleDialog&)> atEnd = [](SampleDialog&) {};  ///< in OnDestroy

    std::function<void(SampleDialog&)> whenStepped = [](SampleDialog&) {};

    CEdit number;
    CEdit plain;
    CNumSpinCtrl spin;
    CComboBox choice;
    CListBox list;
    CXTButton button;
    CPPToolTip toolTip;
    bool hasToolTip = false;

protected:
    const MessageMap* GetMessageMap() const override;
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL PreTranslateMessage(tessara::InputMessage* message) override;
    BOOL OnInitDialog() override;

private:
    void OnPaint();
    void OnDestroy();
    void OnCheck() { Note("check"); }
    void OnButton();
    void OnNumberLeft() { Note("number left"); }
    void OnChoice() { Note("choice"); }
    void OnList() { Note("list"); }
    LRESULT OnStepped(WPARAM control, LPARAM);
    LRESULT OnPosted(WPARAM wParam, LPARAM lParam);
    void Note(const std::string& event) { events.push_back(event); }
};

}  // namespace tessara::test
