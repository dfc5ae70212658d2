#include "support/LetterFont_gl.h"

#include <cmath>

#include "support/Random.h"

namespace zyn::test {

namespace {

constexpr double kStroke = 0.09;
constexpr double kAdvance = 0.65;

Contour ellipse(const PlanePoint& middle, double a, double b, int turn) {
  constexpr int kCorners = 24;
  constexpr double kWhole = 2 * 3.141592653589793;
  Contour contour;
  for (int i = 0; i < kCorners; ++i) {
    const double angle = turn * kWhole * i / kCorners;
    contour.push_back({middle.x + a * std::cos(angle), middle.y + b * std::sin(angle)});
  }
  return contour;
}

/// As wide as a stroke, from one point up to another.
Contour bar(const PlanePoint& from, const PlanePoint& to) {
  const PlanePoint wide = {kStroke, 0};
  return {from, from + wide, to + wide, to};
}

GlyphShape makeLetter(Random& rng) {
  const double a = rng.between(0.15, 0.28);
  const double b = rng.between(0.15, 0.35);
  const PlanePoint middle = {a + 0.05, b};
  const double x = rng.between(0.05, 0.5);
  const double from = rng.between(0, 0.5);
  const double to = rng.between(0, 0.5);
  GlyphShape letter;
  letter.contours = {ellipse(middle, a, b, 1), ellipse(middle, a - kStroke, b - kStroke, -1),
                     bar({x, 0}, {x, 0.72}), bar({from, -0.15}, {to, 0.45})};
  letter.filled = tessellate(letter.contours);
  return letter;
}

}  // namespace

void giveLetters(CGLFontContext& fonts) {
  Random rng(1);
  auto shapes = std::make_shared<GlyphShapes>();
  for (GlyphShape& shape : *shapes) {
    shape = makeLetter(rng);
  }
  FontMetrics metrics;
  metrics.glyphs.fill({.blackBoxX = 0.6F,
                       .blackBoxY = 0.95F,
                       .originX = 0.0F,
                       .originY = 0.75F,
                       .cellIncX = static_cast<float>(kAdvance)});
  metrics.measureLines();
  fonts.setShapes(metrics, shapes, true);
}

}  // namespace zyn::test
