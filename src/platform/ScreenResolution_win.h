#pragma once

#include <windows.h>

namespace zyn {

/// Dots per inch of a device: the mean of its horizontal and vertical resolution.
double resolutionOf(HDC dc);

/// Dots per inch of the screen.
double screenResolution();

}  // namespace zyn
