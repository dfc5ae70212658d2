#include "core/Dib.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace zyn {
namespace {

TEST(BmpFileTest, RowsArePaddedToFourBytes) {
  EXPECT_EQ(dibRowBytes(1, 24), 4);
  EXPECT_EQ(dibRowBytes(100, 24), 300);
  EXPECT_EQ(dibRowBytes(101, 24), 304);
  EXPECT_EQ(dibRowBytes(641, 24), 1924);
  EXPECT_EQ(dibRowBytes(5, 8), 8);
  EXPECT_EQ(dibRowBytes(641, 32), 2564);
}

TEST(BmpFileTest, HeaderOf100By10) {
  const std::array<std::uint8_t, kBmpHeaderBytes> expected = {
      'B',  'M',                      // type
      0xEE, 0x0B, 0,  0,              // 3054 bytes in the file
      0,    0,    0,  0,              // reserved
      54,   0,    0,  0,              // where the pixels are
      40,   0,    0,  0,              // size of the information header
      100,  0,    0,  0,              // width
      10,   0,    0,  0,              // height, rows from the bottom
      1,    0,    24, 0,              // planes, bits a pixel
      0,    0,    0,  0,              // no compression
      0xB8, 0x0B, 0,  0,              // 3000 bytes of pixels
      0,    0,    0,  0, 0, 0, 0, 0,  // no resolution
      0,    0,    0,  0, 0, 0, 0, 0,  // no palette
  };
  EXPECT_EQ(bmpHeader(100, 10), expected);
}

TEST(BmpFileTest, PaddingCountsInTheHeader) {
  const auto header = bmpHeader(101, 10);
  const auto fileBytes = header[2] | header[3] << 8;
  const auto imageBytes = header[34] | header[35] << 8;
  EXPECT_EQ(fileBytes, 54 + 3040);
  EXPECT_EQ(imageBytes, 3040);
}

TEST(BmpFileTest, LargeSizesFillAllBytes) {
  const auto header = bmpHeader(26000, 27000);  // 2106000000 bytes of pixels, 0x7D870280
  EXPECT_EQ(header[34], 0x80);
  EXPECT_EQ(header[35], 0x02);
  EXPECT_EQ(header[36], 0x87);
  EXPECT_EQ(header[37], 0x7D);
}

TEST(BmpFileTest, SizesMustHavePixelsAndFitTheFormat) {
  constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
  EXPECT_TRUE(isBmpSize(1, 1));
  EXPECT_TRUE(isBmpSize(26000, 27000));
  EXPECT_FALSE(isBmpSize(0, 0));
  EXPECT_FALSE(isBmpSize(0, 10));
  EXPECT_FALSE(isBmpSize(10, 0));
  EXPECT_FALSE(isBmpSize(-10, 10));
  EXPECT_FALSE(isBmpSize(10, -10));
  EXPECT_FALSE(isBmpSize(30000, 30000));
  EXPECT_FALSE(isBmpSize(std::numeric_limits<std::int32_t>::max(), 1));
  EXPECT_FALSE(isBmpSize(kLargest, kLargest));
  EXPECT_FALSE(isBmpSize(std::numeric_limits<std::int64_t>::min(), 1));
}

TEST(BmpFileTest, TheLimitIsExact) {
  constexpr std::int64_t kMostRows = (0x7FFFFFFF - kBmpHeaderBytes) / 4;  // of one pixel
  EXPECT_TRUE(isBmpSize(1, kMostRows));
  EXPECT_FALSE(isBmpSize(1, kMostRows + 1));
}

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

// Runs of every length at every place, up to the end of a row: nothing behind it is read.
TEST(RunEndTest, RunsEndWhereTheColourChanges) {
  for (int width = 1; width < 30; ++width) {
    for (int end = 1; end <= width; ++end) {
      for (std::size_t component = 0; component < 3; ++component) {
        std::vector<std::uint8_t> row(3 * static_cast<std::size_t>(width), 7);
        if (end < width) row[3 * static_cast<std::size_t>(end) + component] = 8;
        for (int x = 0; x < end; ++x) ASSERT_EQ(runEnd(row.data(), x, width), end);
      }
    }
  }
}

}  // namespace
}  // namespace zyn
