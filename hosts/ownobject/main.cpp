// ownobject: an object of the host's own in a 3D view. A click marks the coil that it hit; the
// middle button turns the view.

#include <windows.h>
// After windows.h:
#include <wrl/client.h>

#include <exception>
#include <string>

#include "common/NumberArray_com.h"
#include "minimal/ViewWindow_com.h"
#include "ownobject/Spring_com.h"

namespace zyn::sample {
namespace {

constexpr DISPID kMouseSelection = 3;
constexpr short kPick = -1;
constexpr LONG kShaded = 0;

void showPicked(ViewWindow& window, Spring& spring, const VARIANT& selection) {
  const std::vector<std::int32_t> names = host::integersOf(selection);
  if (names.empty()) {
    spring.mark({});
    SetWindowTextW(window.window(), L"Nothing picked");
  } else {
    spring.mark(names.front());
    SetWindowTextW(window.window(), (L"Coil " + std::to_wstring(names.front())).c_str());
  }
  window.view().Repaint();
}

void run() {
  ViewWindow window(L"A spring");
  const Microsoft::WRL::ComPtr<Spring> spring(
      new Spring({.coils = 6, .radius = 10, .wire = 2, .pitch = 6}));
  IZYNVue3D& view = window.view();
  check(view.Add(spring.Get(), kShaded), L"Add");
  check(view.AddSelection(spring.Get()), L"AddSelection");
  check(view.put_MouseMode(kPick), L"MouseMode");
  // On, red, green, blue, ambient, diffuse and specular, azimuth and elevation.
  const double light[] = {1, 1, 1, 1, 0.2, 0.8, 0.3, -0.6, 0.6};
  check(view.put_DirectionLight1Property(host::numberArray(light)), L"DirectionLight1Property");
  check(view.initView(0.3), L"initView");
  check(view.RotateV(-20), L"RotateV");
  window.events().handler = [&](DISPID event, const DISPPARAMS& arguments) {
    if (event == kMouseSelection) {
      showPicked(window, *spring.Get(), arguments.rgvarg[0]);  // the last argument comes first
    }
  };
  window.run();
}

}  // namespace
}  // namespace zyn::sample

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  try {
    zyn::host::check(OleInitialize(nullptr), L"OleInitialize");
    zyn::sample::run();
    OleUninitialize();
    return 0;
  } catch (const std::exception& error) {
    MessageBoxA(nullptr, error.what(), "ZYNVue", MB_ICONERROR);
    return 1;
  }
}
