#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "viewer/Commands.h"
#include "viewer/MenuBar_win.h"
#include "viewer/PartsTree_win.h"
#include "viewer/StatusBar_win.h"
#include "viewer/ToolBar_win.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// What the frame tells its owner. What these functions throw ends at the window's edge, as
/// `failed`.
class FrameEvents : public PartsTreeEvents {
 public:
  virtual void chosen(Command command) = 0;
  virtual bool isOn(Command command) = 0;
  virtual std::vector<std::wstring> recentFiles() = 0;
  virtual void dropped(const std::filesystem::path& file) = 0;
  /// The place for the view has changed; client coordinates.
  virtual void arranged(const RECT& viewArea) = 0;
  virtual void activated(bool active) = 0;
  /// The person closes the window; it is destroyed when this returns true.
  virtual bool mayClose() = 0;
  /// The window is being destroyed; its children still exist.
  virtual void closing() = 0;
  virtual void failed(const std::string& message) noexcept = 0;
};

/// The main window: menu bar, keys, tool bar, tree of parts, status bar, dropped files, and the
/// area for the view.
class FrameWindow {
 public:
  /// Hidden, with a view area of the given size, and the commands of a pane.
  FrameWindow(FrameEvents& events, PaneKind pane, SIZE view);
  ~FrameWindow();
  FrameWindow(const FrameWindow&) = delete;
  FrameWindow& operator=(const FrameWindow&) = delete;

  HWND handle() const { return window_; }
  HACCEL accelerators() const { return accelerators_.get(); }
  StatusBar& status() { return *status_; }
  PartsTree& parts() { return *parts_; }
  RECT viewArea() const;

  void setTitle(const std::wstring& title);

  /// Changes menu bar, tool bar and keys to those of a pane; the model's has the tree beside it.
  void showCommandsOf(PaneKind pane);

  /// Shows on the tool bar which commands are on; to be called when the program has nothing to do.
  void markTools();

  /// Whether the message was one of our keys.
  bool translate(MSG& message) const;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;
  /// The answer to a message; none where it was not dealt with.
  std::optional<LRESULT> handle(UINT message, WPARAM wParam, LPARAM lParam);
  void openDropped(WPARAM message);
  void fitViewTo(SIZE view);
  void arrange();
  /// The gap between tree and view, by which they are made wider and smaller.
  RECT splitter() const;
  bool isOverSplitter() const;
  void dragSplitter(int x);
  void changeScale(const RECT& proposed);

  FrameEvents& events_;
  PaneKind pane_;
  Accelerators accelerators_;
  HWND window_ = nullptr;
  std::unique_ptr<UiScale> scale_;
  std::unique_ptr<ToolBar> tools_;
  std::unique_ptr<PartsTree> parts_;
  std::unique_ptr<StatusBar> status_;
  int treeWidth_ = 0;
};

}  // namespace zyn::viewer
