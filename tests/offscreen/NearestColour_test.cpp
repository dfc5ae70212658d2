#include "offscreen/NearestColour.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace zyn {
namespace {

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

}  // namespace
}  // namespace zyn
