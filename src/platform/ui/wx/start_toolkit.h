#pragma once

class wxApp;

namespace tessara {

/// Starts the toolkit, once in a process. Numbers and texts go on following the locale of the program.
/// \param application the toolkit's from now on \param component named in reports of the toolkit's assertions, lives as
/// long as the process \return false where no display answers
bool StartToolkit(wxApp* application, const char* component);

}  // namespace tessara
