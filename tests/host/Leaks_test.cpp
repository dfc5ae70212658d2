// Every class made, used and released again and again: nothing of it stays, and both DLLs go when
// the last object has gone, and come back.
#include <algorithm>
#include <functional>
#include <map>

#include "support/ControlTest_win.h"
#include "support/DisplayLists_gl.h"
#include "support/EventListener_win.h"
#include "support/GlCanvas_win.h"
#include "support/Graph_win.h"
#include "support/Pictures_win.h"
#include "support/ProcessUsage_win.h"
#include "support/Scene_win.h"
#include "support/ServerModule_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr WORD kCycles = 1000;
constexpr double kAllowedMb = 6;
constexpr int kSize = 64;
/// Of a bitmap context no less than 7 bytes a pixel would be lost at a time.
constexpr double kAllowedMbOfContexts = kCycles * (7.0 * kSize * kSize / 1e6) / 3;

/// What scene objects are drawn in: both views and both bitmap contexts.
class Stage {
 public:
  Stage() {
    watcher_->onDraw3D = [this](int) { return noteLists(); };
    watcher_->onDraw2D = watcher_->onDraw3D;
    view3D_->initView(0);
    context2D_.add(group2D_.Get());
  }

  void show(IDispatch* object) {
    for (IDispatch* const drawn : {object, watcher_->dispatch()}) {
      view3D_->Add(drawn, 0);
      view3D_->AddSelection(drawn);
      view2D_->Add(drawn, 0);
      view2D_->AddSelection(drawn);
      context3D_->Add(drawn, 0);
      group2D_->Add(drawn, 0);
    }
    // A picture takes longer than all the rest.
    if (++shown_ % 8 == 0) {
      view3D_.paint();
      view3D_.move(shown_ % 40, 10);
      view2D_.paint();
      ComPtr<IPictureDisp> picture;
      context3D_->GetPictureDisp(picture.ReleaseAndGetAddressOf());
      context2D_->GetPictureDisp(picture.ReleaseAndGetAddressOf());
    }
    context3D_->RemoveAll();
    group2D_->RemoveAll();
    view3D_->RemoveAll();
    view3D_->RemoveAllSelection();
    view2D_->RemoveAll();
    view2D_->RemoveAllSelection();
  }

  /// The display lists that the pictures of the last rounds found, of all rendering contexts.
  std::map<HGLRC, int> lists() {
    counting_ = true;
    const auto nothing = makeForeign<ForeignObject>();
    for (int i = 0; i < 8; ++i) show(nothing->dispatch());
    counting_ = false;
    return lists_;
  }

 private:
  HRESULT noteLists() {
    GLint mode = 0;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    if (counting_ && mode == GL_RENDER) lists_[wglGetCurrentContext()] = countLists();
    return S_OK;
  }

  View3DHost view3D_{{kSize, kSize}};
  View2DHost view2D_{{kSize, kSize}};
  OffscreenScene context3D_{kSize, kSize};
  OffscreenGraph context2D_{kSize, kSize};
  /// In the 2D bitmap context, from which nothing can be removed.
  ComPtr<IZYNGroupe> group2D_ = createObject<IZYNGroupe>(kGroupProgId);
  ComPtr<ForeignObject> watcher_ = makeForeign<ForeignObject>();
  int shown_ = 0;
  bool counting_ = false;
  std::map<HGLRC, int> lists_;
};

// --- scene objects -------------------------------------------------------------------------------

ComPtr<IDispatch> makeSomeTriangle() {
  return makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
}

ComPtr<IDispatch> makeText() {
  const auto text = createObject<IZYNGLTexte>(kTextProgId);
  text->put_Texte(_bstr_t(L"12.5"));
  text->put_TypeCotation(3);
  text->setPointsCotation(0, 0, 0, 1, 1, 0);
  return text;
}

/// Another text each time, in one of more fonts than are kept.
ComPtr<IDispatch> makeUnicodeText() {
  static int count = 0;
  const std::wstring number = std::to_wstring(++count % 40);
  const auto text = createObject<IZYNGLTexte2>(kTextProgId);
  text->put_Unicode(VARIANT_TRUE);
  text->put_Texte(_bstr_t((L"\x394 \x4E2D \x5D0 " + number).c_str()));
  text->put_Police(_bstr_t((L"Family " + number).c_str()));
  text->put_Fond(VARIANT_TRUE);
  return text;
}

