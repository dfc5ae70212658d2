#pragma once

#include <windows.h>

#include <functional>

#include "viewer/Lighting.h"
#include "viewer/UiScale_win.h"
#include "viewer/Window_win.h"

namespace zyn::viewer {

/// A small window over the main one in which the lights are moved while the view follows.
class LightsWindow final : public Window {
 public:
  using Changed = std::function<void(const Lighting&)>;

  LightsWindow(HWND owner, const Lighting& lighting, Changed changed);

  /// Moves the controls to other lights, without calling back.
  void set(const Lighting& lighting);

 private:
  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  void addControls();
  HWND addChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& placeAt96,
                int identifier);
  void showValue(int slider);
  Lighting read() const;

  Changed changed_;
  UiScale scale_;
};

}  // namespace zyn::viewer
