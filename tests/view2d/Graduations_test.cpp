#include "view2d/Graduations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn::test {
namespace {

using Texts = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// An axis as long as `pixels`.
FrameAxis axis(double min, double max, double pixels) { return {min, max, (max - min) / pixels}; }

std::vector<double> positionsOf(const std::vector<Graduation>& marks) {
  std::vector<double> positions;
  for (const Graduation& mark : marks) {
    positions.push_back(std::round(mark.position * 1000) / 1000);
  }
  return positions;
}

/// The labels that there are, exponents after a "^".
Texts labelsOf(const std::vector<Graduation>& marks) {
  Texts labels;
  for (const Graduation& mark : marks) {
    if (!mark.label.empty()) {
      labels.push_back(mark.exponent.empty() ? mark.label : mark.label + "^" + mark.exponent);
    }
  }
  return labels;
}

double tenPixels(const Graduation& /*mark*/) { return 10; }
double fivePixelsACharacter(const Graduation& mark) {
  return 5.0 * static_cast<double>(mark.label.size() + mark.exponent.size());
}

TEST(GraduationsTest, LinearOnesAreMultiplesOfTheSteps) {
  const Graduations graduations = linearGraduations(axis(0, 10, 200), 2, 0.5);
  EXPECT_EQ(positionsOf(graduations.big), (std::vector<double>{0, 40, 80, 120, 160}));
  EXPECT_EQ(labelsOf(graduations.big), (Texts{"0", "2", "4", "6", "8"}));
  ASSERT_EQ(graduations.small.size(), 20U);
  EXPECT_DOUBLE_EQ(graduations.small[19].position, 190);
  EXPECT_EQ(labelsOf(graduations.small), Texts());
}

TEST(GraduationsTest, LabelsHaveTenDigitsAtMost) {
  EXPECT_EQ(labelsOf(linearGraduations(axis(-0.3, 0.35, 200), 0.1, 1).big),
            (Texts{"-0.3", "-0.2", "-0.1", "0", "0.1", "0.2", "0.3"}));
  EXPECT_EQ(labelsOf(linearGraduations(axis(0, 1e-9, 200), 5e-10, 1).big), (Texts{"0", "5e-10"}));
  EXPECT_EQ(labelsOf(linearGraduations(axis(0, 1e12, 200), 5e11, 1).big), (Texts{"0", "5e+11"}));
  EXPECT_EQ(labelsOf(linearGraduations(axis(1e6, 1e6 + 1, 200), 0.5, 1).big),
            (Texts{"1000000", "1000000.5"}));
  EXPECT_EQ(labelsOf(linearGraduations(axis(0, 1, 200), 1.0 / 3, 1).big),
            (Texts{"0", "0.3333333333", "0.6666666667"}));
}

TEST(GraduationsTest, EachDirectionAndSizeFailsAlone) {
  for (const double useless : {0.0, -1.0, kNaN, 1e-300}) {
    EXPECT_TRUE(linearGraduations(axis(0, 10, 200), useless, 1).big.empty());
    EXPECT_EQ(linearGraduations(axis(0, 10, 200), useless, 1).small.size(), 10U);
    EXPECT_TRUE(linearGraduations(axis(0, 10, 200), 1, useless).small.empty());
    EXPECT_EQ(linearGraduations(axis(0, 10, 200), 1, useless).big.size(), 10U);
  }
}

TEST(GraduationsTest, ThereAreNotMoreThanPixels) {
  EXPECT_EQ(linearGraduations(axis(0, 10, 200), 1, 0.05).small.size(), 200U);
  EXPECT_TRUE(linearGraduations(axis(0, 10, 199), 1, 0.05).small.empty());
  EXPECT_TRUE(linearGraduations(axis(0, 10, 199), 0.05, 1).big.empty());
}

TEST(GraduationsTest, MirroredAxesRunBackwards) {
  const Graduations graduations = linearGraduations({0, 10, -0.1}, 5, 0);
  EXPECT_EQ(positionsOf(graduations.big), (std::vector<double>{0, -50}));
}

TEST(GraduationsTest, AxesWithoutLengthHaveNone) {
  EXPECT_TRUE(linearGraduations({5, 5, 0.1}, 1, 1).big.empty());
  EXPECT_TRUE(linearGraduations({10, 0, 0.1}, 1, 1).big.empty());
  EXPECT_TRUE(linearGraduations({0, 10, kNaN}, 1, 1).big.empty());
  EXPECT_TRUE(linearGraduations({kNaN, 10, 0.1}, 1, 1).small.empty());
}

TEST(GraduationsTest, DecadesArePowersOfTenWithBothEnds) {
  const Graduations graduations = decadeGraduations(axis(-6, 6, 240));
  EXPECT_EQ(positionsOf(graduations.big),
            (std::vector<double>{0, 20, 40, 60, 80, 100, 120, 140, 160, 180, 200, 220, 240}));
  EXPECT_EQ(labelsOf(graduations.big),
            (Texts{"10^-6", "10^-5", "10^-4", "10^-3", "10^-2", "10^-1", "10^0", "10^1", "10^2",
                   "10^3", "10^4", "10^5", "10^6"}));
  EXPECT_TRUE(graduations.small.empty());
}

TEST(GraduationsTest, DecadesWithRoomHaveMultiples) {
  const Graduations some = decadeGraduations(axis(0, 2, 60));
  EXPECT_EQ(positionsOf(some.small), (std::vector<double>{9.031, 20.969, 39.031, 50.969}));
  const Graduations all = decadeGraduations(axis(0, 2, 200));
  ASSERT_EQ(all.small.size(), 16U);
  EXPECT_NEAR(all.small[7].position, 100 * std::log10(9), 1e-9);
  EXPECT_NEAR(all.small[8].position, 100 + 100 * std::log10(2), 1e-9);
  EXPECT_EQ(labelsOf(all.small), Texts());
}

TEST(GraduationsTest, DecadesMayStartAnywhere) {
  const Graduations graduations = decadeGraduations(axis(0.5, 2.5, 200));
  EXPECT_EQ(labelsOf(graduations.big), (Texts{"10^1", "10^2"}));
  ASSERT_FALSE(graduations.small.empty());
  EXPECT_NEAR(graduations.small.front().position, 100 * (std::log10(4) - 0.5), 1e-9);
  EXPECT_NEAR(graduations.small.back().position, 100 * (2 + std::log10(3) - 0.5), 1e-9);
}

TEST(GraduationsTest, LessThanTwoPowersShowValues) {
  const Graduations none = decadeGraduations(axis(0.2, 0.8, 200));
  EXPECT_TRUE(none.big.empty());
  EXPECT_EQ(labelsOf(none.small), (Texts{"2", "3", "4", "5", "6"}));
  const Graduations one = decadeGraduations(axis(-2.6, -1.6, 200));
  EXPECT_EQ(labelsOf(one.big), (Texts{"0.01"}));
  EXPECT_EQ(labelsOf(one.small),
            (Texts{"0.003", "0.004", "0.005", "0.006", "0.007", "0.008", "0.009", "0.02"}));
}

TEST(GraduationsTest, ValuesBeyondTheNumbersStayUnlabelled) {
  const Graduations graduations = decadeGraduations(axis(400.2, 400.8, 200));
  EXPECT_EQ(graduations.small.size(), 5U);
  EXPECT_EQ(labelsOf(graduations.small), Texts());
}

TEST(GraduationsTest, CrowdedPowersAreThinnedEvenly) {
  const Graduations graduations = decadeGraduations(axis(-200, 200, 300));
  ASSERT_EQ(graduations.big.size(), 41U);
  EXPECT_EQ(graduations.big[1].exponent, "-190");
  EXPECT_NEAR(graduations.big[1].position, 7.5, 1e-9);
  EXPECT_LE(decadeGraduations(axis(-1e9, 1e9, 300)).big.size(), 75U);
  EXPECT_GE(decadeGraduations(axis(-1e9, 1e9, 300)).big.size(), 20U);
}

TEST(GraduationsTest, UselessDecadesHaveNone) {
  for (const FrameAxis& useless :
       {FrameAxis{kNaN, 1, 0.1}, {0, kNaN, 0.1}, {0, 1, kNaN}, {2, 1, 0.1}, {0, 1, 0}}) {
    EXPECT_TRUE(decadeGraduations(useless).big.empty());
    EXPECT_TRUE(decadeGraduations(useless).small.empty());
  }
}

TEST(GraduationsTest, LabelsWithRoomStay) {
  Graduations graduations = linearGraduations(axis(0, 10, 160), 1, 0);
  thinLabels(graduations, tenPixels, 6);
  EXPECT_EQ(labelsOf(graduations.big).size(), 10U);
}

TEST(GraduationsTest, CrowdedLabelsStayAtRoundMultiples) {
  Graduations graduations = linearGraduations(axis(3, 23, 300), 1, 0);
  thinLabels(graduations, tenPixels, 6);
  EXPECT_EQ(labelsOf(graduations.big),
            (Texts{"4", "6", "8", "10", "12", "14", "16", "18", "20", "22"}));
  EXPECT_EQ(graduations.big.size(), 20U);
  graduations = linearGraduations(axis(3, 23, 100), 1, 0);
  thinLabels(graduations, tenPixels, 6);
  EXPECT_EQ(labelsOf(graduations.big), (Texts{"5", "10", "15", "20"}));
}

TEST(GraduationsTest, WithoutTwoRoundMultiplesTheFirstStays) {
  Graduations graduations = linearGraduations(axis(11, 19, 24), 1, 0);
  thinLabels(graduations, tenPixels, 6);
  EXPECT_EQ(labelsOf(graduations.big), (Texts{"11"}));
}

TEST(GraduationsTest, LongLabelsNeedMoreRoom) {
  Graduations graduations = linearGraduations(axis(0, 1e6, 100), 1e5, 0);
  thinLabels(graduations, fivePixelsACharacter, 6);
  EXPECT_EQ(labelsOf(graduations.big), (Texts{"0", "500000"}));
}

TEST(GraduationsTest, MirroredLabelsAreThinnedToo) {
  Graduations graduations = linearGraduations({0, 20, -20.0 / 300}, 1, 0);
  thinLabels(graduations, tenPixels, 6);
  EXPECT_EQ(labelsOf(graduations.big).size(), 10U);
}

TEST(GraduationsTest, MultiplesOfPowersKeepWhatFits) {
  const auto thinned = [](double pixels) {
    Graduations graduations = decadeGraduations(axis(0.05, 0.99, pixels));
    thinLabels(graduations, tenPixels, 5);
    return labelsOf(graduations.small);
  };
  EXPECT_EQ(thinned(400), (Texts{"2", "3", "4", "5", "6", "7", "8", "9"}));
  EXPECT_EQ(thinned(100), (Texts{"2", "3", "5"}));
  EXPECT_EQ(thinned(60), (Texts{"2", "5"}));
  EXPECT_EQ(thinned(30), Texts());
}

TEST(GraduationsTest, MultiplesMakeWayForAPower) {
  Graduations graduations = decadeGraduations(axis(-0.8, 0.15, 100));
  thinLabels(graduations, tenPixels, 5);
  EXPECT_EQ(labelsOf(graduations.big), (Texts{"1"}));
  EXPECT_EQ(labelsOf(graduations.small), (Texts{"0.2", "0.3", "0.5"}));
}

}  // namespace
}  // namespace zyn::test