ComPtr<IDispatch> makeSprite() {
  const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
  sprite->putref_Picture(pictureOfBitmap24(makeQuarters(4, 4)).Get());
  return sprite;
}

ComPtr<IDispatch> makeTrace() {
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  trace->setPoints(doubleArray({0, 1, 2}), doubleArray({0, 1, 0}));
  return trace;
}

ComPtr<IDispatch> makeScale() {
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  scale->put_Titre(_bstr_t(L"scale"));
  scale->setCouleurs(doubleArray({0, 0, 0, 1, 0, 0, 1, 1, 1}));
  return scale;
}

ComPtr<IDispatch> makeGroup() {
  const auto inner = createObject<IZYNGroupe>(kGroupProgId);
  for (const auto make : {makeSomeTriangle, makeText, makeSprite, makeTrace}) {
    require(inner->Add(make().Get(), 0), "Add");
  }
  inner->put_Opacite(0.5);
  const auto outer = createObject<IZYNGroupe>(kGroupProgId);
  require(outer->Add(inner.Get(), 0), "Add");
  require(outer->Add(inner.Get(), 1), "Add");
  require(outer->put_Transformation(doubleArray({2, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})),
          "Transformation");
  outer->put_NomSelection(5);
  outer->put_Nom(_bstr_t(L"group"));
  return outer;
}

ComPtr<IDispatch> makeSomeMesh() {
  const auto mesh = makeMesh({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}, {0, 1, 2, 0, 2, 3});
  mesh->put_StyleRendu(2);
  mesh->setValeurs(doubleArray({0, 1, 2, 3}));
  mesh->put_EchelleCouleurs(makeScale().Get());
  return mesh;
}

/// By speeds, with a tool.
ComPtr<IDispatch> makeSomePath() {
  const auto path = createObject<IZYNGLTrajet>(kPathProgId);
  path->setPoints(doubleArray({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}));
  path->setTypes(doubleArray({0, 1, 7}));
  path->put_ModeCouleur(1);
  path->put_EchelleCouleurs(makeScale().Get());
  path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get());
  path->put_Position(2);
  return path;
}

struct SceneClass {
  const char* name;
  ComPtr<IDispatch> (*make)();
};
void PrintTo(const SceneClass& tested, std::ostream* out) { *out << tested.name; }

class SceneObjectLeaks : public HostTest, public testing::WithParamInterface<SceneClass> {};

TEST_P(SceneObjectLeaks, NothingStays) {
  Stage stage;
  for (int i = 0; i < 64; ++i) stage.show(GetParam().make().Get());
  const auto before = stage.lists();
  EXPECT_EQ(before.size(), 4U) << "of both views and both bitmap contexts";
  expectNoGrowth(kCycles, kAllowedMb, [&] { stage.show(GetParam().make().Get()); });
  EXPECT_EQ(stage.lists(), before) << "display lists are left";
}

INSTANTIATE_TEST_SUITE_P(
    All, SceneObjectLeaks,
    testing::Values(SceneClass{"Triangle", makeSomeTriangle}, SceneClass{"Texte", makeText},
                    SceneClass{"UnicodeTexte", makeUnicodeText}, SceneClass{"Bitmap", makeSprite},
                    SceneClass{"Polyligne", makeTrace}, SceneClass{"EchelleCouleurs", makeScale},
                    SceneClass{"Groupe", makeGroup}, SceneClass{"Maillage", makeSomeMesh},
                    SceneClass{"Trajet", makeSomePath}),
    [](const auto& tested) { return std::string(tested.param.name); });

// --- classes that are not drawn by views ---------------------------------------------------------

void useCote() {
  const auto cote = createObject<IZYNGLCote>(kCoteProgId);
  cote->put_Texte(_bstr_t(L"12.5"));
  cote->Draw();
}

void useByName(const wchar_t* progId, const wchar_t* member) {
  const auto object = createObject<IDispatch>(progId);
  auto* name = const_cast<LPOLESTR>(member);
  DISPID id = 0;
  require(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
  DISPPARAMS none = {};
  _variant_t value;
  require(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value,
                         nullptr, nullptr),
          "Invoke");
}

struct SimpleClass {
  const char* name;
  void (*use)();
};
void PrintTo(const SimpleClass& tested, std::ostream* out) { *out << tested.name; }

