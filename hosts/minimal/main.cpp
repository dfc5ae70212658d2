// minimal: a window with a 3D view and two objects. A click tells what it hit; the
// middle button turns the view.

#include <exception>
#include <string>

#include "common/NumberArray_com.h"
#include "minimal/ViewWindow_com.h"

namespace zyn::sample {
constexpr DISPID kMouseSelection = 3;
constexpr short kPick = -1;
constexpr LONG kShaded = 0;

/// A text that answers to a name when it is picked.
static void addText(IZYNVue3D& view, const wchar_t* words, double y, LONG name) {
  const auto text = host::ClassObject(L"ZYNVue.ZYNGLTexte").create<IZYNGLTexte>();
  check(text->put_Texte(_bstr_t(words)), L"Texte");
  check(text->put_HauteurPixels(60), L"HauteurPixels");
  check(text->setPosition(0, y, 0, 9), L"setPosition");
  check(text->put_NomSelection(name), L"NomSelection");
  check(view.Add(text.Get(), kShaded), L"Add");
  check(view.AddSelection(text.Get()), L"AddSelection");
}

static void run() {
  ViewWindow window(L"ZYNVue");
  addText(window.view(), L"one", -1, 1);
  addText(window.view(), L"two", 1, 2);
  check(window.view().put_MouseMode(kPick), L"MouseMode");
  check(window.view().initView(1), L"initView");
  window.events().handler = [&](DISPID event, const DISPPARAMS& arguments) {
    if (event == kMouseSelection) {
      const auto names = host::integersOf(arguments.rgvarg[0]);
      const std::wstring hit = names.empty() ? L"nothing" : std::to_wstring(names.front());
      SetWindowTextW(window.window(), (L"Picked: " + hit).c_str());
    }
  };
  window.run();
}

}  // namespace zyn::sample

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) try {
  zyn::sample::check(OleInitialize(nullptr), L"OleInitialize");
  zyn::sample::run();
  OleUninitialize();
  return 0;
} catch (const std::exception& error) {
  MessageBoxA(nullptr, error.what(), "ZYNVue", MB_ICONERROR);
  return 1;
}
