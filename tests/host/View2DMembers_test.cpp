#include "support/ArrayVariant_win.h"
#include "support/LateBinding_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

class View2DMembers : public HostTest {
 protected:
  long count() const {
    long value = -1;
    EXPECT_EQ(host->Count(&value), S_OK);
    return value;
  }
  bool asksForPaint() const { return GetUpdateRect(host.window(), nullptr, FALSE) != FALSE; }
  /// Whether the call asks for a repaint.
  template <class Call>
  bool repaints(Call call) const {
    host.paint();
    EXPECT_FALSE(asksForPaint());
    EXPECT_EQ(call(), S_OK);
    return asksForPaint();
  }

  View2DHost host;
};

TEST_F(View2DMembers, MultisamplingIsNotThere) {
  VARIANT_BOOL value = 77;
  EXPECT_EQ(host->get_MultiSampleAntialiasing(&value), S_OK);
  EXPECT_EQ(value, VARIANT_FALSE);
  EXPECT_FALSE(repaints([&] { return host->put_MultiSampleAntialiasing(VARIANT_TRUE); }));
  EXPECT_EQ(host->get_MultiSampleAntialiasing(&value), S_OK);
  EXPECT_EQ(value, VARIANT_FALSE);
  EXPECT_EQ(host->get_MultiSampleAntialiasing(nullptr), E_POINTER);
}

TEST_F(View2DMembers, RemoveTakesOutEveryOccurrence) {
  const auto object = makeForeign<ForeignObject>();
  const auto other = makeForeign<ForeignObject>();
  const ULONG before = referencesOf(object.Get());
  for (const auto& added : {object, other, object, object, other}) {
    host->Add(added->dispatch(), 0);
  }
  EXPECT_EQ(host->Remove(object->dispatch()), S_OK);
  EXPECT_EQ(count(), 2);
  EXPECT_EQ(referencesOf(object.Get()), before);
  host.paint();
  EXPECT_TRUE(object->modes2D.empty());
  EXPECT_EQ(other->modes2D.size(), 2U);
  EXPECT_EQ(host->Remove(object->dispatch()), S_OK) << "is not there";
  EXPECT_EQ(count(), 2);
}

TEST_F(View2DMembers, NoTraceAndNoRectangleAreIgnored) {
  EXPECT_EQ(host->setActiveProfil(nullptr), S_OK);
  EXPECT_EQ(host->View(nullptr, 0), S_OK);
  EXPECT_EQ(count(), 0);
}

TEST_F(View2DMembers, AnObjectThatCannotTellItsNumberIsNotAdded) {
  const auto object = makeForeign<ForeignObject>();
  object->onAttribut = [](IDispatch**) { return E_ACCESSDENIED; };
  EXPECT_EQ(host->Add(object->dispatch(), 0), E_ACCESSDENIED);
  EXPECT_EQ(host->AddSelection(object->dispatch()), E_ACCESSDENIED);
  EXPECT_EQ(count(), 0);
  EXPECT_EQ(referencesOf(object.Get()), 1U);
  object->onAttribut = [](IDispatch**) { return E_NOINTERFACE; };
  EXPECT_EQ(host->Add(object->dispatch(), 0), S_OK);
  const auto attribute = makeForeign<ForeignAttribute>(7);
  object->onAttribut = [&](IDispatch** out) { return handOut(attribute, out); };
  EXPECT_EQ(host->Add(object->dispatch(), 0), S_OK);
  EXPECT_EQ(attribute->asked, 1);
}

TEST_F(View2DMembers, TheRightMembersAskForARepaint) {
  const auto object = makeForeign<ForeignObject>();
  const auto area = makeArea({0, 1, 0, 1});
  IZYNVue2D* const view = host.get();
  EXPECT_TRUE(repaints([&] { return view->Add(object->dispatch(), 0); }));
  EXPECT_TRUE(repaints([&] { return view->Add(object->dispatch(), 0); }));
  EXPECT_TRUE(repaints([&] { return view->Remove(object->dispatch()); }));
  EXPECT_TRUE(repaints([&] { return view->RemoveAll(); }));
  EXPECT_TRUE(repaints([&] { return view->Repaint(); }));
  EXPECT_TRUE(repaints([&] { return view->initView(); }));
  EXPECT_TRUE(repaints([&] { return view->LastView(); })) << "with an empty history too";
  EXPECT_TRUE(repaints([&] { return view->View(area.Get(), 0); }));
  EXPECT_TRUE(repaints([&] { return view->put_DrawCursor(VARIANT_FALSE); }));
  EXPECT_TRUE(repaints([&] { return view->put_LineAntialiasing(VARIANT_FALSE); }));
  EXPECT_TRUE(repaints([&] { return view->put_PointAntialiasing(VARIANT_FALSE); }));

  EXPECT_FALSE(repaints([&] { return view->put_LineAntialiasing(VARIANT_FALSE); }));
  EXPECT_FALSE(repaints([&] { return view->put_PointAntialiasing(VARIANT_FALSE); }));
  EXPECT_FALSE(repaints([&] { return view->UpdateParams(); }));
  EXPECT_FALSE(repaints([&] { return view->ViewRect(0, 1, 0, 1); }));
  EXPECT_FALSE(repaints([&] { return view->View(object->dispatch(), 0); })) << "no rectangle";
  EXPECT_FALSE(repaints([&] { return view->setCursorPos(1, 2); }));
  EXPECT_FALSE(repaints([&] { return view->AddSelection(object->dispatch()); }));
  EXPECT_FALSE(repaints([&] { return view->put_GrilleVisible(VARIANT_TRUE); }));
  EXPECT_FALSE(repaints([&] { return view->setGrille(1, 1); }));
  view->put_DrawCursor(VARIANT_TRUE);
  EXPECT_TRUE(repaints([&] { return view->setCursorPos(1, 2); }));
}

