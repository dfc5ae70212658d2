#pragma once

#include <windows.h>
// After windows.h:
#include <commctrl.h>

#include <optional>

#include "viewer/ProgramLines.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// What a person does in the list of lines, which are numbered from 1.
class ProgramListEvents {
 public:
  virtual ~ProgramListEvents() = default;
  virtual void lineChosen(long line) = 0;
};

/// The panel with the lines of a program, of which it makes no copy: a million of them cost
/// nothing. The window that it is a child of destroys it.
class ProgramList {
 public:
  ProgramList(HWND parent, ProgramListEvents& events, const UiScale& scale);

  void scaleTo(const UiScale& scale);
  void place(const RECT& area) const;
  void setVisible(bool visible) const;
  bool isVisible() const;

  /// Shows the lines of a program, which is to stay where it is until it is replaced; null: none.
  void show(const ProgramLines* lines);

  /// Selects a line and scrolls it into the middle, without telling.
  void selectLine(long line);

  /// The answer to a message from the list; none where it needs no answer.
  std::optional<LRESULT> notified(NMHDR& message);

  /// Whether a key is one by which the selection moves, and comes to the list.
  bool keepsKey(const MSG& message) const;

 private:
  void fill(LVITEMW& item) const;
  LRESULT paint(NMLVCUSTOMDRAW& drawing) const;
  void setWidths() const;
  void scrollToMiddle(int row) const;

  ProgramListEvents& events_;
  HWND list_;
  int digitWidth_ = 0;
  int scrollBar_ = 0;
  const ProgramLines* lines_ = nullptr;
  bool selecting_ = false;
};

}  // namespace zyn::viewer
