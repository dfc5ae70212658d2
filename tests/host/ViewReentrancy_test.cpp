// Event handlers and the objects of a scene are foreign code: they may do anything to the view that
// calls them, and hosts may have many views.
#include <memory>
#include <utility>

#include "support/Pickable_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

/// A trace that has no answer but gives one.
class EmptyProfile final : public ForeignBase<EmptyProfile, IZYNProfil> {
 public:
  std::function<void()> during;

  STDMETHODIMP PlusProche(IDispatch*, double* t, IDispatch** pc, IDispatch** pp, IDispatch** v,
                          IDispatch** a) override {
    *t = 0;
    for (IDispatch** out : {pc, pp, v, a}) *out = nullptr;
    if (during) during();
    return S_OK;
  }

 private:
  ~EmptyProfile() override = default;
  friend ForeignBase;
};

struct EventCase {
  const char* name;
  DISPID event;
};
void PrintTo(const EventCase& event, std::ostream* out) { *out << event.name; }

/// A view with an object that can be picked everywhere.
template <class Host>
struct BusyView {
  BusyView(SIZE size, ComPtr<ForeignObject> object) : host(size), picked(std::move(object)) {
    lend(picked->dispatch());
    require(host->Add(picked->dispatch(), 0), "Add");
    require(host->AddSelection(picked->dispatch()), "AddSelection");
    host->put_MiddleButtonActive(VARIANT_TRUE);
    host->put_WindowSelection(VARIANT_TRUE);
  }

  void lend(IDispatch* object) { lent.emplace_back(object); }

  Host host;
  ComPtr<ForeignObject> picked;
  std::vector<ComPtr<IDispatch>> lent;  ///< what the view has to let go of in the end
};

/// A graph, with an active trace.
struct Busy2D : BusyView<View2DHost> {
  explicit Busy2D(SIZE size = {400, 200})
      : BusyView(size, makePlate({-10, 10, -5, 5}, kRed, {1})),
        profile(makeForeign<EmptyProfile>()) {
    lend(profile->dispatch());
    require(host->setActiveProfil(profile->dispatch()), "setActiveProfil");
    showGraph();
    host->put_DrawCursor(VARIANT_TRUE);
  }

  static constexpr EventCase kEvents[] = {
      {"MouseDown", GraphEvent::MouseDown},
      {"PlusProche", GraphEvent::PlusProche},
      {"MouseSelection", GraphEvent::MouseSelection},
      {"MouseSelection2", GraphEvent::MouseSelection2},
      {"MouseUp", GraphEvent::MouseUp},
      {"WindowSelection", GraphEvent::WindowSelection},
      {"MouseSelectionDblClick", GraphEvent::MouseSelectionDblClick},
      {"MouseMove", GraphEvent::MouseMove},
      {"MouseOn", GraphEvent::MouseOn},
      {"MouseOn2", GraphEvent::MouseOn2},
      {"MouseLeave", GraphEvent::MouseLeave},
      {"KeyDown", GraphEvent::KeyDown},
      {"KeyUp", GraphEvent::KeyUp}};
  static constexpr long kModes[] = {3, -1, 1, 4};
  static constexpr long kDragMode = 1;
  static constexpr DISPID kMove = GraphEvent::MouseMove;
  static constexpr const IID& kSink = DIID__IZYNVue2DEvents;

  void setMode(long mode) const { host->put_Mode(mode); }
  void letGo() const { host->setActiveProfil(nullptr); }
  void showGraph() const {
    require(host->GraphView(0, 0, 0, _bstr_t(L"x"), nullptr, nullptr, -10, 10, 5, 1, 1, nullptr,
                            nullptr, nullptr, -5, 5, 5, 1, 1),
            "GraphView");
  }
  void change() const {
    host->initView();
    host.look({0, 2, 0, 1});
    host->LastView();
    showGraph();
  }
  void pick() const { host.send(WM_LBUTTONDBLCLK, 5, 5, MK_LBUTTON); }
  void fillWithRed() const { host.look({-5, 5, -2, 2}); }
  void expectAnswersWithoutAWindow() const {
    EXPECT_EQ(host->put_LineAntialiasing(VARIANT_FALSE), S_OK);
    showGraph();
    EXPECT_EQ(host->initView(), S_OK);
  }
  ComPtr<EmptyProfile> profile;
};

