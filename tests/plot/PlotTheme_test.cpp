#include "plot/PlotTheme.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace zyn::test {
namespace {

using Rgb = std::array<double, 3>;
using Matrix = std::array<Rgb, 3>;

Rgb times(const Matrix& matrix, const Rgb& v) {
  Rgb out{};
  for (std::size_t i = 0; i < 3; ++i) {
    out[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
  }
  return out;
}

/// As it is, and as those see it who lack one kind of cones: Machado, Oliveira, Fernandes,
/// IEEE TVCG 15 (2009), severity 1, for linear components.
const std::array<std::pair<const char*, Matrix>, 4> kVisions{
    {{"all cones", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
     {"protan",
      {{{0.152286, 1.052583, -0.204868},
        {0.114503, 0.786281, 0.099216},
        {-0.003882, -0.048116, 1.051998}}}},
     {"deutan",
      {{{0.367322, 0.860646, -0.227968},
        {0.280085, 0.672501, 0.047413},
        {-0.011820, 0.042940, 0.968881}}}},
     {"tritan",
      {{{1.255528, -0.076749, -0.178779},
        {-0.078411, 0.930809, 0.147602},
        {0.004733, 0.691367, 0.303900}}}}}};

double linear(double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); }

/// CIE L*a*b* of linear components.
Rgb labOf(const Rgb& rgb) {
  const Rgb xyz = times({{{0.4124564, 0.3575761, 0.1804375},
                          {0.2126729, 0.7151522, 0.0721750},
                          {0.0193339, 0.1191920, 0.9503041}}},
                        rgb);
  const Rgb white{0.95047, 1, 1.08883};
  Rgb f{};
  for (std::size_t i = 0; i < 3; ++i) {
    const double t = xyz[i] / white[i];
    f[i] = t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116;
  }
  return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

Rgb seen(const DrawColour& colour, const Matrix& vision) {
  Rgb rgb = times(vision, {linear(colour.r), linear(colour.g), linear(colour.b)});
  for (double& component : rgb) component = std::clamp(component, 0.0, 1.0);
  return labOf(rgb);
}

TEST(PlotThemeTest, ContrastIsThatOfTheLuminances) {
  EXPECT_NEAR(contrast({0, 0, 0}, {1, 1, 1}), 21, 1e-9);
  EXPECT_NEAR(contrast({1, 1, 1}, {1, 1, 1}), 1, 1e-9);
  EXPECT_NEAR(contrast({1, 0, 0}, {1, 1, 1}), 3.9985, 1e-3);
  EXPECT_NEAR(contrast({1, 1, 1}, {1, 0, 0}), 3.9985, 1e-3);
}

TEST(PlotThemeTest, SeriesStandOutFromTheirGround) {
  for (const PlotThemeKind kind : {PlotThemeKind::kLight, PlotThemeKind::kDark}) {
    const PlotTheme& theme = themeOf(kind);
    for (std::size_t i = 0; i < theme.cycle.size(); ++i) {
      EXPECT_GE(contrast(theme.cycle[i], theme.plot), 3) << static_cast<int>(kind) << " " << i;
      EXPECT_GE(contrast(theme.cycle[i], theme.background), 3);
    }
  }
}

TEST(PlotThemeTest, SeriesAreToldApartByAnybody) {
  constexpr double kApart = 16;  // some 2 can be seen side by side
  for (const PlotThemeKind kind : {PlotThemeKind::kLight, PlotThemeKind::kDark}) {
    const auto& cycle = themeOf(kind).cycle;
    for (const auto& [name, vision] : kVisions) {
      for (std::size_t i = 0; i < cycle.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
          const Rgb a = seen(cycle[i], vision);
          const Rgb b = seen(cycle[k], vision);
          EXPECT_GE(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), kApart)
              << static_cast<int>(kind) << " " << name << " " << i << " " << k;
        }
      }
    }
  }
}

}  // namespace
}  // namespace zyn::test
