#include "core/Vecteur.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "core/Point.h"
#include "core/VectorMath.h"

namespace zyn {
namespace {

TEST(PointTest, DefaultIsTheOrigin) {
  EXPECT_EQ(Point(), Point(0.0, 0.0, 0.0));
  EXPECT_TRUE(std::has_virtual_destructor_v<Point>);
}

TEST(VecteurTest, DefaultIsTheUnitVectorAlongZ) {
  const Vecteur v;
  EXPECT_EQ(v, Vecteur(0.0, 0.0, 1.0));
  EXPECT_EQ(v.norm(), 1.0);
}

TEST(VecteurTest, NormIsTheEuclideanLength) {
  EXPECT_EQ(Vecteur(3.0, 4.0, 0.0).norm(), 5.0);
  EXPECT_EQ(Vecteur(-2.0, 3.0, 6.0).norm(), 7.0);
  EXPECT_EQ(Vecteur(0.0, 0.0, 0.0).norm(), 0.0);
}

TEST(VecteurTest, NormIsCalledThroughTheVirtualSlot) {
  struct Fixed : Vecteur {
    double norm() const override { return 42.0; }
  };
  const Fixed fixed;
  const Vecteur& base = fixed;
  EXPECT_EQ(base.norm(), 42.0);
}

TEST(VectorMathTest, Products) {
  const Vecteur x(1, 0, 0);
  const Vecteur y(0, 1, 0);
  EXPECT_EQ(cross(x, y), Vecteur(0, 0, 1));
  EXPECT_EQ(cross(y, x), Vecteur(0, 0, -1));
  EXPECT_EQ(cross(Vecteur(1, 2, 3), Vecteur(4, 5, 6)), Vecteur(-3, 6, -3));
  EXPECT_EQ(dot(Vecteur(1, 2, 3), Vecteur(4, 5, 6)), 32.0);
}

TEST(VectorMathTest, SumsAndDifferences) {
  EXPECT_EQ(Point(1, 2, 3) - Point(5, 5, 5), Vecteur(-4, -3, -2));
  EXPECT_EQ(Point(1, 2, 3) + Vecteur(1, 1, 1), Point(2, 3, 4));
  EXPECT_EQ(Point(1, 2, 3) - Vecteur(1, 1, 1), Point(0, 1, 2));
  EXPECT_EQ(Vecteur(1, 2, 3) + Vecteur(1, 1, 1), Vecteur(2, 3, 4));
  EXPECT_EQ(2.0 * Vecteur(1, 2, 3), Vecteur(2, 4, 6));
  EXPECT_EQ(-Vecteur(1, 2, 3), Vecteur(-1, -2, -3));
  EXPECT_EQ(normalised(Vecteur(0, 3, 4)), Vecteur(0, 0.6, 0.8));
}

}  // namespace
}  // namespace zyn
