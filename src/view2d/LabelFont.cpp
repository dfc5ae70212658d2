#include "view2d/LabelFont.h"

#include "objects/text/DigitFont.h"

namespace zyn {

namespace {

constexpr double kLargeWindow = 1500;
constexpr double kLargerWindow = 2500;

constexpr double kExponentGap = 1.0;

}  // namespace

LabelFont LabelFont::forWindow(double pixels) {
  if (pixels >= kLargerWindow) {
    return {.size = 8, .exponentSize = 4};
  }
  if (pixels >= kLargeWindow) {
    return {.size = 5, .exponentSize = 2};
  }
  return {};
}

double LabelFont::digitHeight() const { return zyn::digitHeight(size); }

double LabelFont::exponentRise() const {
  const int halfExponent = zyn::digitHeight(exponentSize) / 2;
  return zyn::digitHeight(size) - halfExponent;
}

double LabelFont::width(const Graduation& graduation) const {
  const int label = digitTextWidth(graduation.label, size);
  return graduation.exponent.empty()
             ? label
             : label + kExponentGap + digitTextWidth(graduation.exponent, exponentSize);
}

double LabelFont::height(const Graduation& graduation) const {
  return graduation.exponent.empty() ? digitHeight()
                                     : exponentRise() + zyn::digitHeight(exponentSize);
}

}  // namespace zyn
