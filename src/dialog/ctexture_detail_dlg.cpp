#include "dialog/ctexture_detail_dlg.h"

#include "dialog/current_preview.h"
#include "dialog/detail_resources.h"
#include "dialog/spin_messages.h"
#include "platform/com/com.h"
#include "platform/gl/gl.h"
#include "platform/system/number_text.h"
#include "platform/ui/cxt_hyper_link.h"
#include "services/gl_context.h"
#include "services/kvo_host.h"
#include "services/progress_window.h"
#include "surface/itessara.h"

#include <iterator>
#include <utility>

using namespace tessara;

namespace {

const DialogTable g_templates(DetailTemplates());
const BitmapTable g_bitmaps(DetailBitmaps());
const StringTable g_strings(DetailStrings());

constexpr UINT kLinkMessage = 0x8100;
constexpr UINT kHelpMessage = 0x8200;

constexpr int kIconSize = 16;
constexpr DWORD kButtonStyle = 0x50;
enum Icon { DeleteIcon, ImportIcon, ApplyIcon };

struct Tip {
    int control;
    UINT text;
};

constexpr Tip kTips[] = {
    {kDatabaseList, kDatabaseTip}, {kDeleteButton, kDeleteTip},  {kNameField, kNameTip},
    {kImportButton, kImportTip},   {kApplyButton, kApplyTip},    {kShowBox, kShowTip},
    {kTilingXField, kTilingXTip},  {kTilingYField, kTilingYTip}, {kBrightnessList, kBrightnessTip},
};

}  // namespace

CTextureDetailDlg::CTextureDetailDlg(ITessara* surface, IKvoHost* host, CWnd* parent)
    : CDialog(kDetailTemplate, parent), m_pSurface(surface), m_pHost(host)
{
}

CTextureDetailDlg::~CTextureDetailDlg()
{
    ReleaseServices();  // where the window broke off without an end
    FreeElements();
}

const MessageMap* CTextureDetailDlg::GetMessageMap() const
{
    static const MessageMapEntry entries[] = {
        OnMessage<&CTextureDetailDlg::OnPaint>(WM_PAINT),
        OnMessage<&CTextureDetailDlg::OnDestroy>(WM_DESTROY),
        OnControl<&CTextureDetailDlg::OnElementSelChange>(kElementList, LBN_SELCHANGE),
        OnControl<&CTextureDetailDlg::OnDatabaseSelChange>(kDatabaseList, CBN_SELCHANGE),
        OnMessage<&CTextureDetailDlg::OnSpinUp>(SpinUpMessage()),
        OnControl<&CTextureDetailDlg::OnBrightnessSelChange>(kBrightnessList, CBN_SELCHANGE),
        OnControl<&CTextureDetailDlg::OnApply>(kApplyButton, BN_CLICKED),
        OnControl<&CTextureDetailDlg::OnImport>(kImportButton, BN_CLICKED),
        OnControl<&CTextureDetailDlg::OnDelete>(kDeleteButton, BN_CLICKED),
        OnControl<&CTextureDetailDlg::OnTilingXKillFocus>(kTilingXField, EN_KILLFOCUS),
        OnControl<&CTextureDetailDlg::OnTilingYKillFocus>(kTilingYField, EN_KILLFOCUS),
        OnControl<&CTextureDetailDlg::OnShowClicked>(kShowBox, BN_CLICKED),
        OnMessage<&CTextureDetailDlg::OnToolTipLink>(kLinkMessage),
        OnMessage<&CTextureDetailDlg::OnShowHelp>(kHelpMessage),
    };
    static const MessageMap map = {CDialog::GetMessageMap(), entries};
    return &map;
}

void CTextureDetailDlg::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, kElementList, m_listElements);
    DDX_Control(exchange, kBrightnessList, m_comboBrightness);
    DDX_Control(exchange, kNameField, m_editName);
    DDX_Control(exchange, kDatabaseList, m_comboDatabase);
    DDX_Control(exchange, kTilingXField, m_editTilingX);
    DDX_Control(exchange, kTilingYField, m_editTilingY);
    DDX_Control(exchange, kTilingXSpin, m_spinTilingX);
    DDX_Control(exchange, kTilingYSpin, m_spinTilingY);
    DDX_Control(exchange, kDeleteButton, m_btnDelete);
    DDX_Control(exchange, kApplyButton, m_btnApply);
    DDX_Control(exchange, kImportButton, m_btnImport);
}

/// Return never closes the dialog: it goes on to the next control, which applies a field that is left.
BOOL CTextureDetailDlg::PreTranslateMessage(InputMessage* message)
{
    if (GetActiveWindow() == this)
        m_toolTip.RelayEvent(message);
    if (message->message != WM_KEYDOWN || message->wParam != VK_RETURN)
        return CDialog::PreTranslateMessage(message);
    if (CWnd* const next = GetNextDlgTabItem(GetFocus()))
        GotoDlgCtrl(next);
    return TRUE;
}