void useCamera() {
  const auto camera = createObject<IZYNCamera>(kCameraProgId);
  camera->put_Texte(_bstr_t(L"no camera"));
  camera->setOeil(1, 2, 3);
  ComPtr<IDispatch> copy;
  camera->Copie(&copy);
  ComPtr<IDispatch> between;
  camera->Interpole(copy.Get(), 0.5, &between);
  _bstr_t text;
  camera->get_Texte(text.GetAddress());
}

/// Series of every kind, a map and drawable objects, by axes of their own.
void plot(const Graph& graph) {
  for (const long kind : {0, 1, 2, 3, 4}) {
    const auto series = makeSeries({0, 1, 2}, {1, 3, 2});
    series->put_Nom(_bstr_t((L"\x3B1 " + std::to_wstring(kind)).c_str()));
    series->put_TypeTrace(kind);
    series->put_Marqueur(kind + 1);
    series->setErreurs(doubleArray({1, 1, 1}), leftOut());
    series->AjouterPoints(_variant_t(3.0), _variant_t(4.0));
    series->put_Capacite(3);
    ComPtr<IDispatch> axis;
    require(graph->AjouterAxe(kind % 2 == 0 ? 3 : 1, &axis), "AjouterAxe");
    require(graph.add(series.Get(), leftOut(), _variant_t(axis.Get())), "Ajouter");
  }
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  require(map->setValeurs(doubleTable(4, 5)), "setValeurs");
  require(map->put_EchelleCouleurs(makeScale().Get()), "EchelleCouleurs");
  require(graph.add(map.Get()), "Ajouter");
  require(graph.add(makeTrace().Get()), "Ajouter");
  require(graph.add(makeUnicodeText().Get()), "Ajouter");
  require(graph->put_Titre(_bstr_t(L"title")), "Titre");
  require(graph.cursors()->put_Visible(VARIANT_TRUE), "Visible");
  require(graph->put_Actif(VARIANT_TRUE), "Actif");
}

/// What belongs to graphs, without one.
void useSeries() {
  const auto series = makeSeries({0, 1, 2}, {1, 3, 2});
  series->setErreurs(doubleArray({1, 1, 1}), doubleArray({}));
  series->setPoints(_variant_t(L"no number"), doubleArray({1}));
  _variant_t numbers;
  series->PlusProche(1, 1, &numbers);
  numbers.Clear();
  series->get_Statistiques(&numbers);
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  map->setValeurs(doubleTable(4, 5));
  map->put_EchelleCouleurs(makeScale().Get());
}

void useEvents() {
  HeardEvents events;
  for (const wchar_t* const progId :
       {kContextProgId, kContext2DProgId, kMeshProgId, kPathProgId, kVue3DProgId, kVue2DProgId}) {
    require(events.attach(createObject<IDispatch>(progId).Get()), "Vue");
  }
  // These end before what they are attached to.
  const auto mesh = createObject<IZYNGLMaillage>(kMeshProgId);
  require(events.attach(mesh.Get()), "Vue");
  require(HeardEvents().attach(mesh.Get()), "Vue");
  mesh->Charger(_bstr_t(L"no such file"));
}

