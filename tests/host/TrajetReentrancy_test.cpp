// Foreign code runs beside a tool path: objects that draw before it, listeners of its loading,
// arrays of scripts that it reads, tools and scales of other components. They change, load, replace
// and release it meanwhile. The pictures after that are those of what the path has become.
#include <algorithm>
#include <cmath>

#include "support/Apartments_win.h"
#include "support/Drawer_win.h"
#include "support/EventListener_win.h"
#include "support/Graph_win.h"
#include "support/Groups_win.h"
#include "support/Outer_win.h"
#include "support/Pickable_win.h"
#include "support/ScriptArray_win.h"
#include "support/Thrower_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 60;

using Numbers = std::vector<double>;

/// Points all over the picture.
_variant_t pointsAround(std::size_t count) {
  Numbers points;
  for (std::size_t i = 0; i < count; ++i) {
    const auto turn = static_cast<double>(i);
    points.insert(points.end(), {30 + 25 * std::sin(0.7 * turn), 30 + 25 * std::cos(1.3 * turn),
                                 10 * std::sin(turn)});
  }
  return doubleArray(points);
}

ComPtr<IZYNGLTrajet> makePath() {
  auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->setPoints(pointsAround(40)), "setPoints");
  require(path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get()), "Outil");
  require(path->put_ModeCouleur(2), "ModeCouleur");
  require(path->put_Position(200), "Position");
  return path;
}

std::string program(int lines) {
  std::string text = "G1 F600\n";
  for (int i = 1; i <= lines; ++i) {
    text += "X" + std::to_string(i % 50) + " Y" + std::to_string(i % 7 + 2) + "\n";
  }
  return text;
}

// --- objects that draw before it -----------------------------------------------------------------

class TrajetReentrancy : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  TrajetReentrancy() {
    writeFile(file_, program(100));
    require(path_->put_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
    const auto frame = createObject<IZYNGLTrajet>(kPathProgId);
    require(frame->setPoints(doubleArray({0, 0, -60, kSize, kSize, 60})), "setPoints");
    require(frame->setTypeVisible(1, VARIANT_FALSE), "setTypeVisible");
    drawer_->add(frame.Get());
    drawer_->add(root_.Get());
    if (GetParam().isView) drawer_->call(L"AddSelection", {root_.Get()});
    addTo(root_.Get(), caller_->dispatch());
    addTo(root_.Get(), group_.Get());
    addTo(group_.Get(), path_.Get());
    drawer_->lookAtPlane();
    drawer_->frame();
  }

  /// Draws, exports and picks, each with the caller acting at its first call.
  void use(const std::function<void()>& action) {
    int done = 0;
    const auto arm = [&] {
      done = 0;
      caller_->onDraw3D = caller_->onDraw2D = [&](int) {
        if (++done == 1) action();
        return S_OK;
      };
    };
    arm();
    drawer_->frame();
    EXPECT_GE(done, 1);
    arm();
    const TempFolder folder;
    EXPECT_EQ(drawer_->call(L"Exporter", {bstr(folder.file(L"a.png"))}).code(), S_OK);
    EXPECT_GE(done, 1);
    if (GetParam().isView && !GetParam().isPlane) {
      arm();
      EXPECT_EQ(drawer_->call(L"getSelectionUnderMouse", {20L, 20L}).code(), S_OK);
      arm();
      EXPECT_EQ(drawer_->call(L"getSelectionRectangle", {5L, 5L, 55L, 55L, 0L}).code(), S_OK);
    }
    caller_->onDraw3D = caller_->onDraw2D = nullptr;
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }

  /// The next frame is that of a copy, which has been drawn by nobody.
  void expectFrameOfNow() {
    const Image found = drawer_->frame();
    ComPtr<IDispatch> copy;
    require(path_->Copie(&copy), "Copie");
    require(group_->RemoveAll(), "RemoveAll");
    addTo(group_.Get(), copy.Get());
    EXPECT_EQ(drawer_->frame(), found);
    require(group_->RemoveAll(), "RemoveAll");
    addTo(group_.Get(), path_.Get());
  }

