#include "viewer/LightsWindow_win.h"

// After windows.h:
#include <commctrl.h>

#include <cmath>
#include <string>

#include "viewer/WindowClass_win.h"

namespace zyn::viewer {

namespace {

constexpr wchar_t kClassName[] = L"ZYNVueViewerLights";
constexpr int kSwitches = 1;  // identifiers of the three check boxes
constexpr int kSliders = 10;  // of the sliders
constexpr int kValues = 30;   // of the numbers beside them
constexpr int kRow = 28;      // lengths at 96 dots per inch
constexpr int kMargin = 12;
constexpr int kWidth = 400;

enum class Field { kIntensity, kStrength, kAzimuth, kElevation };

/// One slider; `light` 0 is the ambient light, 1 and 2 are the directional ones.
struct Slider {
  int light;
  Field field;
  const wchar_t* label;
  int least;
  int most;
};

constexpr Slider kTable[] = {
    {0, Field::kIntensity, L"Intensity (%)", 0, 100},
    {1, Field::kStrength, L"Strength (%)", 0, 100},
    {1, Field::kAzimuth, L"Azimuth (\x00B0)", -180, 180},
    {1, Field::kElevation, L"Elevation (\x00B0)", -90, 90},
    {2, Field::kStrength, L"Strength (%)", 0, 100},
    {2, Field::kAzimuth, L"Azimuth (\x00B0)", -180, 180},
    {2, Field::kElevation, L"Elevation (\x00B0)", -90, 90},
};
constexpr const wchar_t* kLights[] = {L"&Ambient light", L"Light &1", L"Light &2"};
constexpr int kSliderCount = static_cast<int>(std::size(kTable));
constexpr int kRows = kSliderCount + static_cast<int>(std::size(kLights));

int percent(double fraction) { return static_cast<int>(std::lround(fraction * 100)); }

/// Of directional light 1 or 2.
auto& directional(auto& lighting, int light) {
  return lighting.directional[static_cast<std::size_t>(light) - 1];
}

int valueOf(const Lighting& lighting, const Slider& slider) {
  switch (slider.field) {
    case Field::kIntensity:
      return percent(lighting.ambient.intensity);
    case Field::kStrength:
      return percent(directional(lighting, slider.light).strength);
    case Field::kAzimuth:
      return directional(lighting, slider.light).azimuth;
    case Field::kElevation:
      break;
  }
  return directional(lighting, slider.light).elevation;
}

void setValue(Lighting& lighting, const Slider& slider, int value) {
  switch (slider.field) {
    case Field::kIntensity:
      lighting.ambient.intensity = value / 100.0;
      break;
    case Field::kStrength:
      directional(lighting, slider.light).strength = value / 100.0;
      break;
    case Field::kAzimuth:
      directional(lighting, slider.light).azimuth = value;
      break;
    case Field::kElevation:
      directional(lighting, slider.light).elevation = value;
      break;
  }
}

bool& switchOf(Lighting& lighting, int light) {
  return light == 0 ? lighting.ambient.on : directional(lighting, light).on;
}

}  // namespace

LightsWindow::LightsWindow(HWND owner, const Lighting& lighting, Changed changed)
    : changed_(std::move(changed)), scale_(owner) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  registerWindowClass(kClassName, &LightsWindow::procedure);
  constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  RECT frame = {0, 0, scale_.px(kWidth), scale_.px(2 * kMargin + kRows * kRow)};
  AdjustWindowRectEx(&frame, kStyle, FALSE, WS_EX_TOOLWINDOW);
  RECT main = {};
  GetWindowRect(owner, &main);
  window_ = CreateWindowExW(WS_EX_TOOLWINDOW, kClassName, L"Lights", kStyle,
                            main.right - (frame.right - frame.left) - 16, main.top + 72,
                            frame.right - frame.left, frame.bottom - frame.top, owner, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  addControls();
  set(lighting);
  ShowWindow(window_, SW_SHOW);
}

LightsWindow::~LightsWindow() {
  if (window_ != nullptr) {
    DestroyWindow(window_);
  }
}

HWND LightsWindow::addChild(const wchar_t* windowClass, const wchar_t* text, DWORD style,
                            const RECT& placeAt96, int identifier) {
  const HWND child = CreateWindowExW(0, windowClass, text, style | WS_CHILD | WS_VISIBLE,
                                     scale_.px(placeAt96.left), scale_.px(placeAt96.top),
                                     scale_.px(placeAt96.right - placeAt96.left),
                                     scale_.px(placeAt96.bottom - placeAt96.top), window_,
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(identifier)),
                                     GetModuleHandleW(nullptr), nullptr);
  SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(scale_.font()), TRUE);
  return child;
}

