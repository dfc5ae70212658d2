// The camera of 3D views as a value: what is put is what is seen, the history, and zooms.
#include <GL/glu.h>

#include <array>
#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/CameraView_win.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"

namespace zyn::test {
namespace {

constexpr Bounds kScene = {-10, 10, -5, 5, -5, 5};
constexpr const wchar_t* kOblique =
    L"Oeil=30 -20 15 Cible=1 2 -1 Haut=0.1 0 1 Largeur=24 Hauteur=12 Perspective=0 "
    L"AngleOuverture=45 Profondeur=40";
constexpr const wchar_t* kPerspective =
    L"Oeil=30 -20 15 Cible=1 2 -1 Haut=0.1 0 1 Largeur=24 Hauteur=12 Perspective=1 "
    L"AngleOuverture=45 Profondeur=40";

class CameraViews : public HostTest {
 protected:
  CameraViews() { host.addBox(kScene); }

  void start() {
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
  }
  void put(const wchar_t* text) { require(view->put_Camera(makeCamera(text).Get()), "Camera"); }
  std::wstring shown() const { return shownCamera(view.Get()); }

  std::array<double, 3> planePoint(int x, int y, const std::vector<double>& plane) const {
    _variant_t found;
    EXPECT_EQ(host->getPixelPlanIntersection(x, y, doubleArray(plane), &found), S_OK);
    const std::vector<double> numbers = doublesIn(found);
    EXPECT_EQ(numbers.size(), 3U);
    return {numbers.at(0), numbers.at(1), numbers.at(2)};
  }

  View3DHost host;
  ComPtr<IZYNVue3D2> view = queryFor<IZYNVue3D2>(host.get());
};

TEST_F(CameraViews, NoCameraIsNothing) {
  ComPtr<IDispatch> camera;
  EXPECT_EQ(view->get_Camera(&camera), S_OK);
  EXPECT_EQ(camera, nullptr);
  EXPECT_EQ(view->get_Camera(nullptr), E_POINTER);
}

TEST_F(CameraViews, WhatIsPutIsShownAndReadBack) {
  for (const wchar_t* text : {kOblique, kPerspective}) {
    put(text);
    EXPECT_EQ(shown(), text);
    host.paint();
    EXPECT_EQ(shown(), text);
  }
}

TEST_F(CameraViews, WhatIsReadIsACopy) {
  put(kOblique);
  ComPtr<IDispatch> camera;
  view->get_Camera(&camera);
  queryFor<IZYNCamera>(camera.Get())->put_Largeur(99);
  EXPECT_EQ(shown(), kOblique);
}

TEST_F(CameraViews, OneSideGrowsToTheWindow) {
  put(L"Oeil=0 0 9 Cible=0 0 0 Haut=0 1 0 Largeur=2 Hauteur=4 Perspective=0 AngleOuverture=30 "
      L"Profondeur=9");
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_Largeur), 8);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_Hauteur), 4);
}

TEST_F(CameraViews, APublishedViewIsTakenBackAsItIs) {
  start();
  host->RotateH(20);
  host->TranslateV(1);
  const std::wstring before = shown();
  const Image picture = host.shown();
  ComPtr<IDispatch> camera;
  view->get_Camera(&camera);
  host->Zoom(3);
  ASSERT_EQ(view->put_Camera(camera.Get()), S_OK);
  EXPECT_EQ(shown(), before);
}

TEST_F(CameraViews, ScriptsPutItEitherWay) {
  const auto camera = makeCamera(kOblique);
  EXPECT_EQ(putProperty(host.get(), L"Camera", _variant_t(camera.Get())).code(), S_OK);
  EXPECT_EQ(shown(), kOblique);
  const auto other = makeCamera(kPerspective);
  EXPECT_EQ(putReference(host.get(), L"Camera", _variant_t(other.Get())).code(), S_OK);
  EXPECT_EQ(shown(), kPerspective);
}

