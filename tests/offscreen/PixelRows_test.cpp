#include "offscreen/PixelRows.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace zyn {
namespace {

class PackRowTest : public testing::TestWithParam<int> {};

TEST_P(PackRowTest, DropsEveryFourthByteAndWritesNoFurther) {
  const int pixels = GetParam();
  std::vector<std::uint8_t> from;
  std::vector<std::uint8_t> expected;
  for (int i = 0; i < pixels; ++i) {
    for (int component = 0; component < 3; ++component) {
      const auto byte = static_cast<std::uint8_t>(7 * i + 50 * component + 1);
      from.push_back(byte);
      expected.push_back(byte);
    }
    from.push_back(0xAA);
  }
  std::vector<std::uint8_t> to(expected.size());
  packRow(from.data(), to.data(), pixels);
  EXPECT_EQ(to, expected);
}

INSTANTIATE_TEST_SUITE_P(Widths, PackRowTest, testing::Values(0, 1, 2, 3, 4, 5, 7, 8, 641));

}  // namespace
}  // namespace zyn
