// Further members of texts: all characters of Unicode, fonts, boxes behind them. Nothing here knows
// which fonts are installed: texts that have to look alike are compared.
#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "support/Drawer_win.h"
#include "support/FailingAllocations_win.h"
#include "support/Pickable_win.h"
#include "support/Texts_win.h"
#include "support/TypeReader_win.h"

namespace zyn::test {
namespace {

using Texte = IZYNGLTexte2;

constexpr int kWidth = 260;
constexpr int kHeight = 80;
constexpr Rgb kPaper = {255, 230, 100};

struct Switch {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE Texte::*get)(VARIANT_BOOL*);
  HRESULT (STDMETHODCALLTYPE Texte::*put)(VARIANT_BOOL);
  VARIANT_BOOL initial;
};
constexpr Switch kSwitches[] = {{L"Unicode", &Texte::get_Unicode, &Texte::put_Unicode, 0},
                                {L"Gras", &Texte::get_Gras, &Texte::put_Gras, -1},
                                {L"Italique", &Texte::get_Italique, &Texte::put_Italique, 0},
                                {L"Fond", &Texte::get_Fond, &Texte::put_Fond, 0},
                                {L"Cadre", &Texte::get_Cadre, &Texte::put_Cadre, 0}};

VARIANT_BOOL read(Texte* text, const Switch& each) {
  VARIANT_BOOL value = 77;
  EXPECT_EQ((text->*each.get)(&value), S_OK) << each.name;
  return value;
}

std::wstring familyOf(Texte* text) {
  _bstr_t family;
  EXPECT_EQ(text->get_Police(family.GetAddress()), S_OK);
  return {static_cast<const wchar_t*>(family), family.length()};
}

/// White, held by its centre, `height` pixels high.
ComPtr<Texte> makeFurther(const std::wstring& shown, long height = 30) {
  const auto text = queryFor<Texte>(makeText(shown, height).Get());
  require(text->setPosition(kWidth / 2.0, kHeight / 2.0, 0, 9), "setPosition");
  require(text->setColor(1, 1, 1, 1), "setColor");
  return text;
}

ComPtr<Texte> makeUnicode(const std::wstring& shown, long height = 30) {
  auto text = makeFurther(shown, height);
  require(text->put_Unicode(VARIANT_TRUE), "Unicode");
  return text;
}

/// The objects, on white, in a plane or a space of a unit a pixel.
Image pictureOf(const DrawerClass& drawers, const std::vector<IDispatch*>& objects) {
  const auto drawer = drawers.make(kWidth, kHeight);
  const auto frame = makeForeign<ForeignObject>();  // which holds a view of space open
  frame->onGetBox3D = [](IDispatch** box) {
    const auto whole = createObject<IZYNBox3D>(kBox3DProgId);
    whole->put_XMin(0);
    whole->put_XMax(kWidth);
    whole->put_YMin(0);
    whole->put_YMax(kHeight);
    whole->put_ZMin(-50);
    whole->put_ZMax(50);
    return queryFor<IDispatch>(whole.Get()).CopyTo(box);
  };
  if (!drawers.isPlane) drawer->add(frame->dispatch());
  for (IDispatch* object : objects) drawer->add(object);
  drawer->lookAtPlane();
  if (drawers.isPlane && drawers.isView) {  // which fits what is added
    const auto area = makeArea({0, kWidth, 0, kHeight});
    require(drawer->call(L"View", {area.Get(), 0.0}).code(), "View");
  }
  return drawer->frame();
}

class FurtherTexts : public HostTest {
 protected:
  static const DrawerClass& plane() {
    for (const DrawerClass& each : drawerClasses()) {
      if (each.isPlane && !each.isView) return each;
    }
    throw std::runtime_error("no 2D bitmap context");
  }
  static Image pictureOf(Texte* text) { return test::pictureOf(plane(), {text}); }
  static Image pictureOf(const std::wstring& shown) { return pictureOf(makeUnicode(shown).Get()); }
  static int ink(const Image& picture) { return inkOf(picture, kBackground); }

