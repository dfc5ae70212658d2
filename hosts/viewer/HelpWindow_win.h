#pragma once

#include <windows.h>

#include <vector>

#include "viewer/Commands.h"
#include "viewer/UiScale_win.h"
#include "viewer/Window_win.h"

namespace zyn::viewer {

/// A small window over the main one that lists what mouse and keys do, until it is closed.
class HelpWindow final : public Window {
 public:
  HelpWindow(HWND owner, const std::vector<HelpRow>& rows);

 private:
  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  void addList(const std::vector<HelpRow>& rows);
  void showAllColumns() const;

  UiScale scale_;
  HWND list_ = nullptr;
};

}  // namespace zyn::viewer