void usePath() {
  const auto path = createObject<IZYNGLTrajet>(kPathProgId);
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(path->setPoints(doubleArray({0, 0, 0, 1, 2, 3, 4, 5, 6})), "setPoints");
  require(path->putref_Outil(tool.Get()), "Outil");
  require(path->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(path->put_ModeCouleur(1), "ModeCouleur");
  ComPtr<IDispatch> copy;
  require(path->Copie(&copy), "Copie");
  path->ChargerGCode(_bstr_t(L"no such file"));
}

const SimpleClass kSimpleClasses[] = {
    {"Trajet", usePath},
    {"Evenements", useEvents},
    {"Cote", useCote},
    {"Camera", useCamera},
    {"Serie", useSeries},
    {"Vue2DChild", [] { createObject<IDispatch>(L"ZYNVue.ZYNVue2DChild"); }},
    {"Rectangle", [] { useByName(kRectangleProgId, L"Largeur"); }},
    {"Box2D", [] { useByName(L"ZYNModeleGeom.Box2D", L"DX"); }},
    {"Box3D", [] { useByName(kBox3DProgId, L"DZ"); }},
    {"Point", [] { useByName(L"ZYNModeleGeom.Point", L"x"); }},
    {"Couleur", [] { useByName(L"ZYNModeleGeom.Couleur", L"R"); }},
};

class SimpleLeaks : public HostTest, public testing::WithParamInterface<SimpleClass> {};

TEST_P(SimpleLeaks, NothingStays) {
  const GlCanvas canvas(32, 32);
  for (int i = 0; i < kCycles; ++i) GetParam().use();  // OpenGL keeps memory for the like
  const int before = countLists();
  expectNoGrowth(kCycles, kAllowedMb, GetParam().use);
  EXPECT_EQ(countLists(), before) << "display lists are left";
}

INSTANTIATE_TEST_SUITE_P(All, SimpleLeaks, testing::ValuesIn(kSimpleClasses),
                         [](const auto& tested) { return std::string(tested.param.name); });

// --- bitmap contexts -----------------------------------------------------------------------------

class ContextLeaks : public HostTest, public testing::WithParamInterface<OffscreenClass> {};

TEST_P(ContextLeaks, NothingStays) {
  const auto triangle = makeSomeTriangle();
  const auto text = makeText();
  int made = 0;
  expectNoGrowth(kCycles, kAllowedMbOfContexts, [&] {
    const auto context = GetParam().make(kSize, kSize);
    context->add(triangle.Get());
    if (++made % 16 == 0) context->add(text.Get());  // fonts take long
    ComPtr<IPictureDisp> picture;
    context->GetPictureDisp(picture.GetAddressOf());
  });
  EXPECT_EQ(referencesOf(triangle.Get()), 1U);
  EXPECT_EQ(referencesOf(text.Get()), 1U);
}

INSTANTIATE_TEST_SUITE_P(Both, ContextLeaks, testing::ValuesIn(offscreenClasses()), nameOf);

class GraphLeaks : public HostTest {};

TEST_F(GraphLeaks, NothingStaysOfWhatAViewShowed) {
  View2DHost view({kSize, kSize});
  const Graph graph(view.get());
  expectNoGrowth(kCycles / 4, kAllowedMb, [&] {
    std::vector<ComPtr<IDispatch>> axes(2);
    for (auto& axis : axes) require(graph->AjouterAxe(0, &axis), "AjouterAxe");
    const auto series = makeSeries({0, 1}, {0, 1});
    require(graph.add(series.Get(), _variant_t(axes[0].Get())), "Ajouter");
    require(graph->put_Actif(VARIANT_TRUE), "Actif");
    view.paint();
    require(graph->RetirerTout(), "RetirerTout");
    for (const auto& axis : axes) require(graph->RetirerAxe(axis.Get()), "RetirerAxe");
    view.paint();
    EXPECT_EQ(referencesOf(series.Get()), 1U);
    for (const auto& axis : axes) EXPECT_EQ(referencesOf(axis.Get()), 1U);
  });
}

TEST_F(GraphLeaks, NothingStaysOfAnActiveContext) {
  const auto series = makeSeries({0, 1}, {0, 1});
  int made = 0;
  const auto live = [&] {
    OffscreenGraph context(kSize, kSize);
    const Graph graph(context.get());
    plot(graph);
    require(graph.add(series.Get()), "Ajouter");
    if (++made % 16 != 0) return;  // a picture takes longer than all the rest
    ComPtr<IPictureDisp> picture;
    require(context->GetPictureDisp(&picture), "GetPictureDisp");
  };
  for (int i = 0; i < 64; ++i) live();  // fonts and OpenGL take their memory
  expectNoGrowth(kCycles / 2, kAllowedMbOfContexts / 2, live);
  EXPECT_EQ(referencesOf(series.Get()), 1U);
}

// --- views ---------------------------------------------------------------------------------------

struct ViewClass {
  const char* name;
  const wchar_t* progId;
  const IID& events;
  void (*fill)(IUnknown* view);
};
void PrintTo(const ViewClass& tested, std::ostream* out) { *out << tested.name; }

void fill3D(IUnknown* control) {
  const auto view = queryFor<IZYNVue3D>(control);
  view->Add(makeText().Get(), 0);
  view->Add(makeSomeTriangle().Get(), 0);
}

void fill2D(IUnknown* control) {
  const auto view = queryFor<IZYNVue2D>(control);
  view->Add(makeText().Get(), 0);
  require(view->GraphView(0, 0, 0, _bstr_t(L"Temps"), _bstr_t(L"s"), nullptr, 0, 10, 2, 1, 1,
                          nullptr, nullptr, nullptr, 0, 10, 2, 1, 1),
          "GraphView");
}

void fillPlot(IUnknown* control) { plot(Graph(control)); }

const ViewClass kViews[] = {
    {"View3D", kVue3DProgId, DIID__IZYNVue3DEvents, fill3D},
    {"View2D", kVue2DProgId, DIID__IZYNVue2DEvents, fill2D},
    {"Plot", kVue2DProgId, DIID__IZYNVue2DEvents, fillPlot},
};

class ViewLeaks : public ControlTest, public testing::WithParamInterface<ViewClass> {
 protected:
  ViewLeaks() : ControlTest(GetParam().progId, GetParam().events) {}

  /// Shows, draws and ends a view in one of the ways in which hosts do, some without a scene.
  void live(int number) {
    const int way = number % 4;
    dropControl();
    makeControl();
    show();
    if (number % 3 == 0) GetParam().fill(control.Get());
    UpdateWindow(window());
    if (way == 0) control->Close(OLECLOSE_NOSAVE);
    if (way == 1) control->SetClientSite(nullptr);
    if (way == 2) DestroyWindow(window());
    dropControl();
  }
};

TEST_P(ViewLeaks, NothingStays) {
  int lives = 0;
  expectNoGrowth(kCycles, 8, [&] { live(++lives); });
  EXPECT_EQ(GetWindow(container.window(), GW_CHILD), nullptr);
}

INSTANTIATE_TEST_SUITE_P(All, ViewLeaks, testing::ValuesIn(kViews),
                         [](const auto& tested) { return std::string(tested.param.name); });

// --- the DLLs ------------------------------------------------------------------------------------

class Reloading : public HostTest {
 protected:
  /// One object of each class, used and released.
  static void useEveryClass() {
    Stage stage;
    for (const auto make :
         {makeSomeTriangle, makeText, makeSprite, makeTrace, makeScale, makeGroup, makeSomeMesh}) {
      for (int i = 0; i < 8; ++i) stage.show(make().Get());
    }
    for (const SimpleClass& simple : kSimpleClasses) simple.use();
    for (const OffscreenClass& context : offscreenClasses()) {
      context.make(16, 16)->add(makeText().Get());
    }
    OffscreenGraph context(kSize, kSize);
    plot(Graph(context.get()));
    context.renderBytes();
  }

  static void useAndUnload() {
    useEveryClass();
    for (const wchar_t* const name : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
      EXPECT_NE(GetModuleHandleW(name), nullptr);
    }
    for (int i = 0; i < 3; ++i) CoFreeUnusedLibrariesEx(0, 0);
    for (const wchar_t* const name : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
      EXPECT_EQ(GetModuleHandleW(name), nullptr) << "it has not gone";
    }
  }
};

TEST_F(Reloading, BothDllsGoAndComeBack) {
  constexpr int kRounds = 12;
  constexpr int kBatches = 3;
  const auto megabytesOf = [](const std::function<void()>& round) {
    const double before = currentCommitMb();
    for (int i = 0; i < kRounds; ++i) round();
    return currentCommitMb() - before;
  };
  double withoutUnloading = 0;
  {
    const ServerModule views(L"ZYNVue.dll");
    const ServerModule geometry(L"ZYNModeleGeom.dll");
    for (int i = 0; i < 3; ++i) useEveryClass();
    withoutUnloading = megabytesOf(useEveryClass);  // some systems' rendering contexts keep memory
  }
  for (int i = 0; i < 3; ++i) useAndUnload();
  const ProcessUsage before = currentUsage();
  // What a reload keeps, each batch keeps; what the system takes at once for its heaps, one does.
  double leastGrowth = megabytesOf(useAndUnload);
  for (int i = 1; i < kBatches; ++i) leastGrowth = std::min(leastGrowth, megabytesOf(useAndUnload));
  EXPECT_LT(leastGrowth, std::max(withoutUnloading, 0.0) + 4);
  const ProcessUsage after = currentUsage();
  EXPECT_LT(after.freshGdiIndex, before.freshGdiIndex + kBatches * kRounds);
  EXPECT_EQ(after.windows, before.windows);
  // Each time a DLL is loaded the compiler's runtime in it keeps four handles; the numbers of
  // handles go in steps of four.
  EXPECT_LE(after.freshHandle, before.freshHandle + 4 * 4 * 2 * kBatches * kRounds + 40);
}

}  // namespace
}  // namespace zyn::test
