#include "viewer/PictureFormat.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(ViewerPictureFormatTest, PicturesAreNamedAfterTheModel) {
  EXPECT_EQ(defaultPictureName("/models/wheel.v2.stl", PictureFormat::kPng), "wheel.v2.png");
  EXPECT_EQ(defaultPictureName("wheel.obj", PictureFormat::kJpeg), "wheel.jpg");
  EXPECT_EQ(defaultPictureName("wheel", PictureFormat::kGif), "wheel.gif");
  EXPECT_EQ(defaultPictureName("", PictureFormat::kBmp), "picture.bmp");
}

}  // namespace
}  // namespace zyn::viewer
