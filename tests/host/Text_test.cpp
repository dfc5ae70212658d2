// The text label as a host sees it: its members by vtable and by name, its boxes, its rectangle in
// pixels, its copies, its COM identity, and how it draws without a view.
#include <array>
#include <climits>
#include <cmath>
#include <cwchar>
#include <limits>
#include <string>

#include "support/ForeignBase_win.h"
#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"
#include "support/LateBinding_win.h"
#include "support/LightModel.h"

namespace zyn::test {
namespace {

using Texte = IZYNGLTexte;

template <class Value>
struct Property {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE Texte::*get)(Value*);
  HRESULT (STDMETHODCALLTYPE Texte::*put)(Value);
  Value initial;
};

constexpr Property<long> kNumbers[] = {
    {L"Priorite", &Texte::get_Priorite, &Texte::put_Priorite, 1},
    {L"HauteurPixels", &Texte::get_HauteurPixels, &Texte::put_HauteurPixels, 20},
    {L"NomSelection", &Texte::get_NomSelection, &Texte::put_NomSelection, 0},
    {L"TypeSelection", &Texte::get_TypeSelection, &Texte::put_TypeSelection, 0},
    {L"TypeCotation", &Texte::get_TypeCotation, &Texte::put_TypeCotation, 0},
    {L"DecalageTexteCotationPX", &Texte::get_DecalageTexteCotationPX,
     &Texte::put_DecalageTexteCotationPX, 15},
    {L"AjoutCotationPX", &Texte::get_AjoutCotationPX, &Texte::put_AjoutCotationPX, 5},
    {L"LongueurFlecheCotationPX", &Texte::get_LongueurFlecheCotationPX,
     &Texte::put_LongueurFlecheCotationPX, 15}};

constexpr Property<VARIANT_BOOL> kFlags[] = {
    {L"PushTypeSelection", &Texte::get_PushTypeSelection, &Texte::put_PushTypeSelection,
     VARIANT_FALSE},
    {L"ToujoursLisible", &Texte::get_ToujoursLisible, &Texte::put_ToujoursLisible, VARIANT_TRUE},
    {L"IsNumeric", &Texte::get_IsNumeric, &Texte::put_IsNumeric, VARIANT_FALSE},
    {L"UseNumericSize", &Texte::get_UseNumericSize, &Texte::put_UseNumericSize, VARIANT_FALSE}};

constexpr Property<double> kLengths[] = {
    {L"DecalageCotation", &Texte::get_DecalageCotation, &Texte::put_DecalageCotation, 0},
    {L"Value", &Texte::get_Value, &Texte::put_Value, 0}};

template <class Value>
Value read(Texte* text, const Property<Value>& property) {
  Value value{77};
  EXPECT_EQ((text->*property.get)(&value), S_OK) << property.name;
  return value;
}

struct Placement {
  Vec at;
  long reference = 0;
};

Placement placementOf(Texte* text) {
  Placement found{{-1, -2, -3}, -4};
  EXPECT_EQ(text->getPosition(&found.at.x, &found.at.y, &found.at.z, &found.reference), S_OK);
  return found;
}

void expectPlacement(Texte* text, const Vec& at, long reference) {
  const Placement found = placementOf(text);
  EXPECT_EQ(found.at.x, at.x);
  EXPECT_EQ(found.at.y, at.y);
  EXPECT_EQ(found.at.z, at.z);
  EXPECT_EQ(found.reference, reference);
}

/// Sides of a rectangle, x first.
using Sides = std::array<double, 4>;

Sides sidesOf(IDispatch* object) {
  Sides sides{};
  if (!object) {
    ADD_FAILURE() << "no rectangle";
    return sides;
  }
  const auto rectangle = queryFor<IZYNRectangle>(object);
  rectangle->get_XMin(&sides[0]);
  rectangle->get_XMax(&sides[1]);
  rectangle->get_YMin(&sides[2]);
  rectangle->get_YMax(&sides[3]);
  return sides;
}

Sides pixelRect(Texte* text) {
  ComPtr<IDispatch> rectangle;
  EXPECT_EQ(text->GetPixelRect(&rectangle), S_OK);
  return sidesOf(rectangle.Get());
}

std::wstring textOf(Texte* text) {
  _bstr_t value;
  EXPECT_EQ(text->get_Texte(value.GetAddress()), S_OK);
  return value.length() == 0 ? std::wstring()
                             : std::wstring(static_cast<const wchar_t*>(value), value.length());
}

void setText(Texte* text, const std::wstring& value) {
  const _bstr_t argument(SysAllocStringLen(value.data(), static_cast<UINT>(value.size())), false);
  EXPECT_EQ(text->put_Texte(argument), S_OK);
}

class TextTest : public HostTest {
 protected:
  ComPtr<Texte> text_ = createObject<Texte>(kTextProgId);
};

TEST_F(TextTest, IsBornWithItsDefaults) {
  for (const auto& property : kNumbers) EXPECT_EQ(read(text_.Get(), property), property.initial);
  for (const auto& property : kFlags) EXPECT_EQ(read(text_.Get(), property), property.initial);
  for (const auto& property : kLengths) EXPECT_EQ(read(text_.Get(), property), property.initial);
  BSTR none = SysAllocString(L"other");
  SysFreeString(none);
  EXPECT_EQ(text_->get_Texte(&none), S_OK);
  EXPECT_EQ(none, nullptr);
  expectPlacement(text_.Get(), {0, 0, 0}, 0);
}

TEST_F(TextTest, NumbersAreKeptAsGiven) {
  for (const auto& property : kNumbers) {
    for (const long value : {0L, 1L, 19L, 20L, -1L, LONG_MAX, LONG_MIN}) {
      EXPECT_EQ((text_.Get()->*property.put)(value), S_OK);
      EXPECT_EQ(read(text_.Get(), property), value) << property.name;
    }
  }
}

TEST_F(TextTest, LengthsAreKeptAsGiven) {
  for (const auto& property : kLengths) {
    for (const double value : {0.0, -1.5, 1e300, double(INFINITY)}) {
      EXPECT_EQ((text_.Get()->*property.put)(value), S_OK);
      EXPECT_EQ(read(text_.Get(), property), value) << property.name;
    }
    EXPECT_EQ((text_.Get()->*property.put)(double(NAN)), S_OK);
    EXPECT_TRUE(std::isnan(read(text_.Get(), property)));
  }
}

TEST_F(TextTest, FlagsAreSetByTrueOnly) {
  for (const auto& property : kFlags) {
    for (const VARIANT_BOOL value :
         {VARIANT_BOOL{-1}, VARIANT_BOOL{1}, VARIANT_BOOL{-1}, VARIANT_BOOL{0}, VARIANT_BOOL{-1},
          VARIANT_BOOL{2}, VARIANT_BOOL{-1}, VARIANT_BOOL{-2}}) {
      EXPECT_EQ((text_.Get()->*property.put)(value), S_OK);
      EXPECT_EQ(read(text_.Get(), property), value == -1 ? VARIANT_TRUE : VARIANT_FALSE)
          << property.name;
    }
  }
}

TEST_F(TextTest, PropertiesAreApart) {
  long number = 100;
  for (const auto& property : kNumbers) (text_.Get()->*property.put)(number++);
  number = 100;
  for (const auto& property : kNumbers) EXPECT_EQ(read(text_.Get(), property), number++);
  for (const auto& set : kFlags) {
    for (const auto& property : kFlags) (text_.Get()->*property.put)(VARIANT_FALSE);
    (text_.Get()->*set.put)(VARIANT_TRUE);
    for (const auto& property : kFlags) {
      EXPECT_EQ(read(text_.Get(), property) == VARIANT_TRUE, property.name == set.name);
    }
  }
}

TEST_F(TextTest, KeepsItsPlacement) {
  for (const long reference : {0L, 1L, 9L, 10L, -1L, LONG_MIN}) {
    EXPECT_EQ(text_->setPosition(1.5, -2.25, 1e300, reference), S_OK);
    expectPlacement(text_.Get(), {1.5, -2.25, 1e300}, reference);
  }
}

TEST_F(TextTest, GivesCopiesOfItsText) {
  for (const std::wstring& value :
       {std::wstring(L"Abc"), std::wstring(), std::wstring(L"a\0b", 3),
        std::wstring(L"été œ€ Ω\U0001F600"), std::wstring(1'000'000, L'x')}) {
    setText(text_.Get(), value);
    EXPECT_EQ(textOf(text_.Get()), value);
  }
  setText(text_.Get(), L"Abc");
  _bstr_t first;
  _bstr_t second;
  text_->get_Texte(first.GetAddress());
  text_->get_Texte(second.GetAddress());
  EXPECT_NE(static_cast<const wchar_t*>(first), static_cast<const wchar_t*>(second));
  EXPECT_EQ(text_->put_Texte(nullptr), S_OK);
  BSTR none = first;
  EXPECT_EQ(text_->get_Texte(&none), S_OK);
  EXPECT_EQ(none, nullptr);
}

TEST_F(TextTest, WithoutAPlaceForAValueItSaysSo) {
  for (const auto& property : kNumbers) EXPECT_EQ((text_.Get()->*property.get)(nullptr), E_POINTER);
  for (const auto& property : kFlags) EXPECT_EQ((text_.Get()->*property.get)(nullptr), E_POINTER);
  for (const auto& property : kLengths) EXPECT_EQ((text_.Get()->*property.get)(nullptr), E_POINTER);
  EXPECT_EQ(text_->get_Texte(nullptr), E_POINTER);
  EXPECT_EQ(text_->GetPixelRect(nullptr), E_POINTER);
  EXPECT_EQ(text_->Copie(nullptr), S_FALSE);
  double x = 5;
  long reference = 6;
  EXPECT_EQ(text_->getPosition(nullptr, &x, &x, &reference), E_POINTER);
  EXPECT_EQ(text_->getPosition(&x, nullptr, &x, &reference), E_POINTER);
  EXPECT_EQ(text_->getPosition(&x, &x, nullptr, &reference), E_POINTER);
  EXPECT_EQ(text_->getPosition(&x, &x, &x, nullptr), E_POINTER);
  EXPECT_EQ(x, 5);
  EXPECT_EQ(reference, 6);
}

TEST_F(TextTest, ByName) {
  for (const auto& property : kNumbers) {
    EXPECT_EQ(putProperty(text_.Get(), property.name, 7L).code(), S_OK);
    EXPECT_EQ(long(getProperty(text_.Get(), property.name).value), 7) << property.name;
  }
  for (const auto& property : kFlags) {
    EXPECT_EQ(putProperty(text_.Get(), property.name, true).code(), S_OK);
    EXPECT_TRUE(bool(getProperty(text_.Get(), property.name).value)) << property.name;
  }
  for (const auto& property : kLengths) {
    EXPECT_EQ(putProperty(text_.Get(), property.name, 2.5).code(), S_OK);
    EXPECT_EQ(double(getProperty(text_.Get(), property.name).value), 2.5) << property.name;
  }
  EXPECT_EQ(putProperty(text_.Get(), L"Texte", L"Abc").code(), S_OK);
  EXPECT_STREQ(_bstr_t(getProperty(text_.Get(), L"Texte").value), L"Abc");
  EXPECT_EQ(callMethod(text_.Get(), L"setColor", {1.0, 0.5, 0.25, 1.0}).code(), S_OK);
  EXPECT_EQ(callMethod(text_.Get(), L"setPosition", {1.0, 2.0, 3.0, 4L}).code(), S_OK);
  EXPECT_EQ(callMethod(text_.Get(), L"setPointsCotation", {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}).code(),
            S_OK);
  double x = 0;
  double y = 0;
  double z = 0;
  long reference = 0;
  EXPECT_EQ(callMethod(text_.Get(), L"getPosition",
                       {outArgument(x), outArgument(y), outArgument(z), outArgument(reference)})
                .code(),
            S_OK);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(z, 3);
  EXPECT_EQ(reference, 4);
  for (const wchar_t* name : {L"GetPixelRect", L"Copie"}) {
    const CallResult result = callMethod(text_.Get(), name);
    EXPECT_EQ(result.code(), S_OK) << name;
    EXPECT_EQ(result.value.vt, VT_DISPATCH) << name;
  }
}

TEST_F(TextTest, HasItsNumbersOfMembers) {
  const struct {
    const wchar_t* name;
    DISPID id;
  } members[] = {{L"setColor", 2},
                 {L"setPosition", 3},
                 {L"Priorite", 6},
                 {L"Texte", 7},
                 {L"HauteurPixels", 8},
                 {L"NomSelection", 9},
                 {L"TypeSelection", 10},
                 {L"PushTypeSelection", 11},
                 {L"ToujoursLisible", 12},
                 {L"getPosition", 13},
                 {L"setPointsCotation", 14},
                 {L"TypeCotation", 15},
                 {L"DecalageCotation", 16},
                 {L"DecalageTexteCotationPX", 17},
                 {L"AjoutCotationPX", 18},
                 {L"LongueurFlecheCotationPX", 19},
                 {L"Value", 20},
                 {L"IsNumeric", 21},
                 {L"GetPixelRect", 22},
                 {L"UseNumericSize", 23},
                 {L"Copie", 24}};
  for (const auto& [name, id] : members) EXPECT_EQ(dispidOf(text_.Get(), name), id) << name;
}

TEST_F(TextTest, IsOneObjectWithItsInterfaces) {
  const auto unknown = queryFor<IUnknown>(text_.Get());
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IGLDraw>(text_.Get()).Get()).Get(), unknown.Get());
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IDispatch>(text_.Get()).Get()).Get(), unknown.Get());
  const auto support = queryFor<ISupportErrorInfo>(text_.Get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(Texte)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IGLDraw)), S_OK);
  ComPtr<IZYNGLTriangle> triangle;
  EXPECT_EQ(text_.As(&triangle), E_NOINTERFACE);
}

