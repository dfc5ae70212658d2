#include "view2d/FrameTitles.h"

#include <gtest/gtest.h>

#include "support/BoxFont.h"

namespace zyn::test {
namespace {

/// A graph of 300 by 200 pixels with room around it.
constexpr FrameArea kArea{300, 200, {-60, 360, -50, 240}};
/// One of 105 by 70 pixels.
constexpr FrameArea kSmallArea{105, 70, {-21, 126, -14, 84}};

const FontMetrics kFont = boxFont();

AxisTitle texts(const std::string& name, const std::string& unit) { return {name, unit, {}}; }

AxisTitle picture(int width, int height) {
  AxisTitle title;
  title.picture.width = width;
  title.picture.height = height;
  title.picture.pixels.resize(static_cast<std::size_t>(width * height) * 4);
  return title;
}

/// What is black of a text.
PixelBox inkOf(const PlacedTitle::Text& text) {
  const double end =
      text.start.x + text.scale * (0.5 * static_cast<double>(text.text.size()) - 0.1);
  const bool descends = text.text.find('p') != std::string::npos;
  return {text.start.x + 0.1 * text.scale, end, text.start.y - (descends ? 0.25 * text.scale : 0.0),
          text.start.y + 0.75 * text.scale};
}

bool isWithin(const PlacedTitle& title, const PixelBox& area) {
  return title.box.left >= area.left && title.box.right <= area.right &&
         title.box.bottom >= area.bottom && title.box.top <= area.top;
}

TEST(FrameTitlesTest, TheHorizontalOneStandsBelowTheTip) {
  const PlacedTitle title = placeTitleX(texts("Nom", "mm"), kArea, kFont);
  ASSERT_EQ(title.texts.size(), 2U);
  const PixelBox unit = inkOf(title.texts[0]);
  const PixelBox name = inkOf(title.texts[1]);
  EXPECT_EQ(title.texts[0].text, "mm");
  EXPECT_EQ(title.texts[1].text, "Nom");
  EXPECT_DOUBLE_EQ(name.height(), 10);  // 0.05 of the graph
  EXPECT_DOUBLE_EQ(unit.height(), 7);   // 0.035
  EXPECT_NEAR(name.right, 307.5, 1e-6);
  EXPECT_NEAR(unit.right, 307.5, 1e-6);
  EXPECT_NEAR(name.top, -20, 1e-9);
  EXPECT_LT(unit.top, name.bottom);
  EXPECT_TRUE(isWithin(title, kArea.visible));
}

TEST(FrameTitlesTest, TheVerticalOneStandsOnTheTip) {
  const PlacedTitle title = placeTitleY(texts("Nom", "mm"), kArea, kFont);
  ASSERT_EQ(title.texts.size(), 2U);
  const PixelBox unit = inkOf(title.texts[0]);
  const PixelBox name = inkOf(title.texts[1]);
  EXPECT_NEAR((name.left + name.right) / 2, 0, 1e-6);
  EXPECT_NEAR(unit.bottom, 205 + 4, 1e-9);
  EXPECT_GT(name.bottom, unit.top);
  EXPECT_TRUE(isWithin(title, kArea.visible));
}

TEST(FrameTitlesTest, HeightsAreThoseOfTheBlackBoxes) {
  const PlacedTitle title = placeTitleX(texts("p", ""), kArea, kFont);
  ASSERT_EQ(title.texts.size(), 1U);
  EXPECT_DOUBLE_EQ(title.texts[0].scale, 10);
  EXPECT_DOUBLE_EQ(inkOf(title.texts[0]).height(), 10);
  EXPECT_DOUBLE_EQ(placeTitleX(texts("n", ""), kArea, kFont).texts[0].scale, 10 / 0.75);
}

TEST(FrameTitlesTest, WhereThereIsNoHeightTheUnitStandsBeside) {
  for (const PlacedTitle& title : {placeTitleX(texts("Nom", "mm"), kSmallArea, kFont),
                                   placeTitleY(texts("Nom", "mm"), kSmallArea, kFont)}) {
    ASSERT_EQ(title.texts.size(), 2U);
    EXPECT_EQ(title.texts[0].text, "Nom");
    EXPECT_EQ(title.texts[0].start.y, title.texts[1].start.y);
    EXPECT_GT(inkOf(title.texts[1]).left, inkOf(title.texts[0]).right);
    EXPECT_TRUE(isWithin(title, kSmallArea.visible));
  }
}

TEST(FrameTitlesTest, TextsStayReadable) {
  const PlacedTitle title = placeTitleX(texts("Nom", "mm"), kSmallArea, kFont);
  EXPECT_GE(inkOf(title.texts[0]).height(), 7);
  EXPECT_GE(inkOf(title.texts[1]).height(), 7);
}

TEST(FrameTitlesTest, PulledIntoTheVisibleArea) {
  const PlacedTitle x = placeTitleX(texts("Nom", ""), kSmallArea, kFont);
  EXPECT_NEAR(x.box.bottom, -13, 1e-9);
  EXPECT_NEAR(x.box.right, 125, 1e-9);  // as far from the labels as possible
  const FrameArea narrow{300, 200, {-5, 360, -40, 240}};
  const PlacedTitle y = placeTitleY(texts("A long name", ""), narrow, kFont);
  EXPECT_NEAR(y.box.left, -4, 1e-9);
  const FrameArea endsEarly{300, 200, {-60, 290, -40, 240}};
  EXPECT_NEAR(placeTitleX(texts("Nom", ""), endsEarly, kFont).box.right, 289, 1e-9);
}

TEST(FrameTitlesTest, LargeTextsAreMadeSmaller) {
  const std::string longText(500, 'n');
  for (const FrameArea& area : {kArea, kSmallArea}) {
    for (const AxisTitle& title : {texts(longText, ""), texts("", longText),
                                   texts(longText, longText), texts("n", longText)}) {
      EXPECT_TRUE(isWithin(placeTitleX(title, area, kFont), area.visible));
      EXPECT_TRUE(isWithin(placeTitleY(title, area, kFont), area.visible));
    }
  }
}

TEST(FrameTitlesTest, FlatTextsDoNotGrowWithoutBounds) {
  FontMetrics flat = boxFont();
  flat.glyphs['-'].blackBoxY = 1e-4F;
  const PlacedTitle title = placeTitleX(texts("-", ""), kArea, flat);
  ASSERT_EQ(title.texts.size(), 1U);
  EXPECT_LE(title.texts[0].scale * 0.3, kArea.visible.width());
}

TEST(FrameTitlesTest, NothingToShowGivesNoTitle) {
  for (const AxisTitle& title : {texts("", ""), texts("  ", " ")}) {
    EXPECT_TRUE(placeTitleX(title, kArea, kFont).texts.empty());
    EXPECT_TRUE(placeTitleY(title, kArea, kFont).texts.empty());
    EXPECT_FALSE(placeTitleX(title, kArea, kFont).picture);
  }
  EXPECT_TRUE(placeTitleX(texts("Nom", "mm"), kArea, FontMetrics()).texts.empty());
}

TEST(FrameTitlesTest, AnyByteIsACharacter) {
  const PlacedTitle title = placeTitleX(texts("Temp\xE9rature \xB0\xFF", ""), kArea, kFont);
  EXPECT_EQ(title.texts.at(0).text, "Temp\xE9rature \xB0\xFF");
}

TEST(FrameTitlesTest, PicturesTakeTheTextsPlace) {
  AxisTitle title = picture(30, 12);
  title.name = "Nom";
  title.unit = "mm";
  const PlacedTitle x = placeTitleX(title, kArea, kFont);
  EXPECT_TRUE(x.texts.empty());
  ASSERT_TRUE(x.picture);
  EXPECT_NEAR(x.picture->x, 307.5 - 30, 1e-9);
  EXPECT_NEAR(x.picture->y, -32, 1e-9);
  EXPECT_EQ(x.box, (PixelBox{x.picture->x, x.picture->x + 30, x.picture->y, x.picture->y + 12}));
  const PlacedTitle y = placeTitleY(title, kArea, kFont);
  ASSERT_TRUE(y.picture);
  EXPECT_NEAR(y.picture->x, -15, 1e-9);
  EXPECT_NEAR(y.picture->y, 209, 1e-9);
}

TEST(FrameTitlesTest, PicturesArePulledIntoTheVisibleArea) {
  const PlacedTitle x = placeTitleX(picture(40, 35), kArea, kFont);
  EXPECT_NEAR(x.picture->y, -49, 1e-9);
  EXPECT_NEAR(x.picture->x, 359 - 40, 1e-9);
  const PlacedTitle y = placeTitleY(picture(40, 60), kArea, kFont);
  EXPECT_NEAR(y.picture->y, 239 - 60, 1e-9);
  EXPECT_NEAR(y.picture->x, 10, 1e-9);  // clear of the axis
}

TEST(FrameTitlesTest, APictureLargerThanTheViewKeepsItsCorner) {
  for (const PlacedTitle& title : {placeTitleX(picture(1000, 800), kArea, kFont),
                                   placeTitleY(picture(1000, 800), kArea, kFont)}) {
    EXPECT_NEAR(title.picture->x, -59, 1e-9);
    EXPECT_NEAR(title.picture->y, -49, 1e-9);
  }
}

TEST(FrameTitlesTest, MirroredAxesKeepTheirTitlesInside) {
  const FrameArea mirrored{-300, -200, {-360, 60, -240, 40}};
  EXPECT_TRUE(isWithin(placeTitleX(texts("Nom", "mm"), mirrored, kFont), mirrored.visible));
  EXPECT_TRUE(isWithin(placeTitleY(texts("Nom", "mm"), mirrored, kFont), mirrored.visible));
}

}  // namespace
}  // namespace zyn::test
