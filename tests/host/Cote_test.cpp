// The dimension as a host sees it: its members by vtable and by name, its rectangle in pixels, its
// COM identity.
#include <climits>
#include <cmath>
#include <limits>
#include <string>

#include "support/ArrayVariant_win.h"
#include "support/GlCanvas_win.h"
#include "support/LateBinding_win.h"
#include "support/Outer_win.h"
#include "support/Pictures_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Cote = IZYNGLCote;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <class Value>
struct Property {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE Cote::*get)(Value*);
  HRESULT (STDMETHODCALLTYPE Cote::*put)(Value);
  Value initial;
};

constexpr Property<long> kNumbers[] = {
    {L"NomSelection", &Cote::get_NomSelection, &Cote::put_NomSelection, 0},
    {L"TypeSelection", &Cote::get_TypeSelection, &Cote::put_TypeSelection, 0},
    {L"TypeCotation", &Cote::get_TypeCotation, &Cote::put_TypeCotation, 0},
    {L"DecalageTexteCotationPX", &Cote::get_DecalageTexteCotationPX,
     &Cote::put_DecalageTexteCotationPX, 15},
    {L"LongueurFlecheCotationPX", &Cote::get_LongueurFlecheCotationPX,
     &Cote::put_LongueurFlecheCotationPX, 15},
    {L"LargeurFlecheCotationPX", &Cote::get_LargeurFlecheCotationPX,
     &Cote::put_LargeurFlecheCotationPX, 5},
    {L"HauteurPixels", &Cote::get_HauteurPixels, &Cote::put_HauteurPixels, 20}};

constexpr Property<VARIANT_BOOL> kFlags[] = {
    {L"PushTypeSelection", &Cote::get_PushTypeSelection, &Cote::put_PushTypeSelection,
     VARIANT_FALSE},
    {L"ToujoursLisible", &Cote::get_ToujoursLisible, &Cote::put_ToujoursLisible, VARIANT_TRUE},
    {L"IsNumeric", &Cote::get_IsNumeric, &Cote::put_IsNumeric, VARIANT_FALSE},
    {L"UseNumericSize", &Cote::get_UseNumericSize, &Cote::put_UseNumericSize, VARIANT_FALSE},
    {L"PictureTransparent", &Cote::get_PictureTransparent, &Cote::put_PictureTransparent,
     VARIANT_FALSE},
    {L"Value_FreeInput", &Cote::get_Value_FreeInput, &Cote::put_Value_FreeInput, VARIANT_TRUE}};

constexpr Property<double> kLengths[] = {
    {L"DecalageCotation", &Cote::get_DecalageCotation, &Cote::put_DecalageCotation, 0},
    {L"PositionCotation", &Cote::get_PositionCotation, &Cote::put_PositionCotation, 0},
    {L"Value", &Cote::get_Value, &Cote::put_Value, 0},
    {L"Value_Max", &Cote::get_Value_Max, &Cote::put_Value_Max, kInfinity},
    {L"Value_Min", &Cote::get_Value_Min, &Cote::put_Value_Min, -kInfinity},
    {L"Value_Increment", &Cote::get_Value_Increment, &Cote::put_Value_Increment, 0},
    {L"FontSize", &Cote::get_FontSize, &Cote::put_FontSize, 20}};

template <class Value>
Value read(Cote* cote, const Property<Value>& property) {
  Value value{77};
  EXPECT_EQ((cote->*property.get)(&value), S_OK) << property.name;
  return value;
}

