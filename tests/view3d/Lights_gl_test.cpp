#include "view3d/Lights_gl.h"

#include <cmath>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using Section = LightBlock::Section;
using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

std::vector<double> floats(double a, double b, double c, double d) {
  std::vector<double> values;
  for (const double value : {a, b, c, d}) {
    values.push_back(static_cast<double>(static_cast<float>(value)));
  }
  return values;
}

class LightsTest : public test::GlTest {
 protected:
  static void expectNear(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
      EXPECT_NEAR(actual[i], expected[i], 1e-6) << i;
    }
  }
};

TEST_F(LightsTest, ByDefaultOneLightShinesAlongTheLineOfSight) {
  GlState expected = readGlState();
  expected["GL_LIGHT_MODEL_AMBIENT"] = floats(0.7F, 0.7F, 0.7F, 1);
  expected["GL_LIGHT0"] = {1};
  expected["GL_LIGHT0 GL_POSITION"] = {0, 0, 1, 0};
  expected["GL_LIGHT0 GL_AMBIENT"] = floats(0.2F, 0.2F, 0.2F, 1);
  expected["GL_LIGHT0 GL_DIFFUSE"] = floats(0.45F, 0.45F, 0.45F, 1);
  expected["GL_LIGHT0 GL_SPECULAR"] = floats(0.69F, 0.69F, 0.69F, 1);
  applyLights(LightBlock());
  EXPECT_EQ(differences(expected, readGlState()), kNone);
}

TEST_F(LightsTest, EveryValueReachesItsLight) {
  LightBlock lights;
  lights.put(Section::kAmbient, std::vector<double>{1, 0.5, 0.25, 0.75, 0.5});
  lights.put(Section::kLight1, std::vector<double>{1, 1, 0.5, 0.25, 0.5, 0.25, 0.75, 0.5, 0.25});
  lights.put(Section::kLight2, std::vector<double>{-3, 0.25, 1, 0.5, 0.25, 0.5, 0.125, -2, -0.75});
  applyLights(lights);
  GlState state = readGlState();
  expectNear(state["GL_LIGHT_MODEL_AMBIENT"], {0.25, 0.125, 0.375, 1});
  EXPECT_TRUE(isEnabled(GL_LIGHT0) && isEnabled(GL_LIGHT1));
  expectNear(state["GL_LIGHT0 GL_POSITION"],
             {std::sin(0.5) * std::cos(0.25), std::sin(0.25), std::cos(0.5) * std::cos(0.25), 0});
  expectNear(state["GL_LIGHT0 GL_AMBIENT"], {0.5, 0.25, 0.125, 1});
  expectNear(state["GL_LIGHT0 GL_DIFFUSE"], {0.25, 0.125, 0.0625, 1});
  expectNear(state["GL_LIGHT0 GL_SPECULAR"], {0.75, 0.375, 0.1875, 1});
  expectNear(state["GL_LIGHT1 GL_POSITION"],
             {std::cos(-0.75) * std::sin(-2), std::sin(-0.75), std::cos(-0.75) * std::cos(-2), 0});
  expectNear(state["GL_LIGHT1 GL_AMBIENT"], {0.0625, 0.25, 0.125, 1});
  expectNear(state["GL_LIGHT1 GL_DIFFUSE"], {0.125, 0.5, 0.25, 1});
  expectNear(state["GL_LIGHT1 GL_SPECULAR"], {0.03125, 0.125, 0.0625, 1});
}

TEST_F(LightsTest, LightsSwitchedOffAreDisabledAndOtherwiseLeftAlone) {
  LightBlock both;
  both.put(Section::kLight2, std::vector<double>{1, 1, 1, 1, 0.2, 0.45, 0.69, 0, 0});
  applyLights(both);
  GlState expected = readGlState();
  expected["GL_LIGHT_MODEL_AMBIENT"] = {0, 0, 0, 0};
  expected["GL_LIGHT0"] = {0};
  expected["GL_LIGHT1"] = {0};

  LightBlock off;
  off.put(Section::kAmbient, std::vector<double>{0, 1, 1, 1, 1});
  off.put(Section::kLight1, std::vector<double>{0, 1, 1, 1, 1, 1, 1, 1, 1});
  off.put(Section::kLight2, std::vector<double>{0, 1, 1, 1, 1, 1, 1, 1, 1});
  applyLights(off);
  EXPECT_EQ(differences(expected, readGlState()), kNone);
}

}  // namespace
}  // namespace zyn
