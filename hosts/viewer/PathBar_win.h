#pragma once

#include <windows.h>

#include <functional>
#include <memory>

#include "viewer/ToolBar_win.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// What a person does with the slider.
class PathBarEvents {
 public:
  virtual ~PathBarEvents() = default;
  /// It was moved to a part of the whole, 0 to 1.
  virtual void pathSlid(double part) = 0;
};

/// The panel below the view: buttons that lead along a path, and a slider. The window that it is a
/// child of destroys it.
class PathBar {
 public:
  PathBar(HWND parent, PathBarEvents& events, const UiScale& scale);

  void scaleTo(const UiScale& scale);
  void place(const RECT& area) const;
  void setVisible(bool visible) const;
  bool isVisible() const;
  int height() const;

  /// Moves the slider to a part of the whole, without telling.
  void showPart(double part) const;

  /// Shows how fast the path is played.
  void showFactor(double factor) const;

  void markTools(const std::function<bool(Command)>& isOn) { tools_->mark(isOn); }

  /// Whether the message was the slider's.
  bool scrolled(LPARAM lParam) const;

  /// Whether a key is one by which the slider moves, and comes to it.
  bool keepsKey(const MSG& message) const;

 private:
  PathBarEvents& events_;
  std::unique_ptr<ToolBar> tools_;
  HWND slider_;
  HWND factor_;
  int factorWidth_ = 0;
};

}  // namespace zyn::viewer