class CoteTest : public HostTest {
 protected:
  long nameOfPoint1() const {
    long name = -77;
    EXPECT_EQ(cote_->get_NomSelectionPoint1(&name), S_OK);
    return name;
  }
  long nameOfPoint2() const {
    long name = -77;
    EXPECT_EQ(cote_->get_NomSelectionPoint2(&name), S_OK);
    return name;
  }
  long height() const {
    long value = -77;
    EXPECT_EQ(cote_->get_HauteurPixels(&value), S_OK);
    return value;
  }
  FontSizeUnit_e unit() const {
    FontSizeUnit_e value = FontSizeUnit_MODEL;
    EXPECT_EQ(cote_->get_FontSizeUnit(&value), S_OK);
    return value;
  }
  double size() const {
    double value = -77;
    EXPECT_EQ(cote_->get_FontSize(&value), S_OK);
    return value;
  }
  /// The values offered, none where the property is empty.
  std::vector<double> values() const {
    _variant_t values(L"something else");
    values.Clear();
    EXPECT_EQ(cote_->get_Values_Possibles(&values), S_OK);
    return V_VT(&values) == VT_EMPTY ? std::vector<double>() : doublesIn(values);
  }
  Sides pixelRectIn(IDispatch* view) const {
    ComPtr<IDispatch> object;
    EXPECT_EQ(cote_->GetPixelRect(view, &object), S_OK);
    Sides sides{};
    if (!object) {
      ADD_FAILURE() << "no rectangle";
      return sides;
    }
    const auto rectangle = queryFor<IZYNRectangle>(object.Get());
    rectangle->get_XMin(&sides[0]);
    rectangle->get_XMax(&sides[1]);
    rectangle->get_YMin(&sides[2]);
    rectangle->get_YMax(&sides[3]);
    return sides;
  }

  ComPtr<Cote> cote_ = createObject<Cote>(kCoteProgId);
};

// --- members -------------------------------------------------------------------------------------

TEST_F(CoteTest, IsBornWithItsDefaults) {
  for (const auto& property : kNumbers) EXPECT_EQ(read(cote_.Get(), property), property.initial);
  for (const auto& property : kFlags) EXPECT_EQ(read(cote_.Get(), property), property.initial);
  for (const auto& property : kLengths) EXPECT_EQ(read(cote_.Get(), property), property.initial);
  EXPECT_EQ(unit(), FontSizeUnit_PIXEL);
  EXPECT_EQ(nameOfPoint1(), 0);
  EXPECT_EQ(nameOfPoint2(), 0);
  VARIANT_BOOL inside = 5;
  EXPECT_EQ(cote_->get_FlecheCotationInterieure(&inside), S_OK);
  EXPECT_EQ(inside, VARIANT_TRUE);
  BSTR text = nullptr;
  EXPECT_EQ(cote_->get_Texte(&text), S_OK);
  EXPECT_EQ(text, nullptr);
  _variant_t values(L"x");
  values.Clear();
  EXPECT_EQ(cote_->get_Values_Possibles(&values), S_OK);
  EXPECT_EQ(V_VT(&values), VT_EMPTY);
}

TEST_F(CoteTest, NumbersAreKeptAsGiven) {
  for (const auto& property : kNumbers) {
    for (const long value : {0L, 1L, 19L, -1L, LONG_MAX, LONG_MIN}) {
      EXPECT_EQ((cote_.Get()->*property.put)(value), S_OK);
      EXPECT_EQ(read(cote_.Get(), property), value) << property.name;
    }
  }
}

TEST_F(CoteTest, LengthsAreKeptAsGiven) {
  for (const auto& property : kLengths) {
    for (const double value : {0.0, -1.5, 1e300, kInfinity, -kInfinity}) {
      EXPECT_EQ((cote_.Get()->*property.put)(value), S_OK);
      EXPECT_EQ(read(cote_.Get(), property), value) << property.name;
    }
    EXPECT_EQ((cote_.Get()->*property.put)(double(NAN)), S_OK);
    EXPECT_TRUE(std::isnan(read(cote_.Get(), property)));
  }
}

TEST_F(CoteTest, FlagsAreSetByTrueOnly) {
  for (const auto& property : kFlags) {
    for (const int value : {-1, 1, -1, 0, -1, 2, -1, -2, -1, 255, -1, 32767, -32768}) {
      EXPECT_EQ((cote_.Get()->*property.put)(static_cast<VARIANT_BOOL>(value)), S_OK);
      EXPECT_EQ(read(cote_.Get(), property), value == -1 ? VARIANT_TRUE : VARIANT_FALSE)
          << property.name << ' ' << value;
    }
  }
}

