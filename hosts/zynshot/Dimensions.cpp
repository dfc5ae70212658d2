#include "zynshot/Dimensions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace zyn::shot {

namespace {

using host::Vector;

/// Sine of the angle to the line of sight below which a length cannot be read.
constexpr double kForeshortened = 0.1;

/// How much less a dimension below or above the model is liked than one beside it, which leaves the
/// picture flatter.
constexpr double kUprightCost = 0.3;

constexpr std::array<Vector, 3> kAxes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

double dot2(const Frame::Screen& a, const Frame::Screen& b) {
  return a.right * b.right + a.up * b.up;
}

/// Across an axis on the screen, downwards or to the right; none for an axis of no length there.
std::optional<Frame::Screen> asideOf(const Frame::Screen& axis) {
  const double length = std::hypot(axis.right, axis.up);
  if (length < kForeshortened) {
    return std::nullopt;
  }
  const Frame::Screen across{axis.up / length, -axis.right / length};
  const bool lowerRight = 2 * across.right > 3 * across.up;
  return lowerRight ? across : Frame::Screen{-across.right, -across.up};
}

/// Of the two box sides that meet in an edge, outwards.
using Sides = std::array<Vector, 2>;

/// The sides that meet in the edge that is farthest aside.
Sides sidesTowards(const Frame::Screen& aside, Sides sides, const Frame& frame) {
  for (Vector& side : sides) {
    if (dot2(frame.onScreen(side), aside) < 0) {
      side = side * -1.0;
    }
  }
  return sides;
}

/// The side along which a dimension line leaves the model most clearly.
Vector wayOut(const Sides& sides, const Frame::Screen& aside, const Frame& frame) {
  const auto clarity = [&](const Vector& side) {
    const Frame::Screen seen = frame.onScreen(side);
    return dot2(seen, aside) * (1 - kUprightCost * std::abs(seen.up));
  };
  return clarity(sides[0]) >= clarity(sides[1]) ? sides[0] : sides[1];
}

// Beyond these a picture has no room for all digits.
constexpr double kSmallestInDecimals = 1e-6;
constexpr double kLargestInDecimals = 1e9;

/// How many decimals show a length with so many digits.
int decimalsFor(int digits, double length) {
  return std::max(digits - 1 - static_cast<int>(std::floor(std::log10(length))), 0);
}

std::string formatted(const char* format, int precision, double length) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), format, precision, length);
  return text.data();
}

template <typename Format>
std::vector<std::string> texts(std::span<const double> lengths, Format format) {
  std::vector<std::string> written(lengths.size());
  std::ranges::transform(lengths, written.begin(), format);
  return written;
}

}  // namespace

std::vector<Dimension> overallDimensions(const host::Bounds& bounds, const Frame& frame) {
  std::vector<Dimension> dimensions;
  const Vector extents = bounds.extents();
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    const Vector& axis = kAxes[i];
    const double length = dot(axis, extents);
    const auto aside = asideOf(frame.onScreen(axis));
    if (!(length > 0) || !aside) {
      continue;
    }
    const Sides sides = sidesTowards(*aside, {kAxes[(i + 1) % 3], kAxes[(i + 2) % 3]}, frame);
    Vector middle = bounds.centre();
    for (const Vector& side : sides) {
      middle = middle + side * (std::abs(dot(side, extents)) / 2);
    }
    const Vector half = axis * (length / 2);
    dimensions.push_back(
        {middle - half, middle + half, cross(axis, wayOut(sides, *aside, frame)), length});
  }
  return dimensions;
}

double roomForDimensions(int width, int height, double pixelScale) {
  constexpr double kRoom = 80;  // pixels of a screen
  constexpr double kSmallestModel = 0.3;
  const double side = std::min(width, height);
  return side / std::max(side - 2 * kRoom * pixelScale, kSmallestModel * side) - 1;
}

std::vector<std::string> lengthTexts(std::span<const double> lengths) {
  if (lengths.empty()) {
    return {};
  }
  const auto [smallest, largest] = std::ranges::minmax(lengths);
  if (smallest < kSmallestInDecimals || largest >= kLargestInDecimals) {
    return texts(lengths, [](double length) { return formatted("%.*g", 4, length); });
  }
  for (int decimals = std::max(decimalsFor(4, largest), decimalsFor(2, smallest));; --decimals) {
    auto written =
        texts(lengths, [=](double length) { return formatted("%.*f", decimals, length); });
    const bool idle = std::ranges::all_of(written, [](auto& text) { return text.back() == '0'; });
    if (decimals == 0 || !idle) {
      return written;
    }
  }
}

}  // namespace zyn::shot
