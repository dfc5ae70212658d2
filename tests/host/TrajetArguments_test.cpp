// Arguments of tool paths and tools as hosts of all kinds hand them over: every form of array,
// early and late bound, what is no array, no number, out of range or missing. What is refused
// changes nothing.
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "support/ArrayVariant_win.h"
#include "support/Drawer_win.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

using Numbers = std::vector<double>;

/// The numbers in an array of doubles with these dimensions, row by row, from a lower bound on.
_variant_t arrayOf(const Numbers& numbers, const std::vector<ULONG>& dimensions, LONG lowerBound) {
  std::vector<SAFEARRAYBOUND> bounds;
  for (const ULONG count : dimensions) bounds.push_back({count, lowerBound});
  _variant_t array;
  V_VT(&array) = VT_ARRAY | VT_R8;
  V_ARRAY(&array) = SafeArrayCreate(VT_R8, static_cast<UINT>(bounds.size()), bounds.data());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    std::vector<LONG> index(dimensions.size());
    std::size_t rest = i;
    for (std::size_t d = dimensions.size(); d-- > 0; rest /= dimensions[d]) {
      index[d] = lowerBound + static_cast<LONG>(rest % dimensions[d]);
    }
    double number = numbers[i];
    require(SafeArrayPutElement(V_ARRAY(&array), index.data(), &number), "SafeArrayPutElement");
  }
  return array;
}

/// An array as JScript has them.
class ScriptArray final : public ForeignBase<ScriptArray, IDispatch> {
 public:
  explicit ScriptArray(std::vector<_variant_t> elements) : elements_(std::move(elements)) {}

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    const std::wstring name = names[0];
    *ids = name == L"length" ? kLength : std::stol(name);
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* answer, EXCEPINFO*,
                      UINT*) override {
    _variant_t length(static_cast<long>(elements_.size()));
    return VariantCopy(answer, id == kLength ? &length : &elements_[static_cast<std::size_t>(id)]);
  }

 private:
  static constexpr DISPID kLength = 1000000;
  std::vector<_variant_t> elements_;
};

std::vector<_variant_t> variantsOf(const Numbers& numbers) {
  std::vector<_variant_t> all;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    // Of different types, as scripts have them.
    all.push_back(i % 3 == 0   ? _variant_t(numbers[i])
                  : i % 3 == 1 ? _variant_t(static_cast<long>(numbers[i]))
                               : _variant_t(static_cast<short>(numbers[i])));
  }
  return all;
}

using Form = _variant_t (*)(const Numbers& numbers);

/// Hosts keep what they hand over by reference.
_variant_t& kept(const _variant_t& value) {
  static std::vector<std::unique_ptr<_variant_t>> all;
  return *all.emplace_back(std::make_unique<_variant_t>(value));
}

const std::pair<const char*, Form> kForms[] = {
    {"R8", [](const Numbers& n) { return doubleArray(n); }},
    {"R4", [](const Numbers& n) { return numberArray(VT_R4, n); }},
    {"I4", [](const Numbers& n) { return numberArray(VT_I4, n); }},
    {"I2", [](const Numbers& n) { return numberArray(VT_I2, n); }},
    {"UI1", [](const Numbers& n) { return numberArray(VT_UI1, n); }},
    {"variants", [](const Numbers& n) { return variantArray(variantsOf(n)); }},
    {"array by reference", [](const Numbers& n) { return arrayReference(kept(doubleArray(n))); }},
    {"VARIANT by reference",
     [](const Numbers& n) { return variantReference(&kept(numberArray(VT_I2, n))); }},
    {"reference to a reference",
     [](const Numbers& n) {
       return variantReference(&kept(arrayReference(kept(variantArray(variantsOf(n))))));
     }},
    {"from 1", [](const Numbers& n) { return arrayOf(n, {static_cast<ULONG>(n.size())}, 1); }},
    {"from -7", [](const Numbers& n) { return arrayOf(n, {static_cast<ULONG>(n.size())}, -7); }},
    {"rows",
     [](const Numbers& n) {
       const ULONG columns = n.size() == 9 ? 3 : 1;
       return arrayOf(n, {static_cast<ULONG>(n.size()) / columns, columns}, 4);
     }},
    {"script", [](const Numbers& n) {
       return _variant_t(makeForeign<ScriptArray>(variantsOf(n))->dispatch());
     }}};