TEST_F(CoteTest, PropertiesAreApart) {
  long number = 100;
  for (const auto& property : kNumbers) (cote_.Get()->*property.put)(number++);
  cote_->put_NomSelectionPoint1(number++);
  cote_->put_NomSelectionPoint2(number);
  number = 100;
  for (const auto& property : kNumbers) EXPECT_EQ(read(cote_.Get(), property), number++);
  for (const auto& set : kFlags) {
    for (const auto& property : kFlags) (cote_.Get()->*property.put)(VARIANT_FALSE);
    (cote_.Get()->*set.put)(VARIANT_TRUE);
    for (const auto& property : kFlags) {
      EXPECT_EQ(read(cote_.Get(), property) == VARIANT_TRUE, property.name == set.name);
    }
  }
  double length = 1.5;
  for (const auto& property : kLengths) (cote_.Get()->*property.put)(length++);
  length = 1.5;
  for (const auto& property : kLengths) EXPECT_EQ(read(cote_.Get(), property), length++);
}

TEST_F(CoteTest, KeepsItsPlacement) {
  for (const long reference : {0L, 1L, 9L, 10L, -1L, LONG_MIN}) {
    EXPECT_EQ(cote_->setPosition(1.5, -2.25, 1e300, reference), S_OK);
    double x = 0;
    double y = 0;
    double z = 0;
    long found = 77;
    EXPECT_EQ(cote_->getPosition(&x, &y, &z, &found), S_OK);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2.25);
    EXPECT_EQ(z, 1e300);
    EXPECT_EQ(found, reference);
  }
}

TEST_F(CoteTest, GivesCopiesOfItsText) {
  for (const std::wstring& value : {std::wstring(L"Ø 12 ± 0,5"), std::wstring(),
                                    std::wstring(L"a\0b", 3), std::wstring(1'000'000, L'x')}) {
    const _bstr_t argument(SysAllocStringLen(value.data(), static_cast<UINT>(value.size())), false);
    EXPECT_EQ(cote_->put_Texte(argument), S_OK);
    BSTR text = nullptr;
    EXPECT_EQ(cote_->get_Texte(&text), S_OK);
    ASSERT_NE(text, nullptr);
    EXPECT_NE(text, static_cast<const wchar_t*>(argument));
    EXPECT_EQ(std::wstring(text, SysStringLen(text)), value);
    SysFreeString(text);
  }
  EXPECT_EQ(cote_->put_Texte(nullptr), S_OK);
  BSTR none = reinterpret_cast<BSTR>(this);
  EXPECT_EQ(cote_->get_Texte(&none), S_OK);
  EXPECT_EQ(none, nullptr);
}

TEST_F(CoteTest, TheNamesOfThePointsAreCrossed) {
  EXPECT_EQ(cote_->put_NomSelectionPoint1(5), S_OK);
  EXPECT_EQ(nameOfPoint2(), 5);
  EXPECT_EQ(nameOfPoint1(), 0);
  EXPECT_EQ(cote_->put_NomSelectionPoint2(-6), S_OK);
  EXPECT_EQ(nameOfPoint1(), -6);
  EXPECT_EQ(nameOfPoint2(), 5);
}

TEST_F(CoteTest, ArrowsStayInside) {
  for (const int value : {0, 1, 2, -1, -2, 0}) {
    EXPECT_EQ(cote_->put_FlecheCotationInterieure(static_cast<VARIANT_BOOL>(value)), S_OK);
    VARIANT_BOOL inside = 5;
    EXPECT_EQ(cote_->get_FlecheCotationInterieure(&inside), S_OK);
    EXPECT_EQ(inside, VARIANT_TRUE);
  }
}

