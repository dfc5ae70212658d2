#include "viewer/PrintPage.h"

#include <algorithm>
#include <cmath>

namespace zyn::viewer {

PrintPlace placeOnPage(const PrintPage& page, double aspect) {
  constexpr double kMargin = 15 / 25.4;  // inches
  constexpr double kMostMargin = 1.0 / 8;
  const double width = static_cast<double>(page.width) / page.xPerInch;
  const double height = static_cast<double>(page.height) / page.yPerInch;
  const double margin = std::min(kMargin, std::min(width, height) * kMostMargin);
  const double pictureWidth = std::min(width - 2 * margin, (height - 2 * margin) * aspect);
  const auto pixels = [](double inches, int perInch) {
    return static_cast<int>(std::lround(inches * perInch));
  };
  const PrintPlace size{0, 0, pixels(pictureWidth, page.xPerInch),
                        pixels(pictureWidth / aspect, page.yPerInch)};
  return {(page.width - size.width) / 2, (page.height - size.height) / 2, size.width, size.height};
}

}  // namespace zyn::viewer