struct Busy3D : BusyView<View3DHost> {
  explicit Busy3D(SIZE size = {400, 200}) : BusyView(size, makePickable({1}, {-10, 10, -5, 5, 0})) {
    host.addBox({-10, 10, -5, 5, -5, 5});
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
  }

  static constexpr EventCase kEvents[] = {
      {"MouseDown", kMouseDown}, {"MouseMove", kMouseMove}, {"MouseSelection", kMouseSelection},
      {"MouseOn", kMouseOn},     {"MouseUp", kMouseUp},     {"WindowSelection", kWindowSelection}};
  static constexpr long kModes[] = {2, 4, -1};
  static constexpr long kDragMode = 2;
  static constexpr DISPID kMove = kMouseMove;
  static constexpr const IID& kSink = DIID__IZYNVue3DEvents;

  void setMode(long mode) const { host->put_MouseMode(static_cast<short>(mode)); }
  void letGo() const {}
  void change() const {
    host->initView(0);
    host->LastView();
    host->LastView();
    host->Zoom(2);
  }
  void pick() const {
    _variant_t names;
    host->getSelectionUnderMouse(5, 5, &names);
  }
  void fillWithRed() const {
    host->VueXYp(0);
    host->put_DrawCoordSys(VARIANT_FALSE);
    host->Add(makePainted({-100, 100, -100, 100, 1}, kRed)->dispatch(), 0);
  }
  void expectAnswersWithoutAWindow() const {
    EXPECT_EQ(host->put_LineAntialiasing(VARIANT_TRUE), S_OK);
    EXPECT_EQ(host->RotateH(30), S_OK);
    _variant_t names;
    EXPECT_EQ(host->getSelectionUnderMouse(100, 50, &names), S_OK);
    EXPECT_EQ(names.vt, VT_EMPTY);
  }
};

template <class View>
struct ActionCase {
  const char* name;
  void (*act)(View&);
};
template <class View>
void PrintTo(const ActionCase<View>& action, std::ostream* out) {
  *out << action.name;
}

template <class View>
const ActionCase<View> kActions[] = {
    {"RemovesTheObject",
     [](View& view) {
       view.host->Remove(view.picked->dispatch());
       view.host->RemoveSelection(view.picked->dispatch());
     }},
    {"ClearsTheView",
     [](View& view) {
       view.host->RemoveAll();
       view.host->RemoveAllSelection();
       view.letGo();
     }},
    {"TakesItsSinkOff", [](View& view) { view.host.unadvise(); }},
    {"ResizesTheView",
     [](View& view) {
       view.host.resize({0, 0});
       view.host.resize({123, 77});
     }},
    {"ChangesTheView", [](View& view) { view.change(); }},
    {"ChangesTheMode",
     [](View& view) {
       view.setMode(4);
       view.host->put_WindowSelection(VARIANT_FALSE);
       view.host->put_MiddleButtonActive(VARIANT_FALSE);
     }},
    {"LetsGoOfTheMouse", [](View&) { ReleaseCapture(); }},
    {"PaintsAndPicks",
     [](View& view) {
       view.host.paint();
       view.pick();
     }},
    {"ClosesTheWindow", [](View& view) { view.host.close(); }},
    {"ReleasesTheView", [](View& view) { view.host.release(); }},
    {"ReleasesAndCloses",
     [](View& view) {
       view.host.release();
       view.host.close();
     }},
    {"ClosesAndReleases",
     [](View& view) {
       view.host.close();
       view.host.release();
     }},
};

