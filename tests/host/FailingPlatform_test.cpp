// Each function of the system that can fail is made to fail, once and for good, while a freshly
// loaded library works: nothing breaks, nothing is lost, no file is left in part, and afterwards
// everything works as if nothing had been.
#include <ole2.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "support/ControlTest_win.h"
#include "support/Documents_win.h"
#include "support/EventListener_win.h"
#include "support/FailingImport_win.h"
#include "support/ForeignObject_win.h"
#include "support/Graph_win.h"
#include "support/ImportTable.h"
#include "support/LateBinding_win.h"
#include "support/MessageCatcher_win.h"
#include "support/Paper_win.h"
#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/ScriptedContainer_win.h"
#include "support/ServerModule_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

constexpr int kSize = 24;

/// What was drawn, by names; what could not be made is missing.
using Pictures = std::map<std::string, Bytes>;

/// What fails with an exception of the test support is left out.
template <class Step>
void attempt(const Step& step) {
  try {
    step();
  } catch (const std::runtime_error&) {
  } catch (const _com_error&) {
  }
}

template <class Make>
void addMade(std::vector<ComPtr<IDispatch>>& objects, const Make& make) {
  attempt([&] { objects.emplace_back(make()); });
}

std::vector<ComPtr<IDispatch>> makeObjects() {
  std::vector<ComPtr<IDispatch>> objects;
  addMade(objects, [] { return makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed); });
  addMade(objects, [] {
    const auto label = makeText(L"a\x20AC");
    _bstr_t text;
    label->get_Texte(text.GetAddress());
    return label;
  });
  addMade(objects, [] {
    const auto label = queryFor<IZYNGLTexte2>(makeText(L"\x394 \x4E2D e\x301").Get());
    label->put_Unicode(VARIANT_TRUE);
    label->put_Italique(VARIANT_TRUE);
    label->put_Fond(VARIANT_TRUE);
    return label;
  });
  addMade(objects, [] {
    const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
    sprite->putref_Picture(pictureOfBitmap24(makeQuarters(4, 4)).Get());
    return sprite;
  });
  addMade(objects, [] {
    const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
    sprite->putref_Picture(pictureOfEnhancedMetafile(4, 4).Get());
    return sprite;
  });
  addMade(objects, [] { return createObject<IZYNGLCote>(kCoteProgId); });
  addMade(objects, [] { return createObject<IZYNCamera>(kCameraProgId); });
  addMade(objects, [] {
    const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
    scale->put_Titre(_bstr_t(L"scale"));
    return scale;
  });
  addMade(objects, [] {
    const auto group = createObject<IZYNGroupe>(kGroupProgId);
    group->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kBlue).Get(), 0);
    group->Add(makeText(L"group").Get(), 0);
    group->setRepere(doubleArray({1, 0, 0}), doubleArray({0, 1, 0}), doubleArray({1, 0, 0}));
    group->put_Opacite(0.5);
    return group;
  });
  addMade(objects, [] {
    const auto mesh = makeMesh({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2});
    mesh->setValeurs(doubleArray({0, 1, 2}));
    mesh->put_StyleRendu(2);
    return mesh;
  });
  addMade(objects, [] {
    const auto path = createObject<IZYNGLTrajet>(kPathProgId);
    path->setPoints(doubleArray({0, 0, 0, 1, 0, 0, 0, 1, 0}));
    path->setTypes(doubleArray({0, 1}));
    path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get());
    return path;
  });
  return objects;
}

/// Events of an object that are listened to, where they can be made.
class Hearing {
 public:
  explicit Hearing(IDispatch* object) {
    attempt([&] {
      events_.emplace();
      events_->attach(object);
    });
  }

 private:
  std::optional<HeardEvents> events_;
};

class Exports {
 public:
  template <class Write>
  void take(const char* name, const Write& write) {
    const auto file = folder_.file(L"picture");
    write(bstr(folder_.file(L"spare")), bstr(file));
    if (exists(file)) pictures_[name] = readFile(file);
    std::filesystem::remove(file);
    EXPECT_TRUE(folder_.empty()) << name;
  }
  const Pictures& pictures() const { return pictures_; }

 private:
  TempFolder folder_;
  Pictures pictures_;
};

