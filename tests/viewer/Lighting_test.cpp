#include "viewer/Lighting.h"

#include <gtest/gtest.h>

#include <numbers>

namespace zyn::viewer {
namespace {

TEST(ViewerLightingTest, AmbientValuesAreInTheOrderOfTheProperty) {
  EXPECT_EQ(lightValues(AmbientLight{true, 0.25}), (std::array{1.0, 1.0, 1.0, 1.0, 0.25}));
  EXPECT_EQ(lightValues(AmbientLight{false, 0.25})[0], 0.0);
}

TEST(ViewerLightingTest, DirectionalValuesAreInTheOrderOfTheProperty) {
  const auto values = lightValues(DirectionalLight{true, 0.5, -90, 45});
  EXPECT_EQ(values[0], 1.0);
  EXPECT_EQ(values[4], 0.0);
  EXPECT_EQ(values[5], 0.5);
  EXPECT_DOUBLE_EQ(values[6], 0.2);
  EXPECT_DOUBLE_EQ(values[7], -std::numbers::pi / 2);
  EXPECT_DOUBLE_EQ(values[8], std::numbers::pi / 4);
  EXPECT_EQ(lightValues(DirectionalLight{.on = false})[0], 0.0);
}

TEST(ViewerLightingTest, PresetsDiffer) {
  const LightPreset presets[] = {LightPreset::kStudio, LightPreset::kHeadLight, LightPreset::kSide,
                                 LightPreset::kTwoSides, LightPreset::kAmbientOnly};
  for (const LightPreset a : presets) {
    for (const LightPreset b : presets) {
      EXPECT_EQ(presetLighting(a) == presetLighting(b), a == b);
    }
  }
}

TEST(ViewerLightingTest, AmbientOnlyHasNoDirection) {
  const Lighting lighting = presetLighting(LightPreset::kAmbientOnly);
  EXPECT_TRUE(lighting.ambient.on);
  EXPECT_FALSE(lighting.directional[0].on);
  EXPECT_FALSE(lighting.directional[1].on);
}

}  // namespace
}  // namespace zyn::viewer
