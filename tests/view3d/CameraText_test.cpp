#include "view3d/CameraText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>

namespace zyn::test {
namespace {

constexpr const char* kDefault =
    "Oeil=0 0 2 Cible=0 0 0 Haut=0 1 0 Largeur=2 Hauteur=2 Perspective=0 AngleOuverture=30 "
    "Profondeur=2";

std::string errorOf(const std::string& text) {
  try {
    parseCamera(text);
  } catch (const CameraTextError& error) {
    return error.what();
  }
  return "none";
}

std::string replaced(const std::string& part, const std::string& by) {
  std::string text = kDefault;
  return text.replace(text.find(part), part.size(), by);
}

TEST(CameraTextTest, IsOneReadableLine) { EXPECT_EQ(textOf(CameraValue()), kDefault); }

TEST(CameraTextTest, KeepsEveryBit) {
  std::mt19937_64 random(7);
  const auto number = [&] {
    double value = 0;
    do {
      value = std::bit_cast<double>(random());
    } while (!(std::abs(value) < 1e150) || std::abs(value) < 1e-150);
    return value;
  };
  for (int i = 0; i < 2000; ++i) {
    CameraValue camera{{number(), number(), number()},
                       {number(), number(), number()},
                       {number(), number(), number()},
                       std::abs(number()),
                       std::abs(number()),
                       i % 2 == 0,
                       1.0 + 169.0 * static_cast<double>(i) / 2000.0 / 1.01,
                       std::abs(number())};
    if (i % 3 == 0) {
      camera.up.x = -0.0;
    }
    if (faultOf(camera)) {
      continue;
    }
    const CameraValue read = parseCamera(textOf(camera));
    EXPECT_EQ(read, camera) << textOf(camera);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(read.up.x), std::bit_cast<std::uint64_t>(camera.up.x));
  }
}

TEST(CameraTextTest, TakesMembersInAnyOrderAndAnySpace) {
  CameraValue camera;
  camera.perspective = true;
  EXPECT_EQ(parseCamera("\tPerspective=1\r\n Profondeur=2 Hauteur=2.0  Largeur=2e0 Haut=0 1 0 "
                        "AngleOuverture=30 Cible=0 0 0\nOeil=0 0 2 "),
            camera);
}

TEST(CameraTextTest, ErrorsNameThePlace) {
  EXPECT_EQ(errorOf(""), "Oeil is missing");
  EXPECT_EQ(errorOf("3 4"), "it begins with \"3\", not with a member and \"=\"");
  EXPECT_EQ(errorOf(replaced("Profondeur=2", "")), "Profondeur is missing");
  EXPECT_EQ(errorOf(replaced("Cible=0 0 0", "Cible=0 0")), "Cible needs 3 numbers, there are 2");
  EXPECT_EQ(errorOf(replaced("Cible=0 0 0", "Cible=0 0 0 0")),
            "\"0\" is one number too many for Cible");
  EXPECT_EQ(errorOf(replaced("Largeur=2", "Largeur=two")), "\"two\" is no number");
  EXPECT_EQ(errorOf(replaced("Largeur=2", "Largeur=2,5")), "\"2,5\" is no number");
  EXPECT_EQ(errorOf(replaced("Largeur=2", "Largeur=")), "\"\" is no number");
  EXPECT_EQ(errorOf(replaced("Largeur", "Width")), "a camera has no member \"Width\"");
  EXPECT_EQ(errorOf(replaced("Largeur", "Hauteur")), "Hauteur comes twice");
  EXPECT_EQ(errorOf(replaced("Largeur=2", "Largeur=inf")), "Largeur: it has to be above 0");
  EXPECT_EQ(errorOf(replaced("Oeil=0 0 2", "Oeil=0 0 0")),
            "Oeil: it lies at Cible, or too far from it");
  EXPECT_EQ(errorOf(std::string(100, 'x') + "=1"),
            "a camera has no member \"" + std::string(40, 'x') + "...\"");
}

}  // namespace
}  // namespace zyn::test
