#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "viewer/PrintPage.h"

namespace zyn::viewer {

/// Something that can be printed.
struct Printable {
  std::wstring name;  ///< in the printer's queue
  double aspect = 1;  ///< width by height
  /// Draws it, in pixels of a device.
  std::function<void(HDC dc, const RECT& place)> draw;

  /// Whether the paper is to lie on its long side.
  bool isWide() const { return aspect > 1; }
};

/// A sheet of the person's printer; without one, of the paper that is usual where they live.
PrintPage usualPage(bool isWide);

/// Asks for the printer and prints on one sheet. False when the person thinks better of it; throws
/// std::runtime_error when it fails.
bool print(HWND owner, const Printable& printable);

}  // namespace zyn::viewer
