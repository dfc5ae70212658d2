// The dimension drawn into an OpenGL context of the host's own: pixels, sizes, selection names, and
// what it leaves behind.
#include <array>
#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"
#include "support/Pictures_win.h"
#include "support/ProcessUsage_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/glu.h>

namespace zyn::test {
namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;

struct Line {
  Vec from;
  Vec to;
};

ComPtr<IZYNGLCote> makeCote(const std::wstring& text) {
  auto cote = createObject<IZYNGLCote>(kCoteProgId);
  cote->put_Texte(_bstr_t(text.c_str()));
  cote->setColor(0, 0, 0, 1);
  return cote;
}

/// The part of a picture from (left, top), white elsewhere.
Image part(const Image& image, int left, int top, int right, int bottom) {
  Image found(image.width(), image.height());
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const bool inside = x >= left && x < right && y >= top && y < bottom;
      found.at(x, y) = inside ? image.at(x, y) : kWhite;
    }
  }
  return found;
}

/// The host looks at the plane of x and y on white, a model unit a pixel, rows counted from below.
class CoteDrawingTest : public HostTest {
 protected:
  CoteDrawingTest() {
    glViewport(0, 0, kWidth, kHeight);
    glClearColor(1, 1, 1, 1);
    glEnable(GL_DEPTH_TEST);
    look(1);
    clear();
  }

  static void clear() { glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); }

  /// A model unit is so many pixels long.
  static void look(double pixels) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kWidth / pixels, 0, kHeight / pixels, -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
  }

  static ComPtr<IZYNGLCote> horizontal(double from, double to, double y, double offset,
                                       const std::wstring& text = L"") {
    auto cote = makeCote(text);
    cote->put_TypeCotation(2);
    cote->setPointsCotation(from, y, 0, to, y, 0);
    cote->put_DecalageCotation(offset);
    return cote;
  }

  Image drawn(IZYNGLCote* cote) const {
    clear();
    EXPECT_EQ(cote->Draw(), S_OK);
    return canvas_.read();
  }

  /// The box of what a dimension draws of a text that is its own height and depth: black from the
  /// line's lower end to its upper one but for the margins.
  PixelBox textBox(IZYNGLCote* cote) const { return inkBox(drawn(cote), kWhite); }

  GlCanvas canvas_{kWidth, kHeight};
};

/// Rows counted from below, as the model is.
const Rgb& at(const Image& image, int x, int y) { return image.at(x, kHeight - 1 - y); }

bool isDark(const Rgb& colour) { return difference(colour, kWhite) > 100; }

/// Whether there is ink near a point.
bool isInkNear(const Image& image, double x, double y, int reach = 1) {
  for (int dy = -reach; dy <= reach; ++dy) {
    for (int dx = -reach; dx <= reach; ++dx) {
      const int column = static_cast<int>(std::floor(x)) + dx;
      const int row = static_cast<int>(std::floor(y)) + dy;
      if (column < 0 || row < 0 || column >= kWidth || row >= kHeight) continue;
      if (isDark(at(image, column, row))) return true;
    }
  }
  return false;
}

bool isLineAlong(const Image& image, const Line& line) {
  const Vec way = line.to - line.from;
  const int steps = static_cast<int>(std::ceil(std::hypot(way.x, way.y)));
  for (int i = 1; i < steps; ++i) {
    const Vec point = line.from + (static_cast<double>(i) / steps) * way;
    if (!isInkNear(image, point.x, point.y)) return false;
  }
  return true;
}

// --- geometry on the screen ----------------------------------------------------------------------

TEST_F(CoteDrawingTest, AHorizontalOneHasItsLinesArrowsAndText) {
  const auto cote = horizontal(80, 320, 60, 100, L"240");
  const Image image = drawn(cote.Get());
  EXPECT_TRUE(isLineAlong(image, {{80, 160}, {320, 160}}));
  EXPECT_TRUE(isLineAlong(image, {{80, 60}, {80, 165}}));
  EXPECT_TRUE(isLineAlong(image, {{320, 60}, {320, 165}}));
  EXPECT_FALSE(isInkNear(image, 80, 168));
  EXPECT_FALSE(isInkNear(image, 80, 57));
  EXPECT_FALSE(isInkNear(image, 200, 60, 3));
  // Arrows 15 by 5 pixels, inside.
  EXPECT_TRUE(isDark(at(image, 93, 161)));
  EXPECT_TRUE(isDark(at(image, 93, 158)));
  EXPECT_TRUE(isDark(at(image, 306, 161)));
  EXPECT_FALSE(isInkNear(image, 110, 163));
  EXPECT_FALSE(isInkNear(image, 70, 160));
  // The text stands over the middle, 15 pixels away, its line 20 pixels high.
  const PixelBox text = inkBox(part(image, 100, 0, 300, kHeight - 166), kWhite);
  EXPECT_NEAR(text.centreX(), 200, 1.5);
  EXPECT_GE(kHeight - 1 - text.bottom, 160 + 15);
  EXPECT_LE(kHeight - 1 - text.top, 160 + 15 + 20);
}

