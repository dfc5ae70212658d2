#include "plot/PlotMap.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using Pixel = std::array<int, 4>;

/// Two rows and three columns in a plot of 60 x 40 pixels, whose axes they fill.
class PlotMapTest : public testing::Test {
 protected:
  PlotMapTest() {
    map.values = {0, 1, 2, 3, 4, 5};
    map.rows = 2;
    map.columns = 3;
    map.x1 = 3;
    map.y1 = 2;
    scale.palette = ColourPalette(ColourPalette::kGrey);
    scale.range = {0, 5};
    scale.absent = {1, 0, 0, 1};
    place.area = {10, 70, 5, 45};
    place.x = {AxisKind::kLinear, 0, 3, false, 10, 70};
    place.y = {AxisKind::kLinear, 0, 2, false, 5, 45};
  }

  DrawnImage drawn() {
    DrawnLayer layer;
    drawMap(map, scale, scaleRevision, place, layer);
    return layer.items.empty() ? DrawnImage{} : std::get<DrawnImage>(layer.items.front());
  }

  /// In a pixel of the picture.
  static Pixel at(const DrawnImage& image, double x, double y) {
    Pixel pixel{};
    const auto column = static_cast<std::size_t>(x - image.box.left);
    const auto row = static_cast<std::size_t>(y - image.box.bottom);
    for (std::size_t i = 0; i < 4; ++i) {
      const auto width = static_cast<std::size_t>(image.image->width);
      pixel[i] = image.image->pixels[4 * (row * width + column) + i];
    }
    return pixel;
  }

  static Pixel grey(double part) {
    const auto level = static_cast<int>(std::lround(255 * part));
    return {level, level, level, 255};
  }

  PlotMap map;
  ColourScale scale;
  std::uint64_t scaleRevision = 1;
  PlotPlace place;
};

TEST_F(PlotMapTest, CellsHaveTheColoursOfTheirValues) {
  const DrawnImage image = drawn();
  EXPECT_EQ(image.box, place.area);
  EXPECT_EQ(at(image, 10, 5), grey(0));
  EXPECT_EQ(at(image, 29, 24), grey(0));
  EXPECT_EQ(at(image, 30, 24), grey(0.2));
  EXPECT_EQ(at(image, 69, 5), grey(0.4));
  EXPECT_EQ(at(image, 10, 25), grey(0.6));
  EXPECT_EQ(at(image, 69, 44), grey(1));
}

TEST_F(PlotMapTest, AxesMayBeInvertedAndEdgesToo) {
  place.x.isInverted = true;
  std::swap(map.y0, map.y1);
  const DrawnImage image = drawn();
  EXPECT_EQ(at(image, 69, 44), grey(0));
  EXPECT_EQ(at(image, 10, 5), grey(1));
}

TEST_F(PlotMapTest, WhatIsNoNumberIsAbsent) {
  map.values[1] = kNaN;
  EXPECT_EQ(at(drawn(), 40, 10), (Pixel{255, 0, 0, 255}));
  map.isInterpolated = true;
  ++map.revision;
  const DrawnImage image = drawn();
  EXPECT_EQ(at(image, 31, 10), (Pixel{255, 0, 0, 255}));
  EXPECT_EQ(at(image, 48, 10), (Pixel{255, 0, 0, 255}));
  EXPECT_EQ(at(image, 29, 6), grey(0)) << "a neighbour keeps its own";
}

TEST_F(PlotMapTest, ValuesAreInterpolatedBetweenTheMiddles) {
  map.isInterpolated = true;
  scale.palette =
      ColourPalette(std::vector<ColourPalette::Colour>{{0, 0, 0}, {1, 1, 1}, {0, 0, 0}});
  scale.range = {0, 2};
  const DrawnImage image = drawn();
  EXPECT_EQ(at(image, 12, 6), grey(0)) << "beyond the middle of the first cell";
  EXPECT_NEAR(at(image, 40, 6)[0], 255, 8) << "the middle of the second one";
  EXPECT_NEAR(at(image, 30, 6)[0], 128, 8);
  EXPECT_NEAR(at(image, 50, 6)[0], 128, 8);
  EXPECT_NEAR(at(image, 40, 24)[0], 0, 8) << "2.5 is above the scale";
}