  ComPtr<Texte> text_ = createObject<Texte>(kTextProgId);
};

// --- members -------------------------------------------------------------------------------------

TEST_F(FurtherTexts, AreBornAsTheFirstOnes) {
  for (const Switch& each : kSwitches) EXPECT_EQ(read(text_.Get(), each), each.initial);
  EXPECT_EQ(familyOf(text_.Get()), L"Arial");
}

TEST_F(FurtherTexts, SwitchesAreOnForAnyValueButZero) {
  for (const Switch& each : kSwitches) {
    for (const VARIANT_BOOL value : std::initializer_list<VARIANT_BOOL>{-1, 0, 1, 0, 2, 0, -2}) {
      EXPECT_EQ((text_.Get()->*each.put)(value), S_OK);
      EXPECT_EQ(read(text_.Get(), each), value == 0 ? VARIANT_FALSE : VARIANT_TRUE) << each.name;
    }
  }
}

TEST_F(FurtherTexts, SwitchesAreApart) {
  for (const Switch& set : kSwitches) {
    for (const Switch& each : kSwitches) (text_.Get()->*each.put)(VARIANT_FALSE);
    (text_.Get()->*set.put)(VARIANT_TRUE);
    for (const Switch& each : kSwitches) {
      EXPECT_EQ(read(text_.Get(), each) == VARIANT_TRUE, each.name == set.name);
    }
  }
}

TEST_F(FurtherTexts, KeepAnyFamily) {
  for (const wchar_t* family :
       {L"Tahoma", L"No Such Family", L"a", L"été œ€ Ω", L"1234567890123456789012345678901"}) {
    EXPECT_EQ(text_->put_Police(_bstr_t(family)), S_OK);
    EXPECT_EQ(familyOf(text_.Get()), family);
  }
  for (BSTR none : {BSTR{nullptr}, _bstr_t(L"").copy()}) {
    text_->put_Police(_bstr_t(L"Tahoma"));
    EXPECT_EQ(text_->put_Police(none), S_OK);
    EXPECT_EQ(familyOf(text_.Get()), L"Arial");
    SysFreeString(none);
  }
}

TEST_F(FurtherTexts, RefuseWhatCannotBeAFamily) {
  require(text_->put_Police(_bstr_t(L"Tahoma")), "Police");
  const CallResult tooLong =
      putProperty(text_.Get(), L"Police", L"12345678901234567890123456789012");
  EXPECT_EQ(tooLong.code(), E_INVALIDARG);
  EXPECT_EQ(tooLong.description, L"Police: a font's name has at most 31 characters, not 32");
  const _bstr_t broken(SysAllocStringLen(L"Ta\0oma", 6), false);
  const CallResult wrong = putProperty(text_.Get(), L"Police", broken);
  EXPECT_EQ(wrong.code(), E_INVALIDARG);
  EXPECT_EQ(wrong.description, L"Police: there is a null character in it");
  EXPECT_EQ(familyOf(text_.Get()), L"Tahoma");
}

TEST_F(FurtherTexts, RefuseColoursOutOfRange) {
  const auto paper = makeFurther(L"box");
  require(paper->put_Fond(VARIANT_TRUE), "Fond");
  require(paper->setCouleurFond(1, 0.9, 0.4, 1), "setCouleurFond");
  const Image before = pictureOf(paper.Get());
  const wchar_t* const names[] = {L"r", L"g", L"b", L"alpha"};
  for (std::size_t i = 0; i < 4; ++i) {
    for (const double wrong : {-0.001, 1.001, double(NAN), double(INFINITY)}) {
      std::vector<_variant_t> arguments = {0.0, 0.0, 1.0, 1.0};
      arguments[i] = wrong;
      const CallResult refused = callMethod(paper.Get(), L"setCouleurFond", arguments);
      EXPECT_EQ(refused.code(), E_INVALIDARG);
      EXPECT_EQ(refused.description.find(std::wstring(names[i]) + L": "), 0U)
          << narrow(refused.description.c_str());
    }
  }
  EXPECT_EQ(pictureOf(paper.Get()), before);
}

TEST_F(FurtherTexts, WithoutAPlaceForAValueTheySaySo) {
  for (const Switch& each : kSwitches) EXPECT_EQ((text_.Get()->*each.get)(nullptr), E_POINTER);
  EXPECT_EQ(text_->get_Police(nullptr), E_POINTER);
}

TEST_F(FurtherTexts, ByName) {
  for (const Switch& each : kSwitches) {
    for (const bool value : {true, false}) {
      EXPECT_EQ(putProperty(text_.Get(), each.name, value).code(), S_OK);
      EXPECT_EQ(bool(getProperty(text_.Get(), each.name).value), value) << each.name;
    }
  }
  EXPECT_EQ(putProperty(text_.Get(), L"Police", L"Tahoma").code(), S_OK);
  EXPECT_STREQ(_bstr_t(getProperty(text_.Get(), L"Police").value), L"Tahoma");
  EXPECT_EQ(callMethod(text_.Get(), L"setCouleurFond", {1.0, 0.5, 0.25, 1.0}).code(), S_OK);
}

TEST_F(FurtherTexts, CopiesHaveEverythingAndAreIndependent) {
  const auto text = makeUnicode(L"\x3A9\x3BC");
  for (const Switch& each : kSwitches) {
    (text.Get()->*each.put)(each.initial == VARIANT_TRUE ? VARIANT_FALSE : VARIANT_TRUE);
  }
  text->put_Police(_bstr_t(L"Tahoma"));
  text->setCouleurFond(1, 0.5, 0, 1);
  const Image expected = pictureOf(text.Get());
  for (const bool isDrawnBefore : {true, false}) {
    ComPtr<IDispatch> object;
    ASSERT_EQ(text->Copie(&object), S_OK);
    const auto copy = queryFor<Texte>(object.Get());
    for (const Switch& each : kSwitches) {
      EXPECT_EQ(read(copy.Get(), each), read(text.Get(), each)) << each.name;
    }
    EXPECT_EQ(familyOf(copy.Get()), L"Tahoma");
    EXPECT_EQ(pictureOf(copy.Get()), expected);
    copy->put_Texte(_bstr_t(L"other"));
    copy->setCouleurFond(0, 0, 0, 1);
    EXPECT_NE(pictureOf(copy.Get()), expected);
    EXPECT_EQ(pictureOf(text.Get()), expected);
    if (isDrawnBefore) text->put_Texte(_bstr_t(L"\x3A9\x3BC"));  // the next copy has no glyphs yet
  }
}

// --- characters ----------------------------------------------------------------------------------

TEST_F(FurtherTexts, SwitchedOffTheyAreWhatTheyWere) {
  const auto text = makeFurther(L"\x394x = 5 \x3BCm");
  const Image before = pictureOf(text.Get());
  const Sides sides = pixelRect(text.Get());
  text->put_Unicode(VARIANT_TRUE);
  EXPECT_NE(pictureOf(text.Get()), before);
  text->put_Unicode(VARIANT_FALSE);
  EXPECT_EQ(pictureOf(text.Get()), before);
  EXPECT_EQ(pixelRect(text.Get()), sides);
}

TEST_F(FurtherTexts, LettersOfTheCodePageLookTheSame) {
  for (const std::wstring shown : {L"Abc 123,5", L"été À œ", L"Mp", L"j"}) {
    for (const long height : {13L, 30L}) {
      const auto narrow = makeFurther(shown, height);
      const auto wide = makeUnicode(shown, height);
      EXPECT_LT(meanDifference(pictureOf(wide.Get()), pictureOf(narrow.Get())), 0.5);
      const Sides expected = pixelRect(narrow.Get());
      const Sides found = pixelRect(wide.Get());
      for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(found[i], expected[i], 1);
      EXPECT_EQ(found[3] - found[2], expected[3] - expected[2]);
    }
  }
}

TEST_F(FurtherTexts, OtherCharactersAreShownAndNotReplaced) {
  const Image question = pictureOf(L"?");
  std::set<Bytes> pictures;
  const std::wstring letters[] = {L"\x394", L"\x3A9", L"\x416", L"\xD8", L"\xB5", L"\xB2"};
  for (const std::wstring& letter : letters) {
    const Image picture = pictureOf(letter);
    EXPECT_GT(ink(picture), 10);
    EXPECT_NE(picture, question);
  }
  EXPECT_NE(pictureOf(L"\x394"), pictureOf(L"\x3A9"));
}

TEST_F(FurtherTexts, OfAnyScriptLieInTheirRectangles) {
  for (const std::wstring shown :
       {L"\x395\x3BB\x3BB\x3B7\x3BD", L"\x420\x443\x441", L"\x4E2D\x6587", L"\x645\x631\x62D",
        L"\x5E9\x5DC\x5D5\x5DD", L"\xD55C\xAD6D", L"\xE44\xE17\xE22", L"\xD83D\xDE00",
        L"\xFFFE\xFDD0", L"e\x301x\x302"}) {
    const auto text = makeUnicode(shown);
    for (const long reference : {1L, 9L, 3L}) {
      text->setPosition(kWidth / 2.0, kHeight / 2.0, 0, reference);
      const Image picture = pictureOf(text.Get());
      ASSERT_GT(ink(picture), 10);
      const PixelBox box = inkBox(picture, kBackground);
      const Sides sides = pixelRect(text.Get());
      EXPECT_NEAR(box.left - kWidth / 2.0, sides[0], 2);
      EXPECT_NEAR(box.right + 1 - kWidth / 2.0, sides[1], 2);
      EXPECT_EQ(sides[3] - sides[2], 30);
    }
  }
}

TEST_F(FurtherTexts, AreWrittenFromRightToLeftWhereTheScriptIs) {
  // The line is as its first letter: what is read first lies on the right in the second one.
  EXPECT_EQ(pictureOf(L"\x5D0\x5D1 abc"), pictureOf(L"abc \x5D0\x5D1"));
  EXPECT_EQ(pictureOf(L"\x645\x627 abc"), pictureOf(L"abc \x645\x627"));
  EXPECT_NE(pictureOf(L"abc \x3B1"), pictureOf(L"\x3B1 abc"));
}

TEST_F(FurtherTexts, AccentsAreOnTheirLetters) {
  EXPECT_EQ(pictureOf(L"e\x301 a\x308"), pictureOf(L"\xE9 \xE4"));
  EXPECT_GT(ink(pictureOf(L"x\x302")), ink(pictureOf(L"x")));
}

TEST_F(FurtherTexts, HalvesOfPairsAreReplaced) {
  const Image expected = pictureOf(L"a\xFFFD\x62");
  EXPECT_EQ(pictureOf(L"a\xD83D\x62"), expected);
  EXPECT_EQ(pictureOf(L"a\xDE00\x62"), expected);
  EXPECT_EQ(pictureOf(L"a\xDE00"), pictureOf(L"a\xFFFD"));
  EXPECT_EQ(pictureOf(L"a\xD83D"), pictureOf(L"a\xFFFD"));
}

TEST_F(FurtherTexts, ControlCharactersAreBlanksAndFormattingIsNothing) {
  const Image expected = pictureOf(L"a b c d");
  EXPECT_EQ(pictureOf(std::wstring(L"a\nb\tc\0d", 7)), expected);
  EXPECT_EQ(pictureOf(L"a\x2028\x62\x7F\x63\x85\x64"), expected);
  EXPECT_EQ(pictureOf(L"a\x200D\x62\x200B\x63\xFE0F"), pictureOf(L"abc"));
}

TEST_F(FurtherTexts, WithoutAGlyphAreShownAsMissing) {
  EXPECT_GT(ink(pictureOf(L"\xFFFE")), 10);
  EXPECT_EQ(ink(pictureOf(L"")), 0);
  EXPECT_EQ(ink(pictureOf(L"   ")), 0);
}

TEST_F(FurtherTexts, MayBeVeryLong) {
  const std::wstring part = L"Wide \x394 \x5D0\x5D1 \x4E2D ";
  std::wstring shown;
  while (shown.size() < 50000) shown += part;
  const auto text = makeUnicode(shown);
  text->setPosition(0, kHeight / 2.0, 0, 8);
  const auto start = makeUnicode(part + part + part + part);
  start->setPosition(0, kHeight / 2.0, 0, 8);
  const Image picture = pictureOf(text.Get());
  const Image expected = pictureOf(start.Get());
  for (int x = 0; x < 150; ++x) {
    for (int y = 0; y < kHeight; ++y) EXPECT_EQ(picture.at(x, y), expected.at(x, y));
  }
  const Sides sides = pixelRect(text.Get());
  EXPECT_GT(sides[1] - sides[0], 100000);
}

TEST_F(FurtherTexts, NumbersStayAsTheyAre) {
  for (const long height : {8L, 30L}) {
    const auto number = makeFurther(L"\x394", height);
    number->put_IsNumeric(VARIANT_TRUE);
    number->put_Value(-12.5);
    const Image before = pictureOf(number.Get());
    number->put_Unicode(VARIANT_TRUE);
    EXPECT_EQ(pictureOf(number.Get()), before);
    number->put_Gras(VARIANT_FALSE);
    EXPECT_NE(pictureOf(number.Get()), before);
  }
}

// --- fonts ---------------------------------------------------------------------------------------

TEST_F(FurtherTexts, BoldHasMoreInkAndItalicLeans) {
  for (const VARIANT_BOOL unicode : {VARIANT_FALSE, VARIANT_TRUE}) {
    const auto text = makeFurther(L"HIH", 60);
    text->put_Unicode(unicode);
    const Image bold = pictureOf(text.Get());
    text->put_Gras(VARIANT_FALSE);
    const Image regular = pictureOf(text.Get());
    EXPECT_LT(ink(regular), ink(bold));
    text->put_Italique(VARIANT_TRUE);
    const PixelBox box = inkBox(pictureOf(text.Get()), kBackground);
    const Image italic = pictureOf(text.Get());
    // The first stem's foot is left of its head.
    const auto firstInk = [&](int y) {
      int x = box.left;
      while (x < box.right && italic.at(x, y) == kBackground) ++x;
      return x;
    };
    EXPECT_GT(firstInk(box.top + 4), firstInk(box.bottom - 4) + 3);
  }
}

int CALLBACK takeFamily(const LOGFONTW* font, const TEXTMETRICW*, DWORD kind, LPARAM names) {
  if ((kind & TRUETYPE_FONTTYPE) != 0 && font->lfFaceName[0] != L'@') {
    reinterpret_cast<std::set<std::wstring>*>(names)->insert(font->lfFaceName);
  }
  return TRUE;
}

TEST_F(FurtherTexts, AreDrawnInTheirFamily) {
  std::set<std::wstring> families;
  LOGFONTW any = {};
  any.lfCharSet = DEFAULT_CHARSET;
  HDC dc = CreateCompatibleDC(nullptr);
  EnumFontFamiliesExW(dc, &any, takeFamily, reinterpret_cast<LPARAM>(&families), 0);
  DeleteDC(dc);
  if (families.size() < 3) GTEST_SKIP() << "there are too few fonts";
  for (const VARIANT_BOOL unicode : {VARIANT_FALSE, VARIANT_TRUE}) {
    std::set<double> widths;
    for (const std::wstring& family : families) {
      const auto text = makeFurther(L"Hamburg 0123", 200);
      text->put_Unicode(unicode);
      ASSERT_EQ(text->put_Police(_bstr_t(family.c_str())), S_OK);
      const Sides sides = pixelRect(text.Get());
      EXPECT_GT(sides[1], sides[0]) << narrow(family.c_str());
      EXPECT_EQ(sides[3] - sides[2], 200) << narrow(family.c_str());
      widths.insert(sides[1] - sides[0]);
    }
    EXPECT_GE(widths.size(), 2U);
  }
}

TEST_F(FurtherTexts, OfAFamilyThatIsMissingAreShownAllTheSame) {
  const auto text = makeFurther(L"Shown");
  for (const VARIANT_BOOL unicode : {VARIANT_FALSE, VARIANT_TRUE}) {
    text->put_Unicode(unicode);
    ASSERT_EQ(text->put_Police(_bstr_t(L"No Such Family At All")), S_OK);
    EXPECT_GT(ink(pictureOf(text.Get())), 50);
  }
}

TEST_F(FurtherTexts, NarrowOnesKeepTheirCharactersInAnyFont) {
  const auto replaced = makeFurther(L"a\x5D0z");
  const auto question = makeFurther(L"a?z");
  for (Texte* text : {replaced.Get(), question.Get()}) text->put_Gras(VARIANT_FALSE);
  EXPECT_EQ(pictureOf(replaced.Get()), pictureOf(question.Get()));
  const auto cut = makeFurther(std::wstring(L"ab\0cd", 5));
  const auto start = makeFurther(L"ab");
  for (Texte* text : {cut.Get(), start.Get()}) text->put_Italique(VARIANT_TRUE);
  EXPECT_EQ(pictureOf(cut.Get()), pictureOf(start.Get()));
}

// --- boxes ---------------------------------------------------------------------------------------

TEST_F(FurtherTexts, ABoxIsATenthHigherAndAFifthWiderAtEachSide) {
  const auto text = makeFurther(L"Box", 50);
  text->setPosition(0, 0, 0, 1);
  const Sides bare = pixelRect(text.Get());
  for (const auto put : {&Texte::put_Fond, &Texte::put_Cadre}) {
    (text.Get()->*put)(VARIANT_TRUE);
    const Sides whole = pixelRect(text.Get());
    EXPECT_EQ(whole[0], -10);
    EXPECT_NEAR(whole[1], bare[1] + 10, 1);
    EXPECT_EQ(whole[2], -5);
    EXPECT_EQ(whole[3], 55);
    (text.Get()->*put)(VARIANT_FALSE);
    EXPECT_EQ(pixelRect(text.Get()), bare);
  }
}

TEST_F(FurtherTexts, NothingIsBehindNoText) {
  for (const auto& text : {makeFurther(L""), makeUnicode(L"")}) {
    text->put_Fond(VARIANT_TRUE);
    text->put_Cadre(VARIANT_TRUE);
    EXPECT_EQ(ink(pictureOf(text.Get())), 0);
  }
}

class FurtherTextsInAll : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  static Image picture(const std::vector<IDispatch*>& objects) {
    return pictureOf(GetParam(), objects);
  }
  /// Of which pixels, from the upper left corner, `label` takes the rectangle between two colours.
  static PixelBox boxOf(Texte* label) {
    const Sides sides = pixelRect(label);
    return {static_cast<int>(kWidth / 2.0 + sides[0]), static_cast<int>(kHeight / 2.0 - sides[3]),
            static_cast<int>(kWidth / 2.0 + sides[1]) - 1,
            static_cast<int>(kHeight / 2.0 - sides[2]) - 1};
  }
};

