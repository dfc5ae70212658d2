#include "image/ImageFormat.h"

#include <gtest/gtest.h>

namespace zyn::test {
namespace {

TEST(ImageFormatTest, IsToldByTheExtension) {
  EXPECT_EQ(imageFormatOf(L"C:\\pictures\\part.bmp"), ImageFormat::kBmp);
  EXPECT_EQ(imageFormatOf(L"part.jpg"), ImageFormat::kJpeg);
  EXPECT_EQ(imageFormatOf(L"part.jpeg"), ImageFormat::kJpeg);
  EXPECT_EQ(imageFormatOf(L"a.b.gif"), ImageFormat::kGif);
  EXPECT_EQ(imageFormatOf(L"folder.old/part.png"), ImageFormat::kPng);
  EXPECT_EQ(imageFormatOf(L"part.tif"), ImageFormat::kTiff);
  EXPECT_EQ(imageFormatOf(L"part.tiff"), ImageFormat::kTiff);
}

TEST(ImageFormatTest, WhateverTheCase) {
  EXPECT_EQ(imageFormatOf(L"PART.PNG"), ImageFormat::kPng);
  EXPECT_EQ(imageFormatOf(L"part.JpEg"), ImageFormat::kJpeg);
}

TEST(ImageFormatTest, NoneForWhatIsUnknownOrMissing) {
  for (const wchar_t* const name :
       {L"", L"part", L"part.", L".", L"part.svg", L"part.pdf", L"part.emf", L"part.pn",
        L"part.pngx", L"folder.png\\part", L"folder.png/part", L"part.png ", L"png", L"a.png:b"}) {
    EXPECT_FALSE(imageFormatOf(name)) << name;
  }
}

}  // namespace
}  // namespace zyn::test
