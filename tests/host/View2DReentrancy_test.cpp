#include <memory>

#include "support/Scene_win.h"
#include "support/View2DHost_win.h"

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

/// A view with a graph and a trace that can be picked everywhere.
class BusyView {
 public:
  explicit BusyView(SIZE size = {400, 200})
      : host(size),
        picked(makePlate({-10, 10, -5, 5}, kRed, {1})),
        profile(makeForeign<EmptyProfile>()) {
    require(host->Add(picked->dispatch(), 0), "Add");
    require(host->AddSelection(picked->dispatch()), "AddSelection");
    require(host->setActiveProfil(profile->dispatch()), "setActiveProfil");
    showGraph();
    host->put_MiddleButtonActive(VARIANT_TRUE);
    host->put_WindowSelection(VARIANT_TRUE);
    host->put_DrawCursor(VARIANT_TRUE);
  }

  void showGraph() const {
    require(host->GraphView(0, 0, 0, _bstr_t(L"x"), nullptr, nullptr, -10, 10, 5, 1, 1, nullptr,
                            nullptr, nullptr, -5, 5, 5, 1, 1),
            "GraphView");
  }

  View2DHost host;
  ComPtr<ForeignObject> picked;
  ComPtr<EmptyProfile> profile;
};

struct EventCase {
  const char* name;
  DISPID event;
};
struct ActionCase {
  const char* name;
  void (*act)(BusyView&);
};
using Case = std::tuple<EventCase, ActionCase>;

void PrintTo(const EventCase& event, std::ostream* out) { *out << event.name; }
void PrintTo(const ActionCase& action, std::ostream* out) { *out << action.name; }

