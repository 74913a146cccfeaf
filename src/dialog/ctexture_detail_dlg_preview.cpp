#include "dialog/ctexture_detail_dlg.h"
#include "dialog/current_preview.h"
#include "dialog/database_selector.h"
#include "dialog/detail_resources.h"
#include "platform/com/bstr.h"
#include "platform/gl/gl.h"
#include "platform/ui/cclient_dc.h"
#include "services/gl_context.h"
#include "services/kvo_host.h"

using namespace tessara;

/// \return false where there is no OpenGL for the control
bool CTextureDetailDlg::InitPreviewContext()
{
    CWnd* const control = GetDlgItem(kPreview);
    control->GetWindowRect(&m_previewRect);
    const CClientDC surface(control);
    VARIANT device{};
    VARIANT options{};
    device.byref = surface.GetSafeHdc();
    return SUCCEEDED(m_pContext->Create(device, &options, 24, 1, m_previewRect.right - m_previewRect.left,
                                        m_previewRect.bottom - m_previewRect.top, 1));
}

void CTextureDetailDlg::LoadPreviewElement()
{
    if (!m_pHost)
        return;
    const BstrHolder key(m_strElement);
    const BstrHolder table(m_strTable);
    DatabaseSelector selector(m_strDatabaseLabel != m_strSystemLabel);
    ULONG texture = m_previewTexture;
    if (const CurrentPreview current(*m_pContext); current)
        m_pHost->LoadPreviewTexture(key.Get(), table.Get(), &texture, selector.Get());
    m_previewTexture = texture;
}

void CTextureDetailDlg::DropPreviewTexture()
{
    if (m_previewTexture == 0)
        return;
    if (const CurrentPreview current(*m_pContext); current)
        glDeleteTextures(1, &m_previewTexture);
    m_previewTexture = 0;
}

/// Draws the element over the whole preview; what is transparent in it shows the cleared colour.
void CTextureDetailDlg::DrawPreview() const
{
    const auto width = static_cast<float>(m_previewRect.right - m_previewRect.left);
    const auto height = static_cast<float>(m_previewRect.bottom - m_previewRect.top);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, m_previewTexture);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBegin(GL_QUADS);
    glTexCoord2f(1.0f, 1.0f);
    glVertex3f(0.0f, height, 0.0f);
    glTexCoord2f(0.0f, 1.0f);
    glVertex3f(width, height, 0.0f);
    glTexCoord2f(0.0f, 0.0f);
    glVertex3f(width, 0.0f, 0.0f);
    glTexCoord2f(1.0f, 0.0f);
    glVertex3f(0.0f, 0.0f, 0.0f);
    glEnd();
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
}

void CTextureDetailDlg::OnPaint()
{
    CDialog::OnPaint();
    if (!m_pContext)
        return;
    {
        const CurrentPreview current(*m_pContext);
        if (!current)
            return;
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (m_previewTexture != 0)
            DrawPreview();
    }
    CClientDC surface(GetDlgItem(kPreview));
    m_pContext->SwapBuffers(&surface, 0, 0);
}