// --- measuring -----------------------------------------------------------------------------------

TEST_F(TextTest, ItsBoxIsItsPosition) {
  setText(text_.Get(), L"a long text around it");
  text_->setPosition(1.5, -2.5, 3.5, 9);
  const auto drawable = queryFor<IGLDraw>(text_.Get());
  ComPtr<IDispatch> object;
  ASSERT_EQ(drawable->GetBox3D(&object), S_OK);
  const auto box = queryFor<IZYNBox3D>(object.Get());
  std::array<double, 6> sides{};
  box->get_XMin(&sides[0]);
  box->get_XMax(&sides[1]);
  box->get_YMin(&sides[2]);
  box->get_YMax(&sides[3]);
  box->get_ZMin(&sides[4]);
  box->get_ZMax(&sides[5]);
  EXPECT_EQ(sides, (std::array{1.5, 1.5, -2.5, -2.5, 3.5, 3.5}));
  ASSERT_EQ(drawable->GetBox2D(&object), S_OK);
  const auto flat = queryFor<IZYNBox2D>(object.Get());
  Sides flatSides{};
  flat->get_XMin(&flatSides[0]);
  flat->get_XMax(&flatSides[1]);
  flat->get_YMin(&flatSides[2]);
  flat->get_YMax(&flatSides[3]);
  EXPECT_EQ(flatSides, (Sides{1.5, 1.5, -2.5, -2.5}));
  EXPECT_EQ(drawable->GetBox2D(nullptr), E_POINTER);
  EXPECT_EQ(drawable->GetBox3D(nullptr), E_POINTER);
  double parameter = 0;
  EXPECT_EQ(drawable->GetParam(nullptr, &parameter), S_OK);
  EXPECT_EQ(parameter, -1);
}

