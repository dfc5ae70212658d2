#pragma once

#include <windows.h>

#include <vector>

#include "viewer/Commands.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// A small window over the main one that lists what mouse and keys do, until it is closed.
class HelpWindow {
 public:
  HelpWindow(HWND owner, const std::vector<HelpRow>& rows);
  ~HelpWindow();
  HelpWindow(const HelpWindow&) = delete;
  HelpWindow& operator=(const HelpWindow&) = delete;

  /// Whether the message was one of the window's keys.
  bool translate(MSG& message) const;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;
  void addList(const std::vector<HelpRow>& rows);
  void showAllColumns() const;

  UiScale scale_;
  HWND window_ = nullptr;
  HWND list_ = nullptr;
};

}  // namespace zyn::viewer
