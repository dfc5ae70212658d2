#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace zyn::viewer {

/// The sizes and the font that the system uses on the monitor that a window is on.
class UiScale {
 public:
  explicit UiScale(HWND window);

  /// A length that is given for 96 dots per inch, in pixels.
  int px(int at96) const { return MulDiv(at96, static_cast<int>(dpi_), 96); }

  /// The font of the system's messages, menus and status bars.
  HFONT font() const { return font_.get(); }

 private:
  struct DeleteFont {
    void operator()(HFONT font) const { DeleteObject(font); }
  };

  UINT dpi_;
  std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteFont> font_;
};

}  // namespace zyn::viewer
