#include "image/Palette.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zyn {
namespace {

TEST(ColourHistogramTest, CountsColoursOneByOne) {
  // Two rows of three pixels in blue, green, red order, with padding that must not count.
  const std::vector<std::uint8_t> bytes = {1, 2, 3, 1, 2, 3, 9, 9, 9, 77, 77, 77,
                                           9, 9, 9, 1, 2, 3, 1, 2, 3, 88, 88, 88};
  const ColourHistogram histogram({bytes.data(), 3, 2, 12});
  EXPECT_TRUE(histogram.isExact());
  ASSERT_EQ(histogram.groups().size(), 2U);
  EXPECT_EQ(histogram.groups()[0].count, 4U);
  EXPECT_EQ(histogram.groups()[0].red, 12U);
  EXPECT_EQ(histogram.groups()[0].green, 8U);
  EXPECT_EQ(histogram.groups()[0].blue, 4U);
  EXPECT_EQ(histogram.groups()[1].count, 2U);
}

/// A picture whose every pixel has a colour of its own, spread over the whole colour space.
std::vector<std::uint8_t> distinctColours(std::uint32_t count) {
  std::vector<std::uint8_t> bytes;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t colour = i * 0x9E3779U & 0xFFFFFF;
    for (int shift = 0; shift < 24; shift += 8) {
      bytes.push_back(static_cast<std::uint8_t>(colour >> shift));
    }
  }
  return bytes;
}

TEST(ColourHistogramTest, StaysExactUpToItsLimit) {
  const int count = ColourHistogram::kMostGroups;
  const auto bytes = distinctColours(static_cast<std::uint32_t>(count));
  const ColourHistogram histogram({bytes.data(), count, 1, 3 * count});
  EXPECT_TRUE(histogram.isExact());
  EXPECT_EQ(histogram.groups().size(), ColourHistogram::kMostGroups);
}

TEST(ColourHistogramTest, GroupsNearColoursBeyondItsLimitAndLosesNone) {
  const int count = 1000000;
  const auto bytes = distinctColours(static_cast<std::uint32_t>(count));
  const ColourHistogram histogram({bytes.data(), count, 1, std::int64_t{3} * count});
  EXPECT_FALSE(histogram.isExact());
  EXPECT_LE(histogram.groups().size(), ColourHistogram::kMostGroups);
  EXPECT_GT(histogram.groups().size(), 1000U);
  std::uint64_t pixels = 0;
  std::uint64_t red = 0;
  for (const ColourHistogram::Group& group : histogram.groups()) {
    pixels += group.count;
    red += group.red;
  }
  std::uint64_t expectedRed = 0;
  for (std::size_t i = 2; i < bytes.size(); i += 3) expectedRed += bytes[i];
  EXPECT_EQ(pixels, static_cast<std::uint64_t>(count));
  EXPECT_EQ(red, expectedRed);
}

/// The same numbers on every system.
class Random {
 public:
  std::uint8_t byte() {
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<std::uint8_t>(state_ >> 24);
  }
  Colour24 colour() { return {byte(), byte(), byte()}; }

 private:
  std::uint32_t state_ = 12345;
};

int distance(Colour24 a, Colour24 b) {
  const int red = a.red - b.red;
  const int green = a.green - b.green;
  const int blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}

std::size_t bySearchingAll(const std::vector<Colour24>& palette, Colour24 colour) {
  std::size_t nearest = 0;
  for (std::size_t i = 1; i < palette.size(); ++i) {
    if (distance(palette[i], colour) < distance(palette[nearest], colour)) nearest = i;
  }
  return nearest;
}

class NearestColourTest : public testing::TestWithParam<int> {};

TEST_P(NearestColourTest, AgreesWithSearchingTheWholePalette) {
  Random random;
  std::vector<Colour24> palette;
  for (int i = 0; i < GetParam(); ++i) palette.push_back(random.colour());
  NearestColour nearest(palette);
  for (int i = 0; i < 20000; ++i) {
    const Colour24 colour = random.colour();
    ASSERT_EQ(nearest.indexOf(colour), bySearchingAll(palette, colour));
  }
}

INSTANTIATE_TEST_SUITE_P(Palettes, NearestColourTest, testing::Values(1, 2, 17, 256));

TEST(NearestColourTest, OfEqualColoursTheFirstCounts) {
  NearestColour nearest({{9, 9, 9}, {10, 10, 10}, {10, 10, 10}});
  EXPECT_EQ(nearest.indexOf({10, 10, 10}), 1);
  EXPECT_EQ(nearest.indexOf({255, 255, 255}), 1);
}

TEST(NearColourTest, IsHardlyFartherThanTheNearest) {
  Random random;
  std::vector<Colour24> palette;
  for (int i = 0; i < 200; ++i) palette.push_back(random.colour());
  NearColour near(palette);
  for (int i = 0; i < 20000; ++i) {
    const Colour24 colour = random.colour();
    const double least = std::sqrt(distance(palette[bySearchingAll(palette, colour)], colour));
    ASSERT_LE(std::sqrt(distance(palette[near.indexOf(colour)], colour)),
              least + 2 * std::sqrt(12));
  }
}

TEST(NearColourTest, TellsThePaletteItself) {
  NearColour near({{0, 0, 0}, {255, 255, 255}, {131, 128, 128}, {125, 127, 127}, {255, 255, 255}});
  EXPECT_EQ(near.indexOf({0, 0, 0}), 0);
  EXPECT_EQ(near.indexOf({255, 255, 255}), 1);
  EXPECT_EQ(near.indexOf({131, 128, 128}), 2);
  EXPECT_EQ(near.indexOf({125, 127, 127}), 3);
}

}  // namespace
}  // namespace zyn
