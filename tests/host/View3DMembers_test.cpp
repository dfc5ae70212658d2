#include "support/ArrayVariant_win.h"
#include "support/LateBinding_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

class View3DMembers : public HostTest {
 protected:
  VARIANT_BOOL gradient() const {
    VARIANT_BOOL value = 77;
    EXPECT_EQ(host->get_GradientBackground(&value), S_OK);
    return value;
  }
  VARIANT_BOOL coordSys() const {
    VARIANT_BOOL value = 77;
    EXPECT_EQ(host->get_DrawCoordSys(&value), S_OK);
    return value;
  }
  long count() const {
    long value = -1;
    EXPECT_EQ(host->Count(&value), S_OK);
    return value;
  }
  View3DHost host;
};

TEST_F(View3DMembers, GradientIsInverted) {
  EXPECT_EQ(gradient(), VARIANT_FALSE);
  host->put_GradientBackground(VARIANT_FALSE);
  EXPECT_EQ(gradient(), VARIANT_TRUE);
  for (const VARIANT_BOOL off : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_BOOL{2}}) {
    host->put_GradientBackground(VARIANT_FALSE);
    host->put_GradientBackground(off);
    EXPECT_EQ(gradient(), VARIANT_FALSE) << off;
  }
}

TEST_F(View3DMembers, TrihedronIsSwitchedOnByAnythingButZero) {
  EXPECT_EQ(coordSys(), VARIANT_TRUE);
  host->put_DrawCoordSys(VARIANT_FALSE);
  EXPECT_EQ(coordSys(), VARIANT_FALSE);
  for (const VARIANT_BOOL on : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_BOOL{2}}) {
    host->put_DrawCoordSys(VARIANT_FALSE);
    host->put_DrawCoordSys(on);
    EXPECT_EQ(coordSys(), VARIANT_TRUE) << on;
  }
}

TEST_F(View3DMembers, MultisamplingIsOnOnlyForTheTrueOfAutomation) {
  VARIANT_BOOL value = 77;
  host->get_MultiSampleAntialiasing(&value);
  EXPECT_EQ(value, VARIANT_FALSE);
  host->put_MultiSampleAntialiasing(1);
  host->get_MultiSampleAntialiasing(&value);
  EXPECT_EQ(value, VARIANT_FALSE);
}

TEST_F(View3DMembers, RemoveTakesOutTheFirstOccurrence) {
  const auto object = makeForeign<ForeignObject>();
  host->Add(object->dispatch(), 1);
  host->Add(object->dispatch(), 2);
  EXPECT_EQ(host->Remove(object->dispatch()), S_OK);
  EXPECT_EQ(count(), 1);
  host->initView(0);
  host.paint();
  ASSERT_FALSE(object->modes.empty());
  EXPECT_EQ(object->modes.back(), 2);
}

TEST_F(View3DMembers, LightsStartAsPublished) {
  _variant_t value;
  ASSERT_EQ(host->get_AmbientLightProperty(&value), S_OK);
  EXPECT_EQ(value.vt, VT_ARRAY | VT_R8);
  EXPECT_EQ(doublesIn(value), (std::vector<double>{1, 1, 1, 1, double{0.7F}}));
  value.Clear();
  ASSERT_EQ(host->get_DirectionLight1Property(&value), S_OK);
  EXPECT_EQ(doublesIn(value),
            (std::vector<double>{1, 1, 1, 1, double{0.2F}, double{0.45F}, double{0.69F}, 0, 0}));
  value.Clear();
  ASSERT_EQ(host->get_DirectionLight2Property(&value), S_OK);
  EXPECT_EQ(doublesIn(value),
            (std::vector<double>{0, 1, 1, 1, double{0.2F}, double{0.45F}, double{0.69F}, 0, 0}));
}

