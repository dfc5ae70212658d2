// Every allocation of the library's own code is made to fail once: the caller is told, nothing
// changes, nothing is lost, and the next call works.
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "support/EventListener_win.h"
#include "support/FailingAllocations_win.h"
#include "support/ForeignObject_win.h"
#include "support/Graph_win.h"
#include "support/Pickable_win.h"
#include "support/PlainCalls_win.h"
#include "support/Scene_win.h"
#include "support/ServerModule_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

/// The fonts, which take thousands of allocations, are made once in a process: these tests come
/// after.
void makeFonts() {
  OffscreenScene scene(8, 8);
  scene.add(makeText(L"a").Get());
  scene.renderBytes();
}

HMODULE library() { return GetModuleHandleW(L"ZYNVue.dll"); }

/// Something that objects are added to.
class Container {
 public:
  virtual ~Container() = default;
  virtual IDispatch* get() const = 0;
  virtual HRESULT add(IDispatch* object) = 0;
  /// How many objects it holds, if it tells.
  virtual std::optional<long> count() const { return std::nullopt; }
};

template <class Host>
class ViewContainer : public Container {
 public:
  IDispatch* get() const override { return host_.get(); }
  HRESULT add(IDispatch* object) override { return host_->Add(object, 1); }
  std::optional<long> count() const override {
    long count = -1;
    require(host_->Count(&count), "Count");
    return count;
  }

 private:
  Host host_{SIZE{40, 40}};
};

template <class Context>
class OffscreenContainer : public Container {
 public:
  IDispatch* get() const override { return context_.get(); }
  HRESULT add(IDispatch* object) override { return context_.Add(object, 1); }

 private:
  Context context_{40, 40};
};

struct ContainerClass {
  const char* name;
  std::unique_ptr<Container> (*make)();
};

template <class Made>
std::unique_ptr<Container> make() {
  return std::make_unique<Made>();
}

const ContainerClass kContainers[] = {{"View3D", make<ViewContainer<View3DHost>>},
                                      {"View2D", make<ViewContainer<View2DHost>>},
                                      {"Scene", make<OffscreenContainer<OffscreenScene>>},
                                      {"Graph", make<OffscreenContainer<OffscreenGraph>>}};

using Numbers = std::vector<double>;

void PrintTo(const ContainerClass& chosen, std::ostream* out) { *out << chosen.name; }

ComPtr<IDispatch> makeUnicodeText() {
  const auto text = queryFor<IZYNGLTexte2>(makeText(L"a label \x394 \x4E2D on a box").Get());
  require(text->put_Unicode(VARIANT_TRUE), "Unicode");
  require(text->put_Fond(VARIANT_TRUE), "Fond");
  return text;
}

ComPtr<IDispatch> makeScale() {
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(scale->put_Titre(_bstr_t(L"a title too long for a short string")), "Titre");
  require(scale->setCouleurs(doubleArray({0, 0, 0, 1, 0, 0, 1, 1, 1})), "setCouleurs");
  return scale;
}

/// With a mesh that has values, a text, and another group twice.
ComPtr<IDispatch> makeGroup() {
  const auto mesh = makeMesh({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2});
  require(mesh->setValeurs(doubleArray({0, 1, 2})), "setValeurs");
  require(mesh->put_EchelleCouleurs(makeScale().Get()), "EchelleCouleurs");
  const auto inner = createObject<IZYNGroupe>(kGroupProgId);
  require(inner->Add(mesh.Get(), 0), "Add");
  require(inner->Add(makeText(L"in a group").Get(), 1), "Add");
  const auto group = createObject<IZYNGroupe>(kGroupProgId);
  require(group->Add(inner.Get(), 0), "Add");
  require(group->Add(inner.Get(), 1), "Add");
  require(group->put_Opacite(0.5), "Opacite");
  return group;
}