/// The measures of the glyphs as the system gives them to a rendering context, or to anybody where
/// its OpenGL makes no glyphs.
class SystemGlyphs {
 public:
  SystemGlyphs() {
    const GlCanvas canvas(8, 8);
    LOGFONTW wanted = {};
    wanted.lfHeight = -kEm;
    wanted.lfWeight = FW_BOLD;
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfOutPrecision = OUT_TT_PRECIS;
    wanted.lfQuality = PROOF_QUALITY;
    std::wcscpy(wanted.lfFaceName, L"arial");
    HFONT font = CreateFontIndirectW(&wanted);
    HGDIOBJ previous = SelectObject(wglGetCurrentDC(), font);
    if (!wglUseFontOutlinesA(wglGetCurrentDC(), 0, 255, glGenLists(255), 0, 0, WGL_FONT_POLYGONS,
                             glyphs_.data())) {
      for (UINT character = 0; character < 255; ++character) measure(character);
    }
    SelectObject(wglGetCurrentDC(), previous);
    DeleteObject(font);
  }

  double left(char c) const { return of(c).gmfptGlyphOrigin.x; }
  double right(char c) const { return left(c) + of(c).gmfBlackBoxX; }
  double top(char c) const { return of(c).gmfptGlyphOrigin.y; }
  double bottom(char c) const { return top(c) - of(c).gmfBlackBoxY; }
  double advance(char c) const { return of(c).gmfCellIncX; }
  double lineTop() const { return top('M') + 0.2 * (top('M') - bottom('p')); }
  double lineBottom() const { return bottom('p') - 0.02 * (top('M') - bottom('p')); }

