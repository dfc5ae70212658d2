#include "view/WindowMouse_win.h"

#include <windowsx.h>

#include "platform/MessageBox_win.h"

namespace zyn {

PixelPoint pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

PixelPoint wheelPointOf(HWND window, LPARAM lParam) {
  POINT at = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ScreenToClient(window, &at);
  return {at.x, at.y};
}

void releaseMouseOf(HWND window) {
  if (GetCapture() == window) {
    ReleaseCapture();
  }
}

void trackMouseLeaveOf(HWND window) {
  TRACKMOUSEEVENT request = {sizeof request, TME_LEAVE, window, 0};
  if (!TrackMouseEvent(&request)) {
    tellUser(L"MOUSE LEAVE FAILED");
  }
}

}  // namespace zyn