TEST_F(CoteDrawingTest, AVerticalOneMeasuresAlongY) {
  for (const double offset : {60.0, -60.0}) {
    auto cote = makeCote(L"8");
    cote->put_TypeCotation(1);
    cote->setPointsCotation(200, 60, 0, 200, 240, 0);
    cote->put_DecalageCotation(offset);
    const Image image = drawn(cote.Get());
    const double line = 200 + offset;
    const double end = offset > 0 ? 5 : -5;
    EXPECT_TRUE(isLineAlong(image, {{line, 60}, {line, 240}}));
    EXPECT_TRUE(isLineAlong(image, {{200, 60}, {line + end, 60}}));
    EXPECT_TRUE(isLineAlong(image, {{200, 240}, {line + end, 240}}));
    EXPECT_TRUE(isInkNear(image, line + (offset > 0 ? 20 : -20), 150, 6));
  }
}

TEST_F(CoteDrawingTest, AnAlignedOneFollowsItsPoints) {
  for (const double offset : {50.0, -50.0}) {
    auto cote = makeCote(L"");
    cote->put_TypeCotation(3);
    cote->setPointsCotation(120, 90, 0, 280, 210, 0);  // direction (0.8, 0.6)
    cote->put_DecalageCotation(offset);
    const Image image = drawn(cote.Get());
    const Vec across = offset * Vec{-0.6, 0.8, 0};
    EXPECT_TRUE(isLineAlong(image, {Vec{120, 90, 0} + across, Vec{280, 210, 0} + across}));
    EXPECT_TRUE(isLineAlong(image, {{120, 90}, Vec{120, 90, 0} + 1.1 * across}));
    EXPECT_TRUE(isLineAlong(image, {{280, 210}, Vec{280, 210, 0} + 1.1 * across}));
    EXPECT_FALSE(isInkNear(image, 200, 150, 3));
  }
}

TEST_F(CoteDrawingTest, ArrowsOfAShortOneStandOutside) {
  const Image image = drawn(horizontal(190, 210, 100, 80).Get());
  EXPECT_TRUE(isLineAlong(image, {{160, 180}, {240, 180}}));
  EXPECT_TRUE(isDark(at(image, 177, 181)));
  EXPECT_TRUE(isDark(at(image, 222, 181)));
  EXPECT_FALSE(isInkNear(image, 200, 183));
  EXPECT_FALSE(isInkNear(image, 155, 180));
}

TEST_F(CoteDrawingTest, TheTextMovesAlongTheLine) {
  auto cote = horizontal(80, 320, 60, 100, L"24");
  const auto centre = [&] {
    return inkBox(part(drawn(cote.Get()), 0, 0, kWidth, kHeight - 166), kWhite).centreX();
  };
  EXPECT_NEAR(centre(), 200, 1.5);
  cote->put_PositionCotation(60);
  EXPECT_NEAR(centre(), 260, 1.5);
  cote->setPointsCotation(320, 60, 0, 80, 60, 0);
  EXPECT_NEAR(centre(), 140, 1.5);
}

TEST_F(CoteDrawingTest, PixelsStayPixelsAtAnyZoom) {
  for (const double pixels : {0.25, 1.0, 8.0}) {
    look(pixels);
    auto cote = horizontal(80 / pixels, 320 / pixels, 60 / pixels, 100 / pixels, L"240");
    const Image image = drawn(cote.Get());
    EXPECT_TRUE(isLineAlong(image, {{80, 160}, {320, 160}})) << pixels;
    EXPECT_TRUE(isDark(at(image, 93, 161))) << pixels;
    EXPECT_FALSE(isInkNear(image, 80, 168)) << pixels;
    const PixelBox text = inkBox(part(image, 100, 0, 300, kHeight - 166), kWhite);
    EXPECT_GE(kHeight - 1 - text.bottom, 160 + 15) << pixels;
    EXPECT_LE(kHeight - 1 - text.top, 160 + 15 + 20) << pixels;
  }
}

TEST_F(CoteDrawingTest, InSpaceItLiesInItsPlane) {
  // Seen from the front, with z upwards.
  glTranslated(200, 100, 0);
  glRotated(-90, 1, 0, 0);
  auto cote = makeCote(L"");
  cote->put_TypeCotation(3);
  cote->setNormaleCotation(0, -3, 0);
  cote->setDirectionCotation(2, 0, 0);
  cote->setPointsCotation(-100, 10, 0, 100, -50, 30);
  cote->put_DecalageCotation(60);
  const Image image = drawn(cote.Get());
  EXPECT_TRUE(isLineAlong(image, {{100, 190}, {300, 190}}));
  EXPECT_TRUE(isLineAlong(image, {{100, 100}, {100, 195}}));
  EXPECT_TRUE(isLineAlong(image, {{300, 130}, {300, 195}}));
}

TEST_F(CoteDrawingTest, ReadableTextFacesTheViewer) {
  auto cote = makeCote(L"MMMM");
  cote->setPosition(0, 0, 0, 9);
  glTranslated(200, 150, 0);
  const PixelBox front = textBox(cote.Get());
  for (const double angle : {35.0, 120.0, 200.0}) {
    look(1);
    glTranslated(200, 150, 0);
    glRotated(angle, 1, 2, 3);
    const PixelBox turned = textBox(cote.Get());
    EXPECT_NEAR(turned.left, front.left, 1) << angle;
    EXPECT_NEAR(turned.right, front.right, 1) << angle;
    EXPECT_NEAR(turned.top, front.top, 1) << angle;
    EXPECT_NEAR(turned.bottom, front.bottom, 1) << angle;
  }
  cote->put_ToujoursLisible(VARIANT_FALSE);
  look(1);
  glTranslated(200, 150, 0);
  glRotated(90, 0, 0, 1);
  const PixelBox flat = textBox(cote.Get());
  EXPECT_NEAR(flat.right - flat.left, front.bottom - front.top, 2);
  EXPECT_NEAR(flat.bottom - flat.top, front.right - front.left, 2);
}

