// What graphs show and tell of is foreign code that may do anything meanwhile: handlers of their
// events, objects that they draw, objects and arrays that they ask. Whatever it does, nothing
// breaks, and the graph can be made what it was. Their parts outlive views and contexts.
#include <utility>

#include "support/Drawer_win.h"
#include "support/EventListener_win.h"
#include "support/Graph_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 240;

/// A graph with two series, a map, an object of another component, and an axis of its own.
class World {
 public:
  explicit World(const DrawerClass& which, int width = kWidth, int height = kHeight)
      : drawer(which.make(width, height)), graph(drawer->dispatch()) {
    require(map->setValeurs(doubleTable(2, 3)), "setValeurs");
    series->put_NomSelection(7);
    restore();
  }

  /// Shows again what was shown at first.
  void restore() {
    require(graph->RetirerTout(), "RetirerTout");
    for (const auto& axis : added) require(graph->RetirerAxe(axis.Get()), "RetirerAxe");
    added.clear();
    if (extra) require(graph->RetirerAxe(extra.Get()), "RetirerAxe");
    require(graph->put_Titre(nullptr), "Titre");
    require(graph.cursors()->put_Visible(VARIANT_TRUE), "Visible");
    require(graph.cursors()->put_Position(0, 2), "Position");
    for (const long side : {0, 1}) {
      require(graph.axis(side)->put_TypeEchelle(0), "TypeEchelle");
      require(graph.axis(side)->setPlage(0, 10), "setPlage");
    }
    require(series->setPoints(doubleArray({0, 5, 10}), doubleArray({1, 5, 9})), "setPoints");
    require(series->put_Visible(VARIANT_TRUE), "Visible");
    ComPtr<IDispatch> axis;
    require(graph->AjouterAxe(3, &axis), "AjouterAxe");
    extra = queryFor<IZYNAxe>(axis.Get());
    require(graph.add(map.Get()), "Ajouter");
    require(graph.add(series.Get()), "Ajouter");
    require(graph.add(other.Get(), leftOut(), extra.Get()), "Ajouter");
    require(graph.add(caller->dispatch()), "Ajouter");
    require(graph->put_Actif(VARIANT_TRUE), "Actif");
  }

  void during(std::function<void()> action) const {
    caller->onDraw2D = [action = std::move(action)](int) {
      action();
      return S_OK;
    };
  }

  std::unique_ptr<Drawer> drawer;
  Graph graph;
  ComPtr<IZYNSerie> series = makeSeries({}, {});
  ComPtr<IZYNSerie> other = makeSeries({1, 2, 9}, {4, 3, 5});
  ComPtr<IZYNCarte> map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  ComPtr<IZYNAxe> extra;
  std::vector<ComPtr<IDispatch>> added;  ///< axes, by actions
  ComPtr<ForeignObject> caller = makeForeign<ForeignObject>();
};

/// A series by an axis of its own, which comes after all others.
void addSeriesByNewAxis(World& world) {
  ComPtr<IDispatch> axis;
  require(world.graph->AjouterAxe(1, &axis), "AjouterAxe");
  world.added.push_back(axis);
  const auto added = makeSeries({0, 10}, {0, 1});
  added->put_NomSelection(9);
  require(world.graph.add(added.Get(), leftOut(), axis.Get()), "Ajouter");
}

void removeExtraAxis(World& world) {
  world.graph->RetirerTout();
  world.graph->RetirerAxe(std::exchange(world.extra, nullptr).Get());
}

void readEverything(const World& world) {
  world.graph.area();
  for (const long side : {0, 1, 2, 3}) labelsOf(world.graph.axis(side).Get());
  _variant_t nearest;
  require(world.series->PlusProche(1, 1, &nearest), "PlusProche");
}

struct Action {
  const char* name;
  void (*act)(World& world);
};
void PrintTo(const Action& action, std::ostream* out) { *out << action.name; }