class TrajetArguments : public HostTest {
 protected:
  TrajetArguments() {
    require(path_->setPoints(doubleArray({0, 0, 0, 3, 0, 0, 3, 4, 0})), "setPoints");
    require(path_->setLignes(doubleArray({7, 9})), "setLignes");
    require(path_->put_Position(4), "Position");
  }

  CallResult call(const wchar_t* name, const std::vector<_variant_t>& arguments = {}) const {
    return callMethod(path_.Get(), name, arguments);
  }
  Numbers numbers(const wchar_t* method) const {
    const _variant_t value = call(method).value;
    if (value.vt == (VT_ARRAY | VT_R8)) return doublesIn(value);
    const auto names = namesIn(value);
    return {names.begin(), names.end()};
  }
  Numbers state() const {
    Numbers all;
    for (const wchar_t* method : {L"getPoints", L"getTypes", L"getVitesses", L"getLignes"}) {
      const Numbers some = numbers(method);
      all.insert(all.end(), some.begin(), some.end());
    }
    for (const wchar_t* name :
         {L"Position", L"VitesseAvance", L"VitesseRapide", L"EpaisseurTrait", L"StyleRapides",
          L"ModeCouleur", L"Decalage", L"NomSelection", L"Tolerance", L"CodesInconnus",
          L"RetraitPercage", L"RapidesVisibles", L"SauterBlocs"}) {
      all.push_back(getProperty(path_.Get(), name).value);
    }
    return all;
  }

  ComPtr<IZYNGLTrajet> path_ = createObject<IZYNGLTrajet>(kPathProgId);
};

TEST_F(TrajetArguments, ArraysOfEveryFormAreRead) {
  const Numbers points{1, 2, 3, 4, 5, 6, 9, 8, 7};
  for (const auto& [name, form] : kForms) {
    SCOPED_TRACE(name);
    require(path_->setPoints(doubleArray({})), "setPoints");
    ASSERT_EQ(call(L"setPoints", {form(points)}).code(), S_OK);
    EXPECT_EQ(numbers(L"getPoints"), points);
    require(path_->setPoints(doubleArray({})), "setPoints");
    ASSERT_EQ(path_->setPoints(form(points)), S_OK) << "early bound";
    EXPECT_EQ(numbers(L"getPoints"), points);
    ASSERT_EQ(call(L"setPoints3D", {form({1, 4, 9}), form({2, 5, 8}), form({3, 6, 7})}).code(),
              S_OK);
    EXPECT_EQ(numbers(L"getPoints"), points);
    ASSERT_EQ(call(L"setTypes", {form({2, 77})}).code(), S_OK);
    EXPECT_EQ(numbers(L"getTypes"), (Numbers{2, 77}));
    ASSERT_EQ(call(L"setVitesses", {form({0, 50})}).code(), S_OK);
    EXPECT_EQ(numbers(L"getVitesses"), (Numbers{0, 50}));
    ASSERT_EQ(call(L"setLignes", {form({6, 5})}).code(), S_OK);
    EXPECT_EQ(numbers(L"getLignes"), (Numbers{6, 5}));
    ASSERT_EQ(
        call(L"AjouterPoints", {form(points), form({1, 2, 3}), form({4, 5, 6}), form({7, 8, 9})})
            .code(),
        S_OK);
    EXPECT_EQ(numbers(L"getTypes"), (Numbers{2, 77, 1, 2, 3}));
    EXPECT_EQ(numbers(L"getVitesses"), (Numbers{0, 50, 4, 5, 6}));
    EXPECT_EQ(numbers(L"getLignes"), (Numbers{6, 5, 7, 8, 9}));
    EXPECT_EQ(numbers(L"getPoints").size(), 18U);
  }
}

