#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "viewer/Commands.h"
#include "viewer/MenuBar_win.h"
#include "viewer/PartsTree_win.h"
#include "viewer/PathBar_win.h"
#include "viewer/ProgramList_win.h"
#include "viewer/StatusBar_win.h"
#include "viewer/ToolBar_win.h"
#include "viewer/UiScale_win.h"
#include "viewer/Window_win.h"

namespace zyn::viewer {

/// What the frame tells its owner. What these functions throw ends at the window's edge, as
/// `failed`.
class FrameEvents : public PartsTreeEvents, public PathBarEvents, public ProgramListEvents {
 public:
  virtual void chosen(Command command) = 0;
  virtual bool isOn(Command command) = 0;
  virtual std::vector<std::wstring> recentFiles() = 0;
  virtual void dropped(const std::filesystem::path& file) = 0;
  /// The place for the view has changed; client coordinates.
  virtual void arranged(const RECT& viewArea) = 0;
  virtual void activated(bool active) = 0;
  /// A timer of the window has run out.
  virtual void ticked() = 0;
  /// The person closes the window; it is destroyed when this returns true.
  virtual bool mayClose() = 0;
  /// The window is being destroyed; its children still exist.
  virtual void closing() = 0;
  virtual void failed(const std::string& message) noexcept = 0;
};

/// What is shown around the view.
struct Panels {
  bool parts = false;
  bool path = false;  ///< slider and lines

  bool operator==(const Panels&) const = default;
};

/// The main window: menu bar, keys, tool bar, tree of parts, lines of a program, slider, status
/// bar, dropped files, and the area for the view.
class FrameWindow final : public Window {
 public:
  /// Hidden, with a view area of the given size, and the commands of a pane.
  FrameWindow(FrameEvents& events, PaneKind pane, const Panels& panels, SIZE view);
  ~FrameWindow();
  FrameWindow(const FrameWindow&) = delete;
  FrameWindow& operator=(const FrameWindow&) = delete;

  HACCEL accelerators() const { return accelerators_.get(); }
  StatusBar& status() { return *status_; }
  PartsTree& parts() { return *parts_; }
  PathBar& pathBar() { return *pathBar_; }
  ProgramList& program() { return *program_; }
  RECT viewArea() const;

  void setTitle(const std::wstring& title);

  /// Changes menu bar, tool bar and keys to those of a pane.
  void showCommandsOf(PaneKind pane);

  /// Shows these panels and no others.
  void showPanels(const Panels& panels);

  /// Shows on the tool bar which commands are on; to be called when the program has nothing to do.
  void markTools();

  /// Whether the message was one of our keys.
  bool translate(MSG& message) const;

  /// Whether the message is a key that a panel needs for itself.
  bool isKeyOfPanel(const MSG& message) const;

 private:
  /// A gap between view and panel, by which the panel is made wider and smaller.
  enum class Gap : std::uint8_t { kNone, kParts, kProgram };

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  std::optional<LRESULT> handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> handleMouse(UINT message, LPARAM lParam);
  std::optional<LRESULT> notified(NMHDR& message);
  void openDropped(WPARAM message);
  void setVisible(const Panels& panels);
  void fitViewTo(SIZE view);
  void arrange();
  /// All between the bars at top and bottom.
  RECT middle() const;
  /// Empty, at the window's edge, where there is no panel.
  RECT placeOf(Gap gap) const;
  Gap gapUnderMouse() const;
  void dragGap(int x);
  void changeScale(const RECT& proposed);

  FrameEvents& events_;
  PaneKind pane_;
  Accelerators accelerators_;
  std::unique_ptr<UiScale> scale_;
  std::unique_ptr<ToolBar> tools_;
  std::unique_ptr<PartsTree> parts_;
  std::unique_ptr<PathBar> pathBar_;
  std::unique_ptr<ProgramList> program_;
  std::unique_ptr<StatusBar> status_;
  int treeWidth_ = 0;
  int programWidth_ = 0;
  Gap dragged_ = Gap::kNone;
};

}  // namespace zyn::viewer