TEST_F(CoteTest, AHeightInPixelsSetsSizeAndUnit) {
  cote_->put_FontSizeUnit(FontSizeUnit_MODELMM);
  cote_->put_FontSize(3.5);
  EXPECT_EQ(cote_->put_HauteurPixels(12), S_OK);
  EXPECT_EQ(unit(), FontSizeUnit_PIXEL);
  EXPECT_EQ(size(), 12);
  EXPECT_EQ(height(), 12);
}

TEST_F(CoteTest, TheHeightFollowsSizesOnPaper) {
  const struct {
    int unit;
    double size;
    long height;
  } cases[] = {{FontSizeUnit_PIXEL, 12.9, 12},
               {FontSizeUnit_MM, 25.4, 72},
               {FontSizeUnit_MM, 5, 14},
               {FontSizeUnit_INCH, 0.5, 36},
               {FontSizeUnit_POINT, 18, 18},
               {7, 33.3, 33},
               {-1, 41, 41},
               {FontSizeUnit_PIXEL, 1e300, LONG_MAX},
               {FontSizeUnit_INCH, -1e300, LONG_MIN},
               {FontSizeUnit_PIXEL, double(NAN), 0}};
  for (const auto& [unitNumber, fontSize, pixels] : cases) {
    EXPECT_EQ(cote_->put_FontSizeUnit(static_cast<FontSizeUnit_e>(unitNumber)), S_OK);
    EXPECT_EQ(cote_->put_FontSize(fontSize), S_OK);
    EXPECT_EQ(unit(), unitNumber);
    EXPECT_EQ(height(), pixels) << unitNumber << ' ' << fontSize;
  }
}

TEST_F(CoteTest, KeepsTheValuesOfItsEditor) {
  EXPECT_EQ(cote_->put_Values_Possibles(doubleArray({1, 2.5, -3})), S_OK);
  EXPECT_EQ(values(), (std::vector<double>{1, 2.5, -3}));
  EXPECT_EQ(cote_->put_Values_Possibles(variantArray({4.5, 7L, _variant_t(short{8})})), S_OK);
  EXPECT_EQ(values(), (std::vector<double>{4.5, 7, 8}));
  auto array = doubleArray({9});
  EXPECT_EQ(cote_->put_Values_Possibles(arrayReference(array)), S_OK);
  EXPECT_EQ(values(), (std::vector<double>{9}));
  array = doubleArray({10, 11});
  EXPECT_EQ(cote_->put_Values_Possibles(variantReference(&array)), S_OK);
  EXPECT_EQ(values(), (std::vector<double>{10, 11}));
}

TEST_F(CoteTest, WhatIsNoArrayOfNumbersLeavesNoValues) {
  const _variant_t unreadable[] = {_variant_t(),
                                   _variant_t(5.0),
                                   _variant_t(L"1"),
                                   doubleArray({}),
                                   variantArray({}),
                                   variantArray({1.0, L"text"}),
                                   numberArray(VT_I4, {1, 2}),
                                   doubleTable(2, 2),
                                   nullArray(VT_R8),
                                   variantReference(nullptr)};
  for (const auto& argument : unreadable) {
    EXPECT_EQ(cote_->put_Values_Possibles(doubleArray({1, 2})), S_OK);
    EXPECT_EQ(cote_->put_Values_Possibles(argument), S_OK);
    EXPECT_TRUE(values().empty()) << V_VT(&argument);
  }
}

TEST_F(CoteTest, EachQuestionGivesValuesOfItsOwn) {
  cote_->put_Values_Possibles(doubleArray({1, 2}));
  _variant_t first;
  _variant_t second;
  cote_->get_Values_Possibles(&first);
  cote_->get_Values_Possibles(&second);
  EXPECT_NE(V_ARRAY(&first), V_ARRAY(&second));
  double* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(V_ARRAY(&first), reinterpret_cast<void**>(&data)), S_OK);
  data[0] = 99;
  SafeArrayUnaccessData(V_ARRAY(&first));
  EXPECT_EQ(values(), (std::vector<double>{1, 2}));
}