template <class Context>
void exportAll(Context& context, const std::string& name, Exports& exports) {
  using Names = _bstr_t;
  exports.take((name + " bmp").c_str(),
               [&](const Names&, const Names& file) { context.CreateBitmap(file); });
  exports.take((name + " png").c_str(),
               [&](const Names& spare, const Names& file) { context.CreatePNG(spare, file); });
  exports.take((name + " gif").c_str(),
               [&](const Names& spare, const Names& file) { context.CreateGIF(spare, file); });
  exports.take((name + " jpg").c_str(),
               [&](const Names& spare, const Names& file) { context.CreateJPG(spare, file, 80); });
  const Hearing hearing(&context);
  exports.take((name + " exported").c_str(), [&](const Names&, const Names& file) {
    callMethod(&context, L"Exporter", {_bstr_t(file + L".png")});
    MoveFileW(file + L".png", file);
  });
  ComPtr<IPictureDisp> picture;
  context.GetPictureDisp(&picture);
}

Bytes bytesOf(const Image& picture) {
  Bytes bytes;
  for (int place = 0; place < picture.width() * picture.height(); ++place) {
    const Rgb& pixel = picture.at(place % picture.width(), place / picture.width());
    for (const int part : {pixel.r, pixel.g, pixel.b}) {
      bytes.push_back(static_cast<std::uint8_t>(part));
    }
  }
  return bytes;
}

/// What a metafile shows: systems leave in its bytes what was in their memory. Ends it.
Bytes playedBy(HENHMETAFILE metafile) {
  Paper paper(4 * kSize, 3 * kSize);
  const RECT place = {0, 0, 4 * kSize, 3 * kSize};
  EXPECT_TRUE(PlayEnhMetaFile(paper.dc(), metafile, &place)) << "it is there in part";
  DeleteEnhMetaFile(metafile);
  return bytesOf(paper.picture());
}

/// Prints on a bitmap, whose graphics may be transformed, and in a metafile.
void print(IDispatch* context, const std::string& name, Pictures& pictures) {
  Paper paper(4 * kSize, 3 * kSize);
  SetGraphicsMode(paper.dc(), GM_ADVANCED);
  callMethod(context, L"Imprimer", {handleOf(paper.dc()), 0L, 0L, kSize, kSize});
  pictures[name + " printed"] = bytesOf(paper.picture());
  const HDC metafile = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
  callMethod(context, L"Imprimer", {handleOf(metafile), 0L, 0L, kSize, kSize});
  pictures[name + " recorded"] = playedBy(CloseEnhMetaFile(metafile));
}

Pictures drawScene() {
  Exports exports;
  Pictures pictures;
  const auto objects = makeObjects();
  attempt([&] {
    const auto scene = createObject<IZYN3DGLBitmapContext>(kContextProgId);
    long made = 0;
    scene->CreateContext(kSize, kSize, &made);
    for (const auto& object : objects) scene->Add(object.Get(), 0);
    exportAll(*scene.Get(), "scene", exports);
    print(scene.Get(), "scene", pictures);
  });
  pictures.insert(exports.pictures().begin(), exports.pictures().end());
  return pictures;
}

Pictures drawGraph() {
  Exports exports;
  const auto objects = makeObjects();
  attempt([&] {
    const auto graph = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
    long made = 0;
    graph->CreateContexte(kSize, kSize, &made);
    for (const auto& object : objects) graph->Add(object.Get(), 0);
    _variant_t colour;
    graph->get_BackColor(&colour);
    graph->put_BackColor(colourArray(kBlue));
    exportAll(*graph.Get(), "graph", exports);
  });
  return exports.pictures();
}

/// Series of several kinds and a map, by axes, with texts in several fonts.
void fillPlot(const Graph& graph) {
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  map->setValeurs(doubleTable(2, 3));
  map->put_EchelleCouleurs(createObject<IZYNEchelleCouleurs>(kScaleProgId).Get());
  graph.add(map.Get());
  for (const long kind : {0, 3, 4}) {
    const auto series = makeSeries({0, 1, 2, 3}, {1, 1.5, std::nan(""), 10});
    series->put_Nom(_bstr_t(L"\x394 \x4E2D"));
    series->put_TypeTrace(kind);
    series->put_Marqueur(kind + 1);
    series->put_Pointille(kind == 0 ? VARIANT_TRUE : VARIANT_FALSE);
    series->setErreurs(doubleArray({1, 1, 1, 1}), leftOut());
    graph.add(series.Get());
  }
  graph.axis(0)->setPlage(0.5, 2.5);
  graph.axis(1)->setPlage(0.25, 1.75);
  graph.legend()->put_Visible(VARIANT_TRUE);
  graph.cursors()->put_Visible(VARIANT_TRUE);
  graph->put_Titre(_bstr_t(L"title"));
  graph->put_Actif(VARIANT_TRUE);
}

