#include "platform/com/types_win32.h"
#include "platform/gl/current_context.h"

namespace tessara {

CurrentContext CurrentContext::Take() noexcept
{
    CurrentContext found;
    if (HGLRC context = wglGetCurrentContext()) {
        found.kind_ = Kind::Wgl;
        found.context_ = context;
        found.draw_ = wglGetCurrentDC();
    }
    return found;
}

void CurrentContext::Clear() noexcept
{
    wglMakeCurrent(nullptr, nullptr);
}

void CurrentContext::Restore() const noexcept
{
    if (Take() == *this)
        return;
    wglMakeCurrent(static_cast<HDC>(draw_), static_cast<HGLRC>(context_));
}

}  // namespace tessara
