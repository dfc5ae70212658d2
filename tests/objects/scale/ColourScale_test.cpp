#include "objects/scale/ColourScale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Kind = ColourPalette::Kind;
using Rgb = ColourPalette::Colour;

void expectColour(const Rgb& colour, const Rgb& expected, double tolerance = 1e-6) {
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(colour[i], expected[i], tolerance) << "component " << i;
  }
}

// The ends and some between, as the authors published them.
TEST(ColourPaletteTest, HasThePublishedTables) {
  expectColour(ColourPalette(Kind::kViridis).at(0), {0.267004, 0.004874, 0.329415});
  expectColour(ColourPalette(Kind::kViridis).at(128 / 255.0), {0.127568, 0.566949, 0.550556});
  expectColour(ColourPalette(Kind::kViridis).at(1), {0.993248, 0.906157, 0.143936});
  expectColour(ColourPalette(Kind::kPlasma).at(0), {0.050383, 0.029803, 0.527975});
  expectColour(ColourPalette(Kind::kPlasma).at(1), {0.940015, 0.975158, 0.131326});
  expectColour(ColourPalette(Kind::kTurbo).at(0), {0.18995, 0.07176, 0.23217});
  expectColour(ColourPalette(Kind::kTurbo).at(1), {0.47960, 0.01583, 0.01055});
  expectColour(ColourPalette(Kind::kCoolWarm).at(0), {0.2298057, 0.298717966, 0.753683153});
  expectColour(ColourPalette(Kind::kCoolWarm).at(0.5), {0.865, 0.865, 0.865}, 2e-3);
  expectColour(ColourPalette(Kind::kCoolWarm).at(1), {0.705673158, 0.01555616, 0.150232812});
}

TEST(ColourPaletteTest, InterpolatesBetweenTheEntriesOfATable) {
  const ColourPalette viridis(Kind::kViridis);
  const Rgb low = viridis.at(10 / 255.0);
  const Rgb high = viridis.at(11 / 255.0);
  expectColour(viridis.at(10.25 / 255),
               {0.75 * low[0] + 0.25 * high[0], 0.75 * low[1] + 0.25 * high[1],
                0.75 * low[2] + 0.25 * high[2]},
               1e-12);
}

TEST(ColourPaletteTest, GreyGoesFromBlackToWhite) {
  expectColour(ColourPalette(Kind::kGrey).at(0), {0, 0, 0});
  expectColour(ColourPalette(Kind::kGrey).at(0.3), {0.3, 0.3, 0.3});
  expectColour(ColourPalette(Kind::kGrey).at(1), {1, 1, 1});
}

TEST(ColourPaletteTest, OwnColoursAreEquallySpaced) {
  const ColourPalette own({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  EXPECT_EQ(own.kind(), Kind::kOwn);
  expectColour(own.at(0), {1, 0, 0});
  expectColour(own.at(0.25), {0.5, 0.5, 0});
  expectColour(own.at(0.5), {0, 1, 0});
  expectColour(own.at(0.9), {0, 0.2, 0.8});
  expectColour(own.at(1), {0, 0, 1});
}

TEST(ColourPaletteTest, EndsGoOn) {
  for (const Kind kind : {Kind::kViridis, Kind::kGrey, Kind::kCoolWarm}) {
    EXPECT_EQ(ColourPalette(kind).at(-5), ColourPalette(kind).at(0));
    EXPECT_EQ(ColourPalette(kind).at(7), ColourPalette(kind).at(1));
  }
}

ColourScale scaleOf(double first, double last) {
  ColourScale scale;
  scale.palette = ColourPalette(Kind::kGrey);
  scale.range = {first, last};
  return scale;
}

double greyOf(const ColourScale& scale, double value) { return scale.colourOf(value)[0]; }

TEST(ColourScaleTest, IsLinearFromMinimumToMaximum) {
  const ColourScale scale = scaleOf(10, 20);
  EXPECT_DOUBLE_EQ(greyOf(scale, 10), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 12.5), 0.25);
  EXPECT_DOUBLE_EQ(greyOf(scale, 20), 1);
  EXPECT_DOUBLE_EQ(greyOf(scale, -kInfinity), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 1e300), 1);
  EXPECT_DOUBLE_EQ(scale.colourOf(12)[3], 1);
}