TEST_F(CameraViews, BadArgumentsChangeNothingAndSayWhy) {
  put(kOblique);
  const auto triangle = createObject<IDispatch>(kTriangleProgId);
  const _variant_t none(static_cast<IDispatch*>(nullptr));
  const _variant_t wrong(triangle.Get());
  const _variant_t good(makeCamera(kPerspective).Get());
  const auto blindCamera = createObject<IZYNCamera>(kCameraProgId);
  blindCamera->setOeil(0, 0, 0);
  const _variant_t blind(blindCamera.Get());
  const auto expectRefused = [&](const CallResult& result, const wchar_t* why) {
    EXPECT_EQ(result.code(), E_INVALIDARG) << why;
    EXPECT_EQ(result.description, why);
    EXPECT_EQ(shown(), kOblique);
  };
  expectRefused(putProperty(host.get(), L"Camera", none), L"Camera: there is no camera");
  expectRefused(putReference(host.get(), L"Camera", wrong), L"Camera: the object is no camera");
  expectRefused(putProperty(host.get(), L"Camera", blind),
                L"Camera: Oeil: it lies at Cible, or too far from it");
  expectRefused(callMethod(host.get(), L"AllerA", {none, 100L}), L"Camera: there is no camera");
  expectRefused(callMethod(host.get(), L"AllerA", {good, -1L}),
                L"DureeMs: -1 is not between 0 and 2147483647");
  expectRefused(putProperty(host.get(), L"DureeAnimation", -5L),
                L"DureeAnimation: -5 is not between 0 and 2147483647");
  expectRefused(callMethod(host.get(), L"ZoomRectangle", {1.0, 2.0, 1.0, 3.0}),
                L"X2: the rectangle has no width");
  expectRefused(callMethod(host.get(), L"ZoomRectangle", {1.0, 2.0, 3.0, 2.0}),
                L"Y2: the rectangle has no height");
  expectRefused(callMethod(host.get(), L"ZoomRectangle", {std::nan(""), 2.0, 3.0, 2.0}),
                L"X1: nan is no finite number");
  const CallResult blinding = callMethod(host.get(), L"ZoomRectangle", {1e308, 0.0, -1e308, 5.0});
  EXPECT_EQ(blinding.code(), E_INVALIDARG);
  EXPECT_EQ(blinding.description.substr(0, 16), L"X1, Y1, X2, Y2: ");
  EXPECT_EQ(shown(), kOblique);
  const auto distant =
      makeTriangle({1e300, 1e300, 1e300}, {2e300, 1e300, 1e300}, {1e300, 2e300, 0});
  const CallResult tooFar = callMethod(host.get(), L"ZoomObjets", {_variant_t(distant.Get()), 0.0});
  EXPECT_EQ(tooFar.code(), E_INVALIDARG);
  EXPECT_EQ(tooFar.description.substr(0, 8), L"Objets: ");
  EXPECT_EQ(shown(), kOblique);
  expectRefused(callMethod(host.get(), L"ZoomObjets", {wrong, -1.0}),
                L"surplus: -1 is not above -1");
  expectRefused(callMethod(host.get(), L"ZoomObjets", {none, 0.0}),
                L"Objets: an object or an array of objects is wanted");
  expectRefused(callMethod(host.get(), L"ZoomObjets", {good, 0.0}),
                L"Objets: an object is none that can be drawn");
  expectRefused(callMethod(host.get(), L"ZoomObjets", {doubleArray({1, 2}), 0.0}),
                L"Objets: an object or an array of objects with one dimension is wanted");
  for (const int type : {VT_DISPATCH, VT_UNKNOWN, VT_VARIANT}) {
    _variant_t misnamed = doubleArray({1, 2});
    V_VT(&misnamed) = static_cast<VARTYPE>(VT_ARRAY | type);
    EXPECT_EQ(view->ZoomObjets(misnamed, 0), E_INVALIDARG) << type;
  }
  expectRefused(callMethod(host.get(), L"ZoomObjets", {variantArray({wrong, 5L}), 0.0}),
                L"Objets: element 1 is no object");
  expectRefused(callMethod(host.get(), L"ZoomObjets", {variantArray({}), 0.0}),
                L"Objets: none of them has a box");
  expectRefused(putProperty(host.get(), L"ModeRotation", 3L),
                L"ModeRotation: 3 is not between 0 and 2");
  expectRefused(putProperty(host.get(), L"CentreRotation", -1L),
                L"CentreRotation: -1 is not between 0 and 2");
  expectRefused(callMethod(host.get(), L"setCentreRotation", {0.0, 0.0, std::nan("")}),
                L"z: nan is no finite number");
}