/// A graph that follows its series, as pixels and as vectors, copied and printed.
Pictures drawPlot() {
  Exports exports;
  Pictures pictures;
  attempt([&] {
    const auto context = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
    long made = 0;
    context->CreateContexte(4 * kSize, 3 * kSize, &made);
    fillPlot(Graph(context.Get()));
    exportAll(*context.Get(), "plot", exports);
    for (const auto& [name, end] : {std::pair{"plot svg", L".svg"}, std::pair{"plot pdf", L".pdf"},
                                    std::pair{"plot emf", L".emf"}}) {
      exports.take(name, [&, end = end](const _bstr_t&, const _bstr_t& file) {
        const _bstr_t whole = file + end;
        callMethod(context.Get(), L"Exporter", {whole});
        MoveFileW(whole, file);
      });
    }
    callMethod(context.Get(), L"Copier");
    print(context.Get(), "plot", pictures);
  });
  pictures.insert(exports.pictures().begin(), exports.pictures().end());
  if (const auto emf = pictures.find("plot emf"); emf != pictures.end()) {
    emf->second =
        playedBy(SetEnhMetaFileBits(static_cast<UINT>(emf->second.size()), emf->second.data()));
  }
  return pictures;
}

/// Members called by name, some of them with arguments that have to be converted or are wrong.
Pictures callByName() {
  attempt([] {
    const auto triangle = makeTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    callMethod(triangle.Get(), L"setPoint", {L"0", 1.0, 2.0, L"3"});
    callMethod(triangle.Get(), L"setPoint", {9L, 1.0, 2.0, 3.0});
    triangle->setPoint(9, 0, 0, 0);
    double x = 0;
    double y = 0;
    double z = 0;
    callMethod(triangle.Get(), L"getPoint", {1L, outArgument(x), outArgument(y), outArgument(z)});
    const auto label = makeText(L"text");
    getProperty(label.Get(), L"Texte");
    putProperty(label.Get(), L"Texte", 12.5);
    _variant_t text = L"more";
    putProperty(label.Get(), L"Texte", variantReference(&text));
  });
  return {};
}

/// A mesh from a file, with its materials, and to one.
Pictures useFiles() {
  const TempFolder folder;
  const auto write = [&](const wchar_t* name, const char* text) {
    std::ofstream(folder.file(name), std::ios::binary) << text;
  };
  write(L"part.obj", "mtllib part.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl a\nf 1 2 3\n");
  write(L"part.mtl", "newmtl a\nKd 1 0 0\n");
  attempt([&] {
    const auto mesh = createObject<IZYNGLMaillage>(kMeshProgId);
    const Hearing hearing(mesh.Get());
    mesh->Charger(bstr(folder.file(L"part.obj")));
    long faces = 0;
    mesh->get_NbFaces(&faces);
    EXPECT_TRUE(faces == 0 || faces == 1);
    mesh->Enregistrer(bstr(folder.file(L"part.ply")));
  });
  write(L"part.nc", "G1 X1 F60\nG2 X3 I1\n");
  attempt([&] {
    const auto path = createObject<IZYNGLTrajet>(kPathProgId);
    const Hearing hearing(path.Get());
    const HRESULT loaded = path->ChargerGCode(bstr(folder.file(L"part.nc")));
    double length = 0;
    path->get_Longueur(&length);
    EXPECT_EQ(length > 0, SUCCEEDED(loaded));
  });
  return {};
}

