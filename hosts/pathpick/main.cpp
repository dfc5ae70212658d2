// pathpick PROGRAM: a click on the path of a program for a mill leads the tool there, and the title
// tells the line; the middle button turns the view.

#include <comutil.h>

#include <exception>
#include <string>

#include "common/NumberArray_com.h"
#include "minimal/ViewWindow_com.h"

namespace zyn::sample {
constexpr DISPID kMouseSelection = 3;
constexpr short kPick = -1;
constexpr LONG kShaded = 0;
constexpr LONG kDoneAndToDo = 2;

static ComPtr<IZYNGLTrajet> loadPath(const wchar_t* program) {
  const auto path = host::ClassObject(L"ZYNVue.ZYNGLTrajet").create<IZYNGLTrajet>();
  host::checkTold(path->ChargerGCode(_bstr_t(program)), L"ChargerGCode");
  check(path->put_ModeCouleur(kDoneAndToDo), L"ModeCouleur");
  check(path->setCouleurFait(0.1, 0.55, 0.3, 1), L"setCouleurFait");
  check(path->put_EpaisseurTrait(1.5), L"EpaisseurTrait");
  const auto tool = host::ClassObject(L"ZYNVue.ZYNOutil").create<IZYNOutil>();
  check(tool->put_Diametre(3), L"Diametre");
  check(tool->put_LongueurCoupe(6), L"LongueurCoupe");
  check(tool->put_Longueur(9), L"Longueur");
  check(path->putref_Outil(tool.Get()), L"Outil");
  return path;
}

static void show(IZYNVue3D& view, IZYNGLTrajet& path) {
  check(view.Add(&path, kShaded), L"Add");
  check(view.AddSelection(&path), L"AddSelection");
  check(view.put_LineAntialiasing(VARIANT_TRUE), L"LineAntialiasing");
  check(view.put_PickSize(5), L"PickSize");  // lines are thin
  check(view.put_MouseMode(kPick), L"MouseMode");
  check(view.initView(0.1), L"initView");
  check(view.RotateH(30), L"RotateH");
  check(view.RotateV(-40), L"RotateV");
}

/// Leads the tool to the begin of the segment that was hit. Returns what the title tells.
static std::wstring leadTool(IZYNVue3D& view, IZYNGLTrajet& path, const VARIANT& selection) {
  const auto names = host::integersOf(selection);  // the name of the path, and the segment
  if (names.size() < 2) {
    return L"Picked: nothing";
  }
  LONG line = 0;
  const bool led = SUCCEEDED(path.put_PositionSegment(names[1])) &&
                   SUCCEEDED(path.get_PositionLigne(&line)) && SUCCEEDED(view.Repaint());
  return led ? L"Picked: line " + std::to_wstring(line) : L"The tool cannot be led there";
}

static void run(const wchar_t* program) {
  const auto path = loadPath(program);
  ViewWindow window(L"Tool path");
  show(window.view(), *path.Get());
  window.events().handler = [&](DISPID event, const DISPPARAMS& arguments) {
    if (event == kMouseSelection) {
      const auto title = leadTool(window.view(), *path.Get(), arguments.rgvarg[0]);
      SetWindowTextW(window.window(), title.c_str());
    }
  };
  window.run();
}

}  // namespace zyn::sample

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR program, int) try {
  zyn::sample::check(OleInitialize(nullptr), L"OleInitialize");
  zyn::sample::run(program);
  OleUninitialize();
  return 0;
} catch (const std::exception& error) {
  MessageBoxA(nullptr, error.what(), "ZYNVue", MB_ICONERROR);
  return 1;
}