TEST_F(CoteDrawingTest, TextIsHeldByItsAnchor) {
  auto cote = makeCote(L"MpM");
  const auto box = [&](long reference) {
    cote->setPosition(200, 150, 0, reference);
    return textBox(cote.Get());
  };
  EXPECT_NEAR(box(1).left, 200, 1);
  EXPECT_NEAR(box(2).right, 200, 1);
  EXPECT_NEAR(box(5).centreX(), 200, 1);
  EXPECT_NEAR(box(9).centreX(), 200, 1);
  EXPECT_NEAR(kHeight - 1 - box(1).bottom, 150, 1.5);
  EXPECT_GT(kHeight - 1 - box(3).bottom, 150 - 21);
  EXPECT_LE(kHeight - 1 - box(3).top, 150);
  // The baseline's start: "p" hangs below.
  EXPECT_LT(kHeight - 1 - box(0).bottom, 149);
  EXPECT_GT(kHeight - 1 - box(0).top, 160);
}

TEST_F(CoteDrawingTest, InPerspectiveTheTextKeepsItsPixels) {
  auto cote = makeCote(L"MMMM");
  cote->put_HauteurPixels(30);
  std::vector<PixelBox> boxes;
  for (const double distance : {50.0, 200.0, 900.0}) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(50, static_cast<double>(kWidth) / kHeight, 1, 2000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(0, 0, -distance);
    glRotated(40, 1, 1, 0);
    glScaled(3, 3, 3);
    cote->setPosition(0, 0, 0, 9);
    boxes.push_back(textBox(cote.Get()));
  }
  for (const PixelBox& box : boxes) {
    EXPECT_NEAR(box.centreX(), kWidth / 2.0, 1.5);
    EXPECT_NEAR(box.right - box.left, boxes[0].right - boxes[0].left, 1);
    EXPECT_NEAR(box.bottom - box.top, boxes[0].bottom - boxes[0].top, 1);
  }
}

// --- sizes ---------------------------------------------------------------------------------------

TEST_F(CoteDrawingTest, EveryUnitGivesItsPixels) {
  constexpr double kPixelsPerUnit = 8;
  look(kPixelsPerUnit);
  auto cote = makeCote(L"MMp");
  cote->setPosition(10, 15, 0, 1);
  cote->put_HauteurPixels(96);
  const PixelBox reference = textBox(cote.Get());
  const struct {
    int unit;
    double size;
    double pixels;
  } cases[] = {{FontSizeUnit_PIXEL, 48, 48},     {FontSizeUnit_MM, 25.4, 72},
               {FontSizeUnit_INCH, 0.75, 54},    {FontSizeUnit_POINT, 60, 60},
               {FontSizeUnit_MODELMM, 8000, 64}, {FontSizeUnit_MODELINCH, 300, 60.96},
               {FontSizeUnit_MODEL, 10, 80},     {FontSizeUnit_MODEL + 1, 48, 48}};
  for (const auto& [unit, size, pixels] : cases) {
    cote->put_FontSizeUnit(static_cast<FontSizeUnit_e>(unit));
    cote->put_FontSize(size);
    const PixelBox box = textBox(cote.Get());
    EXPECT_NEAR(box.bottom - box.top + 1, (reference.bottom - reference.top + 1) * pixels / 96, 1.5)
        << unit;
    EXPECT_NEAR(box.right - box.left + 1, (reference.right - reference.left + 1) * pixels / 96, 2)
        << unit;
    long height = 0;
    cote->get_HauteurPixels(&height);
    EXPECT_EQ(height, std::floor(pixels)) << unit;
  }
}

TEST_F(CoteDrawingTest, ALineIsAsHighAsItsPixels) {
  // From the lower end of "p" to the upper one of "M" a line has 2 and 20 per cent more.
  auto cote = makeCote(L"Mp");
  cote->setPosition(100, 100, 0, 1);
  for (const long height : {122, 61}) {
    cote->put_HauteurPixels(height);
    const PixelBox box = textBox(cote.Get());
    EXPECT_NEAR(box.bottom - box.top + 1, height / 1.22 + 1, 1.5);  // with smooth edges
    EXPECT_NEAR(kHeight - 1 - box.bottom, 100 + 0.02 / 1.22 * height, 1.5);
  }
}

TEST_F(CoteDrawingTest, DigitsAloneMayMeasureTheLine) {
  auto cote = makeCote(L"0");
  cote->put_UseNumericSize(VARIANT_TRUE);
  cote->setPosition(100, 100, 0, 1);
  cote->put_HauteurPixels(100);
  const PixelBox box = textBox(cote.Get());
  EXPECT_NEAR(box.bottom - box.top + 1, 100, 1.5);
}