/// The companion's objects, called by name and drawn.
Pictures useGeometry() {
  Exports exports;
  attempt([] {
    for (const wchar_t* progId : {L"ZYNModeleGeom.Rectangle", L"ZYNModeleGeom.Point"}) {
      const auto object = createObject<IDispatch>(progId);
      putProperty(object.Get(), L"x", L"1.5");
      putProperty(object.Get(), L"XMax", L"2.5");
      callMethod(object.Get(), L"setBornes", {1.0, 2.0, L"none", 3.0});
    }
  });
  attempt([&] {
    const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    trace->setPoints(doubleArray({0, 1, 2}), doubleArray({0, 2, 1}));
    trace->setPoints(doubleArray({0, 1}), doubleArray({0}));
    trace->get_Epaisseur(nullptr);  // fails with nothing to say but the system's text
    const auto graph = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
    long made = 0;
    graph->CreateContexte(kSize, kSize, &made);
    graph->Add(trace.Get(), 0);
    exports.take("trace bmp",
                 [&](const _bstr_t&, const _bstr_t& file) { graph->CreateBitmap(file); });
  });
  attempt([&] {
    const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    trace->setPoints3D(doubleArray({0, 1, 2}), doubleArray({0, 2, 1}), doubleArray({0, 1, 1}));
    const auto scene = createObject<IZYN3DGLBitmapContext>(kContextProgId);
    long made = 0;
    scene->CreateContext(kSize, kSize, &made);
    scene->Add(trace.Get(), 0);
    exports.take("trace in space bmp",
                 [&](const _bstr_t&, const _bstr_t& file) { scene->CreateBitmap(file); });
  });
  return exports.pictures();
}

/// A view as a document keeps it, without a window.
void keepView(const wchar_t* progId) {
  const auto control = createObject<IOleObject>(progId);
  ScriptedContainer container;
  control->SetClientSite(&container.site);
  putProperty(queryFor<IDispatch>(control.Get()).Get(), L"MouseIcon",
              pictureOfIcon(AlphaImage(makeQuarters(32, 32))).Get());
  Bag bag;
  queryFor<IPersistPropertyBag>(control.Get())->Save(&bag, TRUE, TRUE);
  bag.values[L"_cx"] = L"1234";
  queryFor<IPersistPropertyBag>(control.Get())->Load(&bag, nullptr);
  attempt([&] { loadInto(control.Get(), savedBy(control.Get())); });
  ComPtr<IStorage> storage;
  require(StgCreateDocfile(nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                           &storage),
          "StgCreateDocfile");
  queryFor<IPersistStorage>(control.Get())->Save(storage.Get(), FALSE);
  DWORD cookie = 0;
  control->Advise(&container.sink, &cookie);
  FORMATETC wanted = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  queryFor<IDataObject>(control.Get())->DAdvise(&wanted, 0, &container.sink, &cookie);
  LPOLESTR text = nullptr;
  control->GetUserType(USERCLASSTYPE_FULL, &text);
  CoTaskMemFree(text);
  ComPtr<IEnumOLEVERB> verbs;
  OLEVERB verb = {};
  if (SUCCEEDED(control->EnumVerbs(&verbs)) && verbs->Next(1, &verb, nullptr) == S_OK) {
    CoTaskMemFree(verb.lpszVerbName);
  }
  control->Close(OLECLOSE_NOSAVE);
  control->SetClientSite(nullptr);
}

Pictures keepViews() {
  attempt([] { keepView(kVue3DProgId); });
  attempt([] { keepView(kVue2DProgId); });
  return {};
}

/// What a view draws into a bitmap of its container.
Bytes drawnBy(IOleObject* control) {
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, kSize, kSize, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const HDC dc = CreateCompatibleDC(nullptr);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(dc, bitmap);
  const RECTL bounds = {0, 0, kSize, kSize};
  queryFor<IViewObject>(control)->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds,
                                       nullptr, nullptr, 0);
  GdiFlush();
  const auto* bytes = static_cast<const std::uint8_t*>(bits);
  Bytes picture(bytes, bytes + std::size_t{4} * kSize * kSize);
  SelectObject(dc, before);
  DeleteObject(bitmap);
  DeleteDC(dc);
  return picture;
}

/// The names of what is picked all over the window, as bytes.
Bytes pickedIn(IDispatch* view, HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  Bytes picked;
  for (long place = 0; place < 64; ++place) {
    const long x = client.right * (place % 8) / 8;
    const long y = client.bottom * (place / 8) / 8;
    for (const long name : namesIn(callMethod(view, L"getSelectionUnderMouse", {x, y}).value)) {
      picked.push_back(static_cast<std::uint8_t>(name));
      picked.push_back(static_cast<std::uint8_t>(place));
    }
  }
  return picked;
}