TEST_F(CameraViews, ZoomsNeedACamera) {
  EXPECT_EQ(view->ZoomRectangle(1, 1, 2, 2), E_UNEXPECTED);
  const auto triangle = makeTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  EXPECT_EQ(view->ZoomObjets(_variant_t(triangle.Get()), 0), E_UNEXPECTED);
  EXPECT_EQ(view->NextView(), S_OK);
}

TEST_F(CameraViews, TheHistoryGoesBothWays) {
  start();
  const std::wstring first = shown();
  put(kOblique);
  host->RotateA(5);
  const std::wstring second = shown();
  put(kPerspective);
  host->LastView();
  EXPECT_EQ(shown(), second);
  host->LastView();
  EXPECT_EQ(shown(), first);
  view->NextView();
  EXPECT_EQ(shown(), second);
  view->NextView();
  EXPECT_EQ(shown(), kPerspective);
  view->NextView();
  EXPECT_EQ(shown(), kPerspective);
  host->LastView();
  host->TranslateH(1);
  const std::wstring moved = shown();
  view->NextView();
  EXPECT_EQ(shown(), moved);
}

TEST_F(CameraViews, ZoomsToARectangle) {
  start();  // 20 pixels a unit
  EXPECT_EQ(view->ZoomRectangle(300, 150, 200, 100), S_OK);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_Largeur), 5);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_CibleX), 2.5);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_CibleY), -1.25);
  host->LastView();
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_Largeur), 20);
}

TEST_F(CameraViews, ZoomsToObjects) {
  start();
  const auto a = makeTriangle({1, 1, 0}, {2, 1, 0}, {1, 2, 0});
  const auto b = makeTriangle({3, 1, 0}, {5, 1, 0}, {3, 2, 1});
  EXPECT_EQ(view->ZoomObjets(_variant_t(a.Get()), 0), S_OK);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_CibleX), 1.5);
  EXPECT_NEAR(numberOf(view.Get(), &IZYNCamera::get_Hauteur), 1, 1e-6);
  _variant_t both = variantArray({_variant_t(a.Get()), _variant_t(b.Get())});
  EXPECT_EQ(view->ZoomObjets(both, 0.5), S_OK);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_CibleX), 3);
  EXPECT_NEAR(numberOf(view.Get(), &IZYNCamera::get_Largeur), 6, 1e-6);
  EXPECT_EQ(view->ZoomObjets(variantReference(&both), 0), S_OK);
  EXPECT_NEAR(numberOf(view.Get(), &IZYNCamera::get_Largeur), 4, 1e-6);
}

/// Every point that the view tells for a pixel is the one that OpenGL draws there.
TEST_F(CameraViews, PickedPointsAgreeWithTheProjection) {
  for (const wchar_t* text : {kOblique, kPerspective}) {
    put(text);
    const GluView glu(view.Get(), host.clientSize());
    const std::vector<double> facing = targetPlane(view.Get());
    const std::vector<double> tilted = {facing[0] + 0.2, facing[1] - 0.1, facing[2] + 0.1,
                                        facing[3] + 0.1};  // through the target, too
    for (const auto& [x, y] : {std::array{0, 0}, {399, 199}, {200, 100}, {37, 151}}) {
      for (const auto& plane : {facing, tilted}) {
        const auto point = planePoint(x, y, plane);
        const auto pixel = glu.pixelOf(point);
        EXPECT_NEAR(pixel[0], x + 0.5, 1e-6);
        EXPECT_NEAR(pixel[1], y + 0.5, 1e-6);
        const auto ray = glu.rayThrough(x + 0.5, y + 0.5);
        EXPECT_NEAR(distanceFrom(ray, point), 0, 1e-6);
        EXPECT_NEAR(plane[0] * point[0] + plane[1] * point[1] + plane[2] * point[2] + plane[3], 0,
                    1e-9);
      }
    }
  }
}

