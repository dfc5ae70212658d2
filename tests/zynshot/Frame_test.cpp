#include "zynshot/Frame.h"

#include <gtest/gtest.h>

namespace zyn::shot {
namespace {

using host::Bounds;
using host::Vector;

constexpr Bounds kBounds{{-2, 0, 1}, {6, 2, 5}};  // 8 x 2 x 4 about (2, 1, 3)

void expectPoint(const Vector& actual, const Vector& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-12);
  EXPECT_NEAR(actual.y, expected.y, 1e-12);
  EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

TEST(Frame, fitsTheWiderSide) {
  EXPECT_DOUBLE_EQ(Frame(kBounds, parseView("xy+"), 400, 300, 0).pixel(), 8.0 / 400);
  EXPECT_DOUBLE_EQ(Frame(kBounds, parseView("xy+"), 4000, 100, 0).pixel(), 2.0 / 100);
  EXPECT_DOUBLE_EQ(Frame(kBounds, parseView("yz+"), 100, 100, 0.5).pixel(), 1.5 * 4 / 100);
  EXPECT_DOUBLE_EQ(Frame(kBounds, parseView("turning"), 100, 100, 0).pixel(), 8.0 / 100);
}

TEST(Frame, knowsWhatIsSeenAtAPixel) {
  const Frame front(kBounds, parseView("xy+"), 400, 300, 0);
  expectPoint(front.at(200, 150), {2, 1, 3});
  expectPoint(front.at(0, 150), {-2, 1, 3});
  expectPoint(front.at(400, 200), {6, 2, 3});
  // From +x, y goes to the right.
  const Frame side(kBounds, parseView("yz+"), 100, 100, 0);
  expectPoint(side.at(75, 0), {2, 2, 1});
}

TEST(Frame, knowsWhereADirectionPoints) {
  const Frame frame(kBounds, parseView("iso"), 400, 300, 0);
  const auto [right, up] = frame.onScreen({0, 0, 1});
  EXPECT_NEAR(right, 0, 1e-12);
  EXPECT_GT(up, 0.5);
  EXPECT_GT(frame.onScreen({1, 0, 0}).right, 0.5);
  EXPECT_GT(frame.onScreen({0, 1, 0}).right, 0.5);
  EXPECT_GT(frame.onScreen({0, 1, 0}).up, 0.3);
}

TEST(Frame, makesRoomForWhatPerspectiveBringsNearer) {
  const Frame flat(kBounds, parseView("xy+"), 400, 300, 0);
  const Frame deep = flat.inPerspective(kBounds, 90);
  // The eye is half a height away; what is 2 nearer (half of the depth) just fits.
  const double distance = deep.pixel() * 300 / 2;
  EXPECT_NEAR(deep.pixel() * 400 * (distance - 2) / distance, 8, 1e-12);
}

}  // namespace
}  // namespace zyn::shot