TEST_F(CoteDrawingTest, NumbersAreWrittenWithTenDigits) {
  auto number = makeCote(L"something else");
  number->put_IsNumeric(VARIANT_TRUE);
  number->setPosition(40, 100, 0, 1);
  auto text = makeCote(L"");
  text->setPosition(40, 100, 0, 1);
  const struct {
    double value;
    const wchar_t* shown;
  } cases[] = {
      {1234.5, L"1234.5"}, {-0.25, L"-0.25"}, {1.0 / 3, L"0.3333333333"}, {1e20, L"1e+20"}};
  for (const auto& [value, shown] : cases) {
    number->put_Value(value);
    text->put_Texte(_bstr_t(shown));
    EXPECT_TRUE(drawn(number.Get()) == drawn(text.Get())) << value;
  }
}

TEST_F(CoteDrawingTest, ColourAndOpacity) {
  auto cote = makeCote(L"M");
  cote->put_HauteurPixels(200);
  cote->setPosition(200, 150, 0, 9);
  cote->setColor(1, 0, 0, 0.5);
  const PixelBox box = textBox(cote.Get());
  const Image image = canvas_.read();
  EXPECT_LE(difference(image.at(box.left + 6, static_cast<int>(box.centreY())), {255, 128, 128}),
            2);
}

// --- picture -------------------------------------------------------------------------------------

TEST_F(CoteDrawingTest, ThePictureStandsBesideTheText) {
  const auto picture = pictureOfBitmap24(makeQuarters(48, 32));
  auto cote = horizontal(80, 320, 60, 100, L"240");
  ASSERT_EQ(cote->putref_Picture(picture.Get()), S_OK);
  const Image image = drawn(cote.Get());
  const PixelBox red = boxOf(image, kRed);
  const PixelBox yellow = boxOf(image, kYellow);
  EXPECT_EQ(red.right - red.left + 1, 24);
  EXPECT_EQ(red.bottom - red.top + 1, 16);
  EXPECT_EQ(yellow.left, red.right + 1);
  EXPECT_EQ(yellow.top, red.bottom + 1);
  EXPECT_NEAR(kHeight - yellow.bottom, 160 + 15, 1.5);
  // Together they stand over the middle.
  const PixelBox text = inkBox(part(image, yellow.right + 1, 0, 300, kHeight - 166), kWhite);
  EXPECT_NEAR(text.left, yellow.right + 5, 2);
  EXPECT_NEAR((red.left + text.right + 1) / 2.0, 200, 1.5);
  EXPECT_NEAR(text.centreY(), red.bottom + 1, 2.5);
  cote->putref_Picture(nullptr);
  EXPECT_TRUE(boxOf(drawn(cote.Get()), kRed).empty());
}

TEST_F(CoteDrawingTest, TheKeyColourIsLeftOut) {
  const auto picture = pictureOfBitmap24(makeQuarters(48, 32));
  auto cote = makeCote(L"");
  cote->setPosition(200, 150, 0, 9);
  cote->putref_Picture(picture.Get());
  cote->setPictureTransparentColor(0x1FF, -256, 512);  // red: low bytes count
  EXPECT_FALSE(boxOf(drawn(cote.Get()), kRed).empty());
  cote->put_PictureTransparent(1);
  EXPECT_FALSE(boxOf(drawn(cote.Get()), kRed).empty());
  cote->put_PictureTransparent(VARIANT_TRUE);
  const Image image = drawn(cote.Get());
  EXPECT_TRUE(boxOf(image, kRed).empty());
  EXPECT_EQ(image.count(kGreen), 24 * 16);
  EXPECT_EQ(image.at(200 - 12, 150 - 8), kWhite);
  cote->setPictureTransparentColor(0, 255, 0);
  EXPECT_TRUE(boxOf(drawn(cote.Get()), kGreen).empty());
}

TEST_F(CoteDrawingTest, EveryKindOfPictureIsDrawn) {
  const Image quarters = makeQuarters(40, 30);
  const ComPtr<IPictureDisp> pictures[] = {
      pictureOfBitmap24(quarters), pictureOfBitmap32(AlphaImage(quarters)),
      pictureOfIcon(AlphaImage(makeQuarters(32, 32))), pictureOfEnhancedMetafile(40, 30)};
  auto cote = makeCote(L"");
  cote->setPosition(200, 150, 0, 9);
  for (const auto& picture : pictures) {
    cote->putref_Picture(picture.Get());
    const Image image = drawn(cote.Get());
    EXPECT_EQ(image.at(195, 145), kRed);
    EXPECT_EQ(image.at(205, 155), kYellow);
  }
}

TEST_F(CoteDrawingTest, WhatIsNoPictureIsNotDrawn) {
  auto cote = makeCote(L"");
  auto other = makeCote(L"");
  EXPECT_EQ(cote->putref_Picture(other.Get()), S_OK);
  EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0);
}

// --- selection -----------------------------------------------------------------------------------

using Hits = std::vector<std::vector<GLuint>>;

class CoteSelectionTest : public CoteDrawingTest {
 protected:
  CoteSelectionTest() {
    cote_->put_NomSelection(10);
    cote_->put_NomSelectionPoint2(20);  // crossed: the first point's
    cote_->put_NomSelectionPoint1(30);
    cote_->put_TypeSelection(40);
    cote_->Draw();
  }