/// What double clicks all over the window of a graph select, as bytes.
Bytes clickedIn(IOleObject* view, ScriptedContainer& container, HWND window) {
  ComPtr<IConnectionPoint> source;
  DWORD cookie = 0;
  require(queryFor<IConnectionPointContainer>(view)->FindConnectionPoint(DIID__IZYNVue2DEvents,
                                                                         &source),
          "FindConnectionPoint");
  require(source->Advise(&container.events, &cookie), "Advise");
  RECT client = {};
  GetClientRect(window, &client);
  Bytes clicked;
  for (long place = 0; place < 64; ++place) {
    container.events.events.clear();
    SendMessageW(window, WM_LBUTTONDBLCLK, 0,
                 MAKELPARAM(client.right * (place % 8) / 8, client.bottom * (place / 8) / 8));
    for (const ReceivedEvent& event : container.events.events) {
      if (event.event != GraphEvent::MouseSelectionDblClick) continue;
      for (const long name : namesIn(event.arguments[0])) {
        clicked.push_back(static_cast<std::uint8_t>(name));
        clicked.push_back(static_cast<std::uint8_t>(place));
      }
    }
  }
  source->Unadvise(cookie);
  return clicked;
}

/// A view in a scripted container, seen, clicked and asked for pictures.
void useView(const wchar_t* progId, const std::vector<ComPtr<IDispatch>>& objects,
             Pictures& pictures, const std::string& name) {
  const auto control = createObject<IOleObject>(progId);
  ScriptedContainer container;
  control->SetClientSite(&container.site);
  const auto view = queryFor<IDispatch>(control.Get());
  const Hearing hearing(view.Get());
  for (const auto& object : objects) {
    callMethod(view.Get(), L"Add", {object.Get(), 0L});
  }
  const auto pickable = makePickable({7}, {0.2, 0.8, 0.2, 0.8, 0});
  pickable->onDraw2D = pickable->onDraw3D;
  callMethod(view.Get(), L"AddSelection", {pickable->dispatch()});
  control->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container.site, 0, container.window(),
                  &container.site.position);
  ScriptedContainer::pump();
  HWND window = nullptr;
  queryFor<IOleWindow>(control.Get())->GetWindow(&window);
  callMethod(view.Get(), L"initView", {0L});
  callMethod(view.Get(), L"VueXYp", {0.1});
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  pictures[name + " picked"] = progId == kVue3DProgId ? pickedIn(view.Get(), window)
                                                      : clickedIn(control.Get(), container, window);
  for (const UINT message : std::initializer_list<UINT>{
           WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_SETCURSOR, WM_MOUSELEAVE}) {
    SendMessageW(window, message, 0, message == WM_SETCURSOR ? HTCLIENT : MAKELPARAM(5, 6));
  }
  SetWindowPos(window, nullptr, 0, 0, 50, 40, SWP_NOMOVE | SWP_NOZORDER);
  callMethod(view.Get(), L"EditAmbiantLight");
  _variant_t nothing;
  V_VT(&nothing) = VT_DISPATCH;
  V_DISPATCH(&nothing) = nullptr;
  callMethod(view.Get(), L"GraphView",
             {1.0, 0.0, 0.0, L"x", L"mm", nothing, 0.0, 1.0, 0.5, 0.1, 1.0, L"y", L"mm", nothing,
              0.0, 1.0, 0.5, 0.1, 1.0});
  for (const auto& [format, medium] :
       {std::pair{CF_METAFILEPICT, TYMED_MFPICT}, std::pair{CF_ENHMETAFILE, TYMED_ENHMF},
        std::pair{CF_DIB, TYMED_HGLOBAL}, std::pair{CF_BITMAP, TYMED_GDI}}) {
    FORMATETC wanted = {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1,
                        static_cast<DWORD>(medium)};
    STGMEDIUM given = {};
    if (SUCCEEDED(queryFor<IDataObject>(control.Get())->GetData(&wanted, &given))) {
      ReleaseStgMedium(&given);
    }
  }
  pictures[name] = drawnBy(control.Get());
  callMethod(view.Get(), L"RemoveAll");
  control->Close(OLECLOSE_NOSAVE);
  control->SetClientSite(nullptr);
  container.frame.activeObject.Reset();
}

Pictures useView3D() {
  Pictures pictures;
  const auto objects = makeObjects();
  attempt([&] { useView(kVue3DProgId, objects, pictures, "view 3D"); });
  return pictures;
}