/// By speeds, with a tool.
ComPtr<IDispatch> makePath() {
  const auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->setPoints(doubleArray({0, 0, 0, 1, 0, 0, 0, 1, 0})), "setPoints");
  require(path->put_ModeCouleur(1), "ModeCouleur");
  require(path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get()), "Outil");
  return path;
}

/// Objects of each kind that can be added.
std::vector<ComPtr<IDispatch>> addableObjects() {
  const auto plate = makeForeign<ForeignObject>();
  ComPtr<IDispatch> foreign;
  require(plate->QueryInterface(IID_PPV_ARGS(&foreign)), "QueryInterface");
  return {makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed),
          makeText(L"a label too long for a short string"),
          makeUnicodeText(),
          createObject<IDispatch>(kSpriteProgId),
          createObject<IDispatch>(kCoteProgId),
          createObject<IDispatch>(kCameraProgId),
          createObject<IDispatch>(L"ZYNModeleGeom.Polyligne"),
          makeMesh({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}),
          makePath(),
          makeScale(),
          makeGroup(),
          foreign};
}

/// The active graph of a view, with a title that is written in a font.
Graph makePlot(IUnknown* view) {
  Graph graph(view);
  const auto series = makeSeries({0, 1, 2, 3}, {1, 3, 2, 10});
  require(series->put_Nom(_bstr_t(L"a series with a name too long")), "Nom");
  require(series->put_Marqueur(1), "Marqueur");
  require(series->setErreurs(doubleArray({1, 1, 1, 1}), leftOut()), "setErreurs");
  require(graph.add(series.Get()), "Ajouter");
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  require(map->setValeurs(doubleTable(2, 3)), "setValeurs");
  require(graph.add(map.Get()), "Ajouter");
  require(graph->put_Titre(_bstr_t(L"a title")), "Titre");
  require(graph.cursors()->put_Visible(VARIANT_TRUE), "Visible");
  require(graph.legend()->put_Visible(VARIANT_TRUE), "Visible");
  require(graph->put_Actif(VARIANT_TRUE), "Actif");
  return graph;
}

/// A graph and all that belongs to it.
std::vector<ComPtr<IDispatch>> partsOf(const Graph& graph) {
  std::vector<ComPtr<IDispatch>> parts = {graph.get(), graph.axis(0), graph.axis(3), graph.legend(),
                                          graph.cursors()};
  for (const long i : {0, 1}) {
    ComPtr<IDispatch> shown;
    require(graph->Item(i, &shown), "Item");
    parts.push_back(shown);
  }
  return parts;
}

class OutOfMemoryTest : public HostTest {
 protected:
  OutOfMemoryTest() { makeFonts(); }
};

class ContainerOutOfMemoryTest : public OutOfMemoryTest,
                                 public testing::WithParamInterface<ContainerClass> {
 protected:
  std::unique_ptr<Container> container_ = GetParam().make();
};

TEST_P(ContainerOutOfMemoryTest, AddSaysSoAndChangesNothing) {
  const std::vector<ComPtr<IDispatch>> objects = addableObjects();
  std::uint32_t failures = 0;
  for (const auto& object : objects) {
    const std::optional<long> count = container_->count();
    const ULONG references = referencesOf(object.Get());
    FailingAllocations allocations(library());
    const HRESULT last =
        allocations.failEach([&] { return container_->add(object.Get()); },
                             [&](std::uint32_t n, HRESULT answer) {
                               ++failures;
                               EXPECT_EQ(answer, E_OUTOFMEMORY) << "allocation " << n;
                               EXPECT_EQ(referencesOf(object.Get()), references) << n;
                               EXPECT_EQ(container_->count(), count) << n;
                             });
    EXPECT_EQ(last, S_OK);
    EXPECT_EQ(referencesOf(object.Get()), references + 1);
    EXPECT_EQ(container_->count(), count ? std::optional(*count + 1) : std::nullopt);
  }
  // Not for each object: the list's elements come from a pool, which seldom asks for memory.
  EXPECT_GT(failures, 0U);
  container_.reset();
  for (const auto& object : objects) EXPECT_EQ(referencesOf(object.Get()), 1U);
}