TEST_F(CoteTest, HoldsOneReferenceOnItsPicture) {
  const auto picture = makeForeign<ForeignPicture>();
  const auto other = makeForeign<ForeignPicture>();
  const auto dispatch = queryFor<IDispatch>(picture.Get());
  const ULONG before = referencesOf(picture.Get());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(cote_->putref_Picture(dispatch.Get()), S_OK);
    EXPECT_EQ(referencesOf(picture.Get()), before + 1);
  }
  EXPECT_EQ(cote_->putref_Picture(queryFor<IDispatch>(other.Get()).Get()), S_OK);
  EXPECT_EQ(referencesOf(picture.Get()), before);
  EXPECT_EQ(referencesOf(other.Get()), 2U);
  EXPECT_EQ(cote_->putref_Picture(nullptr), S_OK);
  EXPECT_EQ(referencesOf(other.Get()), 1U);
  EXPECT_EQ(cote_->putref_Picture(dispatch.Get()), S_OK);
  cote_.Reset();
  EXPECT_EQ(referencesOf(picture.Get()), before);
}

TEST_F(CoteTest, WithoutAPlaceForAValueItSaysSo) {
  for (const auto& property : kNumbers) EXPECT_EQ((cote_.Get()->*property.get)(nullptr), E_POINTER);
  for (const auto& property : kFlags) EXPECT_EQ((cote_.Get()->*property.get)(nullptr), E_POINTER);
  for (const auto& property : kLengths) EXPECT_EQ((cote_.Get()->*property.get)(nullptr), E_POINTER);
  EXPECT_EQ(cote_->get_Texte(nullptr), E_POINTER);
  EXPECT_EQ(cote_->get_FontSizeUnit(nullptr), E_POINTER);
  EXPECT_EQ(cote_->get_Values_Possibles(nullptr), E_POINTER);
  EXPECT_EQ(cote_->get_NomSelectionPoint1(nullptr), E_POINTER);
  EXPECT_EQ(cote_->get_NomSelectionPoint2(nullptr), E_POINTER);
  EXPECT_EQ(cote_->get_FlecheCotationInterieure(nullptr), E_POINTER);
  EXPECT_EQ(cote_->GetPixelRect(nullptr, nullptr), E_POINTER);
  cote_->put_Values_Possibles(doubleArray({1}));
  EXPECT_EQ(cote_->get_Values_Possibles(nullptr), E_POINTER);
  double x = 5;
  long reference = 6;
  EXPECT_EQ(cote_->getPosition(nullptr, &x, &x, &reference), E_POINTER);
  EXPECT_EQ(cote_->getPosition(&x, nullptr, &x, &reference), E_POINTER);
  EXPECT_EQ(cote_->getPosition(&x, &x, nullptr, &reference), E_POINTER);
  EXPECT_EQ(cote_->getPosition(&x, &x, &x, nullptr), E_POINTER);
  EXPECT_EQ(x, 5);
  EXPECT_EQ(reference, 6);
}

TEST_F(CoteTest, DrawingWithoutAContextDoesNothing) {
  cote_->put_Texte(_bstr_t(L"12"));
  wglMakeCurrent(nullptr, nullptr);
  EXPECT_EQ(cote_->Draw(), S_OK);
  EXPECT_EQ(cote_->DrawForGLSelection(), S_OK);
}

// --- by name, as a script calls ------------------------------------------------------------------