 private:
  static constexpr LONG kEm = 2048;  ///< pixels of the font that is measured

  void measure(UINT character) {
    GLYPHMETRICS said = {};
    const MAT2 upright = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    EXPECT_NE(
        GetGlyphOutlineA(wglGetCurrentDC(), character, GGO_METRICS, &said, 0, nullptr, &upright),
        GDI_ERROR);
    constexpr auto inEms = [](auto pixels) { return static_cast<float>(pixels) / kEm; };
    glyphs_[character] = {inEms(said.gmBlackBoxX),
                          inEms(said.gmBlackBoxY),
                          {inEms(said.gmptGlyphOrigin.x), inEms(said.gmptGlyphOrigin.y)},
                          inEms(said.gmCellIncX),
                          inEms(said.gmCellIncY)};
  }

  const GLYPHMETRICSFLOAT& of(char c) const { return glyphs_[static_cast<unsigned char>(c)]; }
  std::array<GLYPHMETRICSFLOAT, 256> glyphs_{};
};

class TextRectTest : public TextTest {
 protected:
  /// The next whole pixel below a value that is known to within `rounding`.
  static void expectBelow(double side, double value, double rounding) {
    EXPECT_EQ(side, std::floor(side));
    EXPECT_GE(side, std::floor(value - rounding));
    EXPECT_LE(side, std::floor(value + rounding));
  }
  static void expectAbove(double side, double value, double rounding) {
    expectBelow(-side, -value, rounding);
  }