const EventCase kEvents[] = {{"MouseDown", GraphEvent::MouseDown},
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

const ActionCase kActions[] = {
    {"RemovesTheObject",
     [](BusyView& view) {
       view.host->Remove(view.picked->dispatch());
       view.host->RemoveSelection(view.picked->dispatch());
     }},
    {"ClearsTheView",
     [](BusyView& view) {
       view.host->RemoveAll();
       view.host->RemoveAllSelection();
       view.host->setActiveProfil(nullptr);
     }},
    {"TakesItsSinkOff", [](BusyView& view) { view.host.unadvise(); }},
    {"ResizesTheView",
     [](BusyView& view) {
       view.host.resize({0, 0});
       view.host.resize({123, 77});
     }},
    {"ChangesTheView",
     [](BusyView& view) {
       view.host->initView();
       view.host.look({0, 2, 0, 1});
       view.host->LastView();
       view.showGraph();
     }},
    {"ChangesTheMode",
     [](BusyView& view) {
       view.host->put_Mode(4);
       view.host->put_WindowSelection(VARIANT_FALSE);
       view.host->put_MiddleButtonActive(VARIANT_FALSE);
     }},
    {"LetsGoOfTheMouse", [](BusyView&) { ReleaseCapture(); }},
    {"PaintsAndPicks",
     [](BusyView& view) {
       view.host.paint();
       view.host.send(WM_LBUTTONDBLCLK, 5, 5, MK_LBUTTON);
     }},
    {"ClosesTheWindow", [](BusyView& view) { view.host.close(); }},
    {"ReleasesTheView", [](BusyView& view) { view.host.release(); }},
    {"ReleasesAndCloses",
     [](BusyView& view) {
       view.host.release();
       view.host.close();
     }},
    {"ClosesAndReleases",
     [](BusyView& view) {
       view.host.close();
       view.host.release();
     }},
};

class View2DReentrancy : public HostTest, public testing::WithParamInterface<Case> {
 protected:
  /// Everything that a user does to a view, so that every event is fired; a view that has lost its
  /// window hears nothing more.
  static void use(const View2DHost& host) {
    host.move(50, 50);
    for (const long mode : {3L, -1L, 1L, 4L}) {
      if (host.get()) host->put_Mode(mode);
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

TEST_P(View2DReentrancy, TheHandlerMayDoIt) {
  const auto& [event, action] = GetParam();
  ComPtr<ForeignObject> picked;
  ComPtr<EmptyProfile> profile;
  int fired = 0;
  {
    BusyView view;
    picked = view.picked;
    profile = view.profile;
    view.host.during(event.event, [&] {
      if (++fired == 1) action.act(view);
    });
    use(view.host);
    use(view.host);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    view.host.release();
    view.host.close();
    EXPECT_EQ(view.host.sinkReferences(), 0);
  }
  EXPECT_GE(fired, 1);
  EXPECT_EQ(referencesOf(picked.Get()), 1U) << "the view is gone and has let go of its objects";
  EXPECT_EQ(referencesOf(profile.Get()), 1U);
}

INSTANTIATE_TEST_SUITE_P(All, View2DReentrancy,
                         testing::Combine(testing::ValuesIn(kEvents), testing::ValuesIn(kActions)),
                         [](const auto& tested) {
                           return std::string(std::get<0>(tested.param).name) +
                                  std::get<1>(tested.param).name;
                         });

/// What foreign objects do while the view asks them something else than to draw.
class View2DForeignCode : public HostTest, public testing::WithParamInterface<ActionCase> {};

TEST_P(View2DForeignCode, AnActiveTraceMayDoIt) {
  BusyView view;
  const auto profile = view.profile;
  profile->during = [&, first = true]() mutable {
    if (std::exchange(first, false)) GetParam().act(view);
  };
  view.host.send(WM_LBUTTONDOWN, 60, 50, MK_LBUTTON);
  view.host.send(WM_LBUTTONUP, 60, 50);
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_P(View2DForeignCode, AMeasuredObjectMayDoIt) {
  BusyView view;
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
  BusyView view;
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
  BusyView view;
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

INSTANTIATE_TEST_SUITE_P(All, View2DForeignCode, testing::ValuesIn(kActions),
                         [](const auto& tested) { return std::string(tested.param.name); });

class View2DLifetime : public HostTest {};

TEST_F(View2DLifetime, ThirtyTwoViewsLiveAtOnce) {
  std::vector<std::unique_ptr<BusyView>> views;
  for (int i = 0; i < 32; ++i) views.push_back(std::make_unique<BusyView>(SIZE{80, 40 + i}));
  for (const auto& view : views) {
    view->host->put_Mode(1);
    view->host.drag({{10, 10}, {30, 20}, {20, 25}});
    view->host.wheel(-120);
    view->host.paint();
  }
  for (size_t i = 0; i < views.size(); ++i) {
    View2DHost& host = views[i]->host;
    host.look({-5, 5, -2, 2});
    EXPECT_EQ(host.scene().count(kRed), 80 * (40 + int(i)));
  }
  // In another order than they came.
  for (size_t i = 0; i < views.size(); i += 2) views[i].reset();
  for (size_t i = 1; i < views.size(); i += 2) {
    const size_t before = views[i]->picked->modes2D.size();
    views[i]->host.paint();
    EXPECT_GT(views[i]->picked->modes2D.size(), before);
  }
}

TEST_F(View2DLifetime, ManyViewsOneAfterTheOther) {
  for (int i = 0; i < 60; ++i) {
    ComPtr<ForeignObject> picked;
    LONG sinkReferences = -1;
    HWND window = nullptr;
    {
      BusyView view({60, 40});
      picked = view.picked;
      window = view.host.window();
      view.host.paint();
      EXPECT_GE(picked->modes2D.size(), 1U);
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

TEST_F(View2DLifetime, AViewOutlivesItsWindow) {
  BusyView view;
  view.host.paint();
  view.host.close();
  EXPECT_FALSE(view.host.hasWindow());
  long handle = -1;
  EXPECT_EQ(view.host->get_hWnd(&handle), S_OK);
  EXPECT_EQ(handle, 0);
  EXPECT_EQ(view.host->setBackground(1, 0, 0), S_OK);
  EXPECT_EQ(view.host->put_LineAntialiasing(VARIANT_FALSE), S_OK);
  view.showGraph();
  EXPECT_EQ(view.host->initView(), S_OK);
  EXPECT_EQ(view.host->Repaint(), S_OK);
  EXPECT_EQ(view.host->RemoveAll(), S_OK);
}

}  // namespace
}  // namespace zyn::test