TEST_F(CoteTest, ByName) {
  for (const auto& property : kNumbers) {
    EXPECT_EQ(putProperty(cote_.Get(), property.name, 7L).code(), S_OK);
    EXPECT_EQ(long(getProperty(cote_.Get(), property.name).value), 7) << property.name;
  }
  for (const auto& property : kFlags) {
    EXPECT_EQ(putProperty(cote_.Get(), property.name, true).code(), S_OK);
    EXPECT_TRUE(bool(getProperty(cote_.Get(), property.name).value)) << property.name;
  }
  for (const auto& property : kLengths) {
    EXPECT_EQ(putProperty(cote_.Get(), property.name, 2.5).code(), S_OK);
    EXPECT_EQ(double(getProperty(cote_.Get(), property.name).value), 2.5) << property.name;
  }
  EXPECT_EQ(putProperty(cote_.Get(), L"Texte", L"Abc").code(), S_OK);
  EXPECT_STREQ(_bstr_t(getProperty(cote_.Get(), L"Texte").value), L"Abc");
  EXPECT_EQ(putProperty(cote_.Get(), L"FontSizeUnit", 3L).code(), S_OK);
  EXPECT_EQ(long(getProperty(cote_.Get(), L"FontSizeUnit").value), 3);
  EXPECT_EQ(putProperty(cote_.Get(), L"NomSelectionPoint1", 11L).code(), S_OK);
  EXPECT_EQ(long(getProperty(cote_.Get(), L"NomSelectionPoint2").value), 11);
  EXPECT_EQ(putProperty(cote_.Get(), L"FlecheCotationInterieure", false).code(), S_OK);
  EXPECT_TRUE(bool(getProperty(cote_.Get(), L"FlecheCotationInterieure").value));
  EXPECT_EQ(putProperty(cote_.Get(), L"Values_Possibles", variantArray({1.0, 2.0})).code(), S_OK);
  EXPECT_EQ(doublesIn(getProperty(cote_.Get(), L"Values_Possibles").value),
            (std::vector<double>{1, 2}));
  EXPECT_EQ(callMethod(cote_.Get(), L"setColor", {1.0, 0.5, 0.25, 1.0}).code(), S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"setPosition", {1.0, 2.0, 3.0, 4L}).code(), S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"setPointsCotation", {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}).code(),
            S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"setDirectionCotation", {1.0, 2.0, 3.0}).code(), S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"setNormaleCotation", {1.0, 2.0, 3.0}).code(), S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"setPictureTransparentColor", {255L, 0L, 0L}).code(), S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"Draw").code(), S_OK);
  EXPECT_EQ(callMethod(cote_.Get(), L"DrawForGLSelection").code(), S_OK);
  double x = 0;
  double y = 0;
  double z = 0;
  long reference = 0;
  EXPECT_EQ(callMethod(cote_.Get(), L"getPosition",
                       {outArgument(x), outArgument(y), outArgument(z), outArgument(reference)})
                .code(),
            S_OK);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(z, 3);
  EXPECT_EQ(reference, 4);
  const _variant_t nothing(static_cast<IDispatch*>(nullptr));
  const auto rectangle = callMethod(cote_.Get(), L"GetPixelRect", {nothing});
  EXPECT_EQ(rectangle.code(), S_OK);
  EXPECT_EQ(V_VT(&rectangle.value), VT_DISPATCH);
}

TEST_F(CoteTest, HasItsNumbersOfMembers) {
  const struct {
    const wchar_t* name;
    DISPID id;
  } members[] = {{L"setColor", 1},
                 {L"setPosition", 2},
                 {L"Texte", 3},
                 {L"HauteurPixels", 4},
                 {L"NomSelection", 5},
                 {L"TypeSelection", 6},
                 {L"PushTypeSelection", 7},
                 {L"ToujoursLisible", 8},
                 {L"getPosition", 9},
                 {L"setPointsCotation", 10},
                 {L"TypeCotation", 11},
                 {L"DecalageCotation", 12},
                 {L"DecalageTexteCotationPX", 13},
                 {L"AjoutCotationPX", DISPID_UNKNOWN},
                 {L"LongueurFlecheCotationPX", 15},
                 {L"Value", 16},
                 {L"IsNumeric", 17},
                 {L"GetPixelRect", 18},
                 {L"UseNumericSize", 19},
                 {L"setDirectionCotation", 20},
                 {L"setNormaleCotation", 21},
                 {L"FlecheCotationInterieure", 22},
                 {L"Picture", 23},
                 {L"setPictureTransparentColor", 24},
                 {L"PictureTransparent", 25},
                 {L"LargeurFlecheCotationPX", 26},
                 {L"PositionCotation", 27},
                 {L"NomSelectionPoint1", 28},
                 {L"NomSelectionPoint2", 29},
                 {L"Value_Max", 30},
                 {L"Value_Min", 31},
                 {L"Value_Increment", 32},
                 {L"Value_FreeInput", 33},
                 {L"Values_Possibles", 34},
                 {L"DrawForGLSelection", 35},
                 {L"Draw", 36},
                 {L"FontSizeUnit", 37},
                 {L"FontSize", 38}};
  for (const auto& [name, id] : members) EXPECT_EQ(dispidOf(cote_.Get(), name), id) << name;
}

