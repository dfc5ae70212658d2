#pragma once

#include <windows.h>

#include <optional>

namespace zyn::viewer {

/// A window of the program whose messages its object answers, as long as both exist.
class Window {
 public:
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Null when it is closed.
  HWND handle() const { return window_; }
  bool isOpen() const { return window_ != nullptr; }

  /// Whether the message was one of the keys by which people go through a dialog.
  bool translate(MSG& message) const;

 protected:
  struct Description {
    const wchar_t* className;
    const wchar_t* title;
    DWORD style;
    DWORD extendedStyle;
    RECT place;
    HWND owner = nullptr;
    HMENU menu = nullptr;
  };

  /// Throws std::runtime_error.
  explicit Window(const Description& description);
  ~Window();

  /// Destroys the window without asking the object any more; for those that own windows in it.
  void close();

  /// To be called when the object is whole: only from then on it is asked for answers.
  void listen();

  /// The answer to a message; none where it is to be dealt with as usual.
  virtual std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;

  HWND window_;
};

}  // namespace zyn::viewer
