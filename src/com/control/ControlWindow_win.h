#pragma once

#include <windows.h>

#include <optional>

namespace zyn {

/// Who handles the messages of a ControlWindow.
class WindowClient {
 public:
  /// A message. No value: the system deals with it. Whatever happens to the client meanwhile, the
  /// window procedure does not touch it afterwards.
  virtual std::optional<LRESULT> windowMessage(HWND window, UINT message, WPARAM wParam,
                                               LPARAM lParam) noexcept = 0;

 protected:
  ~WindowClient() = default;
};

/// A child window of this module's own class, without a background; it may be destroyed by its
/// parent at any time.
class ControlWindow {
 public:
  explicit ControlWindow(WindowClient& client) noexcept : client_(client) {}
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;
  ~ControlWindow() { destroy(); }

  /// Makes the window, hidden, in the place given in the parent's client coordinates. False when
  /// that fails.
  bool create(HWND parent, const RECT& place) noexcept;
  void destroy() noexcept;

  /// Null before creation and from the beginning of destruction, by whomever, or from a message
  /// that says so.
  HWND handle() const noexcept;

  /// Moves the window, and lets only what lies inside `clip` show (parent's coordinates; an empty
  /// rectangle means no limit).
  void place(const RECT& position, const RECT& clip) noexcept;

 private:
  friend class ControlWindowClass;
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;

  WindowClient& client_;
  HWND window_ = nullptr;  ///< until it forgets us
  bool ending_ = false;    ///< it has been told to be destroyed
  bool clipped_ = false;
};

}  // namespace zyn