// --- identity and aggregation --------------------------------------------------------------------

TEST_F(CoteTest, IsNoSceneObject) {
  ComPtr<IGLDraw> draw;
  EXPECT_EQ(cote_.As(&draw), E_NOINTERFACE);
  const auto unknown = queryFor<IUnknown>(cote_.Get());
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IDispatch>(cote_.Get()).Get()).Get(), unknown.Get());
  const auto support = queryFor<ISupportErrorInfo>(cote_.Get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(Cote)), S_OK);
}

TEST_F(CoteTest, CanBeAggregated) {
  auto outer = makeForeign<Outer>();
  IUnknown* controlling = static_cast<IZYNObjet*>(outer.Get());
  ASSERT_EQ(CoCreateInstance(classOf(kCoteProgId), controlling, CLSCTX_INPROC_SERVER, IID_IUnknown,
                             reinterpret_cast<void**>(outer->inner.GetAddressOf())),
            S_OK);
  EXPECT_EQ(referencesOf(outer.Get()), 1U);
  {
    const auto cote = queryFor<Cote>(outer.Get());
    EXPECT_EQ(referencesOf(outer.Get()), 2U);
    EXPECT_EQ(queryFor<IUnknown>(cote.Get()).Get(), controlling);
    EXPECT_EQ(cote->put_HauteurPixels(31), S_OK);
    EXPECT_EQ(cote->Draw(), S_OK);
    double size = 0;
    EXPECT_EQ(cote->get_FontSize(&size), S_OK);
    EXPECT_EQ(size, 31);
  }
  EXPECT_EQ(referencesOf(outer.Get()), 1U);
  outer.Reset();
  EXPECT_EQ(Outer::live(), 0);
}

TEST_F(CoteTest, AggregationMustAskForIUnknown) {
  auto outer = makeForeign<Outer>();
  ComPtr<Cote> cote;
  EXPECT_TRUE(FAILED(CoCreateInstance(classOf(kCoteProgId), static_cast<IZYNObjet*>(outer.Get()),
                                      CLSCTX_INPROC_SERVER, __uuidof(Cote),
                                      reinterpret_cast<void**>(cote.GetAddressOf()))));
  EXPECT_FALSE(cote);
}

// --- rectangle in pixels -------------------------------------------------------------------------

/// A text of 24 pixels, centred on its position.
class CoteRectTest : public CoteTest {
 protected:
  CoteRectTest() {
    cote_->put_Texte(_bstr_t(L"1234"));
    cote_->put_HauteurPixels(24);
    cote_->setPosition(10, 20, 30, 9);
  }

  /// In whole pixels around a centre; returns the width.
  static double expectAround(const Sides& sides, double x, double y, double height = 24) {
    for (const double side : sides) EXPECT_EQ(side, std::floor(side));
    EXPECT_NEAR((sides[0] + sides[1]) / 2, x, 1);
    EXPECT_NEAR((sides[2] + sides[3]) / 2, y, 1);
    EXPECT_GE(sides[3] - sides[2], height - 1e-6);
    EXPECT_LT(sides[3] - sides[2], height + 2);
    EXPECT_GT(sides[1] - sides[0], height);
    return sides[1] - sides[0];
  }
};