/// Fractions of floats come through as they are.
TEST_F(TrajetArguments, NumbersKeepEveryBit) {
  const Numbers exact{0.1, -1e-300, 12345678.9, 1e300, -0.0, 5e-324};
  ASSERT_EQ(call(L"setPoints", {doubleArray(exact)}).code(), S_OK);
  EXPECT_EQ(numbers(L"getPoints"), exact);
  ASSERT_EQ(call(L"setVitesses", {numberArray(VT_R4, {0.1})}).code(), S_OK);
  EXPECT_EQ(numbers(L"getVitesses"), (Numbers{static_cast<double>(0.1F)}));
  ASSERT_EQ(call(L"setTypes", {doubleArray({-2147483648.0})}).code(), S_OK);
  EXPECT_EQ(numbers(L"getTypes"), (Numbers{-2147483648.0}));
  ASSERT_EQ(call(L"setLignes", {doubleArray({2147483647})}).code(), S_OK);
  EXPECT_EQ(numbers(L"getLignes"), (Numbers{2147483647}));
}

TEST_F(TrajetArguments, WhatIsNoArrayOfNumbersIsRefused) {
  const auto wrong = [&](std::size_t count) {
    Numbers fitting(count, 1);
    std::vector<_variant_t> texts = variantsOf(fitting);
    texts[count - 1] = L"abc";
    std::vector<_variant_t> gaps = variantsOf(fitting);
    gaps[0] = _variant_t();
    Numbers notANumber = fitting;
    notANumber[count - 1] = kNaN;
    Numbers infinite = fitting;
    infinite[0] = -kInfinite;
    return std::vector<_variant_t>{L"abc",
                                   5L,
                                   true,
                                   _variant_t(static_cast<IDispatch*>(nullptr)),
                                   _variant_t(path_.Get()),
                                   variantArray(texts),
                                   variantArray(gaps),
                                   doubleArray(notANumber),
                                   doubleArray(infinite),
                                   doubleArray(Numbers(count + 1, 1)),
                                   doubleTable(1, static_cast<ULONG>(count) + 1),
                                   arrayOf(fitting, {1, 1, static_cast<ULONG>(count)}, 0),
                                   _variant_t(makeForeign<ScriptArray>(texts)->dispatch()),
                                   _variant_t(makeForeign<ForeignObject>()->dispatch())};
  };
  const Numbers before = state();
  const auto expectRefused = [&](const wchar_t* member, const std::vector<_variant_t>& arguments,
                                 const std::wstring& argument, std::size_t form) {
    const CallResult result = call(member, arguments);
    const auto told = std::string(result.description.begin(), result.description.end());
    EXPECT_EQ(result.code(), E_INVALIDARG)
        << form << " of " << std::string(argument.begin(), argument.end());
    EXPECT_EQ(result.description.rfind(argument + L": ", 0), 0U) << form << ": " << told;
    EXPECT_EQ(state(), before) << form << ": " << told;
  };
  for (std::size_t form = 0; form < wrong(3).size(); ++form) {
    expectRefused(L"setPoints", {wrong(3)[form]}, L"XYZ", form);
    expectRefused(L"setTypes", {wrong(2)[form]}, L"Types", form);
    expectRefused(L"setVitesses", {wrong(2)[form]}, L"Vitesses", form);
    expectRefused(L"setLignes", {wrong(2)[form]}, L"Lignes", form);
    const _variant_t one = doubleArray({1, 1, 1});
    const _variant_t each = doubleArray({1});
    expectRefused(L"AjouterPoints", {wrong(3)[form]}, L"XYZ", form);
    expectRefused(L"AjouterPoints", {one, wrong(1)[form]}, L"Types", form);
    expectRefused(L"AjouterPoints", {one, each, wrong(1)[form]}, L"Vitesses", form);
    expectRefused(L"AjouterPoints", {one, each, each, wrong(1)[form]}, L"Lignes", form);
    const _variant_t three = doubleArray({1, 1, 1});
    const bool isLength = form == 9 || form == 10;
    expectRefused(L"setPoints3D", {three, wrong(3)[form], three}, L"y", form);
    expectRefused(L"setPoints3D", {three, three, wrong(3)[form]}, L"Z", form);
    // Of another length, it is the others that do not fit.
    expectRefused(L"setPoints3D", {wrong(3)[form], three, three}, isLength ? L"y" : L"x", form);
  }
}