template <class View>
class ViewReentrancy : public HostTest,
                       public testing::WithParamInterface<std::tuple<EventCase, ActionCase<View>>> {
 protected:
  void handlerMayDoIt() {
    const auto& [event, action] = this->GetParam();
    std::vector<ComPtr<IDispatch>> lent;
    int fired = 0;
    {
      View view;
      lent = view.lent;
      view.host.during(event.event, [&, act = action.act] {
        if (++fired == 1) act(view);
      });
      use(view);
      use(view);
      EXPECT_EQ(GetCapture(), nullptr);
      EXPECT_EQ(wglGetCurrentContext(), nullptr);
      view.host.release();
      view.host.close();
      EXPECT_EQ(view.host.sinkReferences(), 0);
    }
    EXPECT_GE(fired, 1);
    for (const auto& object : lent) {
      EXPECT_EQ(referencesOf(object.Get()), 1U) << "the view is gone and has let go of its objects";
    }
  }

 private:
  /// Everything that a user does to a view, so that every event is fired; a view that has lost its
  /// window hears nothing more.
  static void use(const View& view) {
    const auto& host = view.host;
    host.move(50, 50);
    for (const long mode : View::kModes) {
      if (host.get()) view.setMode(mode);
      host.send(WM_LBUTTONDOWN, 60, 50, MK_LBUTTON);
      host.move(90, 80, MK_LBUTTON);
      host.send(WM_LBUTTONUP, 120, 90);
      host.move(70 + static_cast<int>(mode), 50);
    }
    host.send(WM_LBUTTONDBLCLK, 60, 50, MK_LBUTTON);
    host.send(WM_LBUTTONUP, 60, 50);
    host.send(WM_MBUTTONDOWN, 60, 50, MK_MBUTTON);
    host.move(90, 80, MK_MBUTTON);
    host.send(WM_MBUTTONUP, 120, 90);
    host.wheel(120);
    host.send(WM_RBUTTONDOWN, 60, 50, MK_RBUTTON);
    host.send(WM_RBUTTONUP, 60, 50);
    SendMessageW(host.window(), WM_KEYDOWN, VK_LEFT, 1);
    SendMessageW(host.window(), WM_KEYUP, VK_LEFT, 1);
    host.send(WM_MOUSELEAVE, 0, 0);
    host.paint();
  }
};

std::string nameOfCase(const auto& tested) {
  return std::string(std::get<0>(tested.param).name) + std::get<1>(tested.param).name;
}

using View2DReentrancy = ViewReentrancy<Busy2D>;
TEST_P(View2DReentrancy, TheHandlerMayDoIt) { handlerMayDoIt(); }
INSTANTIATE_TEST_SUITE_P(All, View2DReentrancy,
                         testing::Combine(testing::ValuesIn(Busy2D::kEvents),
                                          testing::ValuesIn(kActions<Busy2D>)),
                         [](const auto& tested) { return nameOfCase(tested); });

using View3DReentrancy = ViewReentrancy<Busy3D>;
TEST_P(View3DReentrancy, TheHandlerMayDoIt) { handlerMayDoIt(); }
INSTANTIATE_TEST_SUITE_P(All, View3DReentrancy,
                         testing::Combine(testing::ValuesIn(Busy3D::kEvents),
                                          testing::ValuesIn(kActions<Busy3D>)),
                         [](const auto& tested) { return nameOfCase(tested); });

/// What foreign objects do while the view asks them something else than to draw.
class View2DForeignCode : public HostTest,
                          public testing::WithParamInterface<ActionCase<Busy2D>> {};

