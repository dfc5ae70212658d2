#include "objects/text/FontSize.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

constexpr double kResolution = 72.0;
constexpr double kPixel = 0.004;
constexpr double kExact = 1e-12;

double pixels(double value, std::int32_t unit, double resolution = kResolution) {
  return FontSize{value, unit}.inPixels(kPixel, resolution);
}

TEST(FontSizeTest, TwentyPixelsAtFirst) {
  EXPECT_EQ(FontSize().inPixels(kPixel, kResolution), 20);
  EXPECT_FALSE(FontSize().isInModel());
}

TEST(FontSizeTest, LengthsOnPaperFollowTheResolution) {
  EXPECT_NEAR(pixels(25.4, FontSize::Millimetre), 72, kExact);
  EXPECT_NEAR(pixels(5, FontSize::Millimetre), 5 / 25.4 * 72, kExact);
  EXPECT_NEAR(pixels(0.5, FontSize::Inch), 36, kExact);
  EXPECT_NEAR(pixels(18, FontSize::Point), 18, kExact);
  EXPECT_NEAR(pixels(25.4, FontSize::Millimetre, 300), 300, kExact);
  EXPECT_NEAR(pixels(0.5, FontSize::Inch, 300), 150, kExact);
  EXPECT_NEAR(pixels(18, FontSize::Point, 144), 36, kExact);
  EXPECT_EQ(pixels(18, FontSize::Pixel, 144), 18);
}

TEST(FontSizeTest, LengthsInTheModelFollowTheView) {
  EXPECT_NEAR(pixels(80, FontSize::ModelMillimetre), 20, kExact);
  EXPECT_NEAR(pixels(4, FontSize::ModelInch), 25.4, kExact);
  EXPECT_NEAR(pixels(0.1, FontSize::Model), 25, kExact);
}

TEST(FontSizeTest, OnlyTheLastThreeUnitsAreInTheModel) {
  for (const std::int32_t unit :
       {FontSize::Pixel, FontSize::Millimetre, FontSize::Inch, FontSize::Point}) {
    EXPECT_FALSE((FontSize{1, unit}.isInModel())) << unit;
  }
  for (const std::int32_t unit :
       {FontSize::ModelMillimetre, FontSize::ModelInch, FontSize::Model}) {
    EXPECT_TRUE((FontSize{1, unit}.isInModel())) << unit;
  }
}

TEST(FontSizeTest, AnyOtherUnitCountsAsPixels) {
  for (const std::int32_t unit : {-1, 7, 1000, -2147483647}) {
    EXPECT_EQ(pixels(33.5, unit), 33.5) << unit;
    EXPECT_FALSE((FontSize{1, unit}.isInModel())) << unit;
  }
}

}  // namespace
}  // namespace zyn
