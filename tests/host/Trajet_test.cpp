// The tool path as a host sees it: its members, what it refuses, places on it, programs.
#include <algorithm>
#include <fstream>
#include <limits>
#include <numbers>

#include "support/ArrayVariant_win.h"
#include "support/EventListener_win.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kFar = std::numeric_limits<double>::infinity();
constexpr double kPi = std::numbers::pi;

using Numbers = std::vector<double>;
using Names = std::vector<long>;

class TrajetTest : public HostTest {
 protected:
  TrajetTest() {
    require(call(L"setPoints", {doubleArray({0, 0, 0, 3, 0, 0, 3, 4, 0, 3, 4, 12})}).code(),
            "setPoints");
  }

  CallResult call(const wchar_t* name, const std::vector<_variant_t>& arguments = {}) const {
    return callMethod(path_.Get(), name, arguments);
  }
  _variant_t get(const wchar_t* name) const { return getProperty(path_.Get(), name).value; }
  double number(const wchar_t* name) const { return get(name); }
  CallResult put(const wchar_t* name, const _variant_t& value) const {
    return putProperty(path_.Get(), name, value);
  }
  Numbers doubles(const wchar_t* method) const { return doublesIn(call(method).value); }
  Names integers(const wchar_t* method) const { return namesIn(call(method).value); }

  /// All that can be read back.
  std::wstring state() const {
    std::wstring all;
    for (const wchar_t* method : {L"getPoints", L"getVitesses", L"getPosition"}) {
      for (const double value : doubles(method)) all += std::to_wstring(value) + L" ";
    }
    for (const wchar_t* method : {L"getTypes", L"getLignes"}) {
      for (const long value : integers(method)) all += std::to_wstring(value) + L" ";
    }
    for (const wchar_t* name :
         {L"VitesseAvance", L"VitesseRapide", L"Position", L"PositionTemps", L"PositionSegment",
          L"PositionLigne", L"Longueur", L"Duree", L"RapidesVisibles", L"EpaisseurTrait",
          L"StyleRapides", L"ModeCouleur", L"Decalage", L"NomSelection", L"Tolerance",
          L"CodesInconnus", L"NbCodesIgnores", L"SauterBlocs", L"RetraitPercage"}) {
      all += std::to_wstring(number(name)) + L" ";
    }
    return all;
  }

  /// Refused, with a text that begins so, and without a change.
  void expectRefused(const CallResult& result, const std::wstring& text) const {
    EXPECT_EQ(result.code(), E_INVALIDARG) << std::string(text.begin(), text.end());
    EXPECT_EQ(result.description.substr(0, text.size()), text);
    EXPECT_EQ(state(), before_);
  }

  /// Writes a program and loads it.
  CallResult load(const std::string& program) const {
    const auto file = folder_.file(L"part.nc");
    std::ofstream(file, std::ios::binary) << program;
    return call(L"ChargerGCode", {bstr(file)});
  }

  TempFolder folder_;
  ComPtr<IZYNGLTrajet> path_ = createObject<IZYNGLTrajet>(kPathProgId);
  std::wstring before_;
};