  /// The names of what lies within a pixel, counted from below, as a host picks.
  static Hits pick(const std::function<void()>& draw, double x, double y) {
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    GLdouble projection[16];
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    gluPickMatrix(x, y, 1, 1, viewport);
    glMultMatrixd(projection);
    glMatrixMode(GL_MODELVIEW);
    draw();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    Hits hits;
    const GLuint* record = buffer;
    for (GLint left = glRenderMode(GL_RENDER); left > 0; --left) {
      hits.emplace_back(record + 3, record + 3 + record[0]);
      record += 3 + record[0];
    }
    return hits;
  }
  Hits pick(double x, double y) const {
    return pick([&] { EXPECT_EQ(cote_->DrawForGLSelection(), S_OK); }, x, y);
  }

  ComPtr<IZYNGLCote> cote_ = horizontal(80, 320, 60, 100, L"240");
};

TEST_F(CoteSelectionTest, TextAndPointsAnswerWithTheirNames) {
  EXPECT_EQ(pick(200, 185), (Hits{{10}}));
  EXPECT_EQ(pick(76, 60), (Hits{{20}}));
  EXPECT_EQ(pick(87, 164), (Hits{{20}}));
  EXPECT_EQ(pick(324, 60), (Hits{{30}}));
  EXPECT_EQ(pick(313, 164), (Hits{{30}}));
  EXPECT_EQ(pick(200, 60), Hits());
  EXPECT_EQ(pick(20, 20), Hits());
}

TEST_F(CoteSelectionTest, LinesAnswerWithTheNameOfTheWhole) {
  EXPECT_EQ(pick(200, 160), (Hits{{10}}));
  EXPECT_EQ(pick(80, 110), (Hits{{10}}));
  EXPECT_EQ(pick(320, 110), (Hits{{10}}));
  EXPECT_EQ(pick(80, 164.5), (Hits{{20}, {10}}));  // past the dimension line
  for (const double beside : {-3.0, 3.0}) {
    EXPECT_EQ(pick(200, 160 + beside), Hits());
    EXPECT_EQ(pick(80 + beside, 110), Hits());
  }
  // In the ends, which come first.
  EXPECT_EQ(pick(80, 60), (Hits{{20}, {10}}));
  EXPECT_EQ(pick(320, 60), (Hits{{30}, {10}}));
}

TEST_F(CoteSelectionTest, LinesAtAnAngleAnswerToo) {
  cote_->put_TypeCotation(3);
  cote_->setPointsCotation(120, 90, 0, 280, 210, 0);  // direction (0.8, 0.6)
  cote_->put_DecalageCotation(50);
  cote_->Draw();
  EXPECT_EQ(pick(170, 190), (Hits{{10}}));
  EXPECT_EQ(pick(105, 110), (Hits{{10}}));
  EXPECT_EQ(pick(108, 113), Hits());
}

TEST_F(CoteSelectionTest, PointsWithoutANameAnswerWithThatOfTheWhole) {
  cote_ = horizontal(80, 320, 60, 100, L"240");
  cote_->put_NomSelection(10);
  cote_->Draw();
  for (const double x : {76.0, 324.0}) EXPECT_EQ(pick(x, 60), (Hits{{10}})) << x;
  for (const double x : {87.0, 313.0}) EXPECT_EQ(pick(x, 164), (Hits{{10}})) << x;
  cote_->put_NomSelectionPoint1(30);  // crossed: the second point's
  EXPECT_EQ(pick(76, 60), (Hits{{10}}));
  EXPECT_EQ(pick(324, 60), (Hits{{30}}));
  cote_->put_NomSelectionPoint2(0);  // a name as any other
  EXPECT_EQ(pick(76, 60), (Hits{{0}}));
}

TEST_F(CoteSelectionTest, TheTextAnswersExactlyWhereItIs) {
  ComPtr<IDispatch> object;
  ASSERT_EQ(cote_->GetPixelRect(nullptr, &object), S_OK);
  const auto rectangle = queryFor<IZYNRectangle>(object.Get());
  Sides s{};
  rectangle->get_XMin(&s[0]);
  rectangle->get_XMax(&s[1]);
  rectangle->get_YMin(&s[2]);
  rectangle->get_YMax(&s[3]);
  const double middle = kHeight - (s[2] + s[3]) / 2;
  EXPECT_EQ(pick(s[0] + 1.5, middle), (Hits{{10}}));
  EXPECT_EQ(pick(s[1] - 1.5, middle), (Hits{{10}}));
  EXPECT_EQ(pick(s[0] - 1.5, middle), Hits());
  EXPECT_EQ(pick(s[1] + 1.5, middle), Hits());
  EXPECT_EQ(pick(200, kHeight - s[2] - 1.5), (Hits{{10}}));
  EXPECT_EQ(pick(200, kHeight - s[2] + 1.5), Hits());
  EXPECT_EQ(pick(200, kHeight - s[3] + 1.5), (Hits{{10}}));
  EXPECT_EQ(pick(200, kHeight - s[3] - 1.5), Hits());
}

