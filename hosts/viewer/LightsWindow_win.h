#pragma once

#include <windows.h>

#include <functional>

#include "viewer/Lighting.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// A small window over the main one in which the lights are moved while the view follows.
class LightsWindow {
 public:
  using Changed = std::function<void(const Lighting&)>;

  LightsWindow(HWND owner, const Lighting& lighting, Changed changed);
  ~LightsWindow();
  LightsWindow(const LightsWindow&) = delete;
  LightsWindow& operator=(const LightsWindow&) = delete;

  bool isOpen() const { return window_ != nullptr; }

  /// Moves the controls to other lights, without calling back.
  void set(const Lighting& lighting);

  /// Whether the message was one of the dialog's keys.
  bool translate(MSG& message) const;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;
  void addControls();
  HWND addChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& placeAt96,
                int identifier);
  void showValue(int slider);
  Lighting read() const;

  Changed changed_;
  UiScale scale_;
  HWND window_ = nullptr;
};

}  // namespace zyn::viewer
