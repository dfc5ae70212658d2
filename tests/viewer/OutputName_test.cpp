#include "viewer/OutputName.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(OutputNameTest, FilesAreNamedAfterWhatIsShown) {
  EXPECT_EQ(outputName("/models/wheel.v2.stl", "png"), "wheel.v2.png");
  EXPECT_EQ(outputName("wheel.obj", "camera"), "wheel.camera");
  EXPECT_EQ(outputName("wheel", "gif"), "wheel.gif");
  EXPECT_EQ(outputName("", "bmp"), "untitled.bmp");
}

}  // namespace
}  // namespace zyn::viewer