TEST_F(CoteSelectionTest, TheTypeComesFirstWhereItIsAskedFor) {
  cote_->put_PushTypeSelection(VARIANT_TRUE);
  EXPECT_EQ(pick(200, 185), (Hits{{40, 10}}));
  EXPECT_EQ(pick(76, 60), (Hits{{40, 20}}));
  EXPECT_EQ(pick(324, 60), (Hits{{40, 30}}));
  EXPECT_EQ(pick(200, 160), (Hits{{40, 10}}));
}

TEST_F(CoteSelectionTest, NothingIsPushedForANegativeName) {
  cote_->put_PushTypeSelection(VARIANT_TRUE);
  cote_->put_NomSelectionPoint2(-5);
  EXPECT_EQ(pick(76, 60), (Hits{{}}));
  EXPECT_EQ(pick(324, 60), (Hits{{40, 30}}));
  EXPECT_EQ(pick(200, 160), (Hits{{40, 10}}));
  cote_->put_NomSelection(-1);  // counts for all of it
  for (const Vec& point : {Vec{200, 185}, Vec{76, 60}, Vec{324, 60}, Vec{200, 160}}) {
    EXPECT_EQ(pick(point.x, point.y), (Hits{{}})) << point.x;
  }
}

/// What is drawn is hit, not what covers it.
TEST_F(CoteSelectionTest, DrawIsPickedUnderTheHostsOwnName) {
  cote_->put_Texte(_bstr_t(L"L"));
  const auto named = [&] {
    glPushName(99);
    EXPECT_EQ(cote_->Draw(), S_OK);
    glPopName();
  };
  const PixelBox letter = inkBox(part(drawn(cote_.Get()), 100, 0, 300, kHeight - 166), kWhite);
  EXPECT_EQ(pick(named, letter.left + 2, kHeight - letter.top - 4), (Hits{{99}}));
  EXPECT_EQ(pick(named, letter.right - 1, kHeight - letter.top - 4), Hits());
  EXPECT_EQ(pick(named, 200, 160), (Hits{{99}}));
  EXPECT_EQ(pick(named, 80, 110), (Hits{{99}}));
  EXPECT_EQ(pick(named, 92, 161.5), (Hits{{99}}));
  EXPECT_EQ(pick(named, 92, 165), Hits());
  EXPECT_EQ(pick(named, 20, 20), Hits());
  // And no smaller or larger than it was drawn last.
  EXPECT_TRUE(drawn(cote_.Get()) == drawn(cote_.Get()));
}

TEST_F(CoteSelectionTest, APickAtAnyZoomHitsWhatIsSeen) {
  for (const double pixels : {0.25, 8.0}) {
    look(pixels);
    cote_ = horizontal(80 / pixels, 320 / pixels, 60 / pixels, 100 / pixels, L"240");
    cote_->put_NomSelection(10);
    cote_->Draw();
    EXPECT_EQ(pick(200, 185), (Hits{{10}})) << pixels;
    EXPECT_EQ(pick(200, 170), Hits()) << pixels;
    EXPECT_EQ(pick(200, 200), Hits()) << pixels;
  }
}

// --- what cannot be drawn ------------------------------------------------------------------------

TEST_F(CoteDrawingTest, ThroughMatricesThatShowNothingNothingIsDrawn) {
  auto cote = horizontal(80, 320, 60, 100, L"240");
  const GLdouble zeros[16] = {};
  glLoadMatrixd(zeros);
  EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0);
  EXPECT_EQ(cote->DrawForGLSelection(), S_OK);
  look(1);
  glScaled(1, 1, 0);
  EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0);
  look(1);
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(zeros);
  glMatrixMode(GL_MODELVIEW);
  EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CoteDrawingTest, WhatIsNotFiniteIsNotDrawn) {
  constexpr double kBad[] = {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(), 1e300, -1e30};
  for (const double bad : kBad) {
    auto cote = horizontal(80, 320, 60, 100, L"240");
    cote->setPointsCotation(bad, 60, 0, 320, 60, 0);
    EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0) << bad;
    cote = horizontal(80, 320, 60, bad, L"240");
    EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0) << bad;
    cote = makeCote(L"240");
    cote->setPosition(0, bad, 0, 0);
    EXPECT_EQ(inkOf(drawn(cote.Get()), kWhite), 0) << bad;
    cote = horizontal(80, 320, 60, 100);
    cote->setDirectionCotation(bad, bad, 0);
    cote->setNormaleCotation(0, bad, 0);
    EXPECT_EQ(cote->Draw(), S_OK);
  }
}

TEST_F(CoteDrawingTest, ExtremesDoNoHarm) {
  const auto picture = pictureOfBitmap24(makeQuarters(16, 16));
  for (const double reach : {1e6, 1e12, 1e17}) {
    for (const long type : {0, 1, 2, 3}) {
      auto cote = horizontal(-reach, reach, reach, -reach / 2, L"240");
      cote->putref_Picture(picture.Get());
      cote->put_TypeCotation(type);
      cote->put_LongueurFlecheCotationPX(LONG_MAX);
      cote->put_LargeurFlecheCotationPX(LONG_MAX);
      cote->put_DecalageTexteCotationPX(LONG_MIN);
      EXPECT_EQ(cote->Draw(), S_OK);
      cote->put_FontSize(reach);
      EXPECT_EQ(cote->Draw(), S_OK);
      EXPECT_EQ(cote->DrawForGLSelection(), S_OK);
    }
  }
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CoteDrawingTest, ATextOfNoSizeLeavesTheLines) {
  const Image lines = drawn(horizontal(80, 320, 60, 100).Get());
  for (const double size : {0.0, -20.0, double(NAN)}) {
    auto cote = horizontal(80, 320, 60, 100, L"240");
    cote->put_FontSize(size);
    EXPECT_TRUE(drawn(cote.Get()) == lines) << size;
  }
}

