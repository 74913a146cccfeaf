#pragma once

#include "platform/ui/image.h"

namespace tessara {

/// The decoration down the dialog's left side, 60 by 200 pixels: mountains that fade into white at the bottom.
Image MakeSidePicture();

/// Button icons of 16 by 16 pixels side by side, 74 by 16 in all: delete, import, apply. The background is RGB (236,
/// 233, 216).
Image MakeIconStrip();

}  // namespace tessara
