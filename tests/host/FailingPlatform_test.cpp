// Each function of the system that can fail is made to fail, once and for good, while a freshly
// loaded library works: nothing breaks, nothing is lost, no file is left in part, and afterwards
// everything works as if nothing had been.
#include <ole2.h>

#include <algorithm>
#include <array>
#include <optional>

#include "support/FailingImport_win.h"
#include "support/ForeignObject_win.h"
#include "support/ImportTable.h"
#include "support/LateBinding_win.h"
#include "support/MessageCatcher_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/ScriptedContainer_win.h"
#include "support/ServerModule_win.h"
#include "support/Texts_win.h"
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
  return objects;
}

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
  ComPtr<IPictureDisp> picture;
  context.GetPictureDisp(&picture);
}

Pictures drawOffscreen() {
  Exports exports;
  const auto objects = makeObjects();
  long made = 0;
  attempt([&] {
    const auto scene = createObject<IZYN3DGLBitmapContext>(kContextProgId);
    scene->CreateContext(kSize, kSize, &made);
    for (const auto& object : objects) scene->Add(object.Get(), 0);
    exportAll(*scene.Get(), "scene", exports);
  });
  attempt([&] {
    const auto graph = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
    graph->CreateContexte(kSize, kSize, &made);
    for (const auto& object : objects) graph->Add(object.Get(), 0);
    _variant_t colour;
    graph->get_BackColor(&colour);
    graph->put_BackColor(colourArray(kBlue));
    exportAll(*graph.Get(), "graph", exports);
  });
  return exports.pictures();
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

/// A view in a scripted container, with everything that a container asks of it.
void useView(const wchar_t* progId, const std::vector<ComPtr<IDispatch>>& objects,
             Pictures& pictures, const char* name) {
  const auto control = createObject<IOleObject>(progId);
  ScriptedContainer container;
  control->SetClientSite(&container.site);
  const auto view = queryFor<IDispatch>(control.Get());
  for (const auto& object : objects) callMethod(view.Get(), L"Add", {object.Get(), 0L});
  control->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container.site, 0, container.window(),
                  &container.site.position);
  ScriptedContainer::pump();
  HWND window = nullptr;
  queryFor<IOleWindow>(control.Get())->GetWindow(&window);
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  for (const UINT message :
       {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_SETCURSOR, WM_MOUSELEAVE}) {
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
  DWORD cookie = 0;
  control->Advise(&container.sink, &cookie);
  FORMATETC wanted = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  queryFor<IDataObject>(control.Get())->DAdvise(&wanted, 0, &container.sink, &cookie);
  LPOLESTR text = nullptr;
  control->GetUserType(USERCLASSTYPE_FULL, &text);
  CoTaskMemFree(text);
  ComPtr<IStorage> storage;
  require(StgCreateDocfile(nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                           &storage),
          "StgCreateDocfile");
  queryFor<IPersistStorage>(control.Get())->Save(storage.Get(), FALSE);
  pictures[name] = drawnBy(control.Get());
  callMethod(view.Get(), L"RemoveAll");
  control->Close(OLECLOSE_NOSAVE);
  control->SetClientSite(nullptr);
  container.frame.activeObject.Reset();
}

Pictures useViews() {
  Pictures pictures;
  const auto objects = makeObjects();
  attempt([&] { useView(L"ZYNVue.ZYNVue3D", objects, pictures, "view 3D"); });
  attempt([&] { useView(L"ZYNVue.ZYNVue2D", objects, pictures, "view 2D"); });
  return pictures;
}

struct Steps {
  const char* name;
  Pictures (*run)();
};
constexpr std::array<Steps, 3> kSteps = {Steps{"offscreen", drawOffscreen},
                                         Steps{"by name", callByName}, Steps{"views", useViews}};

/// The library, loaded and unloaded again with everything that it remembers.
class FreshLibrary {
 public:
  FreshLibrary() = default;
  ~FreshLibrary() { EXPECT_EQ(module_.canUnloadNow(), S_OK); }
  FreshLibrary(const FreshLibrary&) = delete;
  FreshLibrary& operator=(const FreshLibrary&) = delete;

  HMODULE handle() const { return module_.handle(); }

  static void forget() {
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    ASSERT_EQ(GetModuleHandleW(L"ZYNVue.dll"), nullptr);
  }

 private:
  ServerModule module_{L"ZYNVue.dll"};
  MessageCatcher messages_{module_.handle()};
  // Nobody is there to close them.
  FailingImport dialogs_{module_.handle(), "DialogBoxParamW", {~std::uintptr_t{0}}};
};

/// What the steps draw when nothing fails, and which functions they call.
struct Usual {
  Pictures pictures;
  std::map<std::string, std::uint32_t> calls;
};

Usual observe(const Steps& steps) {
  Usual usual;
  {
    const FreshLibrary library;
    std::map<std::string, FailingCalls> counts;
    std::vector<std::unique_ptr<FailingImport>> counters;
    for (const Import& import : importsOf(library.handle())) {
      const auto rule = importRules().find(import.function);
      if (rule == importRules().end() || !rule->second.fails) continue;
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

/// The cheapest steps that call the function.
const Steps* stepsCalling(const std::string& function) {
  const auto found = std::ranges::find_if(kSteps, [&](const Steps& steps) {
    const auto& calls = usualOf(steps).calls;
    const auto call = calls.find(function);
    return call != calls.end() && call->second > 0;
  });
  return found != kSteps.end() ? &*found : nullptr;
}

class FailingCallTest : public HostTest, public testing::WithParamInterface<std::string> {
 protected:
  /// Runs the steps with so many calls of the function failing from the first one on.
  static void fail(const FreshLibrary& library, const Steps& steps, std::uint32_t count) {
    const ImportRule& rule = importRules().at(GetParam());
    const FailingImport failing(library.handle(), GetParam(), {rule.result, rule.lastError}, 1,
                                count);
    for (const auto& [name, picture] : steps.run()) {
      if (!name.ends_with("bmp")) continue;
      EXPECT_EQ(picture.size(), usualOf(steps).pictures.at(name).size())
          << name << " is there in part";
    }
    // What was made do without is not asked for again.
    EXPECT_TRUE(failing.calls().hasFailed() || count == 1);
    EXPECT_EQ(DllCanUnload(library), S_OK) << "something is lost";
  }

 private:
  static HRESULT DllCanUnload(const FreshLibrary& library) {
    const auto ask =
        std::bit_cast<HRESULT(WINAPI*)()>(GetProcAddress(library.handle(), "DllCanUnloadNow"));
    return ask();
  }
};

TEST_P(FailingCallTest, BreaksNothing) {
  const Steps* const steps = stepsCalling(GetParam());
  ASSERT_NE(steps, nullptr) << "nothing calls it";
  const Pictures& wanted = usualOf(*steps).pictures;
  {
    const FreshLibrary library;
    fail(library, *steps, FailingCalls::kAll);
    fail(library, *steps, 1);
    EXPECT_TRUE(steps->run() == wanted) << "afterwards";
  }
  FreshLibrary::forget();
}

std::vector<std::string> failingFunctions() {
  std::vector<std::string> names;
  for (const auto& [name, rule] : importRules()) {
    if (rule.fails) names.push_back(name);
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(Functions, FailingCallTest, testing::ValuesIn(failingFunctions()),
                         [](const auto& chosen) { return chosen.param; });

const GLubyte* WINAPI tellOpenGl11(GLenum name) {
  static const GLubyte kVersion[] = "1.1.0";
  static const GLubyte kNone[] = "";
  return name == GL_VERSION ? kVersion : name == GL_EXTENSIONS ? kNone : glGetString(name);
}

class OpenGl11Test : public HostTest, public testing::WithParamInterface<Steps> {};

TEST_P(OpenGl11Test, DrawsTheSameWithoutExtensions) {
  const Pictures& wanted = usualOf(GetParam()).pictures;
  EXPECT_FALSE(wanted.empty());
  {
    const FreshLibrary library;
    const FailingImport extensions(library.handle(), "wglGetProcAddress");
    const ImportPatch version(library.handle(), "glGetString",
                              reinterpret_cast<const void*>(&tellOpenGl11));
    EXPECT_TRUE(GetParam().run() == wanted);
  }
  FreshLibrary::forget();
}

INSTANTIATE_TEST_SUITE_P(Drawing, OpenGl11Test, testing::Values(kSteps[0], kSteps[2]));

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