const Action kActions[] = {
    {"Nothing", [](World&) {}},
    {"Deactivates", [](World& world) { world.graph->put_Actif(VARIANT_FALSE); }},
    {"SwitchesOffAndOn",
     [](World& world) {
       world.graph->put_Actif(VARIANT_FALSE);
       world.graph->put_Actif(VARIANT_TRUE);
     }},
    {"RemovesEverything", [](World& world) { world.graph->RetirerTout(); }},
    {"RemovesItself", [](World& world) { world.graph->Retirer(world.caller->dispatch()); }},
    {"RemovesSeries", [](World& world) { world.graph->Retirer(world.series.Get()); }},
    {"RemovesAnAxis", removeExtraAxis},
    {"AddsAnAxis", [](World& world) { addSeriesByNewAxis(world); }},
    {"AppendsPoints",
     [](World& world) {
       world.series->AjouterPoints(doubleArray({11, 12}), doubleArray({1, 2}));
       world.series->put_Capacite(2);
       world.series->put_Capacite(0);
     }},
    {"TakesPointsAway",
     [](World& world) { world.series->setPoints(doubleArray({}), doubleArray({})); }},
    {"ChangesRanges",
     [](World& world) {
       world.graph.axis(0)->setPlage(-5, 3);
       world.graph.axis(1)->put_TypeEchelle(1);
       world.graph->Ajuster();
     }},
    {"HidesCursors", [](World& world) { world.graph.cursors()->put_Visible(VARIANT_FALSE); }},
    {"ReadsEverything", [](World& world) { readEverything(world); }},
    {"Exports",
     [](World& world) {
       const TempFolder folder;
       world.drawer->call(L"Exporter", {bstr(folder.file(L"a.png"))});
       world.drawer->call(L"Exporter", {bstr(folder.file(L"a.svg"))});
     }},
    {"PumpsMessages", [](World&) { ScriptedContainer::pump(); }},
    {"LosesItsWindow",
     [](World& world) {
       if (world.drawer->view()) world.drawer->view()->deactivate();
     }},
    {"Closes",
     [](World& world) {
       if (world.drawer->view()) world.drawer->view()->close();
     }},
};

std::vector<DrawerClass> planes() {
  std::vector<DrawerClass> planes;
  for (const DrawerClass& each : drawerClasses()) {
    if (each.isPlane) planes.push_back(each);
  }
  return planes;
}

DrawerClass planeView() {
  for (const DrawerClass& each : planes()) {
    if (each.isView) return each;
  }
  throw std::runtime_error("no 2D view");
}

/// What an action has left of the world can be made what it was.
void expectRestored(World& world, const Image& wanted) {
  ViewHost* const view = world.drawer->view();
  if (view && !view->hasWindow()) {
    EXPECT_NO_THROW(readEverything(world));
    return;
  }
  world.restore();
  EXPECT_EQ(world.drawer->frame(), wanted);
}

// --- drawn objects -------------------------------------------------------------------------------

class DrawnInGraphe : public HostTest,
                      public testing::WithParamInterface<std::tuple<DrawerClass, Action>> {
 protected:
  const DrawerClass& plane() const { return std::get<0>(GetParam()); }

  /// Does it once, in a frame.
  void drawOnce(World& world) const {
    bool isDone = false;
    world.during([&] {
      if (!std::exchange(isDone, true)) std::get<1>(GetParam()).act(world);
    });
    try {
      world.drawer->frame();
    } catch (const std::runtime_error&) {  // of a window that is gone
    }
    EXPECT_TRUE(isDone);
    world.caller->onDraw2D = {};
  }
};

TEST_P(DrawnInGraphe, AnEntryMayDoAnything) {
  World world(plane());
  const Image wanted = world.drawer->frame();
  drawOnce(world);
  expectRestored(world, wanted);
}

TEST_P(DrawnInGraphe, AnObjectOfTheDrawListMayDoAnything) {
  World world(plane());
  const Image wanted = world.drawer->frame();
  require(world.graph->Retirer(world.caller->dispatch()), "Retirer");
  world.drawer->add(world.caller->dispatch());
  drawOnce(world);
  expectRestored(world, wanted);
}

std::string nameOfBoth(const testing::TestParamInfo<std::tuple<DrawerClass, Action>>& chosen) {
  return std::string(std::get<0>(chosen.param).name) + std::get<1>(chosen.param).name;
}

INSTANTIATE_TEST_SUITE_P(All, DrawnInGraphe,
                         testing::Combine(testing::ValuesIn(planes()), testing::ValuesIn(kActions)),
                         nameOfBoth);

// --- events --------------------------------------------------------------------------------------

class EventsOfGraphe : public HostTest, public testing::WithParamInterface<Action> {
 protected:
  EventsOfGraphe() { require(events_.attach(world_.drawer->dispatch()), "Vue"); }

  ViewHost& view() { return *world_.drawer->view(); }