Pictures useView2D() {
  Pictures pictures;
  const auto objects = makeObjects();
  attempt([&] { useView(kVue2DProgId, objects, pictures, "view 2D"); });
  return pictures;
}

constexpr const wchar_t* kViews = L"ZYNVue.dll";
constexpr const wchar_t* kGeometry = L"ZYNModeleGeom.dll";

struct Steps {
  const char* name;
  const wchar_t* library;  ///< whose calls fail
  Pictures (*run)();
};

/// The cheapest first.
constexpr Steps kSteps[] = {{"by name", kViews, callByName},     {"files", kViews, useFiles},
                            {"documents", kViews, keepViews},    {"scene", kViews, drawScene},
                            {"graph", kViews, drawGraph},        {"plot", kViews, drawPlot},
                            {"view 3D", kViews, useView3D},      {"view 2D", kViews, useView2D},
                            {"geometry", kGeometry, useGeometry}};

void PrintTo(const Steps& steps, std::ostream* out) { *out << steps.name; }

/// A library, loaded and unloaded again with everything that it remembers.
class FreshLibrary {
 public:
  explicit FreshLibrary(const Steps& steps) : module_(steps.library) {
    // Nobody is there to close it.
    if (steps.library == kViews) {
      messages_.emplace(module_.handle());
      dialogs_.emplace(module_.handle(), "DialogBoxParamW", Failure{~std::uintptr_t{0}, 0});
    }
  }
  ~FreshLibrary() { EXPECT_EQ(module_.canUnloadNow(), S_OK) << "something is lost"; }
  FreshLibrary(const FreshLibrary&) = delete;
  FreshLibrary& operator=(const FreshLibrary&) = delete;

  HMODULE handle() const { return module_.handle(); }
  HRESULT canUnloadNow() const { return module_.canUnloadNow(); }

  static void forget() {
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    for (const wchar_t* library : {kViews, kGeometry}) {
      ASSERT_EQ(GetModuleHandleW(library), nullptr);
    }
  }

 private:
  ServerModule module_;
  std::optional<MessageCatcher> messages_;
  std::optional<FailingImport> dialogs_;
};

/// The functions of a library that are to fail.
std::vector<Import> failingImports(HMODULE library) {
  std::vector<Import> imports = importsOf(library);
  std::erase_if(imports, [](const Import& import) {
    const auto rule = importRules().find(import.function);
    return rule == importRules().end() || !rule->second.fails;
  });
  return imports;
}

/// What the steps draw when nothing fails, and which functions they call.
struct Usual {
  Pictures pictures;
  std::map<std::string, std::uint32_t> calls;
};

Usual observe(const Steps& steps) {
  Usual usual;
  {
    const FreshLibrary library(steps);
    std::map<std::string, FailingCalls> counts;
    std::vector<std::unique_ptr<FailingImport>> counters;
    for (const Import& import : failingImports(library.handle())) {
      FailingCalls& calls = counts[import.function];
      calls.fail(1, 0);
      counters.push_back(
          std::make_unique<FailingImport>(library.handle(), import.function, Failure{}, calls));
    }
    usual.pictures = steps.run();
    for (const auto& [function, calls] : counts) usual.calls[function] = calls.made;
  }
  FreshLibrary::forget();
  return usual;
}

const Usual& usualOf(const Steps& steps) {
  static std::map<std::string, Usual> known;
  const auto found = known.find(steps.name);
  return found != known.end() ? found->second
                              : known.emplace(steps.name, observe(steps)).first->second;
}

/// A function that a library imports.
struct ImportedFunction {
  const wchar_t* library;
  std::string name;
  bool isOfWindows;
};

void PrintTo(const ImportedFunction& function, std::ostream* out) { *out << function.name; }

std::uint32_t callsOf(const ImportedFunction& function, const Steps& steps) {
  const auto& calls = usualOf(steps).calls;
  const auto call = calls.find(function.name);
  return call != calls.end() ? call->second : 0;
}

/// The cheapest steps that call the function; but those with a view for functions of windows, which
/// the choice of pixel formats calls too.
const Steps* stepsCalling(const ImportedFunction& function) {
  const Steps* found = nullptr;
  for (const Steps& steps : kSteps) {
    if (steps.library != function.library || callsOf(function, steps) == 0) continue;
    if (!found || function.isOfWindows) found = &steps;
  }
  return found;
}

