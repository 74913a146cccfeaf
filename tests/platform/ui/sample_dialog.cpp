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

const ControlTemplate kControls[] = {
    {.id = kCheck,
     .kind = ControlKind::CheckBox,
     .text = "Show",
     .x = 10,
     .y = 10,
     .width = 60,
     .height = 10,
     .tabStop = true},
    {.id = kNumber,
     .kind = ControlKind::Edit,
     .text = "",
     .x = 10,
     .y = 30,
     .width = 50,
     .height = 14,
     .tabStop = true},
    {.id = kSpin,
     .kind = ControlKind::Spin,
     .text = "Spin1",
     .x = 50,
     .y = 30,
     .width = 10,
     .height = 14,
     .buddy = kNumber},
    {.id = kPlainEdit,
     .kind = ControlKind::Edit,
     .text = "",
     .x = 10,
     .y = 50,
     .width = 50,
     .height = 14,
     .tabStop = true},
    {.id = kChoice,
     .kind = ControlKind::DropList,
     .text = "",
     .x = 80,
     .y = 10,
     .width = 50,
     .height = 45,
     .tabStop = true,
     .rows = kChoices},
    {.id = kList,
     .kind = ControlKind::ListBox,
     .text = "",
     .x = 80,
     .y = 30,
     .width = 60,
     .height = 60,
     .tabStop = true,
     .multipleSelection = true},
    {.id = kButton,
     .kind = ControlKind::Button,
     .text = "Import",
     .x = 10,
     .y = 70,
     .width = 50,
     .height = 14,
     .tabStop = true},
    {.id = IDOK,
     .kind = ControlKind::DefaultButton,
     .text = "OK",
     .x = 10,
     .y = 100,
     .width = 50,
     .height = 14,
     .tabStop = true},
    {.id = IDCANCEL,
     .kind = ControlKind::Button,
     .text = "Cancel",
     .x = 70,
     .y = 100,
     .width = 50,
     .height = 14,
     .tabStop = true},
    {.id = kViewport, .kind = ControlKind::Viewport, .text = "", .x = 150, .y = 10, .width = 40, .height = 40},
    {.id = kLabel, .kind = ControlKind::Label, .text = "Name", .x = 150, .y = 60, .width = 40, .height = 8},
    {.id = 0, .kind = ControlKind::GroupBox, .text = "Group", .x = 145, .y = 2, .width = 52, .height = 70},
    {.id = 0,
     .kind = ControlKind::Picture,
     .text = "",
     .x = 150,
     .y = 76,
     .width = 16,
     .height = 16,
     .picture = &MakeStrip},
    {.id = 0, .kind = ControlKind::WhiteRectangle, .text = "", .x = 170, .y = 76, .width = 16, .height = 16},
    {.id = 0, .kind = ControlKind::EtchedLine, .text = "", .x = 10, .y = 94, .width = 180, .height = 1},
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

BOOL SampleDialog::PreTranslateMessage(MSG* message)
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
    whenPainted(*this);
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
    return 1;
}

LRESULT SampleDialog::OnPosted(WPARAM wParam, LPARAM lParam)
{
    Note(lParam == 0 ? std::string("link ") + reinterpret_cast<const char*>(wParam)
                     : "posted " + std::to_string(wParam) + " " + std::to_string(lParam));
    return 1;
}

}  // namespace tessara::test