TEST_P(ContainerOutOfMemoryTest, AddSaysSoWhenThePoolOfElementsCannotGrow) {
  constexpr ULONG kMoreThanABlock = 3000;
  const auto object = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  ULONG added = 0;
  HRESULT answer = S_OK;
  {
    const FailingImport noBlock(library(), "VirtualAlloc");
    while (answer == S_OK && added < kMoreThanABlock) {
      answer = container_->add(object.Get());
      added += answer == S_OK ? 1 : 0;
    }
  }
  EXPECT_EQ(answer, E_OUTOFMEMORY);
  EXPECT_EQ(referencesOf(object.Get()), 1 + added);
  EXPECT_EQ(container_->add(object.Get()), S_OK);
  container_.reset();
  EXPECT_EQ(referencesOf(object.Get()), 1U);
}

INSTANTIATE_TEST_SUITE_P(Containers, ContainerOutOfMemoryTest, testing::ValuesIn(kContainers),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

TEST_F(OutOfMemoryTest, EveryMemberOfEveryClass) {
  // Dialogs and messages would wait for somebody.
  const FailingImport dialogs(library(), "DialogBoxParamW");
  const FailingImport messages(library(), "MessageBoxW");
  TempFolder folder;
  View3DHost view3D({40, 40});
  View2DHost view2D({40, 40});
  OffscreenScene scene(40, 40);
  OffscreenGraph graph(40, 40);
  std::vector<ComPtr<IDispatch>> targets = addableObjects();
  targets.pop_back();
  targets.push_back(createObject<IDispatch>(L"ZYNVue.ZYNEvenements"));
  targets.push_back(createObject<IDispatch>(kToolProgId));
  View2DHost plotted({40, 40});
  const Graph plot = makePlot(plotted.get());
  for (const auto& part : partsOf(plot)) targets.push_back(part);
  for (IDispatch* target :
       std::initializer_list<IDispatch*>{view3D.get(), view2D.get(), scene.get(), graph.get()}) {
    targets.emplace_back(target);
  }
  std::size_t failures = 0;
  for (const auto& target : targets) {
    const PlainArguments plain{makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed),
                               doubleArray({0.5, 0.25, 0.75}), folder.file(L"out")};
    for (const PlainCall& call : plainCallsOf(target.Get())) {
      FailingAllocations allocations(library());
      std::vector<HRESULT> answers;
      const HRESULT withMemory =
          allocations.failEach([&] { return call(target.Get(), plain); },
                               [&](std::uint32_t, HRESULT answer) { answers.push_back(answer); });
      failures += answers.size();
      // A member may also make do without what it could not have.
      EXPECT_TRUE(std::ranges::all_of(
          answers, [&](HRESULT answer) { return answer == E_OUTOFMEMORY || answer == withMemory; }))
          << call.name << " answers " << std::hex << withMemory << " with memory, "
          << testing::PrintToString(answers) << " without";
    }
  }
  EXPECT_GT(failures, 100U);
}

/// All that a mesh is, as it can be read back: colours by the file that holds them.
Bytes stateOf(IZYNGLMaillage& mesh, const TempFolder& folder) {
  Bytes state;
  const auto append = [&](const auto& numbers) {
    for (const auto number : numbers) {
      state.push_back(static_cast<std::uint8_t>(std::lround(100 * number)));
    }
  };
  for (const wchar_t* const name : {L"state.ply", L"state.obj"}) {
    require(mesh.Enregistrer(bstr(folder.file(name))), "Enregistrer");
    const Bytes file = readFile(folder.file(name));
    state.insert(state.end(), file.begin(), file.end());
  }
  _variant_t names;
  require(mesh.getNomsFaces(&names), "getNomsFaces");
  append(namesIn(names));
  _variant_t normals;
  require(mesh.getNormales(&normals), "getNormales");
  append(doublesIn(normals));
  return state;
}