TEST_F(TrajetTest, BeginsEmpty) {
  path_ = createObject<IZYNGLTrajet>(kPathProgId);
  EXPECT_EQ(number(L"NbPoints"), 0);
  EXPECT_EQ(number(L"NbSegments"), 0);
  for (const wchar_t* method : {L"getPoints", L"getVitesses", L"getPosition"}) {
    EXPECT_EQ(doubles(method), Numbers{});
  }
  EXPECT_EQ(integers(L"getTypes"), Names{});
  EXPECT_EQ(integers(L"getLignes"), Names{});
  EXPECT_EQ(doublesIn(get(L"Boite")), Numbers{});
  EXPECT_EQ(number(L"VitesseAvance"), 1000);
  EXPECT_EQ(number(L"VitesseRapide"), 5000);
  for (const wchar_t* name :
       {L"Position", L"PositionTemps", L"PositionSegment", L"PositionLigne", L"Longueur", L"Duree",
        L"ModeCouleur", L"NomSelection", L"CodesInconnus", L"NbCodesIgnores"}) {
    EXPECT_EQ(number(name), 0);
  }
  for (const wchar_t* name :
       {L"Position", L"PositionTemps", L"PositionSegment", L"PositionLigne"}) {
    EXPECT_EQ(put(name, 5L).code(), S_OK);
    EXPECT_EQ(number(name), 0);
  }
  EXPECT_EQ(number(L"StyleRapides"), 1);
  EXPECT_EQ(number(L"EpaisseurTrait"), 1);
  EXPECT_EQ(number(L"Decalage"), 1);
  EXPECT_EQ(number(L"Tolerance"), 0.01);
  EXPECT_EQ(number(L"RetraitPercage"), 0.254);
  EXPECT_TRUE(static_cast<bool>(get(L"RapidesVisibles")));
  EXPECT_TRUE(static_cast<bool>(get(L"SauterBlocs")));
  EXPECT_EQ(get(L"EchelleCouleurs").pdispVal, nullptr);
  EXPECT_EQ(get(L"Outil").pdispVal, nullptr);
  ComPtr<IDispatch> none;
  EXPECT_EQ(queryFor<IGLDraw>(path_.Get())->GetBox3D(&none), S_OK);
  EXPECT_FALSE(none);
}

TEST_F(TrajetTest, GivesBackWhatWasSet) {
  EXPECT_EQ(number(L"NbPoints"), 4);
  EXPECT_EQ(number(L"NbSegments"), 3);
  EXPECT_EQ(doubles(L"getPoints"), (Numbers{0, 0, 0, 3, 0, 0, 3, 4, 0, 3, 4, 12}));
  EXPECT_EQ(integers(L"getTypes"), (Names{1, 1, 1}));
  EXPECT_EQ(doubles(L"getVitesses"), (Numbers{0, 0, 0}));
  EXPECT_EQ(integers(L"getLignes"), (Names{0, 0, 0}));
  EXPECT_EQ(doublesIn(get(L"Boite")), (Numbers{0, 3, 0, 4, 0, 12}));
  ASSERT_EQ(call(L"setTypes", {numberArray(VT_UI1, {0, 2, 200})}).code(), S_OK);
  ASSERT_EQ(call(L"setVitesses", {numberArray(VT_R4, {1, 0, 2.5})}).code(), S_OK);
  ASSERT_EQ(call(L"setLignes", {numberArray(VT_I2, {7, -8, 9})}).code(), S_OK);
  EXPECT_EQ(integers(L"getTypes"), (Names{0, 2, 200}));
  EXPECT_EQ(doubles(L"getVitesses"), (Numbers{1, 0, 2.5}));
  EXPECT_EQ(integers(L"getLignes"), (Names{7, -8, 9}));
  ASSERT_EQ(call(L"setTypes", {doubleArray({})}).code(), S_OK);
  EXPECT_EQ(integers(L"getTypes"), (Names{1, 1, 1}));
  ASSERT_EQ(call(L"setPoints3D",
                 {doubleArray({5, 6}), numberArray(VT_I4, {1, 2}), doubleArray({0.5, 0.25})})
                .code(),
            S_OK);
  EXPECT_EQ(doubles(L"getPoints"), (Numbers{5, 1, 0.5, 6, 2, 0.25}));
  EXPECT_EQ(doubles(L"getVitesses"), (Numbers{0}));
}

TEST_F(TrajetTest, AppendsAsTheLastSegmentWasOrAsItIsTold) {
  ASSERT_EQ(call(L"setTypes", {doubleArray({0, 1, 3})}).code(), S_OK);
  ASSERT_EQ(call(L"setLignes", {doubleArray({1, 2, 6})}).code(), S_OK);
  ASSERT_EQ(put(L"Position", 5.0).code(), S_OK);
  ASSERT_EQ(call(L"AjouterPoints", {doubleArray({3, 4, 13})}).code(), S_OK);
  ASSERT_EQ(call(L"AjouterPoints", {doubleArray({3, 4, 14, 3, 4, 15}), doubleArray({4, 5}),
                                    doubleArray({8, 9}), doubleArray({10, 11})})
                .code(),
            S_OK);
  EXPECT_EQ(integers(L"getTypes"), (Names{0, 1, 3, 3, 4, 5}));
  EXPECT_EQ(doubles(L"getVitesses"), (Numbers{0, 0, 0, 0, 8, 9}));
  EXPECT_EQ(integers(L"getLignes"), (Names{1, 2, 6, 6, 10, 11}));
  EXPECT_EQ(number(L"Position"), 5);
  EXPECT_EQ(number(L"Longueur"), 22);
  EXPECT_EQ(doublesIn(get(L"Boite")), (Numbers{0, 3, 0, 4, 0, 15}));
}

