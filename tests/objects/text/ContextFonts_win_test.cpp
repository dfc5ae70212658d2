#include "objects/text/ContextFonts_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <initializer_list>
#include <memory>

#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"

namespace zyn {
namespace {

HGLRC contextOf(std::uintptr_t number) { return reinterpret_cast<HGLRC>(number); }

class FontRegisterTest : public testing::Test {
 protected:
  std::shared_ptr<CGLFontContext> enter(FontOwner owner, HGLRC context) {
    auto fonts = std::make_shared<CGLFontContext>();
    fontRegister.enter(owner, context, fonts);
    return fonts;
  }

  FontRegister fontRegister;
};

TEST_F(FontRegisterTest, GivesTheFontsOfTheContext) {
  const auto first = enter(FontOwner::kView3D, contextOf(0x1000));
  const auto second = enter(FontOwner::kView2D, contextOf(0x2000));
  const auto third = enter(FontOwner::kBitmapContext2D, contextOf(0x3000));
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), first);
  EXPECT_EQ(fontRegister.find(contextOf(0x2000)), second);
  EXPECT_EQ(fontRegister.find(contextOf(0x3000)), third);
  EXPECT_EQ(fontRegister.find(contextOf(0x4000)), nullptr);
  EXPECT_EQ(fontRegister.find(nullptr), nullptr);
}

TEST_F(FontRegisterTest, A3DBitmapContextGivesNone) {
  enter(FontOwner::kBitmapContext3D, contextOf(0x1000));
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), nullptr);
}

TEST_F(FontRegisterTest, OwnersAreAskedInTheirOrder) {
  for (const bool inOrder : {true, false}) {
    FontRegister asked;
    const auto fonts3D = std::make_shared<CGLFontContext>();
    const auto fontsBitmap2D = std::make_shared<CGLFontContext>();
    const auto fonts2D = std::make_shared<CGLFontContext>();
    const auto enterAll = [&](std::initializer_list<int> order) {
      for (const int owner : order) {
        switch (owner) {
          case 0:
            asked.enter(FontOwner::kView2D, contextOf(1), fonts2D);
            break;
          case 1:
            asked.enter(FontOwner::kBitmapContext2D, contextOf(1), fontsBitmap2D);
            break;
          case 2:
            asked.enter(FontOwner::kView3D, contextOf(1), fonts3D);
            break;
          default:
            asked.enter(FontOwner::kBitmapContext3D, contextOf(1),
                        std::make_shared<CGLFontContext>());
        }
      }
    };
    if (inOrder) {
      enterAll({0, 1, 2, 3});
    } else {
      enterAll({3, 2, 1, 0});
    }
    EXPECT_EQ(asked.find(contextOf(1)), fonts2D);
    asked.leave(fonts2D.get());
    EXPECT_EQ(asked.find(contextOf(1)), fontsBitmap2D);
    asked.leave(fontsBitmap2D.get());
    EXPECT_EQ(asked.find(contextOf(1)), fonts3D);
    asked.leave(fonts3D.get());
    EXPECT_EQ(asked.find(contextOf(1)), nullptr);
  }
}

TEST_F(FontRegisterTest, HoldsNothingOfWhatHasLeft) {
  const auto fonts = enter(FontOwner::kView3D, contextOf(0x1000));
  EXPECT_EQ(fonts.use_count(), 2);
  fontRegister.leave(fonts.get());
  EXPECT_EQ(fonts.use_count(), 1);
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), nullptr);
  fontRegister.leave(fonts.get());
}

TEST_F(FontRegisterTest, AContextAtTheAddressOfAnEarlierOneHasItsOwnFonts) {
  const auto earlier = enter(FontOwner::kView3D, contextOf(0x1000));
  fontRegister.leave(earlier.get());
  const auto later = enter(FontOwner::kView3D, contextOf(0x1000));
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), later);
}

using test::GlCanvas;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;
using test::Rgb;