  /// `shown`: the text, or the value's.
  void expectRect(const std::string& shown, long height, double lineBottom, double lineTop) {
    double right = 0;
    for (const char c : shown.substr(0, shown.size() - 1)) right += glyphs_.advance(c);
    right += glyphs_.right(shown.back());
    const double left = glyphs_.left(shown.front());
    const double em = height / (lineTop - lineBottom);
    const double centre = (left + right) / 2;
    const double middle = (lineBottom + lineTop) / 2;
    const struct {
      long reference;
      double x;
      double y;
    } anchors[] = {{0, 0, 0},
                   {1, left, lineBottom},
                   {2, right, lineBottom},
                   {3, right, lineTop},
                   {4, left, lineTop},
                   {5, centre, lineBottom},
                   {6, right, middle},
                   {7, centre, lineTop},
                   {8, left, middle},
                   {9, centre, middle},
                   {-1, 0, 0}};
    for (const auto& [reference, x, y] : anchors) {
      text_->setPosition(100, 200, 300, reference);
      const Sides sides = pixelRect(text_.Get());
      SCOPED_TRACE(testing::Message() << shown << " by " << reference);
      // The system rounds what it measures for rendering contexts, glyph by glyph.
      const double rounding = em / 1024 * static_cast<double>(shown.size() + 1);
      expectBelow(sides[0], (left - x) * em, rounding);
      expectAbove(sides[1], (right - x) * em, rounding);
      expectBelow(sides[2], (lineBottom - y) * em, rounding);
      expectAbove(sides[3], (lineTop - y) * em, rounding);
    }
  }

