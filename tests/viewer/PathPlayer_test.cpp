#include "viewer/PathPlayer.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(PathPlayerTest, TheProgramRunsAFactorAsFast) {
  PathPlayer player;
  EXPECT_EQ(player.factor(), 10);
  EXPECT_EQ(player.start(4, 100), 4);
  EXPECT_TRUE(player.isPlaying());
  EXPECT_EQ(player.advance(4, 0.5, 100), 9);
  ASSERT_TRUE(player.faster());
  EXPECT_EQ(player.advance(4, 0.5, 100), 14);
  EXPECT_TRUE(player.isPlaying());
}

TEST(PathPlayerTest, AtTheEndItStopsAndBeginsAnew) {
  PathPlayer player;
  player.start(95, 100);
  EXPECT_EQ(player.advance(95, 1, 100), 100);
  EXPECT_FALSE(player.isPlaying());
  EXPECT_EQ(player.start(100, 100), 0);
  EXPECT_TRUE(player.isPlaying());
}

TEST(PathPlayerTest, APathThatTakesNoTimeIsNotPlayed) {
  PathPlayer player;
  EXPECT_EQ(player.start(0, 0), 0);
  EXPECT_FALSE(player.isPlaying());
}

TEST(PathPlayerTest, TheStepsOfTheFactorEnd) {
  PathPlayer player;
  while (player.slower()) {
  }
  EXPECT_EQ(player.factor(), 1);
  EXPECT_FALSE(player.slower());
  while (player.faster()) {
  }
  EXPECT_EQ(player.factor(), 1000);
  EXPECT_FALSE(player.faster());
}

}  // namespace
}  // namespace zyn::viewer
