#include "view3d/LightBlock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zyn {
namespace {

using Light = LightBlock::Light;
using Section = LightBlock::Section;
using Values4 = LightBlock::Values4;

TEST(LightBlockTest, Defaults) {
  const LightBlock lights;
  EXPECT_EQ(lights.get(Section::kAmbient), (std::vector<double>{1, 1, 1, 1, double{0.7F}}));
  const std::vector<double> light{1, 1, 1, 1, double{0.2F}, double{0.45F}, double{0.69F}, 0, 0};
  EXPECT_EQ(lights.get(Section::kLight1), light);
  std::vector<double> off = light;
  off[0] = 0;
  EXPECT_EQ(lights.get(Section::kLight2), off);
  EXPECT_TRUE(lights.isOn(Light::kOne));
  EXPECT_FALSE(lights.isOn(Light::kTwo));
}

TEST(LightBlockTest, DefaultsLightAlongTheLineOfSight) {
  const LightBlock lights;
  EXPECT_EQ(lights.globalAmbient(), (Values4{0.7F, 0.7F, 0.7F, 1}));
  EXPECT_EQ(lights.position(Light::kOne), (Values4{0, 0, 1, 0}));
  EXPECT_EQ(lights.ambient(Light::kOne), (Values4{0.2F, 0.2F, 0.2F, 1}));
  EXPECT_EQ(lights.diffuse(Light::kOne), (Values4{0.45F, 0.45F, 0.45F, 1}));
  EXPECT_EQ(lights.specular(Light::kOne), (Values4{0.69F, 0.69F, 0.69F, 1}));
}

TEST(LightBlockTest, PutNarrowsAndGetWidens) {
  LightBlock lights;
  lights.put(Section::kAmbient, std::vector<double>{1, 0.1, 0.2, 0.3, 0.4});
  EXPECT_EQ(lights.get(Section::kAmbient),
            (std::vector<double>{1, double{0.1F}, double{0.2F}, double{0.3F}, double{0.4F}}));
}

TEST(LightBlockTest, PureRedAmbient) {
  LightBlock lights;
  lights.put(Section::kAmbient, std::vector<double>{1, 1, 0, 0, 1});
  EXPECT_EQ(lights.globalAmbient(), (Values4{1, 0, 0, 1}));
}

TEST(LightBlockTest, SwitchedOffAmbientIsAllZero) {
  LightBlock lights;
  lights.put(Section::kAmbient, std::vector<double>{0, 1, 1, 1, 1});
  EXPECT_EQ(lights.globalAmbient(), (Values4{0, 0, 0, 0}));
  lights.put(Section::kAmbient, std::vector<double>{-3, 1, 0.5, 0.25, 0.5});
  EXPECT_EQ(lights.globalAmbient(), (Values4{0.5F, 0.25F, 0.125F, 1}));
}

TEST(LightBlockTest, SectionsAreSeparate) {
  LightBlock lights;
  const LightBlock fresh;
  lights.put(Section::kLight2, std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_EQ(lights.get(Section::kAmbient), fresh.get(Section::kAmbient));
  EXPECT_EQ(lights.get(Section::kLight1), fresh.get(Section::kLight1));
  EXPECT_EQ(lights.get(Section::kLight2), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  lights.put(Section::kLight1, std::vector<double>{9, 8, 7, 6, 5, 4, 3, 2, 1});
  EXPECT_EQ(lights.get(Section::kAmbient), fresh.get(Section::kAmbient));
  EXPECT_EQ(lights.get(Section::kLight1), (std::vector<double>{9, 8, 7, 6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(lights.get(Section::kLight2), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

class LightBlockCountTest : public ::testing::TestWithParam<std::size_t> {};

TEST_P(LightBlockCountTest, AnyOtherCountChangesNothing) {
  const LightBlock fresh;
  for (const Section section : {Section::kAmbient, Section::kLight1, Section::kLight2}) {
    LightBlock lights;
    const std::size_t size = section == Section::kAmbient ? 5 : 9;
    lights.put(section, std::vector<double>(GetParam(), 0.5));
    EXPECT_EQ(lights.get(section) != fresh.get(section), GetParam() == size);
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, LightBlockCountTest,
                         ::testing::Values(0, 1, 4, 5, 6, 8, 9, 10, 23));

TEST(LightBlockTest, EachLightUsesItsOwnValues) {
  LightBlock lights;
  lights.put(Section::kLight1, std::vector<double>{1, 0.5, 0.25, 1, 0.5, 0.25, 0.75, 0.3, -0.4});
  lights.put(Section::kLight2, std::vector<double>{1, 1, 0.5, 0, 1, 0.5, 0.25, -1.1, 0.7});
  EXPECT_EQ(lights.ambient(Light::kOne), (Values4{0.25F, 0.125F, 0.5F, 1}));
  EXPECT_EQ(lights.diffuse(Light::kOne), (Values4{0.125F, 0.0625F, 0.25F, 1}));
  EXPECT_EQ(lights.specular(Light::kOne), (Values4{0.375F, 0.1875F, 0.75F, 1}));
  EXPECT_EQ(lights.ambient(Light::kTwo), (Values4{1, 0.5F, 0, 1}));
  EXPECT_EQ(lights.diffuse(Light::kTwo), (Values4{0.5F, 0.25F, 0, 1}));
  EXPECT_EQ(lights.specular(Light::kTwo), (Values4{0.25F, 0.125F, 0, 1}));

  const Values4 one = lights.position(Light::kOne);
  EXPECT_NEAR(one[0], std::sin(0.3) * std::cos(-0.4), 1e-6);
  EXPECT_NEAR(one[1], std::sin(-0.4), 1e-6);
  EXPECT_NEAR(one[2], std::cos(0.3) * std::cos(-0.4), 1e-6);
  EXPECT_EQ(one[3], 0.0F);
  const Values4 two = lights.position(Light::kTwo);
  EXPECT_NEAR(two[0], std::sin(-1.1) * std::cos(0.7), 1e-6);
  EXPECT_NEAR(two[1], std::sin(0.7), 1e-6);
  EXPECT_NEAR(two[2], std::cos(-1.1) * std::cos(0.7), 1e-6);
  EXPECT_EQ(two[3], 0.0F);
}

TEST(LightBlockTest, OnlyASwitchOfExactlyOneIsDrawn) {
  LightBlock lights;
  EXPECT_TRUE(lights.isDrawn(Light::kOne));
  EXPECT_FALSE(lights.isDrawn(Light::kTwo));
  lights.put(Section::kLight1, std::vector<double>{2, 1, 1, 1, 0, 0, 0, 0, 0});
  lights.put(Section::kLight2, std::vector<double>{1, 1, 1, 1, 0, 0, 0, 0, 0});
  EXPECT_TRUE(lights.isOn(Light::kOne));
  EXPECT_FALSE(lights.isDrawn(Light::kOne));
  EXPECT_TRUE(lights.isDrawn(Light::kTwo));
}

TEST(LightBlockTest, ValuesBeyondFloatDoNoHarm) {
  LightBlock lights;
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  lights.put(Section::kLight1,
             std::vector<double>{1e300, nan, -1e300, infinity, 1, 1, 1, infinity, nan});
  EXPECT_TRUE(lights.isOn(Light::kOne));
  EXPECT_TRUE(std::isnan(lights.position(Light::kOne)[0]));
  EXPECT_TRUE(std::isinf(lights.ambient(Light::kOne)[1]));
}

}  // namespace
}  // namespace zyn