TEST_P(FurtherTextsInAll, AreShown) {
  const auto narrow = makeFurther(L"Abc 12");
  const auto wide = makeUnicode(L"Abc 12");
  const Image expected = picture({narrow.Get()});
  EXPECT_GT(inkOf(expected, kBackground), 200);
  EXPECT_LT(meanDifference(picture({wide.Get()}), expected), 0.5);
  EXPECT_GT(inkOf(picture({makeUnicode(L"\x394 \x4E2D \x5D0").Get()}), kBackground), 100);
}

TEST_P(FurtherTextsInAll, HaveBoxesBehindThem) {
  const auto text = makeUnicode(L"H\x3A9H", 30);
  text->setColor(0, 0, 0, 1);
  const Image bare = picture({text.Get()});
  text->put_Fond(VARIANT_TRUE);
  text->setCouleurFond(kPaper.r / 255.0, kPaper.g / 255.0, kPaper.b / 255.0, 1);
  const Image filled = picture({text.Get()});
  const PixelBox box = boxOf(text.Get());
  for (const int y : {box.top + 2, box.bottom - 2}) {
    for (const int x : {box.left + 2, box.right - 2}) EXPECT_EQ(filled.at(x, y), kPaper);
  }
  for (const int y : {box.top - 2, box.bottom + 2}) {
    for (const int x : {box.left - 2, box.right + 2}) EXPECT_EQ(filled.at(x, y), kBackground);
  }
  int moved = 0;  // ink that is not where it was
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      moved += (bare.at(x, y) == kBlack) != (filled.at(x, y) == kBlack) ? 1 : 0;
    }
  }
  EXPECT_LE(moved, 2);
}