TEST_P(View2DForeignCode, AnActiveTraceMayDoIt) {
  Busy2D view;
  const auto profile = view.profile;
  profile->during = [&, first = true]() mutable {
    if (std::exchange(first, false)) GetParam().act(view);
  };
  view.host.send(WM_LBUTTONDOWN, 60, 50, MK_LBUTTON);
  view.host.send(WM_LBUTTONUP, 60, 50);
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_P(View2DForeignCode, AMeasuredObjectMayDoIt) {
  Busy2D view;
  view.host->RemoveAll();
  const auto plain = std::make_unique<View2DHost>(SIZE{100, 50});
  const auto measured = makeForeign<ForeignObject>();
  bool first = true;
  measured->onGetBox2D = [&](IDispatch**) {
    if (std::exchange(first, false)) GetParam().act(view);
    return S_OK;
  };
  EXPECT_EQ((*plain)->Add(measured->dispatch(), 0), S_OK);
  first = true;
  EXPECT_EQ((*plain)->UpdateParams(), S_OK);
  first = true;
  plain->resize({60, 60});
}

TEST_P(View2DForeignCode, APickedObjectMayDoIt) {
  Busy2D view;
  const auto picked = view.picked;
  int drawn = 0;
  picked->onDraw2D = [&](int mode) {
    if (mode == -1 && ++drawn == 1) GetParam().act(view);
    return S_OK;
  };
  view.host->put_Mode(-1);
  view.host.drag({{60, 50}, {90, 80}});
  EXPECT_GE(drawn, 1);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST_P(View2DForeignCode, ADrawnObjectMayDoIt) {
  Busy2D view;
  const auto drawn = view.picked;
  int times = 0;
  drawn->onDraw2D = [&](int) {
    if (++times == 1) GetParam().act(view);
    return S_OK;
  };
  view.host.paint();
  view.host.paint();
  EXPECT_GE(times, 1);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(All, View2DForeignCode, testing::ValuesIn(kActions<Busy2D>),
                         [](const auto& tested) { return std::string(tested.param.name); });

template <class View>
class ViewLifetime : public HostTest {};
struct Names {
  template <class View>
  static std::string GetName(int) {
    return std::is_same_v<View, Busy2D> ? "View2D" : "View3D";
  }
};
using Views = testing::Types<Busy2D, Busy3D>;
TYPED_TEST_SUITE(ViewLifetime, Views, Names);

TYPED_TEST(ViewLifetime, ThirtyTwoViewsLiveAtOnce) {
  std::vector<std::unique_ptr<TypeParam>> views;
  for (int i = 0; i < 32; ++i) views.push_back(std::make_unique<TypeParam>(SIZE{80, 40 + i}));
  for (int round = 0; round < 3; ++round) {
    for (const auto& view : views) {
      view->setMode(TypeParam::kDragMode);
      view->host.drag({{10, 10}, {30, 20}, {20, 25}});
      view->host.wheel(-120);
      view->host.paint();
    }
  }
  for (size_t i = 0; i < views.size(); ++i) {
    views[i]->fillWithRed();
    EXPECT_EQ(views[i]->host.scene().count(kRed), 80 * (40 + int(i)));
  }
  // In another order than they came.
  for (size_t i = 0; i < views.size(); i += 2) views[i].reset();
  for (size_t i = 1; i < views.size(); i += 2) {
    const auto& host = views[i]->host;
    const size_t before = host.modes(views[i]->picked).size();
    host.paint();
    EXPECT_GT(host.modes(views[i]->picked).size(), before);
  }
}

TYPED_TEST(ViewLifetime, ManyViewsOneAfterTheOther) {
  for (int i = 0; i < 100; ++i) {
    ComPtr<ForeignObject> picked;
    LONG sinkReferences = -1;
    HWND window = nullptr;
    {
      TypeParam view({60, 40});
      picked = view.picked;
      window = view.host.window();
      view.host.paint();
      EXPECT_GE(view.host.modes(picked).size(), 1U);
      if (i % 2 == 0) {
        view.host.release();
        view.host.close();
      } else {
        view.host.close();
        view.host.release();
      }
      sinkReferences = view.host.sinkReferences();
    }
    EXPECT_EQ(sinkReferences, 0);
    EXPECT_FALSE(IsWindow(window));
    ASSERT_EQ(referencesOf(picked.Get()), 1U) << "cycle " << i;
  }
}

TYPED_TEST(ViewLifetime, AViewOutlivesItsWindow) {
  TypeParam view;
  view.host.paint();
  view.host.close();
  EXPECT_FALSE(view.host.hasWindow());
  long handle = -1;
  EXPECT_EQ(view.host->get_hWnd(&handle), S_OK);
  EXPECT_EQ(handle, 0);
  EXPECT_EQ(view.host->setBackground(1, 0, 0), S_OK);
  view.expectAnswersWithoutAWindow();
  EXPECT_EQ(view.host->Repaint(), S_OK);
  EXPECT_EQ(view.host->RemoveAll(), S_OK);
}

TYPED_TEST(ViewLifetime, ASinkMayComeAndGoDuringAnEvent) {
  TypeParam view;
  CallScript script;
  ScriptedEventSink late(script, TypeParam::kSink);
  ComPtr<IConnectionPoint> source;
  require(queryFor<IConnectionPointContainer>(view.host.get())
              ->FindConnectionPoint(TypeParam::kSink, source.ReleaseAndGetAddressOf()),
          "FindConnectionPoint");
  DWORD cookie = 0;
  int fired = 0;
  view.host.during(TypeParam::kMove, [&] {
    if (++fired == 1) source->Advise(&late, &cookie);
    if (fired == 3) source->Unadvise(cookie);
  });
  for (int i = 0; i < 4; ++i) view.host.move(10 + i, 10);
  EXPECT_EQ(fired, 4);
  EXPECT_GE(late.events.size(), 1U);
  EXPECT_EQ(late.references(), 0);
}

}  // namespace
}  // namespace zyn::test
