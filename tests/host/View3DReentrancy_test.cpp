#include <array>
#include <memory>

#include "support/Pickable_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr Bounds kScene = {-10, 10, -5, 5, -5, 5};

/// A view with a scene that can be picked everywhere.
class BusyView {
 public:
  explicit BusyView(SIZE size = {400, 200}) : host(size) {
    host.addBox(kScene);
    picked = makePickable({1}, {-10, 10, -5, 5, 0});
    require(host->Add(picked->dispatch(), 0), "Add");
    require(host->AddSelection(picked->dispatch()), "AddSelection");
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
  }

  View3DHost host;
  ComPtr<ForeignObject> picked;
};

struct EventCase {
  const char* name;
  ViewEvent event;
};
struct ActionCase {
  const char* name;
  void (*act)(BusyView&);
};
using Case = std::tuple<EventCase, ActionCase>;

void PrintTo(const EventCase& event, std::ostream* out) { *out << event.name; }
void PrintTo(const ActionCase& action, std::ostream* out) { *out << action.name; }

const EventCase kEvents[] = {
    {"MouseDown", kMouseDown}, {"MouseMove", kMouseMove}, {"MouseSelection", kMouseSelection},
    {"MouseOn", kMouseOn},     {"MouseUp", kMouseUp},     {"WindowSelection", kWindowSelection}};

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
     }},
    {"TakesItsSinkOff", [](BusyView& view) { view.host.unadvise(); }},
    {"ResizesTheView",
     [](BusyView& view) {
       view.host.resize({0, 0});
       view.host.resize({123, 77});
     }},
    {"MovesTheCamera",
     [](BusyView& view) {
       view.host->initView(0);
       view.host->LastView();
       view.host->LastView();
       view.host->Zoom(2);
     }},
    {"ChangesTheMode",
     [](BusyView& view) {
       view.host->put_MouseMode(4);
       view.host->put_WindowSelection(VARIANT_FALSE);
       view.host->put_MiddleButtonActive(VARIANT_FALSE);
     }},
    {"LetsGoOfTheMouse", [](BusyView&) { ReleaseCapture(); }},
    {"PaintsAndPicks",
     [](BusyView& view) {
       view.host.paint();
       _variant_t names;
       view.host->getSelectionUnderMouse(5, 5, &names);
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

class View3DReentrancy : public HostTest, public testing::WithParamInterface<Case> {
 protected:
  /// Everything that a user does to a view, so that every event is fired; a view that has lost its
  /// window hears nothing more.
  static void useMouse(const View3DHost& host) {
    host.move(50, 50);
    host.send(WM_LBUTTONDOWN, 60, 50, MK_LBUTTON);
    host.move(90, 80, MK_LBUTTON);
    host.send(WM_LBUTTONUP, 120, 90);
    host.send(WM_MBUTTONDOWN, 60, 50, MK_MBUTTON);
    host.move(90, 80, MK_MBUTTON);
    host.send(WM_MBUTTONUP, 120, 90);
    host.wheel(120);
    host.send(WM_RBUTTONDOWN, 60, 50, MK_RBUTTON);
    host.send(WM_RBUTTONUP, 60, 50);
    host.send(WM_MOUSELEAVE, 0, 0);
    host.paint();
  }
};

TEST_P(View3DReentrancy, TheHandlerMayDoIt) {
  const auto& [event, action] = GetParam();
  ComPtr<ForeignObject> picked;
  int fired = 0;
  {
    BusyView view;
    picked = view.picked;
    view.host->put_MouseMode(-1);
    view.host->put_WindowSelection(VARIANT_TRUE);
    view.host.during(event.event, [&] {
      if (++fired == 1) action.act(view);
    });
    useMouse(view.host);
    useMouse(view.host);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    view.host.release();
    view.host.close();
    EXPECT_EQ(view.host.sinkReferences(), 0);
  }
  EXPECT_GE(fired, 1);
  EXPECT_EQ(referencesOf(picked.Get()), 1U) << "the view is gone and has let go of its objects";
}

INSTANTIATE_TEST_SUITE_P(All, View3DReentrancy,
                         testing::Combine(testing::ValuesIn(kEvents), testing::ValuesIn(kActions)),
                         [](const auto& tested) {
                           return std::string(std::get<0>(tested.param).name) +
                                  std::get<1>(tested.param).name;
                         });

class View3DLifetime : public HostTest {};

TEST_F(View3DLifetime, ThirtyTwoViewsLiveAtOnce) {
  std::vector<std::unique_ptr<BusyView>> views;
  for (int i = 0; i < 32; ++i) views.push_back(std::make_unique<BusyView>(SIZE{80, 40 + i}));
  for (int round = 0; round < 3; ++round) {
    for (const auto& view : views) {
      view->host.drag({{10, 10}, {30, 20}, {20, 25}});
      view->host.wheel(-120);
      view->host.paint();
    }
  }
  for (size_t i = 0; i < views.size(); ++i) {
    View3DHost& host = views[i]->host;
    const auto painted = makePainted({-100, 100, -100, 100, 1}, kRed);
    host->VueXYp(0);
    host->put_DrawCoordSys(VARIANT_FALSE);
    host->Add(painted->dispatch(), 0);
    EXPECT_EQ(host.scene().count(kRed), 80 * (40 + int(i)));
  }
  // In another order than they came.
  for (size_t i = 0; i < views.size(); i += 2) views[i].reset();
  for (size_t i = 1; i < views.size(); i += 2) {
    views[i]->host.paint();
    EXPECT_FALSE(views[i]->picked->modes.empty());
  }
}

TEST_F(View3DLifetime, ManyViewsOneAfterTheOther) {
  for (int i = 0; i < 100; ++i) {
    ComPtr<ForeignObject> picked;
    LONG sinkReferences = -1;
    HWND window = nullptr;
    {
      BusyView view({60, 40});
      picked = view.picked;
      window = view.host.window();
      view.host.paint();
      EXPECT_GE(picked->modes.size(), 1U);
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

TEST_F(View3DLifetime, AViewOutlivesItsWindow) {
  BusyView view;
  view.host.paint();
  view.host.close();
  EXPECT_FALSE(view.host.hasWindow());
  long handle = -1;
  EXPECT_EQ(view.host->get_hWnd(&handle), S_OK);
  EXPECT_EQ(handle, 0);
  EXPECT_EQ(view.host->setBackground(1, 0, 0), S_OK);
  EXPECT_EQ(view.host->put_LineAntialiasing(VARIANT_TRUE), S_OK);
  EXPECT_EQ(view.host->RotateH(30), S_OK);
  EXPECT_EQ(view.host->Repaint(), S_OK);
  _variant_t names;
  EXPECT_EQ(view.host->getSelectionUnderMouse(100, 50, &names), S_OK);
  EXPECT_EQ(names.vt, VT_EMPTY);
  EXPECT_EQ(view.host->RemoveAll(), S_OK);
}

TEST_F(View3DLifetime, ASinkMayComeAndGoDuringAnEvent) {
  BusyView view;
  CallScript script;
  ScriptedEventSink late(script, DIID__IZYNVue3DEvents);
  ComPtr<IConnectionPoint> source;
  require(queryFor<IConnectionPointContainer>(view.host.get())
              ->FindConnectionPoint(DIID__IZYNVue3DEvents, source.ReleaseAndGetAddressOf()),
          "FindConnectionPoint");
  DWORD cookie = 0;
  int fired = 0;
  view.host.during(kMouseMove, [&] {
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