  /// Has the first event of this kind do it, then lets `cause` fire such events.
  void expectSurvived(DISPID event, const std::function<void()>& cause) {
    const Image wanted = world_.drawer->frame();
    bool isDone = false;
    events_.listener().onEvent = [&](DISPID fired, const DISPPARAMS&, VARIANT*) {
      if (fired == event && !std::exchange(isDone, true)) GetParam().act(world_);
      return S_OK;
    };
    try {
      cause();
    } catch (const std::runtime_error&) {  // of a window that is gone
    }
    EXPECT_TRUE(isDone);
    events_.listener().onEvent = {};
    expectRestored(world_, wanted);
  }

  std::array<int, 2> placeOf(double x, double y) const {
    double left = 0;
    double top = 0;
    require(world_.graph.axis(0)->Pixel(x, &left), "Pixel");
    require(world_.graph.axis(1)->Pixel(y, &top), "Pixel");
    return {static_cast<int>(left), static_cast<int>(top)};
  }

  World world_{planeView()};
  HeardEvents events_;
};

TEST_P(EventsOfGraphe, HandlersOfAxeChangeMayDoAnything) {
  expectSurvived(kAxeChange, [&] {
    world_.extra->setPlage(1, 2);
    world_.graph.axis(0)->setPlage(1, 2);
    world_.drawer->frame();
  });
}

TEST_P(EventsOfGraphe, HandlersOfCurseurDeplaceMayDoAnything) {
  const auto [x, y] = placeOf(2, 8);
  expectSurvived(kCurseurDeplace, [&, x = x, y = y] {
    view().drag({{x, y}, {x + 20, y}, {x + 40, y}});
    world_.drawer->frame();
  });
}

TEST_P(EventsOfGraphe, HandlersOfSerieCliqueeMayDoAnything) {
  const auto place = placeOf(5, 5);
  expectSurvived(kSerieCliquee, [&] {
    view().drag({place});
    world_.drawer->frame();
  });
}

TEST_P(EventsOfGraphe, HandlersOfClicksInTheLegendMayDoAnything) {
  world_.series->put_Nom(_bstr_t(L"series"));
  require(world_.graph.legend()->put_Visible(VARIANT_TRUE), "Visible");
  require(world_.graph.legend()->put_Position(4), "Position");
  const auto area = world_.graph.area();
  expectSurvived(kSerieCliquee, [&] {
    view().drag({{static_cast<int>(area[0]) + 30, static_cast<int>(area[1]) + 18}});
    world_.drawer->frame();
  });
}

INSTANTIATE_TEST_SUITE_P(All, EventsOfGraphe, testing::ValuesIn(kActions),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

class GrapheCallbacks : public HostTest {};

/// All parts of a picture show the graph as it was when it began.
TEST_F(GrapheCallbacks, ObjectsMayChangeTheGraphBetweenThePartsOfAPicture) {
  for (const DrawerClass& plane : planes()) {
    if (plane.isView) continue;
    World world(plane, 64, 17000);
    int drawn = 0;
    world.during([&] {
      if (++drawn > 1) return;
      addSeriesByNewAxis(world);
      world.graph->Retirer(world.series.Get());
    });
    world.drawer->frame();
    EXPECT_GT(drawn, 1) << "drawn in several parts";
  }
}

/// As many names as make the selection overflow, so that it is drawn again.
TEST_F(GrapheCallbacks, ObjectsMayChangeTheGraphWhileTheyArePicked) {
  World world(planeView());
  world.drawer->frame();
  const auto picked = makeForeign<ForeignObject>();
  int drawn = 0;
  picked->onDraw2D = [&](int) {
    for (GLuint name = 0; name < 3000; ++name) {
      glPushName(name);
      glRectd(-1000, -1000, 1000, 1000);
      glPopName();
    }
    if (++drawn == 1) addSeriesByNewAxis(world);
    return S_OK;
  };
  world.drawer->call(L"AddSelection", {picked->dispatch()});
  const auto area = world.graph.area();
  world.drawer->view()->send(WM_LBUTTONDBLCLK, static_cast<int>(area[0] + area[2]) / 2,
                             static_cast<int>(area[1] + area[3]) / 2);
  EXPECT_GT(drawn, 1);
}

TEST_F(GrapheCallbacks, DetachingEndsTheEvents) {
  World world(planeView());
  HeardEvents events;
  require(events.attach(world.drawer->dispatch()), "Vue");
  int told = 0;
  events.listener().onEvent = [&](DISPID event, const DISPPARAMS&, VARIANT*) {
    told += event == kAxeChange ? 1 : 0;
    events.release();
    return S_OK;
  };
  for (const long side : {0, 1, 2}) world.graph.axis(side)->setPlage(20, 30);
  world.drawer->frame();
  EXPECT_EQ(told, 1);
}

// --- what is asked -------------------------------------------------------------------------------

/// A drawable object that does something each time when it is asked for an interface.
class Asked final : public ForeignBase<Asked, IDispatch, IGLDraw> {
 public:
  std::function<void()> onQuery;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (const auto action = std::exchange(onQuery, {})) {
      action();
      onQuery = action;
    }
    return ForeignBase::QueryInterface(iid, out);
  }
  STDMETHODIMP Draw3D(int) override { return S_OK; }
  STDMETHODIMP Draw2D(int) override { return S_OK; }
  STDMETHODIMP GetBox2D(IDispatch** box) override {
    *box = nullptr;
    return S_OK;
  }
  STDMETHODIMP GetBox3D(IDispatch** box) override { return GetBox2D(box); }
  STDMETHODIMP GetParam(IDispatch*, double*) override { return E_NOTIMPL; }

 private:
  ~Asked() override = default;
  friend ForeignBase;
};

