#pragma once

#include <windows.h>

#include <memory>

#include "glcontext/HiddenWindow_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

/// Brings the frames of OpenGL into a window.
///
/// Wine keeps what OpenGL draws in a child window away from the screen, or (from 10.0 on) shows it
/// and loses it again, without a WM_PAINT, where another window covers it. There OpenGL draws in a
/// hidden window of the same size, and each frame is copied. Windows shows frames itself.
class ChildPresentation {
 public:
  explicit ChildPresentation(HWND window);
  ~ChildPresentation() = default;
  ChildPresentation(const ChildPresentation&) = delete;
  ChildPresentation& operator=(const ChildPresentation&) = delete;

  /// The device context for OpenGL; null for a window that is gone. Another one once `follow` has
  /// been called.
  HDC dc() const { return canvas_ ? canvas_->dc() : windowDC_.get(); }

  /// Whether OpenGL has a pixel format for it.
  bool hasFormat() const { return hasFormat_; }

  /// False once the program has destroyed the hidden window, as who closes all windows of a thread
  /// does.
  bool exists() const { return !canvas_ || IsWindow(canvas_->get()); }

  /// Gives what OpenGL draws on the size of the window. To be called before the context is made
  /// current.
  void follow();

  /// Brings the frame, drawn on `dc` with the current context, into the window.
  void present() const;

 private:
  void copyFrame() const;

  HWND window_;
  /// The hidden window; null where the window itself is drawn on.
  std::unique_ptr<HiddenWindow> canvas_;
  UniqueWindowDC windowDC_;
  bool hasFormat_;
};

}  // namespace zyn
