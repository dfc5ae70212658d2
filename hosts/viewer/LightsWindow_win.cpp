#include "viewer/LightsWindow_win.h"

// After windows.h:
#include <commctrl.h>

#include <cmath>
#include <string>

namespace zyn::viewer {

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
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

/// In the upper right corner of the owner.
RECT placeOver(HWND owner, const UiScale& scale) {
  RECT frame = {0, 0, scale.px(kWidth), scale.px(2 * kMargin + kRows * kRow)};
  AdjustWindowRectEx(&frame, kStyle, FALSE, WS_EX_TOOLWINDOW);
  RECT main = {};
  GetWindowRect(owner, &main);
  OffsetRect(&frame, main.right - 16 - frame.right, main.top + 72 - frame.top);
  return frame;
}

}  // namespace

LightsWindow::LightsWindow(HWND owner, const Lighting& lighting, Changed changed)
    : Window({.className = L"ZYNVueViewerLights",
              .title = L"Lights",
              .style = kStyle,
              .extendedStyle = WS_EX_TOOLWINDOW,
              .place = placeOver(owner, UiScale(owner)),
              .owner = owner}),
      changed_(std::move(changed)),
      scale_(owner) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  addControls();
  set(lighting);
  listen();
  ShowWindow(handle(), SW_SHOW);
}

HWND LightsWindow::addChild(const wchar_t* windowClass, const wchar_t* text, DWORD style,
                            const RECT& placeAt96, int identifier) {
  const HWND child = CreateWindowExW(0, windowClass, text, style | WS_CHILD | WS_VISIBLE,
                                     scale_.px(placeAt96.left), scale_.px(placeAt96.top),
                                     scale_.px(placeAt96.right - placeAt96.left),
                                     scale_.px(placeAt96.bottom - placeAt96.top), handle(),
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
    CheckDlgButton(handle(), kSwitches + light,
                   switchOf(copy, light) ? BST_CHECKED : BST_UNCHECKED);
  }
  for (int i = 0; i < kSliderCount; ++i) {
    SendDlgItemMessageW(handle(), kSliders + i, TBM_SETPOS, TRUE, valueOf(lighting, kTable[i]));
    showValue(i);
  }
}

void LightsWindow::showValue(int slider) {
  const LRESULT value = SendDlgItemMessageW(handle(), kSliders + slider, TBM_GETPOS, 0, 0);
  SetDlgItemTextW(handle(), kValues + slider, std::to_wstring(value).c_str());
}

Lighting LightsWindow::read() const {
  Lighting lighting;
  for (int light = 0; light < static_cast<int>(std::size(kLights)); ++light) {
    switchOf(lighting, light) = IsDlgButtonChecked(handle(), kSwitches + light) == BST_CHECKED;
  }
  for (int i = 0; i < kSliderCount; ++i) {
    const LRESULT value = SendDlgItemMessageW(handle(), kSliders + i, TBM_GETPOS, 0, 0);
    setValue(lighting, kTable[i], static_cast<int>(value));
  }
  return lighting;
}

std::optional<LRESULT> LightsWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_HSCROLL:
      showValue(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) - kSliders);
      changed_(read());
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) == IDCANCEL) {
        DestroyWindow(handle());
      } else {
        changed_(read());
      }
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace zyn::viewer
