#include "image/IndexedPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace zyn {
namespace {

/// A picture whose colours are a function of the pixel, in rows padded to four bytes.
class Picture {
 public:
  Picture(int width, int height, const std::function<Colour24(int x, int y)>& colour)
      : width_(width), height_(height), rowBytes_((width * 3 + 3) / 4 * 4) {
    bytes_.resize(static_cast<std::size_t>(rowBytes_ * height), 0xCD);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        std::uint8_t* const pixel = &bytes_[static_cast<std::size_t>(rowBytes_ * y + 3 * x)];
        const Colour24 wanted = colour(x, y);
        pixel[0] = wanted.blue;
        pixel[1] = wanted.green;
        pixel[2] = wanted.red;
      }
    }
  }

  PixelView view() const { return {bytes_.data(), width_, height_, rowBytes_}; }

 private:
  int width_;
  int height_;
  std::int64_t rowBytes_;
  std::vector<std::uint8_t> bytes_;
};

/// What an indexed picture gives, rows from the bottom as those of the picture.
class Shown {
 public:
  explicit Shown(const PixelView& picture) : indexed_(picture) {
    indexed_.giveRows([this](std::span<const std::uint8_t> indices) {
      rows_.insert(rows_.begin(), {indices.begin(), indices.end()});
    });
  }

  const Palette& palette() const { return indexed_.palette(); }
  const std::vector<std::vector<std::uint8_t>>& rows() const { return rows_; }
  Colour24 at(int x, int y) const {
    return palette()[rows_[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]];
  }

 private:
  IndexedPicture indexed_;
  std::vector<std::vector<std::uint8_t>> rows_;
};

Colour24 grey(int value) {
  const auto byte = static_cast<std::uint8_t>(value);
  return {byte, byte, byte};
}

TEST(IndexedPictureTest, APictureOf256ColoursKeepsThem) {
  const Picture picture(33, 32, [](int x, int y) {
    return Colour24{static_cast<std::uint8_t>(17 * (x % 16)), static_cast<std::uint8_t>(y / 2 * 3),
                    200};
  });
  const Shown indexed(picture.view());
  EXPECT_EQ(indexed.palette().size(), 256U);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 33; ++x) {
      ASSERT_EQ(indexed.at(x, y), colourAt(picture.view().row(y), x));
    }
  }
  EXPECT_EQ(indexed.rows().size(), 32U);
  EXPECT_EQ(indexed.rows()[0].size(), 33U);
}

TEST(IndexedPictureTest, OneColourGivesAPaletteOfOne) {
  const Picture picture(1, 1, [](int, int) { return Colour24{1, 2, 3}; });
  const Shown indexed(picture.view());
  EXPECT_EQ(indexed.palette(), (Palette{{1, 2, 3}}));
  EXPECT_EQ(indexed.rows(), (std::vector<std::vector<std::uint8_t>>{{0}}));
}

TEST(IndexedPictureTest, AnEmptyPictureDoesNoHarm) {
  const Shown indexed({nullptr, 0, 0, 0});
  EXPECT_TRUE(indexed.palette().empty());
  EXPECT_TRUE(indexed.rows().empty());
}

/// Something like a rendered part: a lit ball before a gradient, with a flat bar.
Colour24 rendered(int x, int y) {
  if (y < 20) return {255, 128, 0};
  const double dx = (x - 150) / 90.0;
  const double dy = (y - 120) / 90.0;
  const double inside = 1 - dx * dx - dy * dy;
  if (inside < 0)
    return {static_cast<std::uint8_t>(255 - y), static_cast<std::uint8_t>(255 - y / 2), 255};
  const double light = std::clamp(0.8 * std::sqrt(inside) + 0.3 * dx, 0.0, 1.0);
  return {static_cast<std::uint8_t>(90 * light), static_cast<std::uint8_t>(220 * light),
          static_cast<std::uint8_t>(120 * light)};
}

TEST(IndexedPictureTest, ManyColoursComeCloseAndFlatPartsStayFlat) {
  const Picture picture(301, 240, rendered);
  const Shown indexed(picture.view());
  ASSERT_EQ(indexed.palette().size(), 256U);
  double squares = 0;
  for (int y = 0; y < 240; ++y) {
    for (int x = 0; x < 301; ++x) {
      const Colour24 wanted = rendered(x, y);
      const Colour24 shown = indexed.at(x, y);
      if (y < 19) {
        ASSERT_EQ(shown, wanted);
      }
      squares += std::pow(wanted.red - shown.red, 2) + std::pow(wanted.green - shown.green, 2) +
                 std::pow(wanted.blue - shown.blue, 2);
    }
  }
  EXPECT_LT(std::sqrt(squares / (3.0 * 301 * 240)), 2.0) << "of 255, root mean square";
}

TEST(IndexedPictureTest, GradientsOfManyColoursShowNoBands) {
  // A pixel may be off by much, the mean of a small square may not.
  constexpr int kSide = 256;
  constexpr int kSquare = 8;
  const Picture picture(kSide, kSide, [](int x, int y) {
    return Colour24{grey(x).red, grey(y).green, grey((x + y) / 2).blue};
  });
  const Shown indexed(picture.view());
  double sum = 0;
  int squares = 0;
  for (int top = kSquare; top < kSide - kSquare; top += kSquare) {
    for (int left = kSquare; left < kSide - kSquare; left += kSquare) {
      double difference = 0;
      for (int y = top; y < top + kSquare; ++y) {
        for (int x = left; x < left + kSquare; ++x) {
          difference += indexed.at(x, y).green - y;
        }
      }
      sum += std::abs(difference) / (kSquare * kSquare);
      ++squares;
    }
  }
  EXPECT_LT(sum / squares, 0.6);
}

TEST(IndexedPictureTest, TheSamePictureGivesTheSameResult) {
  const Picture picture(60, 40, [](int x, int y) {
    return Colour24{static_cast<std::uint8_t>(x * y), static_cast<std::uint8_t>(x), grey(y).blue};
  });
  const Shown first(picture.view());
  const Shown second(picture.view());
  EXPECT_EQ(first.palette(), second.palette());
  EXPECT_EQ(first.rows(), second.rows());
}

}  // namespace
}  // namespace zyn