class FailingCallTest : public HostTest, public testing::WithParamInterface<ImportedFunction> {
 protected:
  /// Runs the steps with so many calls of the function failing from the first one on.
  static void fail(const FreshLibrary& library, const Steps& steps, std::uint32_t count) {
    const std::string& function = GetParam().name;
    const ImportRule& rule = importRules().at(function);
    const FailingImport failing(library.handle(), function, {rule.result, rule.lastError}, 1,
                                count);
    for (const auto& [name, picture] : steps.run()) {
      if (!name.ends_with("bmp")) continue;
      EXPECT_EQ(picture.size(), usualOf(steps).pictures.at(name).size())
          << name << " is there in part";
    }
    // What was made do without is not asked for again.
    EXPECT_TRUE(failing.calls().hasFailed() || count == 1);
    EXPECT_EQ(library.canUnloadNow(), S_OK) << "something is lost";
  }
};

TEST_P(FailingCallTest, BreaksNothing) {
  const Steps* const steps = stepsCalling(GetParam());
  ASSERT_NE(steps, nullptr) << "nothing calls it";
  const Pictures& wanted = usualOf(*steps).pictures;
  {
    const FreshLibrary library(*steps);
    fail(library, *steps, FailingCalls::kAll);
    // A single call has failed then already.
    if (callsOf(GetParam(), *steps) > 1) fail(library, *steps, 1);
    EXPECT_TRUE(steps->run() == wanted) << "afterwards";
  }
  FreshLibrary::forget();
}

/// All that fail, but for what the companion has of the framework and never calls.
std::vector<ImportedFunction> failingFunctions() {
  const std::set<std::string> uncalled = {"GetErrorInfo", "GetProcAddress", "SafeArrayCreateVector",
                                          "VirtualAlloc", "WideCharToMultiByte"};
  std::vector<ImportedFunction> functions;
  for (const wchar_t* library : {kViews, kGeometry}) {
    const ServerModule module(library);
    for (const Import& import : failingImports(module.handle())) {
      if (library == kGeometry && uncalled.contains(import.function)) continue;
      functions.push_back({library, import.function, import.library == "user32.dll"});
    }
  }
  return functions;
}

INSTANTIATE_TEST_SUITE_P(Functions, FailingCallTest, testing::ValuesIn(failingFunctions()),
                         [](const auto& chosen) {
                           return (chosen.param.library == kGeometry ? "ZYNModeleGeom_" : "") +
                                  chosen.param.name;
                         });

const GLubyte* WINAPI tellOpenGl11(GLenum name) {
  static const GLubyte kVersion[] = "1.1.0";
  static const GLubyte kNone[] = "";
  return name == GL_VERSION ? kVersion : name == GL_EXTENSIONS ? kNone : glGetString(name);
}

/// Drawing and picking.
class OpenGl11Test : public HostTest, public testing::WithParamInterface<Steps> {};

TEST_P(OpenGl11Test, IsEnough) {
  const Pictures& wanted = usualOf(GetParam()).pictures;
  EXPECT_FALSE(wanted.empty());
  for (const auto& [name, picture] : wanted) {
    EXPECT_FALSE(picture.empty()) << name;
  }
  {
    const FreshLibrary library(GetParam());
    const FailingImport extensions(library.handle(), "wglGetProcAddress");
    const ImportPatch version(library.handle(), "glGetString",
                              reinterpret_cast<const void*>(&tellOpenGl11));
    EXPECT_TRUE(GetParam().run() == wanted);
  }
  FreshLibrary::forget();
}

INSTANTIATE_TEST_SUITE_P(Drawing, OpenGl11Test,
                         testing::Values(kSteps[3], kSteps[4], kSteps[5], kSteps[6], kSteps[7]));

// A new import has to be added to the rules.
TEST(ImportTest, EachHasARule) {
  for (const wchar_t* file : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
    const ServerModule module(file);
    for (const Import& import : importsOf(module.handle())) {
      // OpenGL keeps its errors to itself, and what is drawn then is its own affair.
      const bool isOpenGl = import.library == "opengl32.dll" || import.library == "glu32.dll";
      const bool isKnown = importRules().contains(import.function);
      EXPECT_TRUE(isKnown || (isOpenGl && import.function.starts_with("gl")))
          << import.library << ' ' << import.function;
    }
  }
}

}  // namespace
}  // namespace zyn::test
