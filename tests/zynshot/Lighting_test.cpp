#include "zynshot/Lighting.h"

#include <gtest/gtest.h>

#include <numbers>

namespace zyn::shot {
namespace {

TEST(Lighting, handsAnglesOverInRadians) {
  DirectionalLight light;
  parseLight("90,-45,0,0,1", light);
  const std::array<double, 9> values = lightValues(light);
  EXPECT_EQ(values[0], 1.0);
  EXPECT_EQ(values[1], 0.0);
  EXPECT_EQ(values[3], 1.0);
  EXPECT_NEAR(values[7], std::numbers::pi / 2, 1e-12);
  EXPECT_NEAR(values[8], -std::numbers::pi / 4, 1e-12);
}

TEST(Lighting, scalesWhatALightAddsByItsStrength) {
  DirectionalLight weak;
  weak.strength = 0.5;
  EXPECT_EQ(lightValues(weak)[5], lightValues(DirectionalLight())[5] / 2);
  EXPECT_EQ(lightValues(weak)[6], lightValues(DirectionalLight())[6] / 2);
}

TEST(Lighting, switchesOff) {
  DirectionalLight light;
  parseLight("off", light);
  EXPECT_EQ(lightValues(light)[0], 0.0);
  EXPECT_EQ(lightValues(parseAmbient("0"))[0], 0.0);
  EXPECT_EQ(lightValues(parseAmbient("0.25,red")), (std::array{1.0, 1.0, 0.0, 0.0, 0.25}));
}

}  // namespace
}  // namespace zyn::shot