  const TempFolder folder_;
  const std::filesystem::path file_ = folder_.file(L"part.nc");
  std::unique_ptr<Drawer> drawer_ = GetParam().make(kSize, kSize);
  ComPtr<IZYNGLTrajet> path_ = makePath();
  ComPtr<IZYNEchelleCouleurs> scale_ = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  ComPtr<ForeignObject> caller_ = makeForeign<ForeignObject>();
  ComPtr<IZYNGroupe> root_ = makeGroup();
  ComPtr<IZYNGroupe> group_ = makeGroup({}, translation(0, 60, 0) * scaling(1, -1, 1));
};

TEST_P(TrajetReentrancy, ChangingItsPoints) {
  std::size_t count = 3;
  use([&] {
    count = count == 3 ? 9000 : 3;
    require(path_->setPoints(pointsAround(count)), "setPoints");
    require(path_->AjouterPoints(pointsAround(5), leftOut(), leftOut(), leftOut()),
            "AjouterPoints");
  });
  expectFrameOfNow();
  use([&] { require(path_->setPoints(doubleArray({})), "setPoints"); });
  expectFrameOfNow();
}

TEST_P(TrajetReentrancy, ChangingItsLookAndPlace) {
  long calls = 0;
  use([&] {
    ++calls;
    require(path_->setTypes(doubleArray(Numbers(39, static_cast<double>(calls % 6)))), "setTypes");
    require(path_->put_ModeCouleur(calls % 3), "ModeCouleur");
    require(path_->put_Position(50.0 * static_cast<double>(calls)), "Position");
    require(path_->put_EpaisseurTrait(static_cast<double>(calls)), "EpaisseurTrait");
    require(path_->setTypeVisible(calls % 6, VARIANT_FALSE), "setTypeVisible");
    require(path_->put_VitesseAvance(100.0 * static_cast<double>(calls)), "VitesseAvance");
    require(path_->putref_Outil(nullptr), "Outil");
  });
  expectFrameOfNow();
}

TEST_P(TrajetReentrancy, LoadingAndCopyingIt) {
  use([&] {
    ComPtr<IDispatch> copy;
    EXPECT_EQ(path_->Copie(&copy), S_OK);
    EXPECT_EQ(path_->ChargerGCode(bstr(file_)), S_OK);
    EXPECT_EQ(path_->put_PositionLigne(50), S_OK);
  });
  expectFrameOfNow();
}

TEST_P(TrajetReentrancy, DrawingIt) {
  use([&] {
    const auto drawable = queryFor<IGLDraw>(path_.Get());
    EXPECT_EQ(GetParam().isPlane ? drawable->Draw2D(0) : drawable->Draw3D(0), S_OK);
    require(path_->put_Position(77), "Position");
    EXPECT_EQ(GetParam().isPlane ? drawable->Draw2D(1) : drawable->Draw3D(1), S_OK);
  });
  expectFrameOfNow();
}

TEST_P(TrajetReentrancy, RemovingAndReplacingIt) {
  use([&] {
    require(group_->Remove(path_.Get()), "Remove");
    EXPECT_EQ(referencesOf(path_.Get()), 1U);
    path_ = makePath();
    addTo(group_.Get(), path_.Get());
  });
  expectFrameOfNow();
}

TEST_P(TrajetReentrancy, ReleasingIt) {
  use([&] {
    if (path_) require(group_->RemoveAll(), "RemoveAll");
    path_.Reset();
  });
  drawer_->frame();
}

