#include "view2d/LabelFont.h"

#include <algorithm>
#include <cmath>

#include "objects/text/DigitFont.h"

namespace zyn {

namespace {

constexpr double kLargeWindow = 1500;
constexpr double kLargerWindow = 2500;

constexpr double kExponentGap = 1.0;

double drawnHeight(int screenSize, double pixelScale) {
  return std::round(digitHeight(screenSize) * pixelScale);
}

}  // namespace

LabelFont LabelFont::forWindow(double pixels, double pixelScale, const FontMetrics* metrics) {
  LabelFont font;
  if (pixels >= kLargerWindow) {
    font = {.size = 8, .exponentSize = 4};
  } else if (pixels >= kLargeWindow) {
    font = {.size = 5, .exponentSize = 2};
  }
  font.pixelScale = pixelScale;
  if (drawnHeight(font.size, pixelScale) > kLargestDigitHeight && metrics &&
      metrics->digits.height() > 0) {
    font.outlines = metrics;
  }
  return font;
}

int LabelFont::drawnSize(int screenSize) const {
  const auto height =
      static_cast<int>(std::min(drawnHeight(screenSize, pixelScale), double{kLargestDigitHeight}));
  return std::max(1, height - zyn::digitHeight(0));
}

double LabelFont::emHeight(int screenSize) const {
  return zyn::digitHeight(screenSize) / outlines->digits.height();
}

double LabelFont::heightOf(int screenSize) const {
  return outlines ? zyn::digitHeight(screenSize)
                  : zyn::digitHeight(drawnSize(screenSize)) / pixelScale;
}

double LabelFont::textWidth(std::string_view text, int screenSize) const {
  return outlines ? emHeight(screenSize) * measureText(*outlines, text, outlines->digits).right
                  : digitTextWidth(text, drawnSize(screenSize)) / pixelScale;
}

double LabelFont::digitHeight() const { return heightOf(size); }

double LabelFont::exponentRise() const {
  const double halfExponent = std::floor(heightOf(exponentSize) * pixelScale / 2) / pixelScale;
  return heightOf(size) - halfExponent;
}

double LabelFont::width(const Graduation& graduation) const {
  const double label = textWidth(graduation.label, size);
  return graduation.exponent.empty()
             ? label
             : label + kExponentGap + textWidth(graduation.exponent, exponentSize);
}

double LabelFont::height(const Graduation& graduation) const {
  return graduation.exponent.empty() ? digitHeight() : exponentRise() + heightOf(exponentSize);
}

}  // namespace zyn