TEST_F(View2DMembers, NullOutsAreRefused) {
  double number = 0;
  int pixel = 0;
  EXPECT_EQ(host->Count(nullptr), E_POINTER);
  EXPECT_EQ(host->get_hWnd(nullptr), E_POINTER);
  EXPECT_EQ(host->get_PixelSize(nullptr), E_POINTER);
  EXPECT_EQ(host->getVueParams(nullptr), E_POINTER);
  EXPECT_EQ(host->getPixelPoint(0, 0, nullptr, &pixel), E_POINTER);
  EXPECT_EQ(host->getPixelPoint(0, 0, &pixel, nullptr), E_POINTER);
  EXPECT_EQ(host->getPoint(0, 0, nullptr, &number), E_POINTER);
  EXPECT_EQ(host->getPoint(0, 0, &number, nullptr), E_POINTER);
  EXPECT_EQ(host->get_MousePointer(nullptr), E_POINTER);
  EXPECT_EQ(host->get_MouseIcon(nullptr), E_POINTER);
}

TEST_F(View2DMembers, EveryMemberHasItsPublishedNumber) {
  const std::pair<const wchar_t*, DISPID> members[] = {{L"Add", 1},
                                                       {L"initView", 2},
                                                       {L"Remove", 4},
                                                       {L"Repaint", 5},
                                                       {L"UpdateParams", 6},
                                                       {L"setBackground", 7},
                                                       {L"LastView", 8},
                                                       {L"setActiveProfil", 9},
                                                       {L"RemoveAll", 10},
                                                       {L"View", 11},
                                                       {L"Count", 12},
                                                       {L"Mode", 13},
                                                       {L"GraphView", 14},
                                                       {L"LogLogGraphView", 15},
                                                       {L"ViewRect", 16},
                                                       {L"AddSelection", 17},
                                                       {L"RemoveAllSelection", 18},
                                                       {L"RemoveSelection", 19},
                                                       {L"LineAntialiasing", 20},
                                                       {L"PointAntialiasing", 21},
                                                       {L"MultiSampleAntialiasing", 22},
                                                       {L"hWnd", 23},
                                                       {L"getPixelPoint", 24},
                                                       {L"getPoint", 25},
                                                       {L"DrawCursor", 26},
                                                       {L"setCursorPos", 27},
                                                       {L"getVueParams", 28},
                                                       {L"setGrilleColor", 29},
                                                       {L"GrilleVisible", 30},
                                                       {L"setGrille", 31},
                                                       {L"PickSize", 32},
                                                       {L"MiddleButtonActive", 33},
                                                       {L"SelectSuperpose", 34},
                                                       {L"WindowSelection", 35},
                                                       {L"PixelSize", 36},
                                                       {L"MaintainWindowZoom", 37},
                                                       {L"MiddleButtonInverse", 38},
                                                       {L"MiddleButtonAcceleration", 39},
                                                       {L"MousePointer", -521},
                                                       {L"MouseIcon", -522}};
  for (const auto& [name, number] : members) {
    EXPECT_EQ(dispidOf(host.get(), name), number) << number;
  }
}