  SystemGlyphs glyphs_;
};

TEST_F(TextRectTest, IsTheTextsBoxAboutThePosition) {
  for (const long height : {20L, 13L, 200L}) {
    text_->put_HauteurPixels(height);
    for (const std::string shown : {"Mp", "W", "Jours 123,5", "j"}) {
      setText(text_.Get(), std::wstring(shown.begin(), shown.end()));
      expectRect(shown, height, glyphs_.lineBottom(), glyphs_.lineTop());
    }
  }
}

TEST_F(TextRectTest, OfANumber) {
  text_->put_IsNumeric(VARIANT_TRUE);
  text_->put_Value(-1234.5);
  expectRect("-1234.5", 20, glyphs_.lineBottom(), glyphs_.lineTop());
  text_->put_UseNumericSize(VARIANT_TRUE);
  double top = glyphs_.top('0');
  double bottom = glyphs_.bottom('0');
  for (char digit = '1'; digit <= '9'; ++digit) {
    top = std::max(top, glyphs_.top(digit));
    bottom = std::min(bottom, glyphs_.bottom(digit));
  }
  expectRect("-1234.5", 20, bottom, top);
}

TEST_F(TextRectTest, OfAccentsAndWhatFollowsANull) {
  setText(text_.Get(), L"é\xE0œ");
  const std::string narrow = "\xE9\xE0\x9C";
  expectRect(narrow, 20, glyphs_.lineBottom(), glyphs_.lineTop());
  setText(text_.Get(), std::wstring(L"é\xE0œ\0more", 8));
  expectRect(narrow, 20, glyphs_.lineBottom(), glyphs_.lineTop());
}

TEST_F(TextRectTest, TheLineIsAsHighAsItSays) {
  setText(text_.Get(), L"Abc");
  text_->setPosition(0, 0, 0, 1);
  for (long height = 1; height < 300; ++height) {
    text_->put_HauteurPixels(height);
    const Sides sides = pixelRect(text_.Get());
    EXPECT_EQ(sides[2], 0);
    EXPECT_EQ(sides[3], height);
    EXPECT_EQ(sides[0], 0);
  }
}

TEST_F(TextRectTest, OfNothing) {
  text_->setPosition(0, 0, 0, 1);
  EXPECT_EQ(pixelRect(text_.Get()), (Sides{0, 0, 0, 20}));
  setText(text_.Get(), L"Abc");
  for (const long height : {0L, -5L, LONG_MIN}) {
    text_->put_HauteurPixels(height);
    EXPECT_EQ(pixelRect(text_.Get()), (Sides{0, 0, 0, 0}));
  }
}

TEST_F(TextRectTest, EachQuestionGivesANewRectangle) {
  ComPtr<IDispatch> first;
  ComPtr<IDispatch> second;
  text_->GetPixelRect(&first);
  text_->GetPixelRect(&second);
  EXPECT_NE(first.Get(), second.Get());
  EXPECT_EQ(referencesOf(first.Get()), 1U);
}