TEST_P(FurtherTextsInAll, HaveFramesInTheirColour) {
  const auto text = makeFurther(L"HH", 30);
  text->setColor(1, 0, 0, 1);
  text->put_Cadre(VARIANT_TRUE);
  const Image framed = picture({text.Get()});
  const PixelBox box = boxOf(text.Get());
  const auto redsIn = [&](int x, int y, int stepX, int stepY) {
    int count = 0;
    for (int i = -3; i <= 3; ++i) count += framed.at(x + i * stepX, y + i * stepY) == kRed ? 1 : 0;
    return count;
  };
  const int y = kHeight / 2;
  const int x = kWidth / 2;
  EXPECT_EQ(redsIn(box.left, y, 1, 0), 1);
  EXPECT_EQ(redsIn(box.right, y, 1, 0), 1);
  EXPECT_EQ(redsIn(x, box.top, 0, 1), 1);
  EXPECT_EQ(redsIn(x, box.bottom, 0, 1), 1);
  EXPECT_EQ(framed.at(box.left + 3, box.top + 3), kBackground);  // it is not filled
}

TEST_P(FurtherTextsInAll, BoxesAreBlendedAndFadeInGroups) {
  const auto text = makeFurther(L"HH", 30);
  text->put_Fond(VARIANT_TRUE);
  text->setCouleurFond(1, 1, 1, 0.5);
  const PixelBox box = boxOf(text.Get());
  const auto paper = [&](const Image& image) { return image.at(box.left + 2, box.top + 2); };
  const auto isNear = [](int found, double expected) { return std::abs(found - expected) <= 2; };
  const Rgb half = paper(picture({text.Get()}));
  EXPECT_TRUE(isNear(half.r, 127.5) && isNear(half.g, 153) && isNear(half.b, 178.5));
  const auto group = createObject<IZYNGroupe>(kGroupProgId);
  require(group->Add(text.Get(), 0), "Add");
  require(group->put_Opacite(0.5), "Opacite");
  const Rgb quarter = paper(picture({group.Get()}));
  EXPECT_TRUE(isNear(quarter.r, 63.75) && isNear(quarter.g, 102) && isNear(quarter.b, 140.25));
}

