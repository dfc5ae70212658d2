#pragma once

#include <windows.h>

namespace zyn {

/// A throw-away top-level window that is never shown, of a window class of its own that lives as
/// long as it does. There is at most one at a time.
class ProbeWindow {
 public:
  ProbeWindow();
  ~ProbeWindow();
  ProbeWindow(const ProbeWindow&) = delete;
  ProbeWindow& operator=(const ProbeWindow&) = delete;

  /// The window's device context; null if the class or the window could not be made.
  HDC dc() const { return dc_; }

 private:
  ATOM class_;
  HWND window_ = nullptr;
  HDC dc_ = nullptr;
};

}  // namespace zyn
