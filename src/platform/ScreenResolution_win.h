#pragma once

#include <windows.h>

namespace zyn {

/// Dots per inch of a device: the mean of its horizontal and vertical resolution.
double resolutionOf(HDC dc);

/// Dots per inch of the screen.
double screenResolution();

/// Dots per inch of the monitor that a window is on, as the system tells this process: of the
/// window's device before Windows 10, of the screen for no window.
double monitorResolution(HWND window);

}  // namespace zyn