TEST(ColourScaleTest, MayBeReversed) {
  const ColourScale scale = scaleOf(20, 10);
  EXPECT_DOUBLE_EQ(greyOf(scale, 20), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 12.5), 0.75);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0), 1);
}

TEST(ColourScaleTest, KnowsTheLargestNumbers) {
  const ColourScale scale = scaleOf(-1.7e308, 1.7e308);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0), 0.5);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.85e308), 0.75);
}

TEST(ColourScaleTest, ARangeOfOneValueHasTwoSides) {
  const ColourScale scale = scaleOf(3, 3);
  EXPECT_DOUBLE_EQ(greyOf(scale, 2), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 3), 0.5);
  EXPECT_DOUBLE_EQ(greyOf(scale, 4), 1);
}

TEST(ColourScaleTest, BandsShowThePaletteAtEqualSteps) {
  ColourScale scale = scaleOf(0, 1);
  scale.bands = 5;
  EXPECT_DOUBLE_EQ(greyOf(scale, 0), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.19), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.21), 0.25);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.5), 0.5);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.79), 0.75);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.81), 1);
  EXPECT_DOUBLE_EQ(greyOf(scale, 1), 1);
  EXPECT_DOUBLE_EQ(greyOf(scale, -9), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 9), 1);
  scale.bands = 1;
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.9), 0.5);
}

TEST(ColourScaleTest, LogarithmsAreEquallySpaced) {
  ColourScale scale = scaleOf(1, 10000);
  scale.isLogarithmic = true;
  EXPECT_DOUBLE_EQ(greyOf(scale, 1), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, 10), 0.25);
  EXPECT_DOUBLE_EQ(greyOf(scale, 1000), 0.75);
  EXPECT_DOUBLE_EQ(greyOf(scale, 0.1), 0);
  EXPECT_DOUBLE_EQ(greyOf(scale, kInfinity), 1);
  EXPECT_NEAR(scale.valueAt(0.5).value(), 100, 1e-9);
}

TEST(ColourScaleTest, WhatItCannotShowHasTheAbsentColour) {
  ColourScale scale = scaleOf(1, 100);
  scale.absent = {1, 0, 1, 0.25};
  EXPECT_EQ(scale.colourOf(kNaN), scale.absent);
  EXPECT_NE(scale.colourOf(0), scale.absent);
  EXPECT_NE(scale.colourOf(-1), scale.absent);
  scale.isLogarithmic = true;
  for (const double value : {kNaN, 0.0, -0.0, -1.0, -kInfinity}) {
    EXPECT_EQ(scale.colourOf(value), scale.absent) << value;
  }
  EXPECT_NE(scale.colourOf(1e-300), scale.absent);
  scale.range = {0, 100};
  EXPECT_EQ(scale.colourOf(10), scale.absent);  // no logarithm at the end of the scale
  EXPECT_FALSE(scale.valueAt(0.5));
}

TEST(ScaleRangeTest, SpansTheFiniteValues) {
  ValueExtent values;
  for (const double value : {3.0, kNaN, -2.0, kInfinity, 7.0, -kInfinity}) {
    values.include(value);
  }
  EXPECT_EQ(rangeOf(values, false), (ScaleRange{-2, 7}));
  EXPECT_EQ(rangeOf(values, true), (ScaleRange{3, 7}));
  ValueExtent more;
  more.include(0.5);
  more.include(11.0);
  values.include(more);
  EXPECT_EQ(rangeOf(values, false), (ScaleRange{-2, 11}));
  EXPECT_EQ(rangeOf(values, true), (ScaleRange{0.5, 11}));
}