TEST_F(TrajetArguments, RefusalsTellTheElement) {
  const auto told = [&](const wchar_t* member, const _variant_t& argument) {
    return call(member, {argument}).description;
  };
  EXPECT_EQ(told(L"setPoints", doubleArray({0, 1, 2, 3, kNaN, 5})).rfind(L"XYZ: element 4 is ", 0),
            0U);
  EXPECT_EQ(told(L"setTypes", doubleArray({0, 0.5})).rfind(L"Types: element 1 is 0.5", 0), 0U);
  EXPECT_EQ(told(L"setLignes", doubleArray({1e10, 1})).rfind(L"Lignes: element 0 is 1", 0), 0U);
  EXPECT_EQ(told(L"setLignes", doubleArray({1, 2, 3})),
            L"Lignes: 3 elements, there are 2 segments");
  EXPECT_EQ(told(L"setVitesses", doubleArray({1, -2})).rfind(L"Vitesses: element 1 is -2", 0), 0U);
}

struct Put {
  const wchar_t* name;
  _variant_t value;
  HRESULT answer;
};

TEST_F(TrajetArguments, ScalarsByNameAreConvertedOrRefused) {
  const Put puts[] = {
      {L"Position", L"abc", DISP_E_TYPEMISMATCH},
      {L"Position", doubleArray({1}), DISP_E_TYPEMISMATCH},
      {L"PositionSegment", 1e12, DISP_E_OVERFLOW},
      {L"PositionSegment", L"one", DISP_E_TYPEMISMATCH},
      {L"PositionLigne", -1e12, DISP_E_OVERFLOW},
      {L"VitesseAvance", L"fast", DISP_E_TYPEMISMATCH},
      {L"VitesseAvance", 0L, E_INVALIDARG},
      {L"VitesseRapide", false, E_INVALIDARG},
      {L"ModeCouleur", 1e10, DISP_E_OVERFLOW},
      {L"ModeCouleur", true, E_INVALIDARG},
      {L"NomSelection", 3e9, DISP_E_OVERFLOW},
      {L"EpaisseurTrait", kNaN, E_INVALIDARG},
      {L"Decalage", 1000.5, E_INVALIDARG},
      {L"Tolerance", -0.0, E_INVALIDARG},
      {L"RetraitPercage", -1e-9, E_INVALIDARG},
      {L"SauterBlocs", L"perhaps", DISP_E_TYPEMISMATCH},
      {L"EchelleCouleurs", L"viridis", DISP_E_TYPEMISMATCH},
      {L"Outil", 6.0, DISP_E_TYPEMISMATCH},
      {L"Outil", _variant_t(makeForeign<ForeignObject>()->dispatch()), E_INVALIDARG},
      {L"EchelleCouleurs", _variant_t(createObject<IDispatch>(kToolProgId).Get()), E_INVALIDARG},
      {L"Outil", _variant_t(createObject<IDispatch>(kScaleProgId).Get()), E_INVALIDARG}};
  const Numbers before = state();
  for (const Put& put : puts) {
    const std::wstring name = put.name;
    const CallResult result = putProperty(path_.Get(), put.name, put.value);
    EXPECT_EQ(result.code(), put.answer) << std::string(name.begin(), name.end());
    EXPECT_EQ(state(), before) << std::string(name.begin(), name.end());
    EXPECT_TRUE(put.answer != E_INVALIDARG || result.description.rfind(name + L": ", 0) == 0);
  }
  EXPECT_EQ(putProperty(path_.Get(), L"Position", L"5").code(), S_OK);
  EXPECT_EQ(static_cast<double>(getProperty(path_.Get(), L"Position").value), 5);
  EXPECT_EQ(putProperty(path_.Get(), L"PositionSegment", 1.0).code(), S_OK);
  EXPECT_EQ(static_cast<long>(getProperty(path_.Get(), L"PositionSegment").value), 1);
}

TEST_F(TrajetArguments, WrongNumbersOfArgumentsAreRefused) {
  const Numbers before = state();
  const _variant_t one = doubleArray({1});
  EXPECT_EQ(call(L"setPoints").code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"setPoints", {one, one}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"setPoints3D", {one, one}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"AjouterPoints").code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"AjouterPoints", {one, one, one, one, one}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"setCouleurType", {1L, 1.0, 1.0, 1.0}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"ChargerGCode").code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"Copie", {one}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(putProperty(path_.Get(), L"Longueur", 5.0).code(), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(state(), before);
}

