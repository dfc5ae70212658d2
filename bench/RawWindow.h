#pragma once

#include <windows.h>

namespace zyn::bench {

/// The least that a view takes: a child window in a frame, a rendering context, for texts with the
/// lists of two fonts, and a frame drawn.
class RawWindow {
 public:
  enum Fonts { kWithFonts, kWithoutFonts };

  explicit RawWindow(SIZE size, Fonts fonts = kWithFonts);
  ~RawWindow();
  RawWindow(const RawWindow&) = delete;
  RawWindow& operator=(const RawWindow&) = delete;

 private:
  HWND frame_;
  HWND window_;
  HDC dc_;
  HGLRC context_;
};

}  // namespace zyn::bench