TEST_F(TrajetTest, APathThatGrowsKeepsThePlaceAtItsFormerEnd) {
  ASSERT_EQ(put(L"Position", 100.0).code(), S_OK);
  EXPECT_EQ(number(L"Position"), 19);
  EXPECT_EQ(number(L"PositionSegment"), 2);
  ASSERT_EQ(call(L"AjouterPoints", {doubleArray({3, 4, 13})}).code(), S_OK);
  EXPECT_EQ(number(L"Position"), 19);
  EXPECT_EQ(number(L"PositionSegment"), 3);
  EXPECT_EQ(doubles(L"getPosition"), (Numbers{3, 4, 12}));
}

TEST_F(TrajetTest, RefusesWithATextAndChangesNothing) {
  ASSERT_EQ(call(L"setTypes", {doubleArray({0, 1, 3})}).code(), S_OK);
  ASSERT_EQ(put(L"Position", 5.0).code(), S_OK);
  before_ = state();
  expectRefused(call(L"setPoints", {doubleArray({1, 2})}), L"XYZ: ");
  expectRefused(call(L"setPoints", {doubleArray({1, 2, kNaN})}), L"XYZ: ");
  expectRefused(call(L"setPoints", {_variant_t(L"abc")}), L"XYZ: ");
  expectRefused(call(L"setPoints", {_variant_t()}), L"XYZ: ");
  expectRefused(call(L"setPoints3D", {doubleArray({1, 2}), doubleArray({1}), doubleArray({1, 2})}),
                L"y: 1 coordinates, x has 2");
  expectRefused(
      call(L"setPoints3D", {doubleArray({1, 2}), doubleArray({1, 2}), doubleArray({1, kFar})}),
      L"Z: ");
  expectRefused(call(L"setTypes", {doubleArray({1, 2})}), L"Types: 2 elements, there are 3");
  expectRefused(call(L"setTypes", {doubleArray({1, 2, 0.5})}), L"Types: ");
  expectRefused(call(L"setVitesses", {doubleArray({1, 2, -1})}), L"Vitesses: element 2 is -1");
  expectRefused(call(L"setVitesses", {doubleArray({1, kNaN, 1})}), L"Vitesses: ");
  expectRefused(call(L"setLignes", {doubleArray({1})}), L"Lignes: ");
  const _variant_t more = doubleArray({9, 9, 9});
  expectRefused(call(L"AjouterPoints", {doubleArray({9, 9})}), L"XYZ: ");
  expectRefused(call(L"AjouterPoints", {more, doubleArray({1, 2})}), L"Types: ");
  expectRefused(call(L"AjouterPoints", {more, doubleArray({1}), doubleArray({-2})}), L"Vitesses: ");
  expectRefused(
      call(L"AjouterPoints", {more, doubleArray({1}), doubleArray({2}), doubleArray({1, 2})}),
      L"Lignes: ");
  expectRefused(call(L"setCouleurType", {0L, 0.0, 2.0, 0.0, 1.0}), L"g: ");
  expectRefused(call(L"setCouleurFait", {0.0, 0.0, 0.0, kNaN}), L"alpha: ");
  for (const wchar_t* name :
       {L"VitesseAvance", L"VitesseRapide", L"EpaisseurTrait", L"Tolerance"}) {
    for (const double bad : {0.0, -1.0, kNaN, kFar}) {
      expectRefused(put(name, bad), std::wstring(name) + L": ");
    }
  }
  for (const wchar_t* name : {L"Position", L"PositionTemps"}) {
    expectRefused(put(name, kNaN), std::wstring(name) + L": ");
  }
  for (const wchar_t* name : {L"StyleRapides", L"ModeCouleur", L"CodesInconnus"}) {
    for (const long bad : {-1L, 3L}) expectRefused(put(name, bad), std::wstring(name) + L": ");
  }
  expectRefused(put(L"Decalage", -1.0), L"Decalage: ");
  expectRefused(put(L"RetraitPercage", -0.5), L"RetraitPercage: ");
  const _variant_t itself(path_.Get());
  expectRefused(put(L"Outil", itself), L"Outil: ");
  expectRefused(put(L"EchelleCouleurs", itself), L"EchelleCouleurs: ");
  expectRefused(call(L"ChargerGCode", {L""}), L"Fichier: ");
}