TEST_F(View3DMembers, LightsTakeExactlyTheirNumbers) {
  const std::vector<double> ambient = {1, 1, 0, 0, 1};
  EXPECT_EQ(host->put_AmbientLightProperty(numberArray(VT_R8, ambient)), S_OK);
  _variant_t value;
  host->get_AmbientLightProperty(&value);
  EXPECT_EQ(doublesIn(value), ambient);
  for (const auto& wrong :
       {doubleArray({0, 0, 0, 0}), doubleArray({0, 0, 0, 0, 0, 0}), _variant_t(), _variant_t(5L),
        variantArray({0.0, 0.0, 0.0, 0.0, L"0"}), nullArray(VT_R8)}) {
    EXPECT_EQ(host->put_AmbientLightProperty(wrong), S_OK);
    _variant_t after;
    host->get_AmbientLightProperty(&after);
    EXPECT_EQ(doublesIn(after), ambient);
  }
  const std::vector<double> light = {2, 0.5, 0.25, 1, 0, 1, 0.5, 1.5, -0.5};
  for (const wchar_t* name : {L"DirectionLight1Property", L"DirectionLight2Property"}) {
    EXPECT_EQ(putProperty(host.get(), name, doubleArray(light)).code(), S_OK);
    EXPECT_EQ(doublesIn(getProperty(host.get(), name).value), light);
    for (const size_t size : {size_t{8}, size_t{10}}) {
      putProperty(host.get(), name, doubleArray(std::vector<double>(size, 3.0)));
      EXPECT_EQ(doublesIn(getProperty(host.get(), name).value), light);
    }
  }
}

TEST_F(View3DMembers, LightsTakeWholeNumbersInVariants) {
  host->put_AmbientLightProperty(variantArray(
      {_variant_t(1L), _variant_t(1L), _variant_t(0L), _variant_t(short{0}), _variant_t(1.0)}));
  _variant_t value;
  host->get_AmbientLightProperty(&value);
  EXPECT_EQ(doublesIn(value), (std::vector<double>{1, 1, 0, 0, 1}));
}

TEST_F(View3DMembers, DrawLightsAnswersMinusOneOrZero) {
  long value = 7;
  host->get_DrawLights(&value);
  EXPECT_EQ(value, 0);
  for (const long on : {1L, -1L, 42L}) {
    host->put_DrawLights(on);
    host->get_DrawLights(&value);
    EXPECT_EQ(value, -1);
  }
  host->put_DrawLights(0);
  host->get_DrawLights(&value);
  EXPECT_EQ(value, 0);
}

TEST_F(View3DMembers, NullOutsAreRefused) {
  EXPECT_EQ(host->getWindowScale(nullptr), E_POINTER);
  EXPECT_EQ(host->XFormView(nullptr), E_POINTER);
  EXPECT_EQ(host->Count(nullptr), E_POINTER);
  EXPECT_EQ(host->get_hWnd(nullptr), E_POINTER);
  EXPECT_EQ(host->get_MouseMode(nullptr), E_POINTER);
  EXPECT_EQ(host->get_DrawLights(nullptr), E_POINTER);
  EXPECT_EQ(host->get_AmbientLightProperty(nullptr), E_POINTER);
  EXPECT_EQ(host->get_DirectionLight1Property(nullptr), E_POINTER);
  EXPECT_EQ(host->get_DirectionLight2Property(nullptr), E_POINTER);
  EXPECT_EQ(host->getSelectionUnderMouse(0, 0, nullptr), E_POINTER);
  EXPECT_EQ(host->getPixelPlanIntersection(0, 0, doubleArray({0, 0, 1, 0}), nullptr), E_POINTER);
}