TEST_F(PlotMapTest, BandsAndLogarithmsAreThoseOfTheScale) {
  map.values = {1, 10, 100, 0, -1, 1000};
  scale.isLogarithmic = true;
  scale.range = {1, 1000};
  const DrawnImage image = drawn();
  EXPECT_NEAR(at(image, 40, 10)[0], 85, 1);
  EXPECT_EQ(at(image, 60, 40), grey(1));
  EXPECT_EQ(at(image, 20, 40), (Pixel{255, 0, 0, 255}));
  scale = {scale.palette, {0, 5}, 2, false, scale.absent};
  map.values = {0, 1, 2, 3, 4, 5};
  ++map.revision;
  EXPECT_EQ(at(drawn(), 60, 10), grey(0));
  EXPECT_EQ(at(drawn(), 20, 40), grey(1));
}

TEST_F(PlotMapTest, OnALogarithmicAxisEdgesAreWhereTheAxisShowsThem) {
  place.x = {AxisKind::kLog10, 0.1, 100, false, 10, 70};
  map.x1 = 3;
  const DrawnImage image = drawn();
  const double edge = place.x.pixelOf(1);
  EXPECT_EQ(at(image, std::floor(edge) - 1, 10), grey(0));
  EXPECT_EQ(at(image, std::ceil(edge), 10), grey(0.2));
  EXPECT_EQ(image.box.left, 10);
  EXPECT_EQ(image.box.right, std::ceil(place.x.pixelOf(3)));
}

TEST_F(PlotMapTest, MovedByWholePixelsItIsTheSamePicture) {
  const auto pan = [&](double pixels) {
    place.x.min = -pixels * 3 / 60;
    place.x.max = 3 - pixels * 3 / 60;
  };
  drawn();
  pan(7);  // what lies around is made with the first movement
  const DrawnImage first = drawn();
  pan(20);
  const DrawnImage second = drawn();
  EXPECT_EQ(second.image.get(), first.image.get());
  EXPECT_EQ(second.box.left, first.box.left + 13);
  map.picture = {};
  const DrawnImage fresh = drawn();
  EXPECT_NE(fresh.image.get(), first.image.get());
  for (double x = 30; x < 70; ++x) {
    EXPECT_EQ(at(second, x, 10), at(fresh, x, 10)) << x;
  }
}

TEST_F(PlotMapTest, IsMadeAnewForOtherValuesScalesAndSizes) {
  const auto image = [&] { return drawn().image; };
  auto before = image();
  EXPECT_EQ(image(), before);
  ++map.revision;
  EXPECT_NE(image(), before);
  before = image();
  ++scaleRevision;
  EXPECT_NE(image(), before);
  before = image();
  place.y.max = 2.5;
  EXPECT_NE(image(), before);
}

TEST_F(PlotMapTest, OutsideOfTheAxesNothingIsDrawn) {
  place.x.min = 5;
  place.x.max = 8;
  EXPECT_FALSE(drawn().image);
  map.isVisible = false;
  place.x.min = 0;
  EXPECT_FALSE(drawn().image);
}

TEST_F(PlotMapTest, AxesHaveToShowItsEdges) {
  EXPECT_EQ(extentOf(map, {}), (Box3{0, 3, 0, 2, 0, 0}));
  EXPECT_EQ(extentOf(map, {true, false}), (Box3{0, std::log10(3.0), 0, 2, 0, 0}))
      << "from the first edge above 0";
  map.x0 = -3;
  map.x1 = 0;
  EXPECT_FALSE(extentOf(map, {true, false}));
  EXPECT_EQ(valuesOf(map).greatest, 5);
}

}  // namespace
}  // namespace zyn