TEST_F(TrajetTest, PlacesByLengthTimeSegmentAndLine) {
  ASSERT_EQ(call(L"setTypes", {doubleArray({0, 1, 1})}).code(), S_OK);
  ASSERT_EQ(call(L"setVitesses", {doubleArray({1, 60, 0})}).code(), S_OK);
  ASSERT_EQ(call(L"setLignes", {doubleArray({10, 20, 40})}).code(), S_OK);
  ASSERT_EQ(put(L"VitesseRapide", 180L).code(), S_OK);
  ASSERT_EQ(put(L"VitesseAvance", 720L).code(), S_OK);
  EXPECT_DOUBLE_EQ(number(L"Longueur"), 19);
  EXPECT_DOUBLE_EQ(number(L"Duree"), 1 + 4 + 1);
  ASSERT_EQ(put(L"Position", 5.1).code(), S_OK);
  EXPECT_EQ(number(L"Position"), 5.1);
  EXPECT_DOUBLE_EQ(number(L"PositionTemps"), 3.1);
  EXPECT_EQ(number(L"PositionSegment"), 1);
  EXPECT_EQ(number(L"PositionLigne"), 20);
  ASSERT_EQ(put(L"PositionTemps", 5.3).code(), S_OK);
  EXPECT_EQ(number(L"PositionTemps"), 5.3);
  EXPECT_NEAR(number(L"Position"), 7 + 0.3 * 12, 1e-12);
  EXPECT_NEAR(doubles(L"getPosition")[2], 3.6, 1e-12);
  ASSERT_EQ(put(L"Position", 3.0).code(), S_OK);
  EXPECT_EQ(number(L"PositionSegment"), 1);
  ASSERT_EQ(put(L"PositionSegment", 2L).code(), S_OK);
  EXPECT_EQ(number(L"PositionSegment"), 2);
  EXPECT_EQ(number(L"Position"), 7);
  EXPECT_EQ(doubles(L"getPosition"), (Numbers{3, 4, 0}));
  ASSERT_EQ(put(L"PositionLigne", 21L).code(), S_OK);
  EXPECT_EQ(number(L"PositionLigne"), 40);
  EXPECT_EQ(number(L"PositionSegment"), 2);
  ASSERT_EQ(put(L"PositionLigne", 10L).code(), S_OK);
  EXPECT_EQ(number(L"Position"), 0);
  for (const wchar_t* name : {L"Position", L"PositionTemps"}) {
    ASSERT_EQ(put(name, kFar).code(), S_OK);
    EXPECT_EQ(number(L"Position"), 19);
    EXPECT_EQ(number(L"PositionTemps"), number(L"Duree"));
    ASSERT_EQ(put(name, -kFar).code(), S_OK);
    EXPECT_EQ(number(L"Position"), 0);
  }
  for (const wchar_t* name : {L"PositionSegment", L"PositionLigne"}) {
    ASSERT_EQ(put(name, 1000L).code(), S_OK);
    EXPECT_EQ(number(L"PositionSegment"), 2);
    ASSERT_EQ(put(name, -1000L).code(), S_OK);
    EXPECT_EQ(number(L"Position"), 0);
  }
}

TEST_F(TrajetTest, AnotherSpeedKeepsTheTimeOfThePlace) {
  ASSERT_EQ(put(L"PositionTemps", 0.5).code(), S_OK);
  ASSERT_EQ(put(L"VitesseAvance", 600L).code(), S_OK);
  EXPECT_EQ(number(L"PositionTemps"), 0.5);
  EXPECT_NEAR(number(L"Position"), 5, 1e-12);
  ASSERT_EQ(put(L"VitesseAvance", 60000L).code(), S_OK);
  EXPECT_EQ(number(L"PositionTemps"), number(L"Duree"));
}

