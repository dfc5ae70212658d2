#include "core/Transform.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/Ray.h"
#include "core/VectorMath.h"

namespace zyn {
namespace {

/// Turned by the angles of a 3-4-5 triangle about z.
constexpr GlMatrix kTurned = {0.6, 0.8, 0, 0, -0.8, 0.6, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1};
constexpr GlMatrix kSheared = {2, 0, 0, 0, 1, 3, 0, 0, 0.5, -1, 4, 0, 7, 8, 9, 1};
constexpr GlMatrix kMirror = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

GlMatrix scaled(double x, double y, double z) {
  return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1};
}
void expectNear(const GlMatrix& found, const GlMatrix& expected) {
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], 1e-14) << i;
}
void expectNear(const Vecteur& found, const Vecteur& expected) {
  EXPECT_NEAR(found.x, expected.x, 1e-14);
  EXPECT_NEAR(found.y, expected.y, 1e-14);
  EXPECT_NEAR(found.z, expected.z, 1e-14);
}

TEST(Transform, TheInverseLeadsBack) {
  for (const GlMatrix& matrix : {kIdentity, kTurned, kSheared, kMirror, scaled(1e-3, -5, 1e3)}) {
    expectNear(product(inverse(matrix), matrix), kIdentity);
    expectNear(product(matrix, inverse(matrix)), kIdentity);
  }
}

TEST(Transform, SingularIsWhatHasNoUsableInverse) {
  for (const GlMatrix& matrix : {kIdentity, kTurned, kSheared, kMirror, scaled(1e-100, 1e100, 1)}) {
    EXPECT_FALSE(isSingular(matrix));
  }
  EXPECT_TRUE(isSingular(scaled(1, 0, 1)));
  EXPECT_TRUE(isSingular(scaled(1, 1e-320, 1)));
  EXPECT_TRUE(isSingular({1, 2, 3, 0, 2, 4, 6, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
  EXPECT_TRUE(isSingular({1.2e308, 1.2e308, 1.2e308, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(Transform, StretchIsToldFromTurning) {
  EXPECT_EQ(stretchOf(kIdentity), Stretch::kNone);
  EXPECT_EQ(stretchOf(kTurned), Stretch::kNone);
  EXPECT_EQ(stretchOf(kMirror), Stretch::kNone);
  EXPECT_EQ(stretchOf(scaled(3, -3, 3)), Stretch::kEven);
  EXPECT_EQ(stretchOf(product(kTurned, scaled(0.1, 0.1, 0.1))), Stretch::kEven);
  EXPECT_EQ(stretchOf(scaled(1, 1, 1.01)), Stretch::kUneven);
  EXPECT_EQ(stretchOf(kSheared), Stretch::kUneven);
}

TEST(Transform, MirrorsTurnRightIntoLeft) {
  EXPECT_TRUE(isMirror(kMirror));
  EXPECT_FALSE(isMirror(product(kMirror, kMirror)));
  EXPECT_FALSE(isMirror(kSheared));
  EXPECT_TRUE(isMirror(product(kSheared, kMirror)));
}

TEST(Transform, BoxesStayBoxesUnderScalesAndTurnsOfAxes) {
  EXPECT_TRUE(keepsAxes(scaled(1, -2, 3)));
  EXPECT_TRUE(keepsAxes({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}));
  EXPECT_FALSE(keepsAxes(kTurned));
}

TEST(Transform, NormalsStaySquareToTheirSurfaceAndOneLong) {
  const Vecteur a(1, 2, -1);
  const Vecteur b(0, 1, 3);
  const Vecteur normal = normalised(cross(a, b));
  for (const GlMatrix& matrix : {kTurned, kSheared, kMirror, product(kMirror, kSheared),
                                 scaled(1e-9, 1e9, 1), scaled(1e-200, 1e-200, 1e-200)}) {
    const Vecteur found = movedNormal(matrix, normal);
    EXPECT_NEAR(found.norm(), 1, 1e-14);
    const auto direction = [&](const Vecteur& v) {
      const Point origin = moved(matrix, 0, 0, 0);
      return normalised(moved(matrix, v.x, v.y, v.z) - origin);
    };
    if (matrix[12] == 0 && matrix[0] > 1e-100) {
      EXPECT_NEAR(dot(found, direction(a)), 0, 1e-9);
      EXPECT_NEAR(dot(found, direction(b)), 0, 1e-9);
    }
  }
  expectNear(movedNormal(kMirror, {1, 0, 0}), {-1, 0, 0});
  expectNear(movedNormal(scaled(2, 1, 1), {0, 0, 1}), {0, 0, 1});
}

TEST(Transform, FramesAreOrthonormal) {
  expectNear(frame({1, 2, 3}, {0, 5, 0}, {-2, 7, 0}),
             {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1});
  const GlMatrix made = frame({0, 0, 0}, {1e200, 1e200, 0}, {1e-200, 0, 1e-200});
  EXPECT_EQ(stretchOf(made), Stretch::kNone);
  EXPECT_FALSE(isMirror(made));
}

TEST(Transform, ParallelIsAlsoWhatHasNoLength) {
  EXPECT_TRUE(areParallel({1, 2, 3}, {-2, -4, -6}));
  EXPECT_TRUE(areParallel({0, 0, 0}, {1, 0, 0}));
  EXPECT_TRUE(areParallel({1, 0, 0}, {0, 0, 0}));
  EXPECT_FALSE(areParallel({1e-300, 0, 0}, {1e300, 1e290, 0}));
}

TEST(Ray, MissesBoxesBesideAndBehindIt) {
  const Box3 box{1, 2, 1, 2, 1, 2};
  EXPECT_TRUE(mayMeet({{0, 0, 0}, {1, 1, 1}}, box));
  EXPECT_FALSE(mayMeet({{0, 0, 0}, {-1, -1, -1}}, box));
  EXPECT_FALSE(mayMeet({{0, 0, 0}, {1, 1, 5}}, box));
  EXPECT_TRUE(mayMeet({{1.5, 1.5, 9}, {0, 0, -1}}, box));
  EXPECT_FALSE(mayMeet({{2.5, 1.5, 9}, {0, 0, -1}}, box));
  EXPECT_TRUE(mayMeet({{1.5, 1.5, 1.5}, {0, 0, 1}}, box)) << "from within";
  EXPECT_TRUE(mayMeet({{2, 2, 9}, {0, 0, -1}}, box)) << "along an edge";
  EXPECT_TRUE(mayMeet({{0, 0, 0}, {0, 0, 1}}, {-1, 1, -1, 1, 3, 3})) << "a flat one";
}

}  // namespace
}  // namespace zyn
