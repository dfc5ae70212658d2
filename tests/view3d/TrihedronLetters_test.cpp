#include "view3d/TrihedronLetters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/VectorMath.h"

namespace zyn::test {
namespace {

using Tips = std::array<PlanePoint, 3>;

/// A letter is 0.75 times as wide as it is high; half of that, with its strokes.
PlanePoint halfSize(const LetterPlacement& letter) {
  return 0.5 * PlanePoint{0.75 * letter.height + letter.stroke, letter.height + letter.stroke};
}

bool overlap(const LetterPlacement& a, const LetterPlacement& b) {
  const PlanePoint reach = halfSize(a) + halfSize(b);
  return std::abs(a.x - b.x) < reach.x && std::abs(a.y - b.y) < reach.y;
}

/// Whether an axis, looked at in 200 places, goes through a letter.
bool crosses(const PlanePoint& tip, const LetterPlacement& letter) {
  const PlanePoint half = halfSize(letter);
  for (int step = 0; step <= 200; ++step) {
    const PlanePoint point = step / 200.0 * tip;
    if (std::abs(point.x - letter.x) < half.x && std::abs(point.y - letter.y) < half.y) {
      return true;
    }
  }
  return false;
}

/// The tips of three axes at right angles, seen from a random direction.
Tips randomTips(std::mt19937& random) {
  std::normal_distribution<double> number;
  const Vecteur back = normalised({number(random), number(random), number(random)});
  const Vecteur right =
      normalised(cross(Vecteur(number(random), number(random), number(random)), back));
  const Vecteur up = cross(back, right);
  return {{{right.x, up.x}, {right.y, up.y}, {right.z, up.z}}};
}

TEST(TrihedronLettersTest, AreClearOfAxesAndOfEachOtherFromEverywhere) {
  std::mt19937 random(11);
  for (int round = 0; round < 20000; ++round) {
    const Tips tips = randomTips(random);
    const double pixel = std::uniform_real_distribution(0.005, 0.05)(random);
    const std::array<LetterPlacement, 3> letters = placeLetters(tips, pixel);
    for (std::size_t i = 0; i < letters.size(); ++i) {
      for (const PlanePoint& tip : tips) {
        EXPECT_FALSE(crosses(tip, letters[i])) << round;
      }
      EXPECT_FALSE(overlap(letters[i], letters[(i + 1) % 3])) << round;
      EXPECT_GE(letters[i].x - letters[i].height / 2, -1) << round;
      EXPECT_GE(letters[i].y - letters[i].height / 2, -1) << round;
      EXPECT_LT(lengthOf({letters[i].x, letters[i].y}), 2.2) << round;
    }
  }
}

TEST(TrihedronLettersTest, AreClearOfEachOtherInTheSmallestViews) {
  std::mt19937 random(12);
  for (int round = 0; round < 5000; ++round) {
    const Tips tips = randomTips(random);
    const std::array<LetterPlacement, 3> letters = placeLetters(tips, 0.16);
    for (std::size_t i = 0; i < letters.size(); ++i) {
      EXPECT_FALSE(overlap(letters[i], letters[(i + 1) % 3])) << round;
    }
  }
}

TEST(TrihedronLettersTest, StandBesideTheirTipsWhereThereIsRoom) {
  const std::array<LetterPlacement, 3> letters = placeLetters({{{1, 0}, {0, 1}, {0, 0}}}, 0.02);
  EXPECT_NEAR(letters[0].x, 0.8, 1e-12);
  EXPECT_GT(letters[0].y, kAxisHeadRadius);
  EXPECT_NEAR(letters[1].y, 0.8, 1e-12);
  EXPECT_GT(letters[1].x, kAxisHeadRadius);
  EXPECT_LT(letters[2].x, 0);
  EXPECT_LT(letters[2].y, 0);
}

}  // namespace
}  // namespace zyn::test
