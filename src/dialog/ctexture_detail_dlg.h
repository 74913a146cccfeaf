#pragma once

#include "platform/com/com_ptr.h"
#include "platform/ui/ccombo_box.h"
#include "platform/ui/cdialog.h"
#include "platform/ui/cedit.h"
#include "platform/ui/clist_box.h"
#include "platform/ui/cnum_spin_ctrl.h"
#include "platform/ui/cpp_tool_tip.h"
#include "platform/ui/cxt_button.h"

#include <string>
#include <vector>

struct IGLContext;
struct IImageFile;
struct IKvoHost;
struct IProgressWindow;
struct ITessara;
struct ITextureDatabase;

/// The "Terrain Detail" dialog: lists the elements of the host's two texture databases, shows the chosen one in a
/// preview and changes the surface's detail texture while the terrain stays on screen. Every change goes to the surface
/// at once; taking them back after Cancel is the caller's.
///
/// Runs on the thread that has the terrain's OpenGL context current. The preview has a context of its own, which is
/// current only while the dialog itself draws or loads.
class CTextureDetailDlg : public CDialog {
public:
    /// \param surface,host not counted; both outlive the dialog \param parent null for none
    CTextureDetailDlg(ITessara* surface, IKvoHost* host, CWnd* parent);
    ~CTextureDetailDlg() override;

    /// \param name display name of the element that the list begins with; the first one where there is no such name
    void SetCurrentElement(const std::string& name) { m_strElement = name; }

    /// \param key "USERDB" begins with the user's database, everything else with the system's
    void SetDatabaseKey(const std::string& key) { m_strDatabaseKey = key; }

protected:
    const tessara::MessageMap* GetMessageMap() const override;
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL PreTranslateMessage(tessara::InputMessage* message) override;
    BOOL OnInitDialog() override;

private:
    // Start and end.
    BOOL EndWithoutPreview();
    void ShowDatabases();
    void ShowSettings();
    void ShowIcons();
    void CreateToolTips();
    void OnDestroy();
    void ReleaseServices() noexcept;

    // The preview.
    bool InitPreviewContext();
    void LoadPreviewElement();
    void DropPreviewTexture();
    void DrawPreview() const;
    void OnPaint();

    // Databases and their elements.
    ComPtr<ITextureDatabase> OpenDatabase(VARIANT* selector);
    void UpdateDatabaseControls();
    void SetDatabasePresent(bool present);
    void FillElementList();
    void ReadElements(ITextureDatabase& database);
    void FreeElements() noexcept;
    bool FindDisplayName(const std::string& key, std::string& out) const;
    void OnDatabaseSelChange();
    void OnElementSelChange();

    // What changes the surface.
    void Redraw();
    void ApplyTiling(CEdit& field, bool horizontal);
    void OnApply();
    void OnShowClicked();
    void OnBrightnessSelChange();
    void OnTilingXKillFocus();
    void OnTilingYKillFocus();
    LRESULT OnSpinUp(WPARAM id, LPARAM);

    // What changes the user's database.
    bool MakeRoomFor(ITextureDatabase& database, const std::string& name);
    HRESULT StoreImage(ComPtr<ITextureDatabase> database, const std::string& path, const std::string& name);
    void CopyImage(IImageFile& image, ITextureDatabase& database, BSTR name);
    void OnImport();
    void OnDelete();

    // Help.
    LRESULT OnToolTipLink(WPARAM text, LPARAM);
    LRESULT OnShowHelp(WPARAM id, LPARAM);

    CComboBox m_comboBrightness;
    CComboBox m_comboDatabase;
    CListBox m_listElements;
    CEdit m_editName;
    CEdit m_editTilingX;
    CEdit m_editTilingY;
    CNumSpinCtrl m_spinTilingX;
    CNumSpinCtrl m_spinTilingY;
    CXTButton m_btnApply;
    CXTButton m_btnDelete;
    CXTButton m_btnImport;
    ITessara* m_pSurface;                    // not counted
    IProgressWindow* m_pProgress = nullptr;  // counted, from OnInitDialog to OnDestroy
    IKvoHost* m_pHost;                       // not counted
    IGLContext* m_pContext = nullptr;        // counted, from OnInitDialog to OnDestroy
    std::string m_strElement;                // a display name at first, the key of the selected element later
    std::string m_strTable = "TerrainTextureDetail";
    std::uint32_t m_previewTexture = 0;  // of the preview's context, 0 for none
    std::vector<BSTR> m_keys;            // owned
    std::vector<BSTR> m_displayNames;    // owned, parallel to m_keys; may be empty or null
    std::string m_strSystemLabel = "System database";
    std::string m_strUserLabel = "User database";
    std::string m_strDatabaseLabel;  // of the database that is shown
    RECT m_previewRect{};            // on the screen; its size alone is used
    std::string m_strDatabaseKey;
    CPPToolTip m_toolTip;
    bool m_hasDatabase = true;  // false where the host didn't give the database that is shown
};
