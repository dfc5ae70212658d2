#pragma once

#include <windows.h>

#include "platform/WinHandles_win.h"

namespace zyn {

/// A window that is never shown, to be drawn on by OpenGL. One thread.
class HiddenWindow {
 public:
  enum Place {
    kTopLevel,
    kMessageOnly  ///< unknown to the screen: made and destroyed in a fraction of the time
  };

  HiddenWindow(SIZE size, Place place);
  ~HiddenWindow();
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;

  /// Null if the window could not be made.
  HWND get() const { return window_; }
  /// Its device context, without a pixel format at first; null without a window.
  HDC dc() const { return dc_.get(); }

 private:
  HWND window_;
  UniqueWindowDC dc_;
};

}  // namespace zyn
