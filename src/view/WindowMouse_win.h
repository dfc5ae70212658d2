#pragma once

#include <windows.h>

#include "view/Pixels.h"

namespace zyn {

/// The position that a mouse message carries, in client pixels.
PixelPoint pointOf(LPARAM lParam);

/// The position that a wheel message of the window carries, which is the screen's.
PixelPoint wheelPointOf(HWND window, LPARAM lParam);

/// Gives the capture of the mouse back if the window has it.
void releaseMouseOf(HWND window);

/// Asks for one WM_MOUSELEAVE when the mouse leaves the window, and tells the user if that fails.
void trackMouseLeaveOf(HWND window);

}  // namespace zyn
