#include "objects/text/TextLabel.h"

#include <cmath>

#include "objects/text/DigitFont.h"

namespace zyn {

namespace {

/// How far a side may lie past a whole pixel by rounding.
constexpr double kRounding = 1e-9;

// The sum with 0 is never a negative zero.
double downToPixel(double value) { return std::floor(value + kRounding) + 0.0; }
double upToPixel(double value) { return std::ceil(value - kRounding) + 0.0; }

}  // namespace

std::string TextLabel::shownText() const { return isNumeric ? numberText(value) : text; }

const TextLine& TextLabel::line(const FontMetrics& metrics) const {
  return numericSize ? metrics.digits : metrics.text;
}

TextBox TextLabel::box(const FontMetrics& metrics) const {
  return measureText(metrics, shownText(), line(metrics));
}

double TextLabel::emHeight(const TextBox& box) const {
  return height > 0 && box.height() > 0 ? height / box.height() : 0.0;
}

int TextLabel::digitSize(double pixelScale) const {
  if (!isNumeric || !std::isfinite(value)) {
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
  const TextBox whole = box(metrics);
  const PlanePoint anchor = anchorOf(whole, reference);
  const double em = emHeight(whole);
  return {downToPixel((whole.left - anchor.x) * em), upToPixel((whole.right - anchor.x) * em),
          downToPixel((whole.bottom - anchor.y) * em), upToPixel((whole.top - anchor.y) * em)};
}

}  // namespace zyn
