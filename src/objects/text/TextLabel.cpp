#include "objects/text/TextLabel.h"

#include <cmath>

#include "objects/text/DigitFont.h"

namespace zyn {

namespace {

/// Room between a text and the edge of its background, heights of its line.
constexpr double kRoomBeside = 0.2;
constexpr double kRoomAbove = 0.1;

/// How far a side may lie past a whole pixel by rounding.
constexpr double kRounding = 1e-9;

// The sum with 0 is never a negative zero.
double downToPixel(double value) { return std::floor(value + kRounding) + 0.0; }
double upToPixel(double value) { return std::ceil(value - kRounding) + 0.0; }

}  // namespace

std::string TextLabel::shownText() const { return isNumeric ? numberText(value) : text; }

const TextLine& TextLabel::line(const FontMetrics& metrics) const {
  if (shaped) {
    return numericSize ? shaped->digits : shaped->text;
  }
  return numericSize ? metrics.digits : metrics.text;
}

TextBox TextLabel::box(const FontMetrics& metrics) const {
  return shaped ? shaped->box(line(metrics)) : measureText(metrics, shownText(), line(metrics));
}

TextBox TextLabel::surround(const TextBox& box) const {
  if (!hasBackground(box)) {
    return box;
  }
  const double beside = kRoomBeside * box.height();
  const double above = kRoomAbove * box.height();
  return {box.left - beside, box.right + beside, box.bottom - above, box.top + above};
}

double TextLabel::emHeight(const TextBox& box) const {
  return height > 0 && box.height() > 0 ? height / box.height() : 0.0;
}

int TextLabel::digitSize(double pixelScale) const {
  if (!isNumeric || shaped || !std::isfinite(value)) {
    return 0;
  }
  const double pixels = std::round(height * pixelScale);
  return pixels >= digitHeight(1) && pixels <= digitHeight(kDigitSizes)
             ? static_cast<int>(pixels) - digitHeight(1) + 1
             : 0;
}

TextBox TextLabel::digitBox(int size) const {
  // Above the digits there is room for one more pixel.
  return {0.0, static_cast<double>(digitTextWidth(shownText(), size)), 0.0,
          digitHeight(size) + 1.0};
}

TextBox TextLabel::pixelBox(const FontMetrics& metrics) const {
  const TextBox inner = box(metrics);
  const TextBox whole = surround(inner);
  const PlanePoint anchor = anchorOf(inner, reference);
  const double em = emHeight(inner);
  return {downToPixel((whole.left - anchor.x) * em), upToPixel((whole.right - anchor.x) * em),
          downToPixel((whole.bottom - anchor.y) * em), upToPixel((whole.top - anchor.y) * em)};
}

}  // namespace zyn