TEST_F(View2DMembers, MethodsWorkByName) {
  const auto object = host.addBox({0, 10, 0, 5});
  IDispatch* const view = host.get();
  for (const wchar_t* name : {L"initView", L"Repaint", L"UpdateParams", L"LastView"}) {
    EXPECT_EQ(callMethod(view, name).code(), S_OK);
  }
  EXPECT_EQ(callMethod(view, L"Add", {_variant_t(object->dispatch()), 3L}).code(), S_OK);
  EXPECT_EQ(long(callMethod(view, L"Count").value), 2);
  EXPECT_EQ(callMethod(view, L"Remove", {_variant_t(object->dispatch())}).code(), S_OK);
  EXPECT_EQ(long(callMethod(view, L"Count").value), 0);
  EXPECT_EQ(callMethod(view, L"setBackground", {1.0, 0.5, 0.0}).code(), S_OK);
  EXPECT_EQ(callMethod(view, L"setCursorPos", {1.0, 0.5}).code(), S_OK);
  EXPECT_EQ(callMethod(view, L"setGrille", {1.0, 0.5}).code(), S_OK);
  EXPECT_EQ(callMethod(view, L"setGrilleColor", {1.0, 0.5, 0.0}).code(), S_OK);
  EXPECT_EQ(callMethod(view, L"ViewRect", {0.0, 20.0, 0.0, 10.0}).code(), S_OK);
  EXPECT_EQ(doublesIn(callMethod(view, L"getVueParams").value).size(), 7U);
  const auto area = makeArea({0, 20, 0, 10});
  const _variant_t rectangle(static_cast<IDispatch*>(area.Get()));
  EXPECT_EQ(callMethod(view, L"View", {rectangle, 0.0}).code(), S_OK);
  EXPECT_DOUBLE_EQ(double(getProperty(view, L"PixelSize").value), 10.0 / 200);
  EXPECT_EQ(callMethod(view, L"View", {rectangle}).code(), DISP_E_BADPARAMCOUNT);
}

TEST_F(View2DMembers, OutsArriveInScriptsToo) {
  host.look({-10, 10, -5, 5});
  _variant_t top;
  _variant_t left;
  EXPECT_EQ(
      callMethod(host.get(), L"getPixelPoint", {5.0, 2.5, outArgument(top), outArgument(left)})
          .code(),
      S_OK);
  EXPECT_EQ(long(top), 50);
  EXPECT_EQ(long(left), 300);
  _variant_t x;
  _variant_t y;
  EXPECT_EQ(callMethod(host.get(), L"getPoint", {50L, 300L, outArgument(x), outArgument(y)}).code(),
            S_OK);
  EXPECT_DOUBLE_EQ(double(x), 5);
  EXPECT_DOUBLE_EQ(double(y), 2.5);
}

TEST_F(View2DMembers, TwoViewsShareNothing) {
  View2DHost other;
  other->put_Mode(1);
  other->put_GrilleVisible(VARIANT_TRUE);
  other.look({0, 2, 0, 1});
  EXPECT_EQ(host.mode(), 3);
  VARIANT_BOOL grid = 77;
  host->get_GrilleVisible(&grid);
  EXPECT_EQ(grid, VARIANT_FALSE);
  EXPECT_EQ(host.params().width, 1) << "as every empty view: 2 by the shape of its window";
}

TEST_F(View2DMembers, WorksWithoutAWindow) {
  const auto view = createObject<IZYNVue2D>(L"ZYNVue.ZYNVue2D");
  const auto object = makeForeign<ForeignObject>();
  long number = -1;
  EXPECT_EQ(view->get_hWnd(&number), S_OK);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(view->Add(object->dispatch(), 0), S_OK);
  EXPECT_EQ(view->setBackground(0, 0, 0), S_OK);
  EXPECT_EQ(view->put_LineAntialiasing(VARIANT_FALSE), S_OK);
  EXPECT_EQ(view->put_PointAntialiasing(VARIANT_FALSE), S_OK);
  EXPECT_EQ(view->GraphView(0, 0, 0, nullptr, nullptr, nullptr, 0, 1, 1, 1, 1, nullptr, nullptr,
                            nullptr, 0, 1, 1, 1, 1),
            S_OK);
  EXPECT_EQ(view->initView(), S_OK);
  EXPECT_EQ(view->LastView(), S_OK);
  EXPECT_EQ(view->View(makeArea({0, 1, 0, 1}).Get(), 0), S_OK);
  EXPECT_EQ(view->ViewRect(0, 1, 0, 1), S_OK);
  double size = 77;
  EXPECT_EQ(view->get_PixelSize(&size), S_OK);
  EXPECT_EQ(size, 0.0);
  int top = 77;
  int left = 77;
  EXPECT_EQ(view->getPixelPoint(0, 0, &top, &left), S_OK);
  double x = 77;
  double y = 77;
  EXPECT_EQ(view->getPoint(0, 0, &x, &y), S_OK);
  EXPECT_EQ(view->Repaint(), S_OK);
  EXPECT_EQ(view->RemoveAll(), S_OK);
}

}  // namespace
}  // namespace zyn::test