TEST_F(TrajetArguments, ColoursAreWithinTheirRange) {
  const double bad[] = {-0.001, 1.001, 255, kNaN, kInfinite, -kInfinite};
  const wchar_t* const names[] = {L"r: ", L"g: ", L"b: ", L"alpha: "};
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  for (const double wrong : bad) {
    for (std::size_t i = 0; i < 4; ++i) {
      std::vector<_variant_t> colour(4, _variant_t(0.5));
      colour[i] = wrong;
      EXPECT_EQ(call(L"setCouleurFait", colour).description.rfind(names[i], 0), 0U);
      EXPECT_EQ(callMethod(tool.Get(), L"setColor", colour).description.rfind(names[i], 0), 0U);
      colour.insert(colour.begin(), -5L);
      const CallResult result = call(L"setCouleurType", colour);
      EXPECT_EQ(result.code(), E_INVALIDARG);
      EXPECT_EQ(result.description.rfind(names[i], 0), 0U);
    }
  }
}

TEST_F(TrajetArguments, SwitchesTakeAnyOtherValueThanZeroAsOn) {
  for (const VARIANT_BOOL on : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_BOOL{256}}) {
    require(path_->put_RapidesVisibles(VARIANT_FALSE), "RapidesVisibles");
    require(path_->put_RapidesVisibles(on), "RapidesVisibles");
    VARIANT_BOOL visible = VARIANT_FALSE;
    require(path_->getTypeVisible(0, &visible), "getTypeVisible");
    EXPECT_EQ(visible, VARIANT_TRUE);
    require(path_->put_SauterBlocs(VARIANT_FALSE), "SauterBlocs");
    require(path_->put_SauterBlocs(on), "SauterBlocs");
    require(path_->get_SauterBlocs(&visible), "SauterBlocs");
    EXPECT_EQ(visible, VARIANT_TRUE);
  }
}

TEST_F(TrajetArguments, NowhereToAnswerIsAPointerError) {
  using Path = IZYNGLTrajet;
  for (const auto get :
       {&Path::get_VitesseAvance, &Path::get_VitesseRapide, &Path::get_Position,
        &Path::get_PositionTemps, &Path::get_Longueur, &Path::get_Duree, &Path::get_EpaisseurTrait,
        &Path::get_Decalage, &Path::get_Tolerance, &Path::get_RetraitPercage}) {
    EXPECT_EQ((path_.Get()->*get)(nullptr), E_POINTER);
  }
  for (const auto get :
       {&Path::get_NbPoints, &Path::get_NbSegments, &Path::get_PositionSegment,
        &Path::get_PositionLigne, &Path::get_StyleRapides, &Path::get_ModeCouleur,
        &Path::get_NomSelection, &Path::get_CodesInconnus, &Path::get_NbCodesIgnores}) {
    EXPECT_EQ((path_.Get()->*get)(nullptr), E_POINTER);
  }
  for (const auto get : {&Path::getPoints, &Path::getTypes, &Path::getVitesses, &Path::getLignes,
                         &Path::get_Boite, &Path::getPosition}) {
    EXPECT_EQ((path_.Get()->*get)(nullptr), E_POINTER);
  }
  for (const auto get : {&Path::Copie, &Path::get_EchelleCouleurs, &Path::get_Outil}) {
    EXPECT_EQ((path_.Get()->*get)(nullptr), E_POINTER);
  }
  EXPECT_EQ(path_->get_RapidesVisibles(nullptr), E_POINTER);
  EXPECT_EQ(path_->get_SauterBlocs(nullptr), E_POINTER);
  EXPECT_EQ(path_->getTypeVisible(3, nullptr), E_POINTER);
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  for (const auto get :
       {&IZYNOutil::get_Diametre, &IZYNOutil::get_RayonCoin, &IZYNOutil::get_LongueurCoupe,
        &IZYNOutil::get_Longueur, &IZYNOutil::get_DiametrePorte, &IZYNOutil::get_LongueurPorte}) {
    EXPECT_EQ((tool.Get()->*get)(nullptr), E_POINTER);
  }
}