TEST_F(CoteDrawingTest, PointsThatAreOneAreStillMeasured) {
  for (const long type : {1, 2, 3}) {
    auto cote = makeCote(L"0");
    cote->put_TypeCotation(type);
    cote->setPointsCotation(200, 150, 0, 200, 150, 0);
    EXPECT_GT(inkOf(drawn(cote.Get()), kWhite), 50) << type;
  }
}

// --- what is left behind -------------------------------------------------------------------------

/// The host's context in a state of its own.
class CoteStateTest : public CoteDrawingTest {
 protected:
  CoteStateTest() {
    glColor4d(0.25, 0.5, 0.75, 0.5);
    glRasterPos2d(17, 19);
    glListBase(123);
    glLineWidth(3);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT);
    glEnable(GL_LINE_SMOOTH);
    glBlendFunc(GL_ONE, GL_SRC_COLOR);
    glPolygonMode(GL_FRONT, GL_LINE);
    glMatrixMode(GL_PROJECTION);
    const auto picture = pictureOfBitmap24(makeQuarters(16, 16));
    cote_->putref_Picture(picture.Get());
  }

  void expectUntouched() {
    const GlState before = readGlState();
    for (const long type : {0, 1, 2, 3}) {
      cote_->put_TypeCotation(type);
      EXPECT_EQ(cote_->Draw(), S_OK);
      EXPECT_EQ(differences(before, readGlState()), kNone) << type;
      EXPECT_EQ(cote_->DrawForGLSelection(), S_OK);
      EXPECT_EQ(differences(before, readGlState()), kNone) << type;
    }
    EXPECT_TRUE(canvas_.isCurrent());
  }

  ComPtr<IZYNGLCote> cote_ = horizontal(80, 320, 60, 100, L"240");
};

TEST_F(CoteStateTest, EverythingIsAsItWas) { expectUntouched(); }

TEST_F(CoteStateTest, PendingErrorsStayPending) {
  glLineWidth(-1);
  cote_->Draw();
  cote_->DrawForGLSelection();
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_VALUE));
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CoteStateTest, AFullStackOfMatricesIsRespected) {
  glMatrixMode(GL_MODELVIEW);
  GLint most = 0;
  glGetIntegerv(GL_MAX_MODELVIEW_STACK_DEPTH, &most);
  for (GLint depth = 1; depth < most; ++depth) {
    glTranslated(depth % 2 ? 1 : -1, 0, 0);
    glPushMatrix();
  }
  expectUntouched();
  EXPECT_GT(inkOf(drawn(cote_.Get()), kWhite), 200);
  for (GLint depth = most - 1; depth >= 1; --depth) {
    glPopMatrix();
    glTranslated(depth % 2 ? -1 : 1, 0, 0);
  }
  GLdouble matrix[16] = {};
  glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
  EXPECT_EQ(matrix[12], 0);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CoteStateTest, AFullStackOfAttributesIsRespected) {
  GLint most = 0;
  glGetIntegerv(GL_MAX_ATTRIB_STACK_DEPTH, &most);
  for (GLint depth = 0; depth < most; ++depth) glPushAttrib(GL_ALL_ATTRIB_BITS);
  expectUntouched();
  for (GLint depth = 0; depth < most; ++depth) glPopAttrib();
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CoteStateTest, AListThatTheHostCompilesDrawsWhatDrawDraws) {
  glMatrixMode(GL_MODELVIEW);
  const Image expected = drawn(cote_.Get());
  const GLuint list = glGenLists(1);
  const GlState before = readGlState();
  glNewList(list, GL_COMPILE);
  EXPECT_EQ(cote_->Draw(), S_OK);
  glEndList();
  EXPECT_EQ(differences(before, readGlState()), kNone);
  clear();
  glCallList(list);
  EXPECT_TRUE(canvas_.read() == expected);
  EXPECT_EQ(differences(before, readGlState()), kNone);

  // In a state that came later, under another matrix.
  glDisable(GL_LIGHTING);
  glEnable(GL_FOG);
  glLineWidth(5);
  glTranslated(20, 30, 0);
  const GlState later = readGlState();
  const Image moved = drawn(cote_.Get());
  clear();
  glCallList(list);
  EXPECT_TRUE(canvas_.read() == moved);
  EXPECT_EQ(differences(later, readGlState()), kNone);
  glDeleteLists(list, 1);
}

