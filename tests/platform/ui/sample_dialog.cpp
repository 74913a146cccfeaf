#include "platform/ui/sample_dialog.h"

#include "platform/ui/registered_message.h"
#include "platform/ui/resource_table.h"

#include <stdexcept>

namespace tessara::test {

namespace {

/// Two icons and a half: one of the background's colour, one red.
Image MakeStrip()
{
    Image strip(40, 16);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 40; ++x) {
            std::uint8_t* pixel = strip.At(x, y);
            pixel[0] = x < 16 ? 236 : 200;
            pixel[1] = x < 16 ? 233 : 0;
            pixel[2] = x < 16 ? 216 : 0;
            pixel[3] = 255;
        }
    }
    return strip;
}

constexpr const char* kChoices[] = {"Low", "High"};

using enum ControlKind;

const ControlTemplate kControls[] = {
    {kCheck, CheckBox, "Show", 10, 10, 60, 10, true},
    {kNumber, Edit, "", 10, 30, 50, 14, true},
    {kSpin, Spin, "Spin1", 50, 30, 10, 14, false, false, kNumber},
    {kPlainEdit, Edit, "", 10, 50, 50, 14, true},
    {kChoice, DropList, "", 80, 10, 50, 45, true, false, 0, nullptr, kChoices},
    {kList, ListBox, "", 80, 30, 60, 60, true, true},
    {kButton, Button, "Import", 10, 70, 50, 14, true},
    {IDOK, DefaultButton, "OK", 10, 100, 50, 14, true},
    {IDCANCEL, Button, "Cancel", 70, 100, 50, 14, true},
    {kViewport, Viewport, "", 150, 10, 40, 40},
    {kLabel, Label, "Name", 150, 60, 40, 8},
    {0, GroupBox, "Group", 145, 2, 52, 70},
    {0, Picture, "", 150, 76, 16, 16, false, false, 0, &MakeStrip},
    {0, WhiteRectangle, "", 170, 76, 16, 16},
    {0, EtchedLine, "", 10, 94, 180, 1},
};

const DialogTemplate kForms[] = {{kSampleTemplate, "Sample", 200, 120, 8, false, kControls}};
const DialogTable g_forms(kForms);

const StringResource kStrings[] = {
    {kSampleToolTip, "<h5>Number</h5>\n<hr color=gray><br>A number. <a msg=\"1\">More...</a>"}};
const StringTable g_strings(kStrings);

const BitmapResource kBitmaps[] = {{kSampleStrip, &MakeStrip}};
const BitmapTable g_bitmaps(kBitmaps);

}  // namespace

const MessageMap* SampleDialog::GetMessageMap() const
{
    static const MessageMapEntry entries[] = {
        OnMessage<&SampleDialog::OnPaint>(WM_PAINT),
        OnMessage<&SampleDialog::OnDestroy>(WM_DESTROY),
        OnControl<&SampleDialog::OnCheck>(kCheck, BN_CLICKED),
        OnControl<&SampleDialog::OnButton>(kButton, BN_CLICKED),
        OnControl<&SampleDialog::OnNumberLeft>(kNumber, EN_KILLFOCUS),
        OnControl<&SampleDialog::OnChoice>(kChoice, CBN_SELCHANGE),
        OnControl<&SampleDialog::OnList>(kList, LBN_SELCHANGE),
        OnMessage<&SampleDialog::OnStepped>(RegisterWindowMessage(kSpinStepMessage)),
        OnMessage<&SampleDialog::OnPosted>(kPosted),
    };
    static const MessageMap map = {CDialog::GetMessageMap(), entries};
    return &map;
}

void SampleDialog::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, kNumber, number);
    DDX_Control(exchange, kPlainEdit, plain);
    DDX_Control(exchange, kSpin, spin);
    DDX_Control(exchange, kChoice, choice);
    DDX_Control(exchange, kList, list);
    DDX_Control(exchange, kButton, button);
}

BOOL SampleDialog::PreTranslateMessage(tessara::InputMessage* message)
{
    if (hasToolTip)
        toolTip.RelayEvent(message);
    if (!takesReturn || message->message != WM_KEYDOWN || message->wParam != VK_RETURN)
        return CDialog::PreTranslateMessage(message);
    if (CWnd* next = GetNextDlgTabItem(GetFocus()))
        GotoDlgCtrl(next);
    return TRUE;
}

BOOL SampleDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    Note("created");
    hasToolTip = toolTip.Create(this) != FALSE;
    if (hasToolTip) {
        toolTip.SetCallbackHyperlink(this, kPosted, 0);
        toolTip.AddTool(&number, kSampleToolTip, nullptr, 0);
    }
    atStart(*this);
    if (endsAtOnce)
        EndDialog(17);
    return TRUE;
}

void SampleDialog::OnPaint()
{
    CDialog::OnPaint();
    Note("paint");
}

void SampleDialog::OnDestroy()
{
    CDialog::OnDestroy();
    Note("destroy");
    atEnd(*this);
}

void SampleDialog::OnButton()
{
    Note("button");
    if (throws)
        throw std::runtime_error("from a handler");
}

LRESULT SampleDialog::OnStepped(WPARAM control, LPARAM)
{
    Note("stepped " + std::to_string(control) + " to " + number.GetWindowText());
    whenStepped(*this);
    return 1;
}

LRESULT SampleDialog::OnPosted(WPARAM wParam, LPARAM lParam)
{
    Note(lParam == 0 ? std::string("link ") + reinterpret_cast<const char*>(wParam)
                     : "posted " + std::to_string(wParam) + " " + std::to_string(lParam));
    return 1;
}

}  // namespace tessara::test
