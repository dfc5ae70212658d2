#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "viewer/StatusLayout.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// The bar at the bottom of a window, with panes of text, which are as wide as it is, one of them
/// only while there is some, and, while something takes long, a progress bar in the place of the
/// second. The window that it is a child of destroys it.
class StatusBar {
 public:
  enum Pane { kMessage, kPicks, kPoint, kMode, kPath };

  StatusBar(HWND parent, const UiScale& scale);

  void scaleTo(const UiScale& scale);

  /// Shows UTF-8 text; cheap when the pane shows it already.
  void show(Pane pane, const std::string& text);

  /// Shows how much of something is done, 0 to 1, until hideProgress.
  void showProgress(double part);
  void hideProgress();

  int height() const;

  /// To be called after the parent has changed its size.
  void arrange();

 private:
  static constexpr std::size_t kPanes = 5;

  void measure(Pane pane);
  void divide();
  bool isProgressShown() const;

  HWND bar_;
  HWND progress_;
  int padding_ = 0;
  int grip_ = 0;
  int progressWidth_ = 0;
  std::array<std::string, kPanes> texts_;
  std::array<PaneWidth, kPanes> widths_;
  std::vector<int> edges_;  ///< of the panes as they are
};

}  // namespace zyn::viewer
