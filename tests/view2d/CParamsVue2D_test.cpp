#include "view2d/CParamsVue2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr ClientSize kWindow{200, 100};

/// What a surplus of a tenth multiplies sizes with.
const double kTenthMore = 1.0F + 0.1F;

CParamsVue2D fitted(const CParamsVue2D::Target& target, float surplus,
                    ClientSize client = kWindow) {
  CParamsVue2D view;
  view.fit(target, client, surplus);
  return view;
}

void expectView(const CParamsVue2D& view, double x, double y, double width, double height) {
  EXPECT_EQ(view.centreX(), x);
  EXPECT_EQ(view.centreY(), y);
  EXPECT_EQ(view.width(), width);
  EXPECT_EQ(view.height(), height);
  EXPECT_EQ(view.halfHeight(), height / 2);
}

TEST(CParamsVue2DTest, NewItShowsNothing) {
  const CParamsVue2D view;
  expectView(view, 0, 0, 0, 0);
  EXPECT_FALSE(view.showsAnything());
  EXPECT_EQ(view.bounds(), Rect2());
  static_assert(std::has_virtual_destructor_v<CParamsVue2D>);
}

TEST(CParamsVue2DTest, ARectangleOfTheWindowsShapeFillsIt) {
  EXPECT_NE(kTenthMore, 1.1);
  expectView(fitted(Rect2{0, 10, 0, 5}, 0.1F), 5, 2.5, 5 * kTenthMore * 2, 5 * kTenthMore);
  expectView(fitted(Rect2{0, 10, 0, 5}, 0.0F), 5, 2.5, 10, 5);
}

TEST(CParamsVue2DTest, TheLongerSideDecides) {
  expectView(fitted(Rect2{-20, 20, 0, 5}, 0.0F), 0, 2.5, 40, 20);
  expectView(fitted(Rect2{0, 1, -4, 8}, 0.5F), 0.5, 2, 36, 18);
  expectView(fitted(Rect2{0, 30, 0, 5}, 0.1F), 15, 2.5, 30 * kTenthMore, 30 * kTenthMore / 2);
}

TEST(CParamsVue2DTest, WithoutAHeightTheWidthDecides) {
  expectView(fitted(Rect2{1, 3, 7, 7}, 0.1F), 2, 7, 2 * kTenthMore, 2 * kTenthMore / 2);
}

TEST(CParamsVue2DTest, WithoutAWidthTheHeightDecides) {
  expectView(fitted(Rect2{7, 7, 1, 3}, 0.1F), 7, 2, 2 * kTenthMore * 2, 2 * kTenthMore);
}

TEST(CParamsVue2DTest, APointIsShownInTwoUnitsOfHeight) {
  expectView(fitted(Rect2{4, 4, -1, -1}, 0.1F), 4, -1, 1, 2);
  expectView(fitted(Rect2{4, 4, -1, -1}, 0.1F, {100, 200}), 4, -1, 4, 2);
}

TEST(CParamsVue2DTest, CentreAndSizeMayDisagree) {
  expectView(fitted({{0, 2, 10, 20}, 40, 4}, 0.0F), 1, 15, 40, 20);
}

TEST(CParamsVue2DTest, SurplusesMayTakeAway) {
  expectView(fitted(Rect2{0, 10, 0, 5}, -0.5F), 5, 2.5, 5, 2.5);
}

TEST(CParamsVue2DTest, WithoutAWindowTheSizeIsTheRectangles) {
  for (const ClientSize client : {ClientSize{0, 0}, {0, 100}, {100, 0}, {-5, 10}}) {
    expectView(fitted(Rect2{0, 10, 0, 2}, 0.5F, client), 5, 1, 15, 3);
  }
}

TEST(CParamsVue2DTest, WhatIsNotANumberShowsNothing) {
  EXPECT_FALSE(fitted(Rect2{kNaN, 1, 0, 1}, 0).showsAnything());
  EXPECT_FALSE(fitted(Rect2{0, kInfinity, 0, 1}, 0).showsAnything());
  EXPECT_FALSE(fitted(Rect2{-kInfinity, kInfinity, 0, 1}, 0).showsAnything());
  EXPECT_FALSE(fitted(Rect2{0, 1, 0, 1}, std::numeric_limits<float>::infinity()).showsAnything());
  EXPECT_FALSE(fitted(Rect2{0, 1, 0, 1}, -1.0F).showsAnything());
}

TEST(CParamsVue2DTest, KnowsItsBounds) {
  EXPECT_EQ(fitted(Rect2{-20, 20, 0, 5}, 0.0F).bounds(), (Rect2{-20, 20, -7.5, 12.5}));
}

TEST(CParamsVue2DTest, ZoomsByItsHalfHeight) {
  CParamsVue2D view = fitted(Rect2{0, 10, 0, 5}, 0.0F);
  view.setHalfHeight(4, {300, 100});
  view.moveTo(-1, -2);
  expectView(view, -1, -2, 24, 8);
}

}  // namespace
}  // namespace zyn::test