TEST_P(TrajetReentrancy, ChangingAScaleThatAMeshAndAPathShare) {
  const auto mesh = makeMesh({5, 5, -5, 55, 5, -5, 30, 55, -5}, {0, 1, 2});
  require(mesh->setValeurs(doubleArray({-500, 4000, 20})), "setValeurs");
  require(mesh->put_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
  addTo(root_.Get(), mesh.Get());
  addTo(root_.Get(), scale_.Get());
  require(path_->setVitesses(doubleArray(Numbers(39, 3000))), "setVitesses");
  require(path_->put_ModeCouleur(1), "ModeCouleur");
  const Image before = drawer_->frame();
  double most = 0;
  require(scale_->get_Maximum(&most), "Maximum");
  EXPECT_EQ(most, 4000);
  long calls = 0;
  use([&] {
    ++calls;
    require(scale_->put_NbPaliers(calls), "NbPaliers");
    require(scale_->put_Palette(calls % 5), "Palette");
    require(scale_->put_Minimum(calls % 2 == 0 ? -5 : 2), "Minimum");
    require(scale_->put_Auto(VARIANT_TRUE), "Auto");
    require(path_->put_EchelleCouleurs(calls % 2 == 0 ? scale_.Get() : nullptr), "EchelleCouleurs");
    require(mesh->setValeurs(doubleArray({1, 2, 9000.0 * static_cast<double>(calls)})),
            "setValeurs");
    require(path_->setVitesses(doubleArray(Numbers(39, 100.0 * static_cast<double>(calls)))),
            "setVitesses");
  });
  require(path_->put_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
  EXPECT_NE(drawer_->frame(), before);
  expectFrameOfNow();
  require(scale_->get_Maximum(&most), "Maximum");
  EXPECT_EQ(most, 9000.0 * static_cast<double>(calls));
}

INSTANTIATE_TEST_SUITE_P(All, TrajetReentrancy, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

// --- listeners of its loading --------------------------------------------------------------------

class TrajetProgress : public HostTest {
 protected:
  TrajetProgress() {
    writeFile(file_, program(kLines));
    writeFile(other_, "G1 X5 F100\n");
    require(events_.attach(path_.Get()), "Vue");
    require(view_->Add(path_.Get(), 0), "Add");
  }

  CallResult load() const { return callMethod(path_.Get(), L"ChargerGCode", {bstr(file_)}); }
  static long segmentsOf(IZYNGLTrajet* path) {
    long count = -1;
    require(path->get_NbSegments(&count), "NbSegments");
    return count;
  }
  /// Has the listener do something when it is told for the time of that number.
  void during(std::size_t call, const std::function<HRESULT(const DISPPARAMS&)>& act) {
    listener_.parts.clear();
    listener_.onEvent = [this, call, act](DISPID, const DISPPARAMS& arguments, VARIANT*) {
      return listener_.parts.size() == call ? act(arguments) : S_OK;
    };
  }

  static constexpr int kLines = 20000;
  TempFolder folder_;
  const std::filesystem::path file_ = folder_.file(L"part.nc");
  const std::filesystem::path other_ = folder_.file(L"other.nc");
  ComPtr<IZYNGLTrajet> path_ = makePath();
  HeardEvents events_;
  EventListener& listener_ = events_.listener();
  View3DHost view_{{kSize, kSize}};
};

TEST_F(TrajetProgress, IsToldInOrderWithTheNameOfTheFile) {
  ASSERT_EQ(load().code(), S_OK);
  EXPECT_GE(listener_.parts.size(), 3U);
  EXPECT_LE(listener_.parts.size(), 101U);
  EXPECT_TRUE(std::ranges::is_sorted(listener_.parts));
  EXPECT_EQ(listener_.parts.front(), 0);
  EXPECT_EQ(listener_.parts.back(), 1);
  EXPECT_EQ(listener_.what, file_.wstring());
}

TEST_F(TrajetProgress, StoppedAnywhereNothingHasChanged) {
  ASSERT_EQ(load().code(), S_OK);
  const std::size_t calls = listener_.parts.size();
  require(path_->setPoints(pointsAround(8)), "setPoints");
  require(path_->put_Position(30), "Position");
  view_.paint();
  const Image before = view_.shown();
  for (const std::size_t call : {std::size_t{1}, (1 + calls) / 2, calls}) {
    during(call,
           [](const DISPPARAMS& arguments) { return stopWork(kProgression, arguments, nullptr); });
    const CallResult stopped = load();
    EXPECT_EQ(stopped.code(), E_ABORT) << call;
    EXPECT_NE(stopped.description.find(file_.filename()), std::wstring::npos);
    EXPECT_EQ(listener_.parts.size(), call);
    EXPECT_EQ(segmentsOf(path_.Get()), 7);
    double place = 0;
    require(path_->get_Position(&place), "Position");
    EXPECT_EQ(place, 30);
    view_.paint();
    EXPECT_EQ(view_.shown(), before);
  }
}

TEST_F(TrajetProgress, ListenersMayUseThePath) {
  const std::vector<std::function<void()>> actions = {
      [&] { require(path_->setPoints(pointsAround(3)), "setPoints"); },
      [&] {
        require(path_->AjouterPoints(pointsAround(3), leftOut(), leftOut(), leftOut()), "append");
      },
      [&] { EXPECT_EQ(load().code(), S_OK); },
      [&] { EXPECT_EQ(path_->ChargerGCode(bstr(other_)), S_OK); },
      [&] { EXPECT_TRUE(DeleteFileW(file_.c_str())) << "what has been read is not kept open"; },
      [&] { require(path_->put_CodesInconnus(1), "CodesInconnus"); },
      [&] { require(path_->put_Tolerance(5), "Tolerance"); },
      [&] { require(path_->putref_Outil(nullptr), "Outil"); },
      [&] { require(path_->put_ModeCouleur(1), "ModeCouleur"); },
      [&] { view_.paint(); },
      [&] { require(view_->RemoveAll(), "RemoveAll"); },
      [&] {
        ComPtr<IDispatch> copy;
        require(path_->Copie(&copy), "Copie");
        path_ = queryFor<IZYNGLTrajet>(copy.Get());
      },
      [&] { require(events_.attach(createObject<IDispatch>(kMeshProgId).Get()), "Vue"); },
      [&] {
        events_.unadvise();
        events_.release();
        view_->RemoveAll();
        path_.Reset();
      }};
  for (const auto& action : actions) {
    writeFile(file_, program(kLines));
    bool isDone = false;
    during(2, [&](const DISPPARAMS&) {
      if (!std::exchange(isDone, true)) action();
      return S_OK;
    });
    const ComPtr<IZYNGLTrajet> loading = path_;
    require(events_.attach(loading.Get()), "Vue");
    EXPECT_EQ(callMethod(loading.Get(), L"ChargerGCode", {bstr(file_)}).code(), S_OK);
    EXPECT_TRUE(isDone);
    EXPECT_EQ(segmentsOf(loading.Get()), kLines) << "what was loaded, whatever it was meanwhile";
    view_.paint();
  }
}

TEST_F(TrajetProgress, TheLastReferenceMayGoMeanwhile) {
  const ULONG outside = referencesOf(path_.Get());
  require(view_->RemoveAll(), "RemoveAll");
  EXPECT_EQ(outside, 2U);
  IZYNGLTrajet* const raw = path_.Get();
  during(3, [&](const DISPPARAMS&) {
    path_.Reset();
    return S_OK;
  });
  EXPECT_EQ(raw->ChargerGCode(bstr(file_)), S_OK);
  EXPECT_GE(listener_.parts.size(), 4U) << "it was loaded to its end";
}

TEST_F(TrajetProgress, WhatAListenerChangedStaysWhereItStopsToo) {
  during(2, [&](const DISPPARAMS& arguments) {
    require(path_->setPoints(pointsAround(6)), "setPoints");
    return stopWork(kProgression, arguments, nullptr);
  });
  EXPECT_EQ(load().code(), E_ABORT);
  EXPECT_EQ(segmentsOf(path_.Get()), 5);
}

TEST_F(TrajetProgress, GoesOnWhereAListenerThrowsOrFails) {
  Thrower thrower({IID_IDispatch}, [] { throw std::runtime_error("a host's own error"); });
  DWORD cookie = 0;
  require(events_.point()->Advise(thrower.as<IUnknown>(), &cookie), "Advise");
  listener_.onEvent = [](DISPID, const DISPPARAMS&, VARIANT*) { return E_FAIL; };
  EXPECT_EQ(load().code(), S_OK);
  EXPECT_GE(thrower.raised(), 3);
  EXPECT_EQ(segmentsOf(path_.Get()), kLines);
  require(events_.point()->Unadvise(cookie), "Unadvise");
}

/// A scale of a path, a mesh and a map of a graph spans all of them, whoever changes while a
/// program is loaded.
TEST_F(TrajetProgress, AScaleIsSharedWithAMeshAndAMap) {
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  const auto mesh = makeMesh({5, 5, -5, 55, 5, -5, 30, 55, -5}, {0, 1, 2});
  require(mesh->setValeurs(doubleArray({-500, 0, 20})), "setValeurs");
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  require(map->setValeurs(doubleTable(2, 2)), "setValeurs");
  require(path_->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(mesh->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(map->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(path_->put_ModeCouleur(1), "ModeCouleur");
  View2DHost plotted({kSize, kSize});
  const Graph graph(plotted.get());
  require(graph.add(map.Get()), "Ajouter");
  require(graph->put_Actif(VARIANT_TRUE), "Actif");
  require(view_->Add(mesh.Get(), 0), "Add");
  const auto range = [&] {
    double least = 0;
    double most = 0;
    require(scale->get_Minimum(&least), "Minimum");
    require(scale->get_Maximum(&most), "Maximum");
    return std::pair(least, most);
  };
  EXPECT_EQ(range(), (std::pair{-500.0, 1000.0}));
  std::vector<std::pair<double, double>> seen;
  listener_.onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
    const auto count = static_cast<double>(seen.size());
    require(mesh->setValeurs(doubleArray({-count, 2000 + count, 0})), "setValeurs");
    view_.paint();
    plotted.paint();
    require(map->putref_EchelleCouleurs(seen.size() % 2 == 0 ? nullptr : scale.Get()),
            "EchelleCouleurs");
    require(scale->put_Palette(static_cast<long>(seen.size()) % 5), "Palette");
    seen.push_back(range());
    return S_OK;
  };
  ASSERT_EQ(load().code(), S_OK);
  ASSERT_GE(seen.size(), 3U);
  for (std::size_t i = 0; i < seen.size(); ++i) {
    const auto count = static_cast<double>(i);
    EXPECT_EQ(seen[i], (std::pair{-count, 2000 + count}));
  }
  listener_.onEvent = nullptr;
  require(mesh->setValeurs(doubleArray({})), "setValeurs");
  require(map->putref_EchelleCouleurs(nullptr), "EchelleCouleurs");
  EXPECT_EQ((range().first + range().second) / 2, 600) << "about the only feed of the program";
  view_.paint();
  plotted.paint();
}

// --- arrays of scripts ---------------------------------------------------------------------------

class TrajetScriptArrays : public HostTest {
 protected:
  _variant_t array(const Numbers& numbers, const std::function<void()>& asked) {
    return _variant_t(makeForeign<ScriptArray>(numbers, asked)->dispatch());
  }
  long segments() const {
    long count = -1;
    require(path_->get_NbSegments(&count), "NbSegments");
    return count;
  }

  ComPtr<IZYNGLTrajet> path_ = makePath();
};

TEST_F(TrajetScriptArrays, MayChangeThePathWhileTheyAreRead) {
  const auto shrink = [&] { require(path_->setPoints(pointsAround(3)), "setPoints"); };
  for (const wchar_t* const member : {L"setTypes", L"setVitesses", L"setLignes"}) {
    require(path_->setPoints(pointsAround(40)), "setPoints");
    EXPECT_EQ(callMethod(path_.Get(), member, {array(Numbers(39, 1), shrink)}).code(), E_INVALIDARG)
        << "too many for what there is now";
    EXPECT_EQ(segments(), 2);
    require(path_->setPoints(pointsAround(40)), "setPoints");
    EXPECT_EQ(callMethod(path_.Get(), member, {array({1, 2}, shrink)}).code(), S_OK);
  }
}

TEST_F(TrajetScriptArrays, MayEmptyThePathThatIsAppendedTo) {
  const auto empty = [&] { require(path_->setPoints(doubleArray({})), "setPoints"); };
  const _variant_t two = doubleArray({1, 1});
  EXPECT_EQ(callMethod(path_.Get(), L"AjouterPoints",
                       {doubleArray({1, 1, 1, 2, 2, 2}), array({3, 4}, empty)})
                .code(),
            E_INVALIDARG)
      << "one segment less on an empty path";
  EXPECT_EQ(segments(), 0);
  require(path_->setPoints(pointsAround(40)), "setPoints");
  EXPECT_EQ(callMethod(path_.Get(), L"AjouterPoints",
                       {doubleArray({1, 1, 1, 2, 2, 2}), leftOut(), leftOut(), array({3}, empty)})
                .code(),
            S_OK);
  EXPECT_EQ(segments(), 1);
}

TEST_F(TrajetScriptArrays, MayReleaseThePath) {
  IZYNGLTrajet* const raw = path_.Get();
  const _variant_t last = array({1, 2, 3, 4, 5, 6}, [&] { path_.Reset(); });
  EXPECT_EQ(raw->setPoints(last), S_OK);
}

// --- tools and scales of other components --------------------------------------------------------

/// Runs code of its own whenever it is asked for an interface that it does not have.
class CallingBack final : public ForeignBase<CallingBack, IDispatch> {
 public:
  std::function<void()> asked;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    const HRESULT own = ForeignBase::QueryInterface(iid, out);
    if (own == E_NOINTERFACE && asked) std::exchange(asked, nullptr)();
    return own;
  }
};

class TrajetForeignTools : public HostTest {
 protected:
  IDispatch* toolOf(IZYNGLTrajet* path) const {
    ComPtr<IDispatch> tool;
    require(path->get_Outil(&tool), "Outil");
    return tool.Get();
  }

  ComPtr<IZYNGLTrajet> path_ = makePath();
  ComPtr<IZYNOutil> tool_ = createObject<IZYNOutil>(kToolProgId);
};

TEST_F(TrajetForeignTools, MayDoAnythingWhenTheyAreAsked) {
  const std::function<void()> actions[] = {
      [&] { require(path_->putref_Outil(tool_.Get()), "Outil"); },
      [&] { require(path_->setPoints(doubleArray({})), "setPoints"); },
      [&] { require(path_->putref_EchelleCouleurs(nullptr), "EchelleCouleurs"); }};
  for (const auto& action : actions) {
    for (const wchar_t* const property : {L"Outil", L"EchelleCouleurs"}) {
      const auto foreign = makeForeign<CallingBack>();
      foreign->asked = action;
      EXPECT_EQ(putReference(path_.Get(), property, _variant_t(foreign->dispatch())).code(),
                E_INVALIDARG);
    }
  }
  EXPECT_EQ(toolOf(path_.Get()), tool_.Get()) << "what was put meanwhile stays";
  const auto foreign = makeForeign<CallingBack>();
  IZYNGLTrajet* const raw = path_.Get();
  foreign->asked = [&] { path_.Reset(); };
  EXPECT_EQ(raw->putref_Outil(foreign->dispatch()), E_INVALIDARG);
}

/// A tool that another object shows as its own is a tool, and tells of its changes.
TEST_F(TrajetForeignTools, MayBeOursInside) {
  const auto outer = makeForeign<Outer>();
  outer->inner = queryFor<IUnknown>(tool_.Get());
  ASSERT_EQ(path_->putref_Outil(outer->dispatch()), S_OK);
  EXPECT_EQ(toolOf(path_.Get()), outer->dispatch());
  OffscreenScene scene(kSize, kSize);
  scene.add(path_.Get());
  const Image before = scene.render();
  require(tool_->put_Diametre(30), "Diametre");
  EXPECT_NE(scene.render(), before);
  const ULONG held = referencesOf(outer->dispatch());
  require(path_->putref_Outil(nullptr), "Outil");
  EXPECT_LT(referencesOf(outer->dispatch()), held);
}

TEST_F(TrajetForeignTools, AToolOfSeveralPathsOutlivesThem) {
  ComPtr<IDispatch> copied;
  std::vector<ComPtr<IZYNGLTrajet>> paths;
  for (int i = 0; i < 20; ++i) {
    paths.push_back(makePath());
    require(paths.back()->putref_Outil(tool_.Get()), "Outil");
  }
  require(paths[3]->putref_Outil(tool_.Get()), "Outil");  // the same again
  EXPECT_EQ(referencesOf(tool_.Get()), 1U + 2 * 20);
  std::swap(paths[0], paths[7]);
  while (!paths.empty()) {
    require(tool_->put_Diametre(static_cast<double>(paths.size())), "Diametre");
    paths.pop_back();
  }
  EXPECT_EQ(referencesOf(tool_.Get()), 1U);
  require(tool_->put_Diametre(3), "Diametre");
}

// --- apartments ----------------------------------------------------------------------------------

TEST(TrajetThreads, EachLoadsAndDrawsItsOwn) {
  const TempFolder folder;
  const auto file = folder.file(L"part.nc");
  writeFile(file, program(3000));
  const auto draw = [&] {
    const auto path = makePath();
    require(path->ChargerGCode(bstr(file)), "ChargerGCode");
    require(path->put_PositionLigne(1500), "PositionLigne");
    OffscreenScene scene(kSize, kSize);
    scene.add(path.Get());
    return scene.render();
  };
  Image expected;
  {
    const Apartment apartment;
    expected = draw();
  }
  EXPECT_LT(expected.count(kBackground), kSize * kSize);
  inApartments(4, [&](int) {
    for (int round = 0; round < 4; ++round) EXPECT_EQ(draw(), expected);
  });
}

TEST(TrajetThreads, APathAnswersAnotherApartment) {
  const Apartment apartment;
  const TempFolder folder;
  const auto file = folder.file(L"part.nc");
  writeFile(file, program(300));
  const auto path = makePath();
  Parcel<IZYNGLTrajet> parcel(path.Get());
  serveWhile([&] {
    const auto proxy = parcel.open();
    EXPECT_EQ(proxy->ChargerGCode(bstr(file)), S_OK);
    EXPECT_EQ(proxy->put_PositionLigne(20), S_OK);
    _variant_t lines;
    EXPECT_EQ(proxy->getLignes(&lines), S_OK);
    EXPECT_EQ(namesIn(lines).size(), 300U);
    EXPECT_EQ(proxy->setTypes(doubleArray({1, 2})), E_INVALIDARG);
    ComPtr<IDispatch> tool;
    EXPECT_EQ(proxy->get_Outil(&tool), S_OK);
    EXPECT_EQ(proxy->putref_Outil(tool.Get()), S_OK);
    ComPtr<IDispatch> copy;
    EXPECT_EQ(proxy->Copie(&copy), S_OK);
    EXPECT_EQ(callMethod(copy.Get(), L"setTypeVisible", {1L, false}).code(), S_OK);
  });
  double length = 0;
  require(path->get_Position(&length), "Position");
  EXPECT_GT(length, 0);
}

}  // namespace
}  // namespace zyn::test