TEST_F(CameraViews, BehindTheEyeNothingIsMet) {
  put(kPerspective);
  _variant_t found;
  EXPECT_EQ(host->getPixelPlanIntersection(200, 199, doubleArray({0, 0, 1, -40}), &found), S_OK);
  EXPECT_EQ(found.vt, VT_EMPTY);
  put(kOblique);
  EXPECT_EQ(host->getPixelPlanIntersection(200, 199, doubleArray({0, 0, 1, -40}), &found), S_OK);
  EXPECT_NE(found.vt, VT_EMPTY);
}

/// A plate far behind the target is picked where it is seen, and not beside.
TEST_F(CameraViews, PicksWithPerspective) {
  put(L"Oeil=0 0 9 Cible=0 0 0 Haut=0 1 0 Largeur=20 Hauteur=10 Perspective=1 AngleOuverture=90 "
      L"Profondeur=9");                                          // the eye is at z = 5
  const auto distant = makePickable({7}, {-2, 2, -2, 2, -5});    // half as large: 80 pixels wide
  const auto close = makePickable({8}, {3, 4, -0.5, 0.5, 2.5});  // twice as large
  host->AddSelection(distant->dispatch());
  host->AddSelection(close->dispatch());
  host.addBox({-10, 10, -5, 5, -6, 4});
  host->UpdateParams();
  const auto pick = [&](int x, int y) {
    _variant_t found;
    EXPECT_EQ(host->getSelectionUnderMouse(x, y, &found), S_OK);
    return namesIn(found);
  };
  EXPECT_EQ(pick(200, 100), (std::vector<long>{7}));
  EXPECT_EQ(pick(218, 118), (std::vector<long>{7}));
  EXPECT_EQ(pick(222, 100), (std::vector<long>{}));
  EXPECT_EQ(pick(330, 100), (std::vector<long>{8}));
  EXPECT_EQ(pick(300, 100), (std::vector<long>{}));
  EXPECT_EQ(pick(362, 100), (std::vector<long>{}));
}

TEST_F(CameraViews, ARubberBandSelectsWithPerspective) {
  put(L"Oeil=0 0 9 Cible=0 0 0 Haut=0 1 0 Largeur=20 Hauteur=10 Perspective=1 AngleOuverture=90 "
      L"Profondeur=9");
  const auto close = makePickable({8}, {3, 4, -0.5, 0.5, 2.5});  // pixels 320 to 360
  host->AddSelection(close->dispatch());
  host.addBox({-10, 10, -5, 5, -6, 4});
  host->UpdateParams();
  host->put_MouseMode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{310, 80}, {315, 90}, {330, 120}});
  host.drag({{250, 80}, {280, 90}, {315, 120}});
  const auto selections = host.events(kWindowSelection);
  ASSERT_EQ(selections.size(), 2U);
  EXPECT_EQ(namesIn(selections[0].arguments.at(2)), (std::vector<long>{8}));
  EXPECT_TRUE(namesIn(selections[1].arguments.at(2)).empty());
}

TEST_F(CameraViews, TheMouseTurnsAboutAPoint) {
  start();
  EXPECT_EQ(view->setCentreRotation(5, 2, 1), S_OK);
  EXPECT_EQ(view->put_CentreRotation(2), S_OK);
  for (const long mode : {0L, 1L, 2L}) {
    for (const wchar_t* text : {kOblique, kPerspective}) {
      put(text);
      EXPECT_EQ(view->put_ModeRotation(mode), S_OK);
      const auto before = GluView(view.Get(), host.clientSize()).pixelOf({5, 2, 1});
      host.drag({{200, 100}, {230, 110}, {260, 90}});
      const auto after = GluView(view.Get(), host.clientSize()).pixelOf({5, 2, 1});
      EXPECT_NEAR(after[0], before[0], 1e-6);
      EXPECT_NEAR(after[1], before[1], 1e-6);
      EXPECT_NE(shown(), text);
      if (mode == 1) {
        EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_HautX), 0.1);
        EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_HautZ), 1);
      }
    }
  }
  long mode = 0;
  EXPECT_EQ(view->get_CentreRotation(&mode), S_OK);
  EXPECT_EQ(mode, 2);
  EXPECT_EQ(view->get_ModeRotation(&mode), S_OK);
  EXPECT_EQ(mode, 2);
}

