#include "view/Colour3.h"

#include <gtest/gtest.h>

#include <limits>

namespace zyn {
namespace {

TEST(GradientColour, TakesUnitComponentsAsTheyAre) {
  EXPECT_EQ(gradientColour(0.5F, 0.25F, 1.0F), (Colour3{0.5F, 0.25F, 1.0F}));
}

TEST(GradientColour, DividesAllComponentsAsSoonAsOneExceedsOne) {
  EXPECT_EQ(gradientColour(255.0F, 128.0F, 0.0F), (Colour3{1.0F, 128.0F / 255.0F, 0.0F}));
  EXPECT_EQ(gradientColour(0.5F, 200.0F, 0.5F),
            (Colour3{0.5F / 255.0F, 200.0F / 255.0F, 0.5F / 255.0F}));
}

TEST(GradientColour, RefusesWhatIsOutOfRange) {
  EXPECT_FALSE(gradientColour(300.0F, 0.0F, 0.0F));
  EXPECT_FALSE(gradientColour(-1.0F, 0.0F, 0.0F));
  EXPECT_FALSE(gradientColour(200.0F, -0.5F, 0.0F));
  EXPECT_FALSE(gradientColour(0.0F, std::numeric_limits<float>::quiet_NaN(), 0.0F));
}

}  // namespace
}  // namespace zyn
