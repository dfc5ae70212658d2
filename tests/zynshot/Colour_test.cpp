#include "zynshot/Colour.h"

#include <gtest/gtest.h>

#include <sstream>

#include "zynshot/UsageError.h"

namespace zyn::shot {
namespace {

TEST(Colour, readsHexadecimalDigits) {
  EXPECT_EQ(parseColour("#ff0080"), (Colour{1, 0, 128 / 255.0}));
  EXPECT_EQ(parseColour("#F08"), (Colour{1, 0, 136 / 255.0}));
}

TEST(Colour, readsFractionsAndBytes) {
  EXPECT_EQ(parseColour("0.5,1,0"), (Colour{0.5, 1, 0}));
  EXPECT_EQ(parseColour("255,0,51"), (Colour{1, 0, 0.2}));
  EXPECT_EQ(parseColour("1,1,1"), (Colour{1, 1, 1}));
}

TEST(Colour, knowsItsNames) {
  EXPECT_EQ(parseColour("orange"), (Colour{1, 165 / 255.0, 0}));
  std::istringstream names(colourNames());
  int count = 0;
  for (std::string name; names >> name; ++count) {
    EXPECT_NO_THROW(parseColour(name)) << name;
  }
  EXPECT_GE(count, 16);
}

TEST(Colour, takesAlphaBehindEveryForm) {
  EXPECT_EQ(parseColourAndAlpha("red,0.5").alpha, 0.5);
  EXPECT_EQ(parseColourAndAlpha("#f00,0").alpha, 0.0);
  EXPECT_EQ(parseColourAndAlpha("255,0,0,1").alpha, 1.0);
  EXPECT_FALSE(parseColourAndAlpha("255,0,0").alpha);
}

TEST(Colour, refusesEverythingElse) {
  for (const char* text : {"", "#", "#12345", "#1234567", "#gg0000", "blurple", "1,2", "1,2,256",
                           "-1,0,0", "red,0.5", "1,2,3,4", "1,2,3,", "1,,3", "nan,0,0", "Red"}) {
    EXPECT_THROW(parseColour(text), UsageError) << text;
  }
  for (const char* text : {"red,2", "red,x", "red,0.5,0.5", "0,0,0,0.5,1", "0,0,0,300"}) {
    EXPECT_THROW(parseColourAndAlpha(text), UsageError) << text;
  }
}

}  // namespace
}  // namespace zyn::shot
