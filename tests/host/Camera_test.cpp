// Cameras as values, as hosts keep and change them.
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/ArrayVariant_win.h"
#include "support/LateBinding_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr const wchar_t* kDefault =
    L"Oeil=0 0 2 Cible=0 0 0 Haut=0 1 0 Largeur=2 Hauteur=2 Perspective=0 AngleOuverture=30 "
    L"Profondeur=2";

class CameraObject : public HostTest {
 protected:
  std::wstring text() const { return textOf(camera.Get()); }
  static std::wstring textOf(IDispatch* object) {
    _bstr_t text;
    EXPECT_EQ(queryFor<IZYNCamera>(object)->get_Texte(text.GetAddress()), S_OK);
    return {text, text.length()};
  }
  void expectRefused(const CallResult& result, const std::wstring& description) const {
    EXPECT_EQ(result.code(), E_INVALIDARG) << std::string(description.begin(), description.end());
    EXPECT_EQ(result.description, description);
    EXPECT_EQ(text(), kDefault);
  }

  ComPtr<IZYNCamera> camera = createObject<IZYNCamera>(kCameraProgId);
};

TEST_F(CameraObject, BeginsAsThePublishedDefault) { EXPECT_EQ(text(), kDefault); }

TEST_F(CameraObject, KeepsWhatIsPut) {
  EXPECT_EQ(camera->setOeil(1, 2, 3), S_OK);
  EXPECT_EQ(camera->setCible(-4, 5.5, 6), S_OK);
  EXPECT_EQ(camera->setHaut(0, 0.5, 7), S_OK);
  EXPECT_EQ(camera->put_Largeur(8), S_OK);
  EXPECT_EQ(camera->put_Hauteur(9), S_OK);
  EXPECT_EQ(camera->put_Perspective(1), S_OK);
  EXPECT_EQ(camera->put_AngleOuverture(170), S_OK);
  EXPECT_EQ(camera->put_Profondeur(0), S_OK);
  EXPECT_EQ(text(),
            L"Oeil=1 2 3 Cible=-4 5.5 6 Haut=0 0.5 7 Largeur=8 Hauteur=9 Perspective=1 "
            L"AngleOuverture=170 Profondeur=0");
  const std::vector<std::pair<const wchar_t*, double>> numbers = {
      {L"OeilX", 1},           {L"OeilY", 2},   {L"OeilZ", 3},   {L"CibleX", -4},
      {L"CibleY", 5.5},        {L"CibleZ", 6},  {L"HautX", 0},   {L"HautY", 0.5},
      {L"HautZ", 7},           {L"Largeur", 8}, {L"Hauteur", 9}, {L"Profondeur", 0},
      {L"AngleOuverture", 170}};
  for (const auto& [name, number] : numbers) {
    EXPECT_EQ(double(getProperty(camera.Get(), name).value), number) << name;
  }
  EXPECT_TRUE(bool(getProperty(camera.Get(), L"Perspective").value));
  _variant_t place;
  EXPECT_EQ(camera->getOeil(&place), S_OK);
  EXPECT_EQ(doublesIn(place), (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(camera->getCible(&place), S_OK);
  EXPECT_EQ(doublesIn(place), (std::vector<double>{-4, 5.5, 6}));
  EXPECT_EQ(camera->getHaut(&place), S_OK);
  EXPECT_EQ(doublesIn(place), (std::vector<double>{0, 0.5, 7}));
}

TEST_F(CameraObject, RefusesWhatIsNoCameraAndSaysWhy) {
  IDispatch* const object = camera.Get();
  expectRefused(callMethod(object, L"setOeil", {1.0, kNaN, 2.0}), L"y: nan is no finite number");
  expectRefused(callMethod(object, L"setCible", {kInfinity, 1.0, 2.0}),
                L"x: inf is no finite number");
  expectRefused(callMethod(object, L"setHaut", {0.0, 1.0, -kInfinity}),
                L"z: -inf is no finite number");
  expectRefused(callMethod(object, L"setHaut", {0.0, 0.0, 0.0}),
                L"x, y, z: together they have no direction");
  expectRefused(putProperty(object, L"Largeur", 0.0), L"Largeur: 0 is not above 0");
  expectRefused(putProperty(object, L"Hauteur", -3.5), L"Hauteur: -3.5 is not above 0");
  expectRefused(putProperty(object, L"AngleOuverture", 0.5),
                L"AngleOuverture: 0.5 is not between 1 and 170");
  expectRefused(putProperty(object, L"AngleOuverture", 171.0),
                L"AngleOuverture: 171 is not between 1 and 170");
  EXPECT_EQ(putProperty(object, L"Profondeur", -1.0).code(), E_INVALIDARG);
  EXPECT_EQ(putProperty(object, L"Profondeur", kInfinity).code(), E_INVALIDARG);
  EXPECT_EQ(text(), kDefault);
}

TEST_F(CameraObject, TextsThatAreNoneSayWhere) {
  IDispatch* const object = camera.Get();
  expectRefused(putProperty(object, L"Texte", L""), L"Texte: Oeil is missing");
  expectRefused(putProperty(object, L"Texte", L"Oeil=1 2 x"), L"Texte: \"x\" is no number");
  expectRefused(putProperty(object, L"Texte", L"\u0152il=1 2 3"),
                L"Texte: a camera has no member \"?il\"");
  expectRefused(putProperty(object, L"Texte",
                            L"Oeil=0 0 0 Cible=0 0 0 Haut=0 1 0 Largeur=2 Hauteur=2 Perspective=0 "
                            L"AngleOuverture=30 Profondeur=2"),
                L"Texte: Oeil: it lies at Cible, or too far from it");
}

TEST_F(CameraObject, ATextKeepsEveryBit) {
  camera->setOeil(0.1, 1.0 / 3, std::nextafter(2.0, 3.0));
  camera->put_Largeur(5e-300);
  camera->put_Perspective(VARIANT_TRUE);
  const auto other = createObject<IZYNCamera>(kCameraProgId);
  EXPECT_EQ(other->put_Texte(_bstr_t(text().c_str())), S_OK);
  double z = 0;
  other->get_OeilZ(&z);
  EXPECT_EQ(z, std::nextafter(2.0, 3.0));
  EXPECT_EQ(textOf(other.Get()), text());
}

TEST_F(CameraObject, ACopyIsAnother) {
  camera->put_Largeur(5);
  ComPtr<IDispatch> copy;
  EXPECT_EQ(camera->Copie(&copy), S_OK);
  EXPECT_EQ(textOf(copy.Get()), text());
  camera->put_Largeur(6);
  EXPECT_NE(textOf(copy.Get()), text());
}

TEST_F(CameraObject, ACameraBetweenTwo) {
  const auto other = createObject<IZYNCamera>(kCameraProgId);
  other->setOeil(12, 0, 0);
  other->setCible(4, 0, 0);
  other->put_Largeur(8);
  other->put_Hauteur(18);
  other->put_Perspective(VARIANT_TRUE);
  ComPtr<IDispatch> found;
  ASSERT_EQ(camera->Interpole(other.Get(), 0.5, &found), S_OK);
  const auto middle = queryFor<IZYNCamera>(found.Get());
  double width = 0;
  double height = 0;
  double x = 0;
  double eyeX = 0;
  double eyeZ = 0;
  VARIANT_BOOL perspective = VARIANT_FALSE;
  middle->get_Largeur(&width);
  middle->get_Hauteur(&height);
  middle->get_CibleX(&x);
  middle->get_OeilX(&eyeX);
  middle->get_OeilZ(&eyeZ);
  middle->get_Perspective(&perspective);
  EXPECT_DOUBLE_EQ(width, 4);
  EXPECT_DOUBLE_EQ(height, 6);
  EXPECT_DOUBLE_EQ(x, 2);
  EXPECT_NEAR(eyeX, 2 + 4 * std::sqrt(0.5), 1e-12);
  EXPECT_NEAR(eyeZ, 4 * std::sqrt(0.5), 1e-12);
  EXPECT_EQ(perspective, VARIANT_TRUE);
  ASSERT_EQ(camera->Interpole(other.Get(), 0, &found), S_OK);
  EXPECT_EQ(textOf(found.Get()), text());
  ASSERT_EQ(camera->Interpole(other.Get(), 1, &found), S_OK);
  EXPECT_EQ(textOf(found.Get()), textOf(other.Get()));
}

TEST_F(CameraObject, RefusesToInterpolateWithWhatIsNoCamera) {
  IDispatch* const object = camera.Get();
  const auto triangle = createObject<IDispatch>(kTriangleProgId);
  expectRefused(callMethod(object, L"Interpole", {_variant_t(triangle.Get()), 0.5}),
                L"Autre: the object is no camera");
  expectRefused(
      callMethod(object, L"Interpole", {_variant_t(static_cast<IDispatch*>(nullptr)), 0.5}),
      L"Autre: there is no camera");
  expectRefused(callMethod(object, L"Interpole", {_variant_t(object), 1.5}),
                L"t: 1.5 is not between 0 and 1");
  const auto blind = createObject<IZYNCamera>(kCameraProgId);
  blind->setHaut(0, 0, 1);
  expectRefused(callMethod(object, L"Interpole", {_variant_t(blind.Get()), 0.5}),
                L"Autre: Haut: it is parallel to the line from Oeil to Cible");
  const CallResult result = callMethod(blind.Get(), L"Interpole", {_variant_t(object), 0.5});
  EXPECT_EQ(result.code(), E_UNEXPECTED);
  EXPECT_EQ(result.description,
            L"Nothing can be seen with this camera. Haut: it is parallel to the line from Oeil to "
            L"Cible");
}

TEST_F(CameraObject, NullPlacesAreRefused) {
  EXPECT_EQ(camera->getOeil(nullptr), E_POINTER);
  EXPECT_EQ(camera->get_OeilX(nullptr), E_POINTER);
  EXPECT_EQ(camera->get_Perspective(nullptr), E_POINTER);
  EXPECT_EQ(camera->get_Texte(nullptr), E_POINTER);
  EXPECT_EQ(camera->Copie(nullptr), E_POINTER);
  EXPECT_EQ(camera->Interpole(camera.Get(), 0.5, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zyn::test