class AskedByGraphe : public HostTest {
 protected:
  AskedByGraphe() { asked_->onQuery = nullptr; }

  World world_{planeView()};
  ComPtr<Asked> asked_ = makeForeign<Asked>();
};

TEST_F(AskedByGraphe, ObjectsThatAddThemselvesAreShownOnce) {
  const long before = valueOf(world_.graph.get(), &IZYNGraphe::get_Count);
  asked_->onQuery = [&] { world_.graph.add(asked_->dispatch()); };
  EXPECT_EQ(world_.graph.add(asked_->dispatch()), E_INVALIDARG);
  asked_->onQuery = nullptr;
  EXPECT_EQ(valueOf(world_.graph.get(), &IZYNGraphe::get_Count), before + 1);
  EXPECT_EQ(world_.graph->Retirer(asked_->dispatch()), S_OK);
  EXPECT_EQ(world_.graph->Retirer(asked_->dispatch()), E_INVALIDARG);
}

TEST_F(AskedByGraphe, ObjectsThatEmptyTheGraphAreFoundOrNot) {
  require(world_.graph.add(asked_->dispatch()), "Ajouter");
  asked_->onQuery = [&] { world_.graph->RetirerTout(); };
  EXPECT_EQ(world_.graph->Retirer(asked_->dispatch()), E_INVALIDARG);
  EXPECT_EQ(world_.graph.add(world_.series.Get()), S_OK);
  EXPECT_EQ(world_.graph.add(asked_->dispatch()), S_OK);
  EXPECT_EQ(world_.graph->Retirer(world_.other.Get()), E_INVALIDARG);
  asked_->onQuery = nullptr;
  EXPECT_EQ(valueOf(world_.graph.get(), &IZYNGraphe::get_Count), 1);
}

TEST_F(AskedByGraphe, AxesThatGoMeanwhileAreRefused) {
  require(world_.graph->RetirerTout(), "RetirerTout");
  const ComPtr<IZYNAxe> axis = world_.extra;
  asked_->onQuery = [&] { world_.graph->RetirerAxe(axis.Get()); };
  EXPECT_EQ(world_.graph.add(asked_->dispatch(), leftOut(), axis.Get()), E_INVALIDARG);
  asked_->onQuery = nullptr;
  EXPECT_EQ(valueOf(world_.graph.get(), &IZYNGraphe::get_Count), 0);
  EXPECT_EQ(world_.graph.add(asked_->dispatch(), leftOut(), asked_->dispatch()), E_INVALIDARG);
  world_.drawer->frame();
}

/// As JScript's arrays are: three ones.
class ScriptArray final : public ForeignBase<ScriptArray, IDispatch> {
 public:
  std::function<void()> onRead;

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    *ids = std::wstring(*names) == L"length" ? 1 : 2;
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    V_VT(result) = VT_I4;
    V_I4(result) = id == 1 ? 3 : 1;
    if (onRead) onRead();
    return S_OK;
  }

 private:
  ~ScriptArray() override = default;
  friend ForeignBase;
};