// --- copies --------------------------------------------------------------------------------------

TEST_F(TextTest, ItsCopyHasEverythingAndIsIndependent) {
  long number = 100;
  for (const auto& property : kNumbers) (text_.Get()->*property.put)(number++);
  for (const auto& property : kFlags) {
    (text_.Get()->*property.put)(property.initial == VARIANT_TRUE ? VARIANT_FALSE : VARIANT_TRUE);
  }
  for (const auto& property : kLengths) (text_.Get()->*property.put)(number++);
  setText(text_.Get(), std::wstring(L"a\0b", 3));
  text_->setPosition(1, 2, 3, 4);

  ComPtr<IDispatch> object;
  ASSERT_EQ(text_->Copie(&object), S_OK);
  EXPECT_EQ(referencesOf(object.Get()), 1U);
  const auto copy = queryFor<Texte>(object.Get());
  EXPECT_NE(queryFor<IUnknown>(copy.Get()).Get(), queryFor<IUnknown>(text_.Get()).Get());
  for (const auto& property : kNumbers) {
    EXPECT_EQ(read(copy.Get(), property), read(text_.Get(), property));
    (text_.Get()->*property.put)(0);
    EXPECT_NE(read(copy.Get(), property), 0);
  }
  for (const auto& property : kFlags) {
    EXPECT_EQ(read(copy.Get(), property), read(text_.Get(), property));
    (text_.Get()->*property.put)(property.initial);
    EXPECT_NE(read(copy.Get(), property), property.initial);
  }
  for (const auto& property : kLengths) {
    EXPECT_EQ(read(copy.Get(), property), read(text_.Get(), property));
    (text_.Get()->*property.put)(0);
    EXPECT_NE(read(copy.Get(), property), 0);
  }
  setText(text_.Get(), L"other");
  text_->setPosition(0, 0, 0, 0);
  EXPECT_EQ(textOf(copy.Get()), std::wstring(L"a\0b", 3));
  expectPlacement(copy.Get(), {1, 2, 3}, 4);
  text_.Reset();
  EXPECT_EQ(textOf(copy.Get()), std::wstring(L"a\0b", 3));
}

TEST_F(TextTest, ReferencesBalance) {
  EXPECT_EQ(referencesOf(text_.Get()), 1U);
  ComPtr<IDispatch> copy;
  text_->Copie(&copy);
  const auto drawable = queryFor<IGLDraw>(text_.Get());
  drawable->Draw3D(0);
  EXPECT_EQ(referencesOf(text_.Get()), 2U);
}

// --- contexts that are no view's -----------------------------------------------------------------

TEST_F(TextTest, WithoutACurrentContextItDrawsNothing) {
  setText(text_.Get(), L"Abc");
  const auto drawable = queryFor<IGLDraw>(text_.Get());
  for (const int mode : {0, 1, -1, -2}) {
    EXPECT_EQ(drawable->Draw3D(mode), S_OK);
    EXPECT_EQ(drawable->Draw2D(mode), S_OK);
  }
}

TEST_F(TextTest, InAHostsOwnContextItDrawsNothingAndLeavesTheState) {
  const GlCanvas canvas(64, 64);
  setText(text_.Get(), L"Abc");
  text_->put_TypeCotation(3);
  text_->setPointsCotation(0, 0, 0, 1, 1, 0);
  text_->setPosition(0.25, 0.5, 0, 9);
  const Image blank = canvas.read();
  const GlState before = readGlState();
  const auto drawable = queryFor<IGLDraw>(text_.Get());
  for (const int mode : {0, 1, -1, -2}) {
    EXPECT_EQ(drawable->Draw3D(mode), S_OK);
    EXPECT_EQ(drawable->Draw2D(mode), S_OK);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
  EXPECT_TRUE(canvas.read() == blank);
  expectPlacement(text_.Get(), {0.25, 0.5, 0}, 9);
}

}  // namespace
}  // namespace zyn::test