BOOL CTextureDetailDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    if (FAILED(CoCreateInstance(CLSID_GLContext, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<IGLContext>,
                                reinterpret_cast<void**>(&m_pContext))) ||
        !m_pContext)
        return EndWithoutPreview();
    if (m_pHost)
        m_pHost->GetProgressWindow(&m_pProgress);
    ShowDatabases();
    FillElementList();
    if (!InitPreviewContext())
        return EndWithoutPreview();
    OnElementSelChange();
    ShowSettings();
    ShowIcons();
    m_editName.SetWindowText("New Element");
    UpdateDatabaseControls();
    CreateToolTips();
    return TRUE;
}

/// Without a context of its own the preview would draw into the terrain's.
BOOL CTextureDetailDlg::EndWithoutPreview()
{
    EndDialog(IDCANCEL);
    MessageBox(LoadString(kNoPreview), LoadString(kProductName).c_str(), MB_OK);
    return FALSE;
}

void CTextureDetailDlg::ShowDatabases()
{
    m_comboDatabase.ResetContent();
    m_comboDatabase.AddString(m_strSystemLabel);
    m_comboDatabase.AddString(m_strUserLabel);
    m_comboDatabase.SetCurSel(0);
    m_strDatabaseLabel = m_strSystemLabel;
    if (m_strDatabaseKey == "USERDB") {
        m_strDatabaseLabel = m_strUserLabel;
        m_comboDatabase.SetCurSel(1);
    }
}

void CTextureDetailDlg::ShowSettings()
{
    float x = 0.0f;
    float y = 0.0f;
    m_pSurface->GetTextureDetailTiling(&x, &y);
    m_editTilingX.SetWindowText(FixedText(static_cast<double>(x), 2));
    m_editTilingY.SetWindowText(FixedText(static_cast<double>(y), 2));
    int gamma = 0;
    m_pSurface->GetTextureDetailRGBGamma(&gamma);
    m_comboBrightness.SetCurSel(gamma == 1 ? 0 : 1);
    LONG shown = 0;
    m_pSurface->IsUsingTextureDetail(&shown);
    CheckDlgButton(kShowBox, shown != 0 ? TRUE : FALSE);
}

void CTextureDetailDlg::ShowIcons()
{
    CBitmap strip;
    CImageList icons;
    strip.LoadBitmap(kIconStrip);
    icons.Create(kIconSize, kIconSize, ILC_COLOR24 | ILC_MASK, 4, 1);
    icons.Add(&strip, RGB(236, 233, 216));
    const std::pair<CXTButton&, Icon> buttons[] = {
        {m_btnApply, ApplyIcon}, {m_btnDelete, DeleteIcon}, {m_btnImport, ImportIcon}};
    for (const auto& [button, icon] : buttons) {
        button.SetIcon({kIconSize, kIconSize}, icons.ExtractIcon(icon), nullptr, TRUE);
        button.SetXButtonStyle(kButtonStyle, TRUE);
    }
}

void CTextureDetailDlg::CreateToolTips()
{
    if (!m_toolTip.Create(this, TRUE))
        return;
    m_toolTip.SetCallbackHyperlink(this, kLinkMessage, 0);
    for (const Tip& tip : kTips)
        m_toolTip.AddTool(GetDlgItem(tip.control), tip.text, nullptr, 0);
}

void CTextureDetailDlg::OnDestroy()
{
    CDialog::OnDestroy();
    if (m_pContext) {
        if (const CurrentPreview current(*m_pContext); current && m_previewTexture != 0) {
            glDisable(GL_TEXTURE_2D);
            glDeleteTextures(1, &m_previewTexture);
        }
        m_previewTexture = 0;
        m_pContext->Destroy();
    }
    ReleaseServices();
}

void CTextureDetailDlg::ReleaseServices() noexcept
{
    if (m_pContext)
        std::exchange(m_pContext, nullptr)->Release();
    if (m_pProgress)
        std::exchange(m_pProgress, nullptr)->Release();
}

LRESULT CTextureDetailDlg::OnToolTipLink(WPARAM text, LPARAM)
{
    constexpr UINT kLongTexts[] = {kDatabaseHelp, kImportHelp};
    const std::string link = text != 0 ? reinterpret_cast<const char*>(text) : "";
    if (link.find("http") != std::string::npos) {
        CXTHyperLink().GotoURL(link, 5);
        return 1;
    }
    const int index = LeadingInteger(link);
    if (index >= 0 && index < static_cast<int>(std::size(kLongTexts)))
        PostMessage(kHelpMessage, kLongTexts[index], 0);
    return 1;
}

LRESULT CTextureDetailDlg::OnShowHelp(WPARAM id, LPARAM)
{
    m_toolTip.ShowHelpTooltip(LoadString(static_cast<UINT>(id)));
    return 1;
}
