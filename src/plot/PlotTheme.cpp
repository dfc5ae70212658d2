#include "plot/PlotTheme.h"

#include <cstdint>

namespace zyn {

namespace {

constexpr DrawColour rgb(std::uint32_t hex, double alpha = 1.0) {
  return {(hex >> 16 & 255) / 255.0, (hex >> 8 & 255) / 255.0, (hex & 255) / 255.0, alpha};
}

/// M. A. Petroff, Accessible Color Sequences for Data Visualization, arXiv:2107.02270: ten colours
/// in the order that is told apart best, with the usual kinds of colour blindness too.
constexpr std::array<DrawColour, 10> kCycle = {
    rgb(0x3f90da), rgb(0xffa90e), rgb(0xbd1f01), rgb(0x94a4a2), rgb(0x832db6),
    rgb(0xa96b59), rgb(0xe76300), rgb(0xb9ac70), rgb(0x717581), rgb(0x92dadd)};

constexpr PlotTheme kLight = {.background = rgb(0xffffff),
                              .plot = rgb(0xffffff),
                              .text = rgb(0x1f2328),
                              .axis = rgb(0x57606a),
                              .grid = rgb(0xd8dee4),
                              .fineGrid = rgb(0xeff2f5),
                              .legend = rgb(0xffffff, 0.88),
                              .hidden = rgb(0xa8b0b8),
                              .cycle = kCycle};

constexpr PlotTheme kDark = {.background = rgb(0x16191d),
                             .plot = rgb(0x1c2025),
                             .text = rgb(0xe6e9ec),
                             .axis = rgb(0x9aa4ae),
                             .grid = rgb(0x363d45),
                             .fineGrid = rgb(0x272c32),
                             .legend = rgb(0x1c2025, 0.88),
                             .hidden = rgb(0x68717a),
                             .cycle = kCycle};

}  // namespace

const PlotTheme& themeOf(PlotThemeKind kind) {
  return kind == PlotThemeKind::kDark ? kDark : kLight;
}

}  // namespace zyn
