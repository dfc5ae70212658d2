#pragma once

namespace zyn::viewer {

/// A sheet of paper as a printer sees it, in its pixels.
struct PrintPage {
  int width;
  int height;
  int xPerInch;
  int yPerInch;
};

/// A rectangle of a page, in pixels from its upper left corner.
struct PrintPlace {
  int left;
  int top;
  int width;
  int height;

  bool operator==(const PrintPlace&) const = default;
};

/// Where a picture stands whose width is `aspect` times its height: as large as the margins allow,
/// which are 15 mm wide, or an eighth of a small sheet, in the middle.
PrintPlace placeOnPage(const PrintPage& page, double aspect);

}  // namespace zyn::viewer
