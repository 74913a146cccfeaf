#pragma once

namespace tessara::test {

/// Starts the desktop's toolkit in this program. \return false where no display answers
bool StartToolkit();

}  // namespace tessara::test
