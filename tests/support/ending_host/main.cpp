// A host that ends with objects of the library alive: ending_host SUBJECT WAY. Its exit code is 42.
#include <bit>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "support/ControlTest_win.h"
#include "support/ForeignObject_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

int exitCode = 42;

/// One reference on each object, for whoever lets go of them, if anybody does.
std::vector<IUnknown*> held;

void releaseAll() {
  for (IUnknown* const object : std::exchange(held, {})) object->Release();
}

bool releasedByStatic = false;
struct StaticReleaser {
  ~StaticReleaser() {
    if (releasedByStatic) releaseAll();
  }
} staticReleaser;

template <class Interface>
Interface* hold(ComPtr<Interface> object) {
  held.push_back(object.Get());
  return object.Detach();
}

// --- ways to end ---------------------------------------------------------------------------------

HMODULE releaser = nullptr;

void loadReleaser() { releaser = LoadLibraryW(L"late_releaser.dll"); }

void handOver(bool close) {
  exitCode = 41;  // unless the releaser comes through
  const auto takeOver =
      std::bit_cast<void (*)(IUnknown*, BOOL)>(GetProcAddress(releaser, "takeOver"));
  for (IUnknown* const object : std::exchange(held, {})) takeOver(object, close);
}

/// Of the containers.
std::vector<HWND> frames;

/// What ending COM does on Windows, objects or not: here they keep the library.
void unloadLibrary() {
  for (int left = 20; left > 0; --left) {
    if (const HMODULE library = GetModuleHandleW(L"ZYNVue.dll")) FreeLibrary(library);
  }
  if (GetModuleHandleW(L"ZYNVue.dll")) exitCode = 39;
}

void closeFrames() {
  for (const HWND frame : frames) {
    ScriptedContainer::pump();
    RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    DestroyWindow(frame);
  }
}

/// With its last window a thread loses its input method, and with that its last use of COM, which
/// would ask the library that it takes for loaded whether it may go.
void keepAWindow() {
  CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                  nullptr);
}

const std::map<std::string, std::function<void()>> kWays = {
    {"return", [] {}},
    {"exit", [] { std::exit(exitCode); }},
    {"atexit",
     [] {
       std::atexit(releaseAll);
       std::exit(exitCode);
     }},
    {"static", [] { releasedByStatic = true; }},
    {"ExitProcess", [] { ExitProcess(static_cast<UINT>(exitCode)); }},
    {"uninitialize", [] { OleUninitialize(); }},
    {"unloadUnderWindows",
     [] {
       keepAWindow();
       OleUninitialize();
       unloadLibrary();
       closeFrames();
     }},
    {"uninitializeUnderWindows",
     [] {
       OleUninitialize();
       closeFrames();
     }},
    {"unload",  // the library goes before the process does
     [] {
       releaseAll();
       CoFreeUnusedLibrariesEx(0, 0);
     }},
    {"detach", [] { handOver(false); }},
    {"detachAndClose", [] { handOver(true); }},
    {"detachFirst",
     [] {
       loadReleaser();
       handOver(false);
     }},
    {"thread",
     [] {
       std::thread([] { ExitProcess(static_cast<UINT>(exitCode)); }).detach();
       for (;;) {
         ScriptedContainer::pump();
         Sleep(1);
       }
     }},
};

std::function<void()> way;

void endNow() {
  way();
  std::exit(exitCode);  // the ways that go on by returning from main
}

// --- subjects ------------------------------------------------------------------------------------

/// A view in a container that is left behind with it.
IOleObject* showView(const wchar_t* progId, REFIID events) {
  auto* const container = new ScriptedContainer(events, {80, 60});
  frames.push_back(container->window());
  IOleObject* const view = hold(createObject<IOleObject>(progId));
  require(view->SetClientSite(&container->site), "SetClientSite");
  const RECT position = container->site.position;
  require(view->DoVerb(OLEIVERB_SHOW, nullptr, &container->site, 0, container->window(), &position),
          "DoVerb");
  ComPtr<IConnectionPoint> source;
  require(
      queryFor<IConnectionPointContainer>(view)->FindConnectionPoint(events, source.GetAddressOf()),
      "FindConnectionPoint");
  DWORD cookie = 0;
  require(source->Advise(&container->events, &cookie), "Advise");
  return view;
}