INSTANTIATE_TEST_SUITE_P(All, FurtherTextsInAll, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

TEST_F(FurtherTexts, InSpaceBoxesHideWhatIsBehindThem) {
  for (const DrawerClass& each : drawerClasses()) {
    if (each.isPlane) continue;
    const auto text = makeFurther(L"HH", 30);
    text->setColor(0, 0, 0, 1);
    text->put_ToujoursLisible(VARIANT_FALSE);
    text->put_Fond(VARIANT_TRUE);
    const auto plate = [](double z) {
      const double x = kWidth / 2.0;
      return makeFlatTriangle({x - 300, -100, z}, {x + 300, -100, z}, {x, 300, z}, kRed);
    };
    const auto behind = plate(-5);
    const auto before = plate(5);
    const auto blacks = [](const Image& image) { return image.count(kBlack); };
    const Image alone = test::pictureOf(each, {text.Get()});
    ASSERT_GT(blacks(alone), 50);
    for (const bool isLast : {false, true}) {
      std::vector<IDispatch*> objects = {behind.Get(), text.Get()};
      if (isLast) std::swap(objects[0], objects[1]);
      const Image picture = test::pictureOf(each, objects);
      EXPECT_NEAR(picture.count(kWhite), alone.count(kWhite), 20) << each.name << isLast;
      EXPECT_NEAR(blacks(picture), blacks(alone), 20) << each.name << isLast;
      objects[isLast ? 1 : 0] = before.Get();
      const Image hidden = test::pictureOf(each, objects);
      EXPECT_EQ(hidden.count(kWhite), 0) << each.name << isLast;
      EXPECT_EQ(blacks(hidden), 0) << each.name << isLast;
    }
  }
}

TEST_F(FurtherTexts, BoxesCanBePicked) {
  View2DHost view({kWidth, kHeight});
  view.look({0, kWidth, 0, kHeight});
  const auto text = makeUnicode(L"\x3A9", 20);
  text->put_NomSelection(7);
  require(view->AddSelection(text.Get()), "AddSelection");
  view.paint();
  text->put_Fond(VARIANT_TRUE);
  const Sides whole = pixelRect(text.Get());
  const int x = static_cast<int>(kWidth / 2.0 + whole[0]) + 1;
  const int y = kHeight / 2;
  const auto pickedAt = [&](int left) {
    view.forgetEvents();
    view.send(WM_LBUTTONDBLCLK, left, y);
    std::vector<long> names;
    for (const auto& event : view.events(GraphEvent::MouseSelectionDblClick)) {
      names = namesIn(event.arguments[0]);
    }
    return names;
  };
  EXPECT_EQ(pickedAt(x + 1), std::vector<long>{7});
  text->put_Fond(VARIANT_FALSE);
  EXPECT_EQ(pickedAt(kWidth / 2), std::vector<long>{7});
  EXPECT_EQ(pickedAt(x - 6), std::vector<long>{});
}

// --- memory --------------------------------------------------------------------------------------

TEST_F(FurtherTexts, WithoutMemoryTheCallerIsToldAndNothingIsLost) {
  const HMODULE library = GetModuleHandleW(L"ZYNVue.dll");
  const auto text = makeUnicode(L"\x394 \x4E2D \x5D0 text");
  text->put_Fond(VARIANT_TRUE);
  const Image expected = pictureOf(text.Get());
  const auto drawer = plane().make(kWidth, kHeight);
  drawer->add(text.Get());
  std::uint32_t failures = 0;
  FailingAllocations allocations(library);
  const HRESULT answer = allocations.failEach(
      [&] {
        text->put_Texte(_bstr_t(L"\x394 \x4E2D \x5D0 text"));
        ComPtr<IDispatch> rectangle;
        return text->GetPixelRect(&rectangle);
      },
      [&](std::uint32_t n, HRESULT told) {
        ++failures;
        EXPECT_TRUE(told == S_OK || told == E_OUTOFMEMORY) << n;
      });
  EXPECT_EQ(answer, S_OK);
  EXPECT_GT(failures, 3U);
  EXPECT_EQ(drawer->frame(), expected);
}

}  // namespace
}  // namespace zyn::test