TEST_F(TrajetArguments, NamesOfFilesAreNames) {
  const Numbers before = state();
  EXPECT_EQ(path_->ChargerGCode(nullptr), E_INVALIDARG);
  EXPECT_EQ(path_->ChargerGCode(_bstr_t(L"")), E_INVALIDARG);
  BSTR withNull = SysAllocStringLen(L"a.nc\0b", 6);
  EXPECT_EQ(path_->ChargerGCode(withNull), E_INVALIDARG);
  SysFreeString(withNull);
  for (const std::wstring& odd : {std::wstring(40000, L'x'), std::wstring(L"a?b*.nc"),
                                  std::wstring(L"\\\\.\\pipe\\none"), std::wstring(L"   ")}) {
    const CallResult result = call(L"ChargerGCode", {_bstr_t(odd.c_str())});
    EXPECT_EQ(HRESULT_FACILITY(result.code()), FACILITY_WIN32) << odd.size();
    EXPECT_FALSE(result.description.empty());
  }
  EXPECT_EQ(state(), before);
}

/// Numbers as large and as small as they come: nothing hangs, nothing breaks, what is told of the
/// place is a number, and later calls work.
class TrajetExtremes : public HostTest, public testing::WithParamInterface<DrawerClass> {};

TEST_P(TrajetExtremes, BreakNothing) {
  const Numbers sizes[] = {{0, 0, 0, 1e308, -1e308, 1e308, -1e308, 1e308, 0},
                           {1e-320, 0, 0, 0, 5e-324, 0, 3e-310, 0, 0},
                           {1e20, 1e20, 1e20, 1e20, 1e20, 1e20, 1e20 + 1e5, 1e20, 1e20},
                           {0, 0, 0, 1, 1, 1, 1e38, 0, 0}};
  const auto drawer = GetParam().make(40, 40);
  const auto path = createObject<IZYNGLTrajet>(kPathProgId);
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  require(path->putref_Outil(tool.Get()), "Outil");
  require(path->put_EpaisseurTrait(1e300), "EpaisseurTrait");
  require(tool->put_Longueur(1e-300), "Longueur");
  require(tool->put_RayonCoin(1e300), "RayonCoin");
  require(tool->put_LongueurPorte(1e308), "LongueurPorte");
  require(tool->put_DiametrePorte(1e308), "DiametrePorte");
  drawer->add(path.Get());
  if (GetParam().isView) drawer->call(L"AddSelection", {path.Get()});
  for (const Numbers& size : sizes) {
    for (const double speed : {0.0, 1e-320, 1e308}) {
      require(path->setPoints(doubleArray(size)), "setPoints");
      require(path->setVitesses(doubleArray({speed, speed})), "setVitesses");
      for (const long mode : {0L, 1L, 2L}) {
        require(path->put_ModeCouleur(mode), "ModeCouleur");
        for (const double wanted : {0.0, 1e-322, 1.0, 1e307, kInfinite}) {
          for (const wchar_t* const property : {L"Position", L"PositionTemps"}) {
            EXPECT_EQ(putProperty(path.Get(), property, wanted).code(), S_OK);
            for (const wchar_t* const told : {L"Position", L"PositionTemps"}) {
              EXPECT_TRUE(std::isfinite(static_cast<double>(getProperty(path.Get(), told).value)))
                  << size[3] << " at " << speed << ": " << wanted;
            }
            for (const double coordinate :
                 doublesIn(callMethod(path.Get(), L"getPosition").value)) {
              EXPECT_TRUE(std::isfinite(coordinate))
                  << size[3] << " at " << speed << ": " << wanted;
            }
          }
        }
        drawer->lookAtPlane();
        try {
          drawer->frame();
        } catch (const std::runtime_error&) {  // a context may tell
        }
        if (GetParam().isView && !GetParam().isPlane) {
          drawer->call(L"getSelectionUnderMouse", {20L, 20L});
          drawer->call(L"getSelectionRectangle", {0L, 0L, 39L, 39L, 0L});
        }
      }
    }
  }
  require(path->setPoints(doubleArray({1, 2, 3})), "setPoints");
  EXPECT_EQ(callMethod(path.Get(), L"Copie").code(), S_OK);
}

INSTANTIATE_TEST_SUITE_P(All, TrajetExtremes, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
