#pragma once

#include <windows.h>

#include <optional>

#include "com/control/ControlWindow_win.h"
#include "platform/RunningScope_win.h"

namespace zyn {

class Control;

/// The window of an active control: brings its messages to the control's hooks and does what every
/// control owes its container about focus, keys, pointer and painting.
class ActiveWindow final : public WindowClient {
 public:
  explicit ActiveWindow(Control& control) noexcept : control_(control) {}

  HWND handle() const noexcept { return window_.handle(); }
  SIZE clientSize() const noexcept;

  bool create(HWND parent, const RECT& place) noexcept;
  void destroy() noexcept;
  void place(const RECT& position, const RECT& clip) noexcept { window_.place(position, clip); }
  void show() noexcept;
  void hide() noexcept;

  /// Gives the window the keyboard unless it, or a child of it, has it.
  void takeFocus() noexcept;

  /// See PaintPause.
  RunningScope& paintPause() noexcept { return paintPause_; }
  void resumePainting() noexcept;

  std::optional<LRESULT> windowMessage(HWND window, UINT message, WPARAM wParam,
                                       LPARAM lParam) noexcept override;

 private:
  std::optional<LRESULT> handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> handleInput(UINT message, WPARAM wParam, LPARAM lParam);
  void created(HWND window);
  void ended(HWND window) noexcept;
  void resized(HWND window);
  void paint(HWND window);
  void print(HDC dc);
  void focusChanged(bool gained);

  Control& control_;
  ControlWindow window_{*this};
  HWND announced_ = nullptr;  ///< the window that the control was told of and that has not ended
  SIZE client_ = {};
  RunningScope paintPause_;
  bool paintAgain_ = false;
};

}  // namespace zyn