TEST_F(CoteRectTest, InA3DViewItIsInClientPixels) {
  View3DHost view({400, 200});
  view.addBox({-50, 50, -40, 40, -30, 30});
  view->initView(0.2);
  view->RotateH(25);
  view->RotateV(-15);
  const DrawnCamera camera = view.camera();
  const auto pixel = camera.pixelOf({10, 20, 30});
  expectAround(pixelRectIn(view.get()), pixel[0], pixel[1]);
  // As the view shows a label there.
  const auto label = makeText(L"1234", 24);
  label->setPosition(10, 20, 30, 9);
  view->Add(label.Get(), 0);
  const PixelBox ink = inkBox(view.scene(), view.scene().at(0, 0));
  const Sides sides = pixelRectIn(view.get());
  EXPECT_NEAR(sides[0], ink.left, 2);
  EXPECT_NEAR(sides[1], ink.right + 1, 2);
}

TEST_F(CoteRectTest, InA2DViewItIsInClientPixels) {
  View2DHost view({400, 200});
  view.look({0, 40, 10, 30});
  const auto pixel = view.pixelOf(10, 20);
  expectAround(pixelRectIn(view.get()), pixel[0], pixel[1]);
}

TEST_F(CoteRectTest, InACurrentContextItIsInItsViewport) {
  GlCanvas canvas(300, 200);
  glViewport(0, 0, 300, 200);
  glMatrixMode(GL_PROJECTION);
  glOrtho(0, 150, 0, 100, -100, 100);
  glMatrixMode(GL_MODELVIEW);
  expectAround(pixelRectIn(nullptr), 20, 160);
  const auto noView = makeForeign<ForeignPicture>();
  expectAround(pixelRectIn(queryFor<IDispatch>(noView.Get()).Get()), 20, 160);
  EXPECT_TRUE(canvas.isCurrent());
}

TEST_F(CoteRectTest, WithoutAnyScreenAModelUnitIsAPixel) {
  wglMakeCurrent(nullptr, nullptr);
  expectAround(pixelRectIn(nullptr), 10, -20);
}

TEST_F(CoteRectTest, FollowsSizeAndText) {
  wglMakeCurrent(nullptr, nullptr);
  const double width = expectAround(pixelRectIn(nullptr), 10, -20);
  cote_->put_Texte(_bstr_t(L"12341234"));
  EXPECT_NEAR(expectAround(pixelRectIn(nullptr), 10, -20), 2 * width, 3);
  cote_->put_FontSizeUnit(FontSizeUnit_MM);
  cote_->put_FontSize(25.4);
  EXPECT_NEAR(expectAround(pixelRectIn(nullptr), 10, -20, 72), 6 * width, 12);
  cote_->put_IsNumeric(VARIANT_TRUE);
  cote_->put_Value(1234);
  EXPECT_NEAR(expectAround(pixelRectIn(nullptr), 10, -20, 72), 3 * width, 12);
}

TEST_F(CoteRectTest, OfAnEmptyTextIsAPoint) {
  wglMakeCurrent(nullptr, nullptr);
  cote_->put_Texte(nullptr);
  EXPECT_EQ(pixelRectIn(nullptr), (Sides{10, 10, -20, -20}));
}

TEST_F(CoteRectTest, OfWhatCannotBeDrawnIsEmpty) {
  wglMakeCurrent(nullptr, nullptr);
  cote_->setPosition(double(NAN), 0, 0, 0);
  EXPECT_EQ(pixelRectIn(nullptr), (Sides{0, 0, 0, 0}));
}

TEST_F(CoteRectTest, FollowsTheDimensionLine) {
  wglMakeCurrent(nullptr, nullptr);
  cote_->put_TypeCotation(2);
  cote_->setPointsCotation(100, 200, 0, 300, 200, 0);
  cote_->put_DecalageCotation(50);
  expectAround(pixelRectIn(nullptr), 200, -(250 + 15 + 12));
  cote_->put_PositionCotation(30);
  expectAround(pixelRectIn(nullptr), 230, -(250 + 15 + 12));
  cote_->put_DecalageTexteCotationPX(40);
  expectAround(pixelRectIn(nullptr), 230, -(250 + 40 + 12));
}

}  // namespace
}  // namespace zyn::test