TEST_F(AskedByGraphe, ArraysThatChangeTheSeriesAreMeasuredAfterwards) {
  const auto array = makeForeign<ScriptArray>();
  const _variant_t ones(array->dispatch());
  ASSERT_EQ(world_.series->setErreurs(ones, leftOut()), S_OK);
  array->onRead = [&] { world_.series->setPoints(doubleArray({1, 2}), doubleArray({3, 4})); };
  EXPECT_EQ(world_.series->setErreurs(ones, leftOut()), E_INVALIDARG);
  EXPECT_EQ(world_.series->setErreursX(doubleArray({1, 1, 1}), ones), E_INVALIDARG);
  EXPECT_EQ(world_.series->setPoints(ones, ones), S_OK);
  array->onRead = [&] { world_.graph->RetirerTout(); };
  EXPECT_EQ(world_.series->AjouterPoints(ones, ones), S_OK);
  EXPECT_EQ(valueOf(world_.series.Get(), &IZYNSerie::get_NbPoints), 6);
  world_.restore();
  world_.drawer->frame();
}

TEST_F(AskedByGraphe, ReferencesThatLeadNowhereAreRefused) {
  VARIANT itself{};
  V_VT(&itself) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&itself) = &itself;
  const auto added = makeSeries({1}, {2});
  for (const VARTYPE type : {VT_VARIANT, VT_DISPATCH, VT_R8, VT_BSTR, VT_DECIMAL}) {
    VARIANT nowhere{};
    V_VT(&nowhere) = static_cast<VARTYPE>(VT_BYREF | type);
    for (const VARIANT& wrong : {nowhere, itself}) {
      EXPECT_EQ(world_.graph->Ajouter(added.Get(), wrong, leftOut()), E_INVALIDARG) << type;
      EXPECT_EQ(world_.graph->Ajouter(added.Get(), leftOut(), wrong), E_INVALIDARG) << type;
      EXPECT_EQ(world_.series->AjouterPoints(wrong, wrong), E_INVALIDARG) << type;
      EXPECT_EQ(world_.series->setErreurs(wrong, leftOut()), E_INVALIDARG) << type;
      EXPECT_EQ(world_.series->setErreursX(doubleArray({}), wrong), E_INVALIDARG) << type;
      EXPECT_EQ(world_.series->setColor(0, 0, 0, wrong), E_INVALIDARG) << type;
      EXPECT_EQ(world_.map->setValeurs(wrong), E_INVALIDARG) << type;
    }
  }
}

// --- lives ---------------------------------------------------------------------------------------

class LivesOfGraphe : public HostTest, public testing::WithParamInterface<DrawerClass> {};

TEST_P(LivesOfGraphe, PartsOutliveWhatShowedThem) {
  ComPtr<IZYNSerie> series;
  {
    auto world = std::make_unique<World>(GetParam());
    world->drawer->frame();
    series = world->series;
    const ComPtr<IZYNAxe> bottom = world->graph.axis(0);
    const ComPtr<IZYNAxe> extra = world->extra;
    const ComPtr<IZYNCurseurs> cursors = world->graph.cursors();
    const ComPtr<IZYNLegende> legend = world->graph.legend();
    ComPtr<IZYNGraphe> graph = world->graph.get();
    world->drawer.reset();
    EXPECT_NO_THROW(readEverything(*world));
    EXPECT_EQ(graph->put_Titre(_bstr_t(L"title")), S_OK);
    EXPECT_EQ(graph->put_Actif(VARIANT_FALSE), S_OK);
    double value = 0;
    EXPECT_EQ(cursors->Valeur(0, series.Get(), &value), S_OK);
    world.reset();
    EXPECT_EQ(valueOf(graph.Get(), &IZYNGraphe::get_Count), 4);
    ASSERT_EQ(graph.Reset(), 0U);  // nothing is shown any more
    EXPECT_EQ(cursors->Valeur(0, series.Get(), &value), E_INVALIDARG);
    EXPECT_EQ(rangeOf(bottom.Get()), (std::vector<double>{0, 10}));
    EXPECT_FALSE(labelsOf(bottom.Get()).empty());
    EXPECT_FALSE(labelsOf(extra.Get()).empty());
    EXPECT_EQ(bottom->put_Auto(VARIANT_TRUE), S_OK);
    EXPECT_EQ(bottom->put_TypeEchelle(2), S_OK);
    EXPECT_EQ(legend->put_Visible(VARIANT_TRUE), S_OK);
    EXPECT_EQ(cursors->put_Visible(VARIANT_TRUE), S_OK);
    EXPECT_EQ(series->AjouterPoints(doubleArray({20}), doubleArray({20})), S_OK);
    _variant_t nearest;
    EXPECT_EQ(series->PlusProche(20, 20, &nearest), S_OK);
  }
  EXPECT_EQ(referencesOf(series.Get()), 1U);
}

INSTANTIATE_TEST_SUITE_P(Both, LivesOfGraphe, testing::ValuesIn(planes()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