TEST_F(TrajetTest, ACopyHasEverythingAndIsIndependent) {
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  ASSERT_EQ(putReference(path_.Get(), L"Outil", _variant_t(tool.Get())).code(), S_OK);
  ASSERT_EQ(putReference(path_.Get(), L"EchelleCouleurs", _variant_t(scale.Get())).code(), S_OK);
  ASSERT_EQ(call(L"setTypes", {doubleArray({0, 1, 9})}).code(), S_OK);
  ASSERT_EQ(call(L"setTypeVisible", {9L, false}).code(), S_OK);
  ASSERT_EQ(put(L"ModeCouleur", 2L).code(), S_OK);
  ASSERT_EQ(put(L"Tolerance", 0.5).code(), S_OK);
  ASSERT_EQ(put(L"Position", 4.0).code(), S_OK);
  before_ = state();
  const _variant_t copied = call(L"Copie").value;
  const auto copy = queryFor<IZYNGLTrajet>(copied.pdispVal);
  ComPtr<IDispatch> shared;
  ASSERT_EQ(copy->get_Outil(&shared), S_OK);
  EXPECT_EQ(shared.Get(), static_cast<IDispatch*>(tool.Get()));
  VARIANT_BOOL visible = VARIANT_TRUE;
  ASSERT_EQ(copy->getTypeVisible(9, &visible), S_OK);
  EXPECT_EQ(visible, VARIANT_FALSE);
  const auto original = path_;
  path_ = copy;
  EXPECT_EQ(state(), before_);
  ASSERT_EQ(put(L"Position", 1.0).code(), S_OK);
  ASSERT_EQ(call(L"setTypes", {doubleArray({1, 1, 1})}).code(), S_OK);
  path_ = original;
  EXPECT_EQ(state(), before_);
}

TEST_F(TrajetTest, RapidesVisiblesIsTheVisibilityOfTypeZero) {
  ASSERT_EQ(put(L"RapidesVisibles", 0L).code(), S_OK);
  EXPECT_FALSE(static_cast<bool>(call(L"getTypeVisible", {0L}).value));
  EXPECT_TRUE(static_cast<bool>(call(L"getTypeVisible", {77L}).value));
  ASSERT_EQ(call(L"setTypeVisible", {0L, 7L}).code(), S_OK);
  EXPECT_TRUE(static_cast<bool>(get(L"RapidesVisibles")));
}

TEST_F(TrajetTest, AToolKeepsWhatIsPutAndRefusesWhatIsNone) {
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  for (const wchar_t* name : {L"Diametre", L"RayonCoin", L"LongueurCoupe", L"Longueur",
                              L"DiametrePorte", L"LongueurPorte"}) {
    ASSERT_EQ(putProperty(tool.Get(), name, 12.5).code(), S_OK);
    EXPECT_EQ(static_cast<double>(getProperty(tool.Get(), name).value), 12.5);
    for (const double bad : {-1.0, kNaN, kFar}) {
      const CallResult result = putProperty(tool.Get(), name, bad);
      EXPECT_EQ(result.code(), E_INVALIDARG);
      EXPECT_EQ(result.description.rfind(name, 0), 0U);
    }
    EXPECT_EQ(static_cast<double>(getProperty(tool.Get(), name).value), 12.5);
  }
  EXPECT_EQ(putProperty(tool.Get(), L"Diametre", 0.0).code(), E_INVALIDARG);
  EXPECT_EQ(callMethod(tool.Get(), L"setColor", {0.0, 0.0, 1.5, 1.0}).code(), E_INVALIDARG);
  EXPECT_EQ(callMethod(tool.Get(), L"setColor", {0.0, 0.0, 0.5, 1.0}).code(), S_OK);
}