constexpr int kSide = 256;
constexpr int kEm = 128;
constexpr int kLeft = 32;
constexpr int kBaseline = 80;  ///< from the bottom
/// Pixels by which the system fits what it writes to the grid.
constexpr int kHinting = 2;
constexpr Rgb kInk{0, 0, 0};

/// A byte of Windows' Western European code page and the character it stands for.
struct Letter {
  unsigned char byte;
  wchar_t character;
};

constexpr Letter kLetters[] = {
    {'M', L'M'},       {'p', L'p'},       {'8', L'8'},       {0x80, L'\u20AC'}, {0x8C, L'\u0152'},
    {0x99, L'\u2122'}, {0xB0, L'\u00B0'}, {0xC9, L'\u00C9'}, {0xD8, L'\u00D8'}, {0xC5, L'\u00C5'},
    {0xC7, L'\u00C7'}, {0xDF, L'\u00DF'}, {0xE0, L'\u00E0'}, {0xE7, L'\u00E7'}, {0xE8, L'\u00E8'},
    {0xE9, L'\u00E9'}, {0xEA, L'\u00EA'}, {0xEF, L'\u00EF'}, {0xF1, L'\u00F1'}, {0xF4, L'\u00F4'},
    {0xFB, L'\u00FB'}, {0xFC, L'\u00FC'}, {0xFE, L'\u00FE'},
};

/// The outline fonts against what the system writes with the same font: the context of a canvas, on
/// which one unit is a pixel; black on white.
class ContextFontsTest : public testing::Test {
 protected:
  ContextFontsTest() {
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kSide, 0, kSide, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glClearColor(1, 1, 1, 1);
    clear();
  }

  static void clear() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(0, 0, 0);
  }

  /// What one byte draws; leaves the model-view matrix where the next glyph starts.
  Image drawn(GLuint lists, unsigned char byte) const {
    clear();
    glLoadIdentity();
    glTranslatef(kLeft, kBaseline, 0);
    glScalef(kEm, kEm, 1);
    glListBase(lists);
    glCallLists(1, GL_UNSIGNED_BYTE, &byte);
    return canvas.read();
  }

  /// How far the model-view matrix has moved on since `drawn` started, in em heights.
  static double advance() {
    std::array<GLdouble, 16> matrix{};
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
    return (matrix[12] - kLeft) / kEm;
  }

  GlCanvas canvas{kSide, kSide};
};

/// The same character as the system writes it.
class WrittenLetter {
 public:
  WrittenLetter() {
    LOGFONTW wanted = {};
    wanted.lfHeight = -kEm;
    wanted.lfWeight = FW_BOLD;
    wanted.lfQuality = NONANTIALIASED_QUALITY;
    std::wcscpy(wanted.lfFaceName, L"arial");
    font_ = CreateFontIndirectW(&wanted);
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, kSide, kSide, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
    previousBitmap_ = SelectObject(dc_, bitmap_);
    previousFont_ = SelectObject(dc_, font_);
    SetTextAlign(dc_, TA_BASELINE | TA_LEFT);
  }
  ~WrittenLetter() {
    SelectObject(dc_, previousFont_);
    SelectObject(dc_, previousBitmap_);
    DeleteObject(bitmap_);
    DeleteObject(font_);
    DeleteDC(dc_);
  }
  WrittenLetter(const WrittenLetter&) = delete;
  WrittenLetter& operator=(const WrittenLetter&) = delete;

  Image write(wchar_t character) {
    PatBlt(dc_, 0, 0, kSide, kSide, WHITENESS);
    TextOutW(dc_, kLeft, kSide - kBaseline, &character, 1);
    GdiFlush();
    Image image(kSide, kSide);
    const auto* pixel = static_cast<const std::uint8_t*>(bits_);
    for (int y = kSide - 1; y >= 0; --y) {
      for (int x = 0; x < kSide; ++x, pixel += 4) image.at(x, y) = {pixel[2], pixel[1], pixel[0]};
    }
    return image;
  }