TEST(ScaleRangeTest, OfNothingAndOfOneValue) {
  ValueExtent values;
  EXPECT_EQ(rangeOf(values, false), (ScaleRange{0, 1}));
  EXPECT_EQ(rangeOf(values, true), (ScaleRange{1, 10}));
  values.include(-4.0);
  EXPECT_EQ(rangeOf(values, false), (ScaleRange{-6, -2}));
  EXPECT_EQ(rangeOf(values, true), (ScaleRange{1, 10}));
  ValueExtent zero;
  zero.include(0.0);
  EXPECT_EQ(rangeOf(zero, false), (ScaleRange{-0.5, 0.5}));
  ValueExtent greatest;
  greatest.include(std::numeric_limits<double>::max());
  EXPECT_TRUE(std::isfinite(rangeOf(greatest, false).last));
}

/// The colour that a texture gives at a place, as OpenGL takes it.
double texelGrey(const ScaleTexels& texels, double place) {
  const double position =
      ScaleTexels::kColumns * static_cast<double>(texels.coordinateOf(place, 0)[0]);
  const auto at = [&](double index) {
    const double held = std::clamp(index, 0.0, ScaleTexels::kColumns - 1.0);
    return texels.rgba()[4 * static_cast<std::size_t>(held)] / 255.0;
  };
  if (!texels.isSmooth()) {
    return at(std::floor(position));
  }
  const double below = std::floor(position - 0.5);
  const double part = position - 0.5 - below;
  return (1 - part) * at(below) + part * at(below + 1);
}

TEST(ScaleTexelsTest, AreTheScale) {
  for (const int bands : {0, 1, 2, 7, ColourScale::kMostBands}) {
    ColourScale scale = scaleOf(0, 1);
    scale.bands = bands;
    const ScaleTexels texels(scale);
    EXPECT_EQ(texels.rgba().size(), 4U * ScaleTexels::kColumns);
    for (int i = -100; i <= 1100; ++i) {
      const double place = (i + 0.0123) / 1000;
      EXPECT_NEAR(texelGrey(texels, place), scale.colourAtPlace(place)[0], 0.6 / 255)
          << bands << " bands at " << place;
    }
  }
}

TEST(ScaleTexelsTest, InterpolateOwnColoursToTheLevel) {
  ColourScale scale = scaleOf(0, 1);
  scale.palette = ColourPalette({{0, 0, 0}, {1, 1, 1}, {0, 0, 0}, {1, 1, 1}, {0.5, 0, 0}});
  const ScaleTexels texels(scale);
  for (int i = 0; i <= 1000; ++i) {
    EXPECT_NEAR(texelGrey(texels, i / 1000.0), scale.colourAtPlace(i / 1000.0)[0], 1.01 / 255) << i;
  }
}

TEST(ScaleTexelsTest, CoordinatesOfInfinitePlacesAreFinite) {
  const ScaleTexels texels{ColourScale()};
  EXPECT_TRUE(std::isfinite(texels.coordinateOf(kInfinity, 0)[0]));
  EXPECT_TRUE(std::isfinite(texels.coordinateOf(-kInfinity, 0)[0]));
}

TEST(ScaleTexelsTest, ALogarithmicScaleHasARowForEveryGreatestValue) {
  for (const auto& [least, greatest] : {std::pair(1.0, 10.0), std::pair(1e-300, 1e300),
                                        std::pair(3.0, 3.1), std::pair(1e-12, 1e12)}) {
    ColourScale scale = scaleOf(least, greatest);
    scale.isLogarithmic = true;
    const ScaleTexels texels(scale);
    EXPECT_EQ(texels.rgba().size(),
              std::size_t{4} * ScaleTexels::kColumns * static_cast<std::size_t>(texels.rows()));
    for (double value = greatest; value > greatest * 1e-100 && value > least; value /= 1.7) {
      const double along = static_cast<double>(texels.coordinateOf(value, texels.rowFor(value))[0]);
      EXPECT_LE(along, 1) << value << " of " << greatest;
      EXPECT_GT(along, 0.2499) << value << " of " << greatest;
    }
  }
}

}  // namespace
}  // namespace zyn::test