TEST_F(View3DMembers, EveryMemberHasItsPublishedNumber) {
  const std::pair<const wchar_t*, DISPID> members[] = {{L"VueXYp", 1},
                                                       {L"VueXYm", 2},
                                                       {L"VueXZp", 3},
                                                       {L"VueXZm", 4},
                                                       {L"VueYZp", 5},
                                                       {L"VueYZm", 6},
                                                       {L"TranslateH", 7},
                                                       {L"TranslateV", 8},
                                                       {L"TranslateP", 9},
                                                       {L"Zoom", 10},
                                                       {L"RotateA", 11},
                                                       {L"RotateH", 12},
                                                       {L"RotateV", 13},
                                                       {L"MouseMode", 14},
                                                       {L"initView", 15},
                                                       {L"Add", 16},
                                                       {L"Remove", 17},
                                                       {L"Repaint", 18},
                                                       {L"UpdateParams", 19},
                                                       {L"LastView", 20},
                                                       {L"RemoveAll", 21},
                                                       {L"ZoomTotal", 22},
                                                       {L"Count", 23},
                                                       {L"EditAmbiantLight", 24},
                                                       {L"AmbientLightProperty", 25},
                                                       {L"DirectionLight1Property", 26},
                                                       {L"DirectionLight2Property", 27},
                                                       {L"DrawLights", 28},
                                                       {L"getWindowScale", 29},
                                                       {L"VueTournage", 30},
                                                       {L"setBackground", 31},
                                                       {L"XFormView", 32},
                                                       {L"LineAntialiasing", 33},
                                                       {L"PointAntialiasing", 34},
                                                       {L"MultiSampleAntialiasing", 35},
                                                       {L"AddSelection", 36},
                                                       {L"PickSize", 37},
                                                       {L"getPixelPlanIntersection", 38},
                                                       {L"DrawCursor", 39},
                                                       {L"setCursorPos", 40},
                                                       {L"ProfondeurDessin", 41},
                                                       {L"setViewBox", 42},
                                                       {L"getSelectionUnderMouse", 43},
                                                       {L"RemoveAllSelection", 44},
                                                       {L"RemoveSelection", 45},
                                                       {L"hWnd", 46},
                                                       {L"SelectSuperpose", 47},
                                                       {L"WindowSelection", 48},
                                                       {L"MiddleButtonActive", 49},
                                                       {L"GradientBackground", 50},
                                                       {L"setGradientColor", 51},
                                                       {L"DrawCoordSys", 52},
                                                       {L"MiddleButtonInverse", 53},
                                                       {L"MiddleButtonAcceleration", 54}};
  for (const auto& [name, number] : members)
    EXPECT_EQ(dispidOf(host.get(), name), number) << number;
}

TEST_F(View3DMembers, MethodsWorkByName) {
  const auto object = host.addBox({0, 10, 0, 10, 0, 10});
  IDispatch* const view = host.get();
  for (const wchar_t* name : {L"initView", L"VueXYp", L"VueXYm", L"VueXZp", L"VueXZm", L"VueYZp",
                              L"VueYZm", L"VueTournage", L"ZoomTotal", L"TranslateH", L"TranslateV",
                              L"TranslateP", L"Zoom", L"RotateA", L"RotateH", L"RotateV"}) {
    EXPECT_EQ(callMethod(view, name, {0.5}).code(), S_OK);
  }
  for (const wchar_t* name : {L"Repaint", L"UpdateParams", L"LastView", L"RemoveAllSelection"}) {
    EXPECT_EQ(callMethod(view, name).code(), S_OK);
  }
  EXPECT_EQ(callMethod(view, L"Add", {_variant_t(object->dispatch()), 3L}).code(), S_OK);
  EXPECT_EQ(long(callMethod(view, L"Count").value), 2);
  EXPECT_EQ(callMethod(view, L"Remove", {_variant_t(object->dispatch())}).code(), S_OK);
  EXPECT_EQ(long(callMethod(view, L"Count").value), 1);
  EXPECT_EQ(callMethod(view, L"setBackground", {1.0, 0.5, 0.0}).code(), S_OK);
  EXPECT_EQ(callMethod(view, L"setGradientColor", {1.0, 0.5, 0.0}).code(), S_OK);
  EXPECT_EQ(callMethod(view, L"setCursorPos", {1.0, 0.5, 0.0}).code(), S_OK);
  host->VueXYp(0);
  EXPECT_DOUBLE_EQ(double(callMethod(view, L"getWindowScale").value), 20.0 / 400);
  EXPECT_EQ(doublesIn(callMethod(view, L"XFormView").value).size(), 16U);
  const auto point =
      callMethod(view, L"getPixelPlanIntersection", {100L, 50L, doubleArray({0, 0, 1, 0})});
  EXPECT_EQ(doublesIn(point.value).size(), 3U);
  EXPECT_EQ(callMethod(view, L"getSelectionUnderMouse", {100L, 50L}).value.vt, VT_EMPTY);
}

TEST_F(View3DMembers, TwoViewsShareNothing) {
  View3DHost other;
  other->put_MouseMode(3);
  other->put_GradientBackground(VARIANT_FALSE);
  other->put_AmbientLightProperty(doubleArray({0, 0, 0, 0, 0}));
  short mode = 0;
  host->get_MouseMode(&mode);
  EXPECT_EQ(mode, 2);
  EXPECT_EQ(gradient(), VARIANT_FALSE);
  _variant_t light;
  host->get_AmbientLightProperty(&light);
  EXPECT_EQ(doublesIn(light)[0], 1);
}

}  // namespace
}  // namespace zyn::test
