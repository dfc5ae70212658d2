#include "zynshot/PathOptions.h"

#include <gtest/gtest.h>

#include "zynshot/UsageError.h"

namespace zyn::shot {
namespace {

using Unit = PathPlace::Unit;

TEST(PathOptions, placesAreSharesTimesLengthsAndLines) {
  EXPECT_EQ(parsePathPlace("40%"), (PathPlace{Unit::kShare, 0.4}));
  EXPECT_EQ(parsePathPlace("100%"), (PathPlace{Unit::kShare, 1}));
  EXPECT_EQ(parsePathPlace("12.5s"), (PathPlace{Unit::kSeconds, 12.5}));
  EXPECT_EQ(parsePathPlace("300mm"), (PathPlace{Unit::kMillimetres, 300}));
  EXPECT_EQ(parsePathPlace("line:65"), (PathPlace{Unit::kLine, 65}));
  for (const char* const wrong :
       {"", "%", "s", "mm", "line:", "40", "101%", "-1s", "line:1.5", "x%", "40 %", "nan%"}) {
    EXPECT_THROW(parsePathPlace(wrong), UsageError) << wrong;
  }
}

TEST(PathOptions, coloursAreThoseOfTheComponent) {
  EXPECT_EQ(parsePathColours("type"), 0);
  EXPECT_EQ(parsePathColours("speed"), 1);
  EXPECT_EQ(parsePathColours("progress"), 2);
  EXPECT_THROW(parsePathColours("Speed"), UsageError);
}

TEST(PathOptions, toolsAreFlatUnlessTheyAreBalls) {
  PathOptions path;
  parseTool("6,ball", path);
  EXPECT_EQ(path.diameter, 6);
  EXPECT_TRUE(path.isBall);
  parseTool("6,flat", path);
  EXPECT_EQ(path.diameter, 6);
  EXPECT_FALSE(path.isBall);
  parseTool("0.4", path);
  EXPECT_EQ(path.diameter, 0.4);
  EXPECT_FALSE(path.isBall);
  for (const char* const wrong : {"", "0", ",ball", "6,bull", "-1"}) {
    EXPECT_THROW(parseTool(wrong, path), UsageError) << wrong;
  }
}

TEST(PathOptions, framesAreNumberedSoThatTheyStandInOrder) {
  EXPECT_EQ(frameName("a/path.png", 7, 20), "a/path-007.png");
  EXPECT_EQ(frameName("path.tar.jpg", 12, 12345), "path.tar-00012.jpg");
}

}  // namespace
}  // namespace zyn::shot
