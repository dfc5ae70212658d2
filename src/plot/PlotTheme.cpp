#include "plot/PlotTheme.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zyn {

namespace {

constexpr DrawColour rgb(std::uint32_t hex, double alpha = 1.0) {
  return {(hex >> 16 & 255) / 255.0, (hex >> 8 & 255) / 255.0, (hex & 255) / 255.0, alpha};
}

/// The hues of M. A. Petroff, Accessible Color Sequences for Data Visualization, arXiv:2107.02270,
/// as light as the ground of each theme needs them to stand out by 3:1, and so that they are told
/// apart with the usual kinds of colour blindness too.
constexpr std::array<DrawColour, 10> kCycleOnLight = {
    rgb(0x5496d6), rgb(0xc8861e), rgb(0xc84029), rgb(0x889594), rgb(0x8c41bd),
    rgb(0x664035), rgb(0x6f2900), rgb(0x9f935c), rgb(0x323746), rgb(0x056d71)};
constexpr std::array<DrawColour, 10> kCycleOnDark = {
    rgb(0x64a8e9), rgb(0xf7a40e), rgb(0xd11f00), rgb(0xa8b7b5), rgb(0x934ec1),
    rgb(0xb26751), rgb(0xf07d40), rgb(0xddd097), rgb(0x676c7b), rgb(0x7deaef)};

constexpr PlotTheme kLight = {.background = rgb(0xffffff),
                              .plot = rgb(0xffffff),
                              .text = rgb(0x1f2328),
                              .axis = rgb(0x57606a),
                              .grid = rgb(0xd8dee4),
                              .fineGrid = rgb(0xeff2f5),
                              .legend = rgb(0xffffff, 0.88),
                              .hidden = rgb(0xa8b0b8),
                              .cycle = kCycleOnLight};

constexpr PlotTheme kDark = {.background = rgb(0x16191d),
                             .plot = rgb(0x1c2025),
                             .text = rgb(0xe6e9ec),
                             .axis = rgb(0x9aa4ae),
                             .grid = rgb(0x363d45),
                             .fineGrid = rgb(0x272c32),
                             .legend = rgb(0x1c2025, 0.88),
                             .hidden = rgb(0x68717a),
                             .cycle = kCycleOnDark};

double linear(double component) {
  return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

/// Relative to that of white, as the Web Content Accessibility Guidelines define it.
double luminance(const DrawColour& colour) {
  return 0.2126 * linear(colour.r) + 0.7152 * linear(colour.g) + 0.0722 * linear(colour.b);
}

}  // namespace

double contrast(const DrawColour& a, const DrawColour& b) {
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

const PlotTheme& themeOf(PlotThemeKind kind) {
  return kind == PlotThemeKind::kDark ? kDark : kLight;
}

}  // namespace zyn