  double width(wchar_t character) {
    SIZE size = {};
    GetTextExtentPoint32W(dc_, &character, 1, &size);
    return static_cast<double>(size.cx) / kEm;
  }

 private:
  HDC dc_ = CreateCompatibleDC(nullptr);
  HFONT font_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  void* bits_ = nullptr;
  HGDIOBJ previousBitmap_ = nullptr;
  HGDIOBJ previousFont_ = nullptr;
};

bool hasInkNear(const Image& image, int x, int y) {
  for (int dy = -kHinting; dy <= kHinting; ++dy) {
    for (int dx = -kHinting; dx <= kHinting; ++dx) {
      const int nearX = std::clamp(x + dx, 0, kSide - 1);
      const int nearY = std::clamp(y + dy, 0, kSide - 1);
      if (image.at(nearX, nearY) == kInk) return true;
    }
  }
  return false;
}

/// Pixels of `a` that have no ink of `b` near them.
int strayInk(const Image& a, const Image& b) {
  int stray = 0;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      if (a.at(x, y) == kInk && !hasInkNear(b, x, y)) ++stray;
    }
  }
  return stray;
}

TEST_F(ContextFontsTest, LettersAreTheSystemsAccentsIncluded) {
  const ContextFonts own(FontOwner::kView3D, false);
  WrittenLetter reference;
  for (const Letter& letter : kLetters) {
    SCOPED_TRACE(int{letter.byte});
    const Image glyph = drawn(own.fonts()->filledLists(), letter.byte);
    EXPECT_NEAR(advance(), reference.width(letter.character), 1.0 / kEm);
    EXPECT_NEAR(advance(), own.fonts()->metrics().glyphs[letter.byte].cellIncX, 1e-6);
    const Image written = reference.write(letter.character);
    ASSERT_GT(written.count(kInk), 100);
    EXPECT_LE(strayInk(glyph, written), 2);
    EXPECT_LE(strayInk(written, glyph), 2);
  }
}

TEST_F(ContextFontsTest, OutlinesAreTheEdgesOfTheFilledGlyphs) {
  const ContextFonts own(FontOwner::kView3D, true);
  for (const Letter& letter : kLetters) {
    SCOPED_TRACE(int{letter.byte});
    const Image filled = drawn(own.fonts()->filledLists(), letter.byte);
    const double width = advance();
    const Image edges = drawn(own.fonts()->outlineLists(), letter.byte);
    EXPECT_NEAR(advance(), width, 1e-6);
    EXPECT_GT(edges.count(kInk), 50);
    EXPECT_LE(strayInk(edges, filled), 0);
    EXPECT_LT(edges.count(kInk), filled.count(kInk));
  }
}

TEST_F(ContextFontsTest, MeasuresAreThoseOfTheFont) {
  const ContextFonts filled(FontOwner::kView3D, false);
  const ContextFonts both(FontOwner::kView3D, true);
  const FontMetrics& measures = filled.fonts()->metrics();
  EXPECT_NEAR(measures.digits.bottom, 0.0, 0.03);
  EXPECT_NEAR(measures.digits.top, 0.71, 0.05);
  EXPECT_NEAR(measures.text.top, 0.69 + 0.2 * 0.9, 0.05);
  EXPECT_NEAR(measures.text.bottom, -0.21 - 0.02 * 0.9, 0.03);
  EXPECT_EQ(measures.text.top, both.fonts()->metrics().text.top);
  EXPECT_EQ(measures.digits.bottom, both.fonts()->metrics().digits.bottom);
}

TEST_F(ContextFontsTest, TheLastByteDrawsNothingAndDoesNotAdvance) {
  const ContextFonts own(FontOwner::kView3D, true);
  for (const GLuint lists : {own.fonts()->filledLists(), own.fonts()->outlineLists()}) {
    EXPECT_EQ(drawn(lists, 255).count(kInk), 0);
    EXPECT_EQ(advance(), 0);
  }
}