TEST_F(CoteStateTest, ARecordedDimensionTurnsWithTheCamera) {
  glMatrixMode(GL_MODELVIEW);
  cote_->putref_Picture(nullptr);
  cote_->put_Texte(_bstr_t(L""));
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  EXPECT_EQ(cote_->Draw(), S_OK);
  glEndList();
  glTranslated(200, 150, 0);
  glRotated(90, 0, 0, 1);
  glTranslated(-200, -150, 0);
  clear();
  glCallList(list);
  const Image image = canvas_.read();
  EXPECT_TRUE(isLineAlong(image, {{190, 30}, {190, 270}}));
  EXPECT_TRUE(isLineAlong(image, {{185, 30}, {290, 30}}));
  glDeleteLists(list, 1);
}

TEST_F(CoteSelectionTest, AListThatTheHostCompilesHoldsTheNames) {
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  EXPECT_EQ(cote_->DrawForGLSelection(), S_OK);
  glEndList();
  clear();
  glCallList(list);
  EXPECT_GT(inkOf(canvas_.read(), kWhite), 500);  // the covers
  glDeleteLists(list, 1);
}

TEST_F(CoteDrawingTest, FeedbackTellsWhatIsDrawn) {
  const auto cote = horizontal(80, 320, 60, 100, L"L");
  const PixelBox ink = inkBox(drawn(cote.Get()), kWhite);
  std::vector<GLfloat> buffer(20000);
  glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_2D, buffer.data());
  glRenderMode(GL_FEEDBACK);
  EXPECT_EQ(cote->Draw(), S_OK);
  const GLint count = glRenderMode(GL_RENDER);
  ASSERT_GT(count, 0);
  int polygons = 0;
  int lines = 0;
  const auto expectInside = [&](const GLfloat* vertex) {
    EXPECT_GE(vertex[0], ink.left - 1);
    EXPECT_LE(vertex[0], ink.right + 2);
    EXPECT_GE(vertex[1], kHeight - ink.bottom - 2);
    EXPECT_LE(vertex[1], kHeight - ink.top + 1);
  };
  for (const GLfloat* token = buffer.data(); token < buffer.data() + count;) {
    const auto kind = static_cast<GLenum>(*token++);
    const bool isPolygon = kind == GL_POLYGON_TOKEN;
    ASSERT_TRUE(isPolygon || kind == GL_LINE_TOKEN || kind == GL_LINE_RESET_TOKEN) << kind;
    const int corners = isPolygon ? static_cast<int>(*token++) : 2;
    for (int i = 0; i < corners; ++i, token += 2) expectInside(token);
    ++(isPolygon ? polygons : lines);
  }
  EXPECT_GE(polygons, 2 + 2);  // arrows and letter
  EXPECT_GE(lines, 3 + 2 * 3 + 6);
  EXPECT_LE(polygons, 2 + 20);
}

TEST_F(CoteStateTest, NoListsAreMade) {
  const auto freshList = [] {
    const GLuint list = glGenLists(1);
    glDeleteLists(list, 1);
    return list;
  };
  const GLuint before = freshList();
  for (int i = 0; i < 10; ++i) cote_->Draw();
  EXPECT_LE(freshList(), before + 1);  // numbers may be given once only
  for (GLuint list = 1; list < before + 5000; ++list) ASSERT_FALSE(glIsList(list)) << list;
}

TEST_F(CoteStateTest, DrawingAgainAndAgainKeepsNoMemory) {
  expectNoGrowth(2000, 2, [&] {
    cote_->Draw();
    cote_->DrawForGLSelection();
    glFinish();  // the end of a frame
  });
}

// --- whose context -------------------------------------------------------------------------------

TEST_F(CoteDrawingTest, OneDimensionIsDrawnInSeveralContexts) {
  auto cote = horizontal(80, 320, 60, 100, L"240");
  const Image first = drawn(cote.Get());
  {
    GlCanvas other(kWidth, kHeight);
    glViewport(0, 0, kWidth, kHeight);
    glClearColor(1, 1, 1, 1);
    look(1);
    clear();
    cote->Draw();
    EXPECT_TRUE(other.isCurrent());
    EXPECT_TRUE(other.read() == first);
  }
  canvas_.makeCurrent();
  EXPECT_TRUE(drawn(cote.Get()) == first);
}

TEST_F(CoteDrawingTest, InAViewItIsDrawnWithTheFontsOfTheView) {
  auto cote = makeCote(L"MMMM");
  cote->put_HauteurPixels(40);
  cote->setPosition(0, 0, 0, 9);
  const PixelBox own = [&] {
    glTranslated(200, 150, 0);
    return textBox(cote.Get());
  }();
  View3DHost view({400, 300});
  view.addBox({-50, 50, -50, 50, -50, 50});
  const auto drawer = makeForeign<ForeignObject>();
  PixelBox box{};
  drawer->onDraw3D = [&](int) {
    glClearColor(1, 1, 1, 1);
    clear();
    const GlState before = readGlState();
    EXPECT_EQ(cote->Draw(), S_OK);
    EXPECT_EQ(differences(before, readGlState()), kNone);
    box = inkBox(readViewport(), kWhite);
    return S_OK;
  };
  view->Add(queryFor<IDispatch>(drawer.Get()).Get(), 0);
  view->initView(0);
  view.paint();
  EXPECT_NEAR(box.centreX(), 200, 1.5);
  EXPECT_NEAR(box.right - box.left, own.right - own.left, 1);
  EXPECT_NEAR(box.bottom - box.top, own.bottom - own.top, 1);
}

}  // namespace
}  // namespace zyn::test