TEST_F(CameraViews, TheMousePansAndTheWheelZoomsWithPerspective) {
  put(kPerspective);
  const auto held = planePoint(100, 60, targetPlane(view.Get()));
  host.wheel(600);
  host->put_MouseMode(1);
  put(kPerspective);
  host.drag({{100, 60}, {150, 80}});
  const auto pixel = GluView(view.Get(), host.clientSize()).pixelOf(held);
  EXPECT_NEAR(pixel[0], 150.5, 1e-3);
  EXPECT_NEAR(pixel[1], 80.5, 1e-3);
}

/// Pumps messages until the flight has ended.
void arrive(IZYNVue3D2* view, const std::wstring& aim) {
  MSG message;
  while (shownCamera(view) != aim && GetMessageW(&message, nullptr, 0, 0) > 0) {
    DispatchMessageW(&message);
  }
}

TEST_F(CameraViews, FliesToACameraAndEndsExactlyThere) {
  start();
  const std::wstring before = shown();
  EXPECT_EQ(view->AllerA(makeCamera(kPerspective).Get(), 60), S_OK);
  EXPECT_EQ(shown(), before);
  arrive(view.Get(), kPerspective);
  EXPECT_EQ(shown(), kPerspective);
  host->LastView();
  EXPECT_EQ(shown(), before);
}

TEST_F(CameraViews, InputStopsAFlight) {
  for (const UINT message : {WM_LBUTTONDOWN, WM_MOUSEWHEEL, WM_KEYDOWN, WM_RBUTTONDOWN}) {
    start();
    EXPECT_EQ(view->AllerA(makeCamera(kPerspective).Get(), 3600000), S_OK);
    SendMessageW(host.window(), message, 0, 0);
    const std::wstring stopped = shown();
    host->TranslateP(0);
    EXPECT_EQ(shown(), stopped) << message;
    EXPECT_NE(shown(), kPerspective) << message;
    SendMessageW(host.window(), WM_CANCELMODE, 0, 0);
  }
}

TEST_F(CameraViews, MembersStartFromTheEndOfAFlight) {
  start();
  EXPECT_EQ(view->AllerA(makeCamera(kOblique).Get(), 3600000), S_OK);
  EXPECT_NE(shown(), kOblique);
  host->Zoom(2);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_Largeur), 12);
  EXPECT_EQ(numberOf(view.Get(), &IZYNCamera::get_OeilX), 30);
}

TEST_F(CameraViews, WithoutAWindowAFlightEndsAtOnce) {
  const auto bare = createObject<IZYNVue3D2>(L"ZYNVue.ZYNVue3D");
  EXPECT_EQ(bare->put_Camera(makeCamera(kOblique).Get()), S_OK);
  EXPECT_EQ(bare->AllerA(makeCamera(kPerspective).Get(), 3600000), S_OK);
  EXPECT_EQ(shownCamera(bare.Get()), kPerspective);
  start();
  EXPECT_EQ(view->AllerA(makeCamera(kPerspective).Get(), 3600000), S_OK);
  host.deactivate();
  EXPECT_EQ(shown(), kPerspective);
}

TEST_F(CameraViews, AxisViewsAndFitsFlyToo) {
  start();
  host->VueYZm(0.1);
  const std::wstring aim = shown();
  host->LastView();
  const std::wstring before = shown();
  EXPECT_EQ(view->put_DureeAnimation(40), S_OK);
  host->VueYZm(0.1);
  EXPECT_EQ(shown(), before);
  arrive(view.Get(), aim);
  host->LastView();
  EXPECT_EQ(shown(), aim);
  arrive(view.Get(), before);
  view->NextView();
  arrive(view.Get(), aim);
  host->initView(0);
  EXPECT_EQ(shown(), aim);
  long duration = 0;
  EXPECT_EQ(view->get_DureeAnimation(&duration), S_OK);
  EXPECT_EQ(duration, 40);
}

}  // namespace
}  // namespace zyn::test
