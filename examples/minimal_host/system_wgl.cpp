#include "system.h"
#include <tessara/platform/com/com.h>

void StartComponents()
{
    CoInitialize(nullptr);
}

/// In the back buffer of a window without a frame, which the system shows on no screen until something is swapped.
bool OpenContext(int side)
{
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, side, side, nullptr, nullptr, nullptr, nullptr);
    HDC device = GetDC(window);
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.cColorBits = 24;
    format.cDepthBits = 24;
    const int chosen = ChoosePixelFormat(device, &format);
    if (chosen == 0 || !SetPixelFormat(device, chosen, &format))
        return false;
    HGLRC context = wglCreateContext(device);
    return context && wglMakeCurrent(device, context);
}
