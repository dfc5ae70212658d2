#include "objects/text/TextCoverage.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

/// A smooth line is drawn as if it were a pixel wide at least: coverage falls from 1 on it to 0 at
/// this distance.
constexpr float kReach = 1.0F;

PlanePoint placed(const PlanePoint& point, const PlanePoint& at, double em) {
  return {at.x + em * point.x, at.y + em * point.y};
}

/// How a smooth line covers along itself, `distance` from its middle. Mesa's way: a line shorter
/// than a pixel is thinner, not shorter.
float alongLine(float distance, float length) {
  const float half = length / 2 + 0.5F;
  return length < 1 ? length * (1 - distance / half) : std::min(1.0F, half - distance);
}

struct PixelRange {
  int first;
  int last;
};

PixelRange reached(double a, double b, int count) {
  const auto [low, high] = std::minmax(a, b);
  return {static_cast<int>(std::clamp(std::floor(low - kReach), 0.0, static_cast<double>(count))),
          static_cast<int>(std::clamp(std::floor(high + kReach), -1.0, count - 1.0))};
}

}  // namespace

TextCoverage::TextCoverage(int left, int bottom, int width, int height)
    : left_(left),
      bottom_(bottom),
      width_(width),
      height_(height),
      seen_(index(0, height), 1.0F),
      turns_(seen_.size()) {}

void TextCoverage::add(const GlyphShape& glyph, const PlanePoint& at, double em, double opacity) {
  const PlanePoint inside = {at.x - left_, at.y - bottom_};
  const auto strength = static_cast<float>(opacity);
  fill(glyph.contours, inside, em, strength);
  for (const Contour& contour : glyph.contours) {
    outline(contour, inside, em, strength);
  }
}

std::vector<std::uint8_t> TextCoverage::background() const {
  std::vector<std::uint8_t> result(seen_.size());
  std::transform(seen_.begin(), seen_.end(), result.begin(),
                 [](float seen) { return static_cast<std::uint8_t>(std::lround(255.0F * seen)); });
  return result;
}

// A pixel belongs to a glyph whose contours wind around its centre.
void TextCoverage::fill(const std::vector<Contour>& contours, const PlanePoint& at, double em,
                        float opacity) {
  std::fill(turns_.begin(), turns_.end(), 0);
  for (const Contour& contour : contours) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
      countTurns(placed(contour[i], at, em), placed(contour[(i + 1) % contour.size()], at, em));
    }
  }
  for (int y = 0; y < height_; ++y) {
    int winding = 0;
    for (int x = 0; x < width_; ++x) {
      winding += turns_[index(x, y)];
      if (winding != 0) {
        seenAt(x, y) *= 1 - opacity;
      }
    }
  }
}

/// Where the rows' middles cross a line.
void TextCoverage::countTurns(const PlanePoint& from, const PlanePoint& to) {
  const int turn = from.y < to.y ? 1 : -1;
  const auto& [low, high] = std::minmax(from.y, to.y);
  const double slope = (to.x - from.x) / (to.y - from.y);
  const double end = std::min(std::ceil(high - 0.5), static_cast<double>(height_));
  for (double y = std::max(std::ceil(low - 0.5), 0.0); y < end; ++y) {
    const double x = std::ceil(from.x + (y + 0.5 - from.y) * slope - 0.5);
    if (x < width_) {
      turns_[index(static_cast<int>(std::max(x, 0.0)), static_cast<int>(y))] += turn;
    }
  }
}

void TextCoverage::outline(const Contour& contour, const PlanePoint& at, double em, float opacity) {
  for (std::size_t i = 0; i < contour.size(); ++i) {
    drawLine(placed(contour[i], at, em), placed(contour[(i + 1) % contour.size()], at, em),
             opacity);
  }
}

void TextCoverage::drawLine(const PlanePoint& from, const PlanePoint& to, float opacity) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const auto length = static_cast<float>(std::sqrt(dx * dx + dy * dy));
  if (length <= 0) {
    return;
  }
  const float alongX = static_cast<float>(dx) / length;
  const float alongY = static_cast<float>(dy) / length;
  const auto middleX = static_cast<float>(from.x + to.x) / 2;
  const auto middleY = static_cast<float>(from.y + to.y) / 2;
  const PixelRange columns = reached(from.x, to.x, width_);
  const PixelRange rows = reached(from.y, to.y, height_);
  for (int y = rows.first; y <= rows.last; ++y) {
    const float v = static_cast<float>(y) + 0.5F - middleY;
    for (int x = columns.first; x <= columns.last; ++x) {
      const float u = static_cast<float>(x) + 0.5F - middleX;
      const float across = kReach - std::abs(u * alongY - v * alongX);
      const float along = alongLine(std::abs(u * alongX + v * alongY), length);
      if (across > 0 && along > 0) {
        seenAt(x, y) *= 1 - opacity * across * along;
      }
    }
  }
}

}  // namespace zyn