void LightsWindow::addControls() {
  LONG top = kMargin;
  int light = -1;
  for (int i = 0; i < kSliderCount; ++i) {
    const Slider& slider = kTable[i];
    if (slider.light != light) {
      light = slider.light;
      addChild(WC_BUTTONW, kLights[light], BS_AUTOCHECKBOX | WS_TABSTOP,
               {kMargin, top, kWidth - kMargin, top + kRow - 4}, kSwitches + light);
      top += kRow;
    }
    addChild(WC_STATICW, slider.label, 0, {kMargin + 20, top + 4, 130, top + kRow}, -1);
    const HWND bar = addChild(TRACKBAR_CLASSW, nullptr, TBS_NOTICKS | WS_TABSTOP,
                              {130, top, kWidth - 60, top + kRow - 2}, kSliders + i);
    SendMessageW(bar, TBM_SETRANGEMIN, TRUE, slider.least);
    SendMessageW(bar, TBM_SETRANGEMAX, TRUE, slider.most);
    // Away from 0: a trackbar that is told the position it has already does not move its thumb.
    SendMessageW(bar, TBM_SETPOS, FALSE, slider.least);
    addChild(WC_STATICW, nullptr, SS_RIGHT, {kWidth - 56, top + 4, kWidth - kMargin, top + kRow},
             kValues + i);
    top += kRow;
  }
}

void LightsWindow::set(const Lighting& lighting) {
  Lighting copy = lighting;
  for (int light = 0; light < static_cast<int>(std::size(kLights)); ++light) {
    CheckDlgButton(window_, kSwitches + light, switchOf(copy, light) ? BST_CHECKED : BST_UNCHECKED);
  }
  for (int i = 0; i < kSliderCount; ++i) {
    SendDlgItemMessageW(window_, kSliders + i, TBM_SETPOS, TRUE, valueOf(lighting, kTable[i]));
    showValue(i);
  }
}

void LightsWindow::showValue(int slider) {
  const LRESULT value = SendDlgItemMessageW(window_, kSliders + slider, TBM_GETPOS, 0, 0);
  SetDlgItemTextW(window_, kValues + slider, std::to_wstring(value).c_str());
}

Lighting LightsWindow::read() const {
  Lighting lighting;
  for (int light = 0; light < static_cast<int>(std::size(kLights)); ++light) {
    switchOf(lighting, light) = IsDlgButtonChecked(window_, kSwitches + light) == BST_CHECKED;
  }
  for (int i = 0; i < kSliderCount; ++i) {
    const LRESULT value = SendDlgItemMessageW(window_, kSliders + i, TBM_GETPOS, 0, 0);
    setValue(lighting, kTable[i], static_cast<int>(value));
  }
  return lighting;
}

bool LightsWindow::translate(MSG& message) const {
  return window_ != nullptr && IsDialogMessageW(window_, &message);
}

LRESULT CALLBACK LightsWindow::procedure(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept {
  auto* const self = reinterpret_cast<LightsWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr) {
    switch (message) {
      case WM_HSCROLL:
        self->showValue(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) - kSliders);
        self->changed_(self->read());
        return 0;
      case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL) {
          DestroyWindow(window);
        } else {
          self->changed_(self->read());
        }
        return 0;
      case WM_NCDESTROY:
        self->window_ = nullptr;
        break;
      default:
        break;
    }
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace zyn::viewer