TEST_F(ContextFontsTest, OutlineLinesComeAndGoWhileTheFilledGlyphsStay) {
  const ContextFonts own(FontOwner::kView2D, false);
  const GLuint filled = own.fonts()->filledLists();
  ASSERT_NE(filled, 0U);
  EXPECT_EQ(own.fonts()->outlineLists(), 0U);
  // Lists that others have compiled call the glyphs by their numbers.
  const GLuint caller = glGenLists(1);
  glNewList(caller, GL_COMPILE);
  glCallList(filled + 'M');
  glEndList();

  buildOutlineFonts(*own.fonts(), true);
  const GLuint lines = own.fonts()->outlineLists();
  EXPECT_NE(lines, 0U);
  EXPECT_EQ(own.fonts()->filledLists(), filled);
  buildOutlineFonts(*own.fonts(), true);
  EXPECT_EQ(own.fonts()->outlineLists(), lines);
  EXPECT_TRUE(glIsList(lines + 'M'));
  EXPECT_GT(own.fonts()->metrics().text.height(), 1.0);

  buildOutlineFonts(*own.fonts(), false);
  EXPECT_EQ(own.fonts()->outlineLists(), 0U);
  EXPECT_FALSE(glIsList(lines + 'M'));
  EXPECT_EQ(own.fonts()->filledLists(), filled);
  const Image expected = drawn(filled, 'M');
  clear();
  glLoadIdentity();
  glTranslatef(kLeft, kBaseline, 0);
  glScalef(kEm, kEm, 1);
  glCallList(caller);
  EXPECT_EQ(canvas.read(), expected);
}

TEST_F(ContextFontsTest, TheyAreRegisteredForTheirLife) {
  const HGLRC context = wglGetCurrentContext();
  std::weak_ptr<CGLFontContext> seen;
  GLuint filled = 0;
  {
    const ContextFonts own(FontOwner::kView3D, false);
    EXPECT_EQ(FontRegister::instance().find(context), own.fonts());
    const TextView view = own.view(12.5, 3);
    EXPECT_EQ(view.context, context);
    EXPECT_EQ(view.fonts.lock(), own.fonts());
    EXPECT_EQ(view.viewHeight, 12.5);
    EXPECT_EQ(view.pixelScale, 3);
    seen = own.fonts();
    filled = own.fonts()->filledLists();
    EXPECT_TRUE(glIsList(filled + 'M'));
  }
  EXPECT_EQ(FontRegister::instance().find(context), nullptr);
  EXPECT_TRUE(seen.expired());
  EXPECT_FALSE(glIsList(filled + 'M'));
}

TEST_F(ContextFontsTest, WhoHoldsThemLongerFindsThemEmpty) {
  std::shared_ptr<CGLFontContext> held;
  {
    const ContextFonts own(FontOwner::kView3D, true);
    held = own.fonts();
    held->buildDigits();
  }
  EXPECT_EQ(held->filledLists(), 0U);
  EXPECT_EQ(held->outlineLists(), 0U);
  EXPECT_EQ(held->digitLists(4), 0U);
}

TEST_F(ContextFontsTest, BuildingLeavesTheContextsAsTheyWere) {
  const HDC dc = wglGetCurrentDC();
  const HGDIOBJ font = GetCurrentObject(dc, OBJ_FONT);
  const GlState before = readGlState();
  {
    const ContextFonts own(FontOwner::kView3D, true);
    EXPECT_EQ(test::differences(before, readGlState()), kNone);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_FONT), font);
    EXPECT_EQ(wglGetCurrentDC(), dc);
  }
  EXPECT_EQ(test::differences(before, readGlState()), kNone);
}

}  // namespace
}  // namespace zyn