TEST_F(TrajetTest, LoadsAProgramWithArcsAndDwells) {
  ASSERT_EQ(put(L"Position", 5.0).code(), S_OK);
  ASSERT_EQ(
      load("G0 X10 Y0\nG1 Z-1 F60\n(nothing)\nG3 X-10 I-10 F600\nG4 P2.5\nG1 Y-5\nM2\n").code(),
      S_OK);
  EXPECT_EQ(number(L"Position"), 0);
  EXPECT_NEAR(number(L"Longueur"), 10 + 1 + 10 * kPi + 5, 1e-9);
  EXPECT_NEAR(number(L"Duree"), 10.0 / 5000 * 60 + 1 + kPi + 2.5 + 0.5, 1e-9);
  const Names types = integers(L"getTypes");
  EXPECT_EQ((Names{types[0], types[1], types[2], types.back()}), (Names{0, 2, 4, 1}));
  EXPECT_EQ(integers(L"getLignes").back(), 6);
  const double half = 11 + 5 * kPi;
  ASSERT_EQ(put(L"Position", half).code(), S_OK);
  EXPECT_EQ(number(L"Position"), half);
  EXPECT_EQ(number(L"PositionLigne"), 4);
  const Numbers place = doubles(L"getPosition");
  EXPECT_NEAR(place[0], 0, 1e-9);
  EXPECT_NEAR(place[1], 10, 1e-9);
  ASSERT_EQ(put(L"PositionLigne", 5L).code(), S_OK);
  EXPECT_EQ(number(L"PositionLigne"), 6);
  const double chords = number(L"NbSegments");
  ASSERT_EQ(put(L"Tolerance", 1L).code(), S_OK);
  EXPECT_EQ(number(L"NbSegments"), chords);
  ASSERT_EQ(load("G0 X10 Y0\nG1 Z-1 F60\nG3 X-10 I-10 F600\n").code(), S_OK);
  EXPECT_LT(number(L"NbSegments"), 12);
}

TEST_F(TrajetTest, AProgramThatFailsChangesNothing) {
  ASSERT_EQ(put(L"Position", 5.0).code(), S_OK);
  before_ = state();
  const CallResult wrong = load("G1 X1 F100\nG1 X2 G77\n");
  EXPECT_EQ(wrong.code(), E_FAIL);
  EXPECT_EQ(
      wrong.description.rfind(folder_.file(L"part.nc").wstring() + L", line 2, column 7: ", 0), 0U)
      << std::string(wrong.description.begin(), wrong.description.end());
  EXPECT_EQ(state(), before_);
  const CallResult missing = call(L"ChargerGCode", {bstr(folder_.file(L"none.nc"))});
  EXPECT_EQ(missing.code(), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  EXPECT_NE(missing.description.find(L"none.nc"), std::wstring::npos);
  EXPECT_EQ(state(), before_);
}

TEST_F(TrajetTest, SkipsUnknownCodesAndBlocksWhereItIsTold) {
  const std::string program = "G1 X1 F100 G77\n/G1 X5\nG1 X2\n";
  EXPECT_EQ(load(program).code(), E_FAIL);
  ASSERT_EQ(put(L"CodesInconnus", 1L).code(), S_OK);
  ASSERT_EQ(load("G1 X1 F100\nG77\n/G1 X5\nG1 X2\n").code(), S_OK);
  EXPECT_EQ(number(L"NbCodesIgnores"), 1);
  EXPECT_DOUBLE_EQ(number(L"Longueur"), 2);
  ASSERT_EQ(put(L"SauterBlocs", 0L).code(), S_OK);
  ASSERT_EQ(load("G1 X1 F100\n/G1 X5\nG1 X2\n").code(), S_OK);
  EXPECT_EQ(number(L"NbCodesIgnores"), 0);
  EXPECT_DOUBLE_EQ(number(L"Longueur"), 8);
}

TEST_F(TrajetTest, AListenerHearsOfLoadingAndStopsIt) {
  std::string program = "G1 F100\n";
  for (int i = 0; i < 20000; ++i) program += "G1 X" + std::to_string(i) + "\n";
  const HeardEvents events;
  require(events.attach(path_.Get()), "Vue");
  ASSERT_EQ(load(program).code(), S_OK);
  const Numbers parts = events.listener().parts;
  ASSERT_GE(parts.size(), 10U);
  EXPECT_TRUE(std::ranges::is_sorted(parts));
  before_ = state();
  events.listener().onEvent = stopWork;
  EXPECT_EQ(load("G1 X7 F1\n").code(), E_ABORT);
  EXPECT_EQ(state(), before_);
}

}  // namespace
}  // namespace zyn::test
