#include "view/MouseInput.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

// The values are those of the messages' MK_ constants.
TEST(MouseKeysTest, ControlGoesBeforeShift) {
  EXPECT_EQ(MouseKeys(0x08).key(), 1);
  EXPECT_EQ(MouseKeys(0x04).key(), 2);
  EXPECT_EQ(MouseKeys(0x0C).key(), 1);
  EXPECT_EQ(MouseKeys(0x00).key(), 0);
  EXPECT_EQ(MouseKeys().key(), 0);
}

TEST(MouseKeysTest, TheLoneLeftButtonCountsOnMovesOnly) {
  EXPECT_EQ(MouseKeys(0x01).key(), 0);
  EXPECT_EQ(MouseKeys(0x01).moveKey(), 3);
  EXPECT_EQ(MouseKeys(0x01 | 0x08).moveKey(), 1);
  EXPECT_EQ(MouseKeys(0x01 | 0x04).moveKey(), 2);
  for (const std::uint32_t other : {0x02U, 0x10U, 0x20U, 0x40U}) {
    EXPECT_EQ(MouseKeys(0x01U | other).moveKey(), 0) << other;
    EXPECT_EQ(MouseKeys(other).moveKey(), 0) << other;
  }
}

TEST(MouseKeysTest, Buttons) {
  for (const std::uint32_t button : {0x01U, 0x02U, 0x10U, 0x20U, 0x40U}) {
    EXPECT_TRUE(MouseKeys(button).anyButton()) << button;
    EXPECT_EQ(MouseKeys(button).left(), button == 0x01U);
    EXPECT_EQ(MouseKeys(button).middle(), button == 0x10U);
  }
  EXPECT_FALSE(MouseKeys(0x0C).anyButton());
}

}  // namespace
}  // namespace zyn
