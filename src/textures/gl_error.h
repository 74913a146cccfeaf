#pragma once

namespace tessara {

/// Takes one error from OpenGL and, where there is one, sends "GLError: <its text> on <place> \n" to the debug output.
/// \return true where there was an error
bool ReportGlError(const char* place);

}  // namespace tessara