ComPtr<IZYNVue3D> show3D() {
  return queryFor<IZYNVue3D>(showView(kVue3DProgId, DIID__IZYNVue3DEvents));
}

HWND windowOf(IUnknown* view) {
  HWND window = nullptr;
  queryFor<IOleWindow>(view)->GetWindow(&window);
  return window;
}

ComPtr<IDispatch> makeText() {
  const auto text = createObject<IZYNGLTexte>(kTextProgId);
  text->put_Texte(_bstr_t(L"3.14"));
  return text;
}

template <class View>
void fill(View* view) {
  view->Add(makeText().Get(), 0);
  view->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed).Get(), 0);
}

/// Both views, one with the mouse captured, and both bitmap contexts, all with something drawn.
void showEverything() {
  const auto view3D = show3D();
  fill(view3D.Get());
  const auto view2D = queryFor<IZYNVue2D>(showView(kVue2DProgId, DIID__IZYNVue2DEvents));
  fill(view2D.Get());
  long made = 0;
  IZYN3DGLBitmapContext* const context3D =
      hold(createObject<IZYN3DGLBitmapContext>(kContextProgId));
  context3D->CreateContext(64, 64, &made);
  fill(context3D);
  hold([&] {
    ComPtr<IPictureDisp> picture;
    context3D->GetPictureDisp(picture.GetAddressOf());
    return picture;
  }());
  IZYN2DGLBitmapContext* const context2D =
      hold(createObject<IZYN2DGLBitmapContext>(kContext2DProgId));
  context2D->CreateContexte(64, 64, &made);
  fill(context2D);
  ScriptedContainer::pump();
  SendMessageW(windowOf(view2D.Get()), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  SendMessageW(windowOf(view3D.Get()), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  SendMessageW(windowOf(view3D.Get()), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(9, 7));
}

void endInDialog() {
  SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
    if (FindWindowW(L"#32770", L"Lumiere Ambiante")) endNow();
  });
  show3D()->EditAmbiantLight();
}

ComPtr<ForeignObject> makeEnding() {
  auto ending = makeForeign<ForeignObject>();
  ending->onDraw3D = [](int) -> HRESULT {
    endNow();
    return S_OK;
  };
  return ending;
}

void endInPaint() {
  const auto view = show3D();
  view->Add(makeEnding()->dispatch(), 0);
  RedrawWindow(windowOf(view.Get()), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

void endInExport() {
  IZYN3DGLBitmapContext* const context = hold(createObject<IZYN3DGLBitmapContext>(kContextProgId));
  long made = 0;
  context->CreateContext(64, 64, &made);
  context->Add(makeEnding()->dispatch(), 0);
  ComPtr<IPictureDisp> picture;
  context->GetPictureDisp(picture.GetAddressOf());
}

const std::map<std::string, void (*)()> kSubjects = {{"everything", showEverything},
                                                     {"dialog", endInDialog},
                                                     {"paint", endInPaint},
                                                     {"export", endInExport}};

/// The system keeps quiet about crashes while it tells DLLs of the end: this does not.
LONG CALLBACK endOnCrash(EXCEPTION_POINTERS* exception) {
  if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION) {
    TerminateProcess(GetCurrentProcess(), 40);
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

int run(const std::string& subject, const std::string& nameOfWay) {
  AddVectoredExceptionHandler(1, endOnCrash);
  way = kWays.at(nameOfWay);
  // Told of the end after everything that is loaded later.
  if (nameOfWay == "detach" || nameOfWay == "detachAndClose") loadReleaser();
  require(OleInitialize(nullptr), "OleInitialize");
  kSubjects.at(subject)();
  way();
  return exitCode;
}

}  // namespace
}  // namespace zyn::test

int main(int argc, char** argv) {
  if (argc != 3) return 1;
  try {
    return zyn::test::run(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
