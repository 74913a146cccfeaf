#pragma once

namespace tessara {

/// The kinds of images that a user is offered for a texture.
inline constexpr char kImageFilter[] = "JPEG Files (*.jpg)|*.jpg|Bitmap Files (*.bmp)|*.bmp|PNG Files (*.png)|*.png|"
                                       "Adobe Photoshop Files (*.psd)|*.psd|Targa Files (*.tga)|*.tga|"
                                       "More Files... (*.*)|*.*|";

}  // namespace tessara