TEST_F(OutOfMemoryTest, MeshesStayAsTheyAre) {
  const TempFolder folder;
  writeFile(folder.file(L"part.obj"),
            "mtllib part.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\ng base\nusemtl a\nf 1 2 3 4\n");
  writeFile(folder.file(L"part.mtl"), "newmtl a\nKd 1 0 0\n");
  const auto mesh = makeMesh({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2, 2, 1, 0});
  require(mesh->setCouleursSommets(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})), "colours");
  require(mesh->setNomsFaces(numberArray(VT_I4, {7, 9})), "setNomsFaces");
  View3DHost view({40, 40});
  OffscreenGraph graph(40, 40);
  require(view->Add(mesh.Get(), 0), "Add");
  graph.add(mesh.Get());
  HeardEvents events;
  require(events.attach(mesh.Get()), "Vue");
  // The change is made wholly or not. Those that hear of it, or of its progress, may miss it.
  const auto call = [&](const auto& member) {
    const Bytes old = stateOf(*mesh.Get(), folder);
    std::vector<Bytes> changed;
    std::uint32_t failures = 0;
    FailingAllocations allocations(library());
    const auto check = [&](std::uint32_t n, HRESULT answer) {
      EXPECT_TRUE(answer == S_OK || answer == E_OUTOFMEMORY) << n;
      Bytes state = stateOf(*mesh.Get(), folder);
      if (answer == S_OK) {
        changed.push_back(std::move(state));
      } else {
        ++failures;
        EXPECT_TRUE(state == (changed.empty() ? old : changed.back()))
            << "changed in part by " << n;
      }
    };
    EXPECT_EQ(allocations.failEach(member, check), S_OK);
    EXPECT_GT(failures, 0U);
    const Bytes wanted = stateOf(*mesh.Get(), folder);
    EXPECT_FALSE(wanted == old) << "nothing was to change";
    for (const Bytes& state : changed) EXPECT_TRUE(state == wanted) << "not what it should be";
    view.paint();
    graph.renderBytes();
  };
  call([&] { return mesh->setSommets(doubleArray({0, 0, 1, 2, 0, 0, 0, 2, 0})); });
  call([&] { return mesh->setSommetsPartie(1, doubleArray({3, 0, 0})); });
  call([&] { return mesh->setNormales(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})); });
  call([&] { return mesh->setCouleursFaces(doubleArray({1, 0, 1, 0, 1, 1})); });
  call([&] { return mesh->setNomsFaces(numberArray(VT_I4, {1, 2})); });
  call([&] { return mesh->setFaces(numberArray(VT_I4, {0, 1, 2})); });
  call([&] { return mesh->Charger(bstr(folder.file(L"part.obj"))); });
  call([&] {
    return mesh->setPolygones(numberArray(VT_I4, {3, 3, 4}),
                              numberArray(VT_I4, {0, 1, 2, 0, 2, 3, 3, 2, 1, 0}));
  });
  EXPECT_FALSE(events.listener().parts.empty());
}

