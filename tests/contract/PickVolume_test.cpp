#include "contract/PickVolume.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace zyn {
namespace {

using Matrix = GlMatrix;

constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

Box3 boxAround(double x, double y, double z, double half) {
  return {x - half, x + half, y - half, y + half, z - half, z + half};
}

Matrix scaledBy(double x, double y, double z) {
  return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1};
}

Matrix movedBy(double x, double y, double z) {
  return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

TEST(PickVolume, MeetsWhatLiesWithin) {
  const PickVolume volume(kIdentity, kIdentity);
  EXPECT_TRUE(volume.mayMeet(boxAround(0, 0, 0, 0)));
  EXPECT_TRUE(volume.mayMeet(boxAround(0.9, -0.9, 0.9, 0.05)));
  EXPECT_TRUE(volume.mayMeet(boxAround(0, 0, 0, 100)));
}

TEST(PickVolume, MissesWhatLiesBeyondASide) {
  const PickVolume volume(kIdentity, kIdentity);
  for (const double side : {-1.2, 1.2}) {
    EXPECT_FALSE(volume.mayMeet(boxAround(side, 0, 0, 0.1)));
    EXPECT_FALSE(volume.mayMeet(boxAround(0, side, 0, 0.1)));
    EXPECT_FALSE(volume.mayMeet(boxAround(0, 0, side, 0.1)));
  }
}

TEST(PickVolume, KeepsAMarginAtItsSides) {
  const PickVolume volume(kIdentity, kIdentity);
  EXPECT_TRUE(volume.mayMeet(boxAround(1.005, 0, 0, 0)));
  EXPECT_TRUE(volume.mayMeet(boxAround(0, 0, -1.005, 0)));
}

TEST(PickVolume, AppliesTheModelViewFirst) {
  const PickVolume volume(scaledBy(0.1, 0.1, 0.1), movedBy(50, 0, 0));
  EXPECT_TRUE(volume.mayMeet(boxAround(-50, 0, 0, 1)));
  EXPECT_TRUE(volume.mayMeet(boxAround(-59, 0, 0, 1)));
  EXPECT_FALSE(volume.mayMeet(boxAround(-62, 0, 0, 1)));
  EXPECT_FALSE(volume.mayMeet(boxAround(0, 0, 0, 1)));
}

TEST(PickVolume, AllowsForRoundingFarFromTheOrigin) {
  const double far = 1e7;
  const PickVolume volume(scaledBy(1, 1, 1), movedBy(-far, 0, 0));
  // In single precision this point may round to one within.
  EXPECT_TRUE(volume.mayMeet(boxAround(far + 1.5, 0, 0, 0)));
  EXPECT_FALSE(volume.mayMeet(boxAround(far * 1.1, 0, 0, 0)));
}

TEST(PickVolume, MayMeetWhatIsNotFinite) {
  const PickVolume volume(kIdentity, kIdentity);
  for (const double value :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    EXPECT_TRUE(volume.mayMeet({-value, value, 0, 0, 0, 0}));
    EXPECT_TRUE(volume.mayMeet({0, value, 0, 0, 0, 0}));
    EXPECT_TRUE(volume.mayMeet({value, value, 0, 0, 0, 0}));
  }
}

TEST(PickVolume, NeverMissesABoxWithAPointInside) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> any(-1, 1);
  for (int round = 0; round < 20000; ++round) {
    Matrix modelView{};
    for (double& entry : modelView) entry = any(random);
    modelView[3] = modelView[7] = modelView[11] = 0;
    modelView[15] = 1;
    const PickVolume volume(kIdentity, modelView);
    const double p[3] = {3 * any(random), 3 * any(random), 3 * any(random)};
    bool isInside = true;
    for (std::size_t row = 0; row < 3; ++row) {
      const double value = modelView[row] * p[0] + modelView[4 + row] * p[1] +
                           modelView[8 + row] * p[2] + modelView[12 + row];
      isInside = isInside && std::abs(value) <= 1;
    }
    const Box3 box = {p[0] - 1, p[0], p[1], p[1] + 0.5, p[2] - 0.1, p[2] + 2};
    if (isInside) {
      ASSERT_TRUE(volume.mayMeet(box)) << "round " << round;
    }
  }
}

}  // namespace
}  // namespace zyn