TEST_F(OutOfMemoryTest, SeriesStayAsTheyAre) {
  View2DHost view({80, 60});
  const Graph graph = makePlot(view.get());
  ComPtr<IDispatch> shown;
  require(graph->Item(0, &shown), "Item");
  const auto series = queryFor<IZYNSerie>(shown.Get());
  const auto state = [&] {
    _variant_t points;
    require(series->getPoints(&points), "getPoints");
    std::vector<double> all = doublesIn(points);
    for (const long side : {0, 1}) {  // where the error bars are
      for (const double end : rangeOf(graph.axis(side).Get())) all.push_back(end);
    }
    return all;
  };
  const auto call = [&](const auto& member) {
    const std::vector<double> old = state();
    std::uint32_t failures = 0;
    bool isMade = false;
    FailingAllocations allocations(library());
    EXPECT_EQ(
        allocations.failEach([&] { return isMade ? S_OK : member(); },
                             [&](std::uint32_t n, HRESULT answer) {
                               ++failures;
                               isMade = answer == S_OK;  // who hears of the change may miss it
                               EXPECT_TRUE(isMade || answer == E_OUTOFMEMORY) << n;
                               EXPECT_TRUE(isMade || state() == old) << "changed in part by " << n;
                             }),
        S_OK);
    EXPECT_GT(failures, 0U);
    EXPECT_NE(state(), old) << "nothing was to change";
    view.paint();
  };
  call([&] { return series->AjouterPoints(doubleArray({4, 5}), doubleArray({20, -7})); });
  call([&] { return series->setErreurs(doubleArray({9, 9, 9, 9, 9, 9}), leftOut()); });
  call([&] { return series->setErreursX(doubleArray({9, 9, 9, 9, 9, 9}), doubleArray({})); });
  call([&] { return series->setPoints(doubleArray({1, 2, 30}), doubleArray({4, 5, 6})); });
}

TEST_F(OutOfMemoryTest, GraphsStayAsTheyAre) {
  View2DHost view({80, 60});
  const Graph graph = makePlot(view.get());
  const auto added = makeSeries({0, 1}, {0, 100});
  const auto fails = [&](const std::function<HRESULT()>& member) {
    const Numbers old = {rangeOf(graph.axis(1).Get())[1],
                         double(valueOf(graph.get(), &IZYNGraphe::get_Count))};
    std::uint32_t failures = 0;
    FailingAllocations allocations(library());
    EXPECT_EQ(allocations.failEach(
                  member,
                  [&](std::uint32_t n, HRESULT answer) {
                    ++failures;
                    EXPECT_EQ(answer, E_OUTOFMEMORY) << n;
                    EXPECT_EQ((Numbers{rangeOf(graph.axis(1).Get())[1],
                                       double(valueOf(graph.get(), &IZYNGraphe::get_Count))}),
                              old)
                        << n;
                    EXPECT_EQ(referencesOf(added.Get()), 1U) << n;
                  }),
              S_OK);
    EXPECT_GT(failures, 0U);
    view.paint();
  };
  fails([&] { return graph.add(added.Get()); });
  EXPECT_EQ(graph->Retirer(added.Get()), S_OK);
  EXPECT_EQ(referencesOf(added.Get()), 1U);
  const auto trace = createObject<IDispatch>(L"ZYNModeleGeom.Polyligne");
  fails([&] { return graph.add(trace.Get()); });
  ComPtr<IDispatch> axis;
  fails([&] { return graph->AjouterAxe(3, axis.ReleaseAndGetAddressOf()); });
  EXPECT_EQ(graph->RetirerAxe(axis.Get()), S_OK);
}

/// An export member with the file that it writes.
using Export = HRESULT (*)(OffscreenContext& context, const std::filesystem::path& file);

const std::map<std::string, Export> kExports = {
    {"bmp", [](OffscreenContext& from,
               const std::filesystem::path& file) { return from.CreateBitmap(bstr(file)); }},
    {"png", [](OffscreenContext& from,
               const std::filesystem::path& file) { return from.exportPng(file); }},
    {"gif", [](OffscreenContext& from,
               const std::filesystem::path& file) { return from.exportGif(file); }},
    {"jpg", [](OffscreenContext& from, const std::filesystem::path& file) {
       return from.exportJpg(file, 70);
     }}};

class ExportOutOfMemoryTest : public OutOfMemoryTest,
                              public testing::WithParamInterface<OffscreenClass> {};

TEST_P(ExportOutOfMemoryTest, LeavesAWholeFileOrNone) {
  const auto context = GetParam().make(24, 24);
  context->add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed).Get());
  const auto whole = context->folder().file(L"whole");
  const auto file = context->folder().file(L"file");
  for (const auto& [format, write] : kExports) {
    require(write(*context, whole), format.c_str());
    const Bytes wanted = readFile(whole);
    std::filesystem::remove(file);
    FailingAllocations allocations(library());
    std::uint32_t failures = 0;
    allocations.failEach([&, &write = write] { return write(*context, file); },
                         [&, &format = format](std::uint32_t n, HRESULT) {
                           ++failures;
                           EXPECT_TRUE(!exists(file) || readFile(file) == wanted) << format << n;
                           EXPECT_FALSE(exists(context->spare())) << format << n;
                         });
    EXPECT_GT(failures, 0U) << format;
    EXPECT_EQ(readFile(file), wanted) << format;
  }
}

INSTANTIATE_TEST_SUITE_P(Contexts, ExportOutOfMemoryTest, testing::ValuesIn(offscreenClasses()),
                         nameOf);

TEST_F(OutOfMemoryTest, EventsAreWholeOrMissing) {
  View3DHost view({40, 40});
  view.move(1, 1);
  view.forgetEvents();
  FailingAllocations allocations(library());
  const ULONG sink = static_cast<ULONG>(view.sinkReferences());
  int x = 1;
  allocations.failEach(
      [&] {
        view.forgetEvents();
        view.move(++x % 40, 2);
        return S_OK;
      },
      [&](std::uint32_t n, HRESULT) {
        EXPECT_LE(view.events(kMouseMove).size(), 1U) << n;
        EXPECT_EQ(static_cast<ULONG>(view.sinkReferences()), sink) << n;
      });
  ASSERT_EQ(view.events(kMouseMove).size(), 1U);
  EXPECT_EQ(view.events(kMouseMove)[0].arguments.size(), 3U);
}

TEST_F(OutOfMemoryTest, PropertiesAreSavedAndLoadedOrTheCallerIsTold) {
  const auto control = createObject<IPersistStreamInit>(L"ZYNVue.ZYNVue3D");
  require(control->InitNew(), "InitNew");
  ComPtr<IStream> stream;
  require(CreateStreamOnHGlobal(nullptr, TRUE, &stream), "CreateStreamOnHGlobal");
  const auto fromStart = [&](auto call) {
    require(stream->Seek({}, STREAM_SEEK_SET, nullptr), "Seek");
    return call();
  };
  const auto saysSo = [](std::uint32_t n, HRESULT answer) {
    EXPECT_EQ(answer, E_OUTOFMEMORY) << n;
  };
  FailingAllocations allocations(library());
  EXPECT_EQ(
      allocations.failEach(
          [&] { return fromStart([&] { return control->Save(stream.Get(), TRUE); }); }, saysSo),
      S_OK);
  EXPECT_EQ(allocations.failEach(
                [&] { return fromStart([&] { return control->Load(stream.Get()); }); }, saysSo),
            S_OK);
}

TEST_F(OutOfMemoryTest, PaintingGoesOnAfterwards) {
  View3DHost view({40, 40});
  View2DHost graph({40, 40});
  for (const auto& object :
       {ComPtr<IDispatch>(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed)),
        ComPtr<IDispatch>(makeText(L"label")), makeUnicodeText(), makePath(), makeScale(),
        makeGroup()}) {
    require(view->Add(object.Get(), 0), "Add");
    require(graph->Add(object.Get(), 0), "Add");
  }
  View2DHost plotted({160, 120});
  const Graph plot = makePlot(plotted.get());
  FailingAllocations allocations(library());
  for (const ViewHost* each : std::initializer_list<const ViewHost*>{&view, &graph, &plotted}) {
    each->paint();
    const Image wanted = each->shown();
    allocations.failEach(
        [&] {
          plot->put_TaillePolice(9);  // lays it out anew
          each->paint();
          return S_OK;
        },
        [](std::uint32_t, HRESULT) {});
    EXPECT_EQ(each->shown(), wanted);
  }
}

}  // namespace
}  // namespace zyn::test
