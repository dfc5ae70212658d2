#pragma once

#include <windows.h>
// After windows.h:
#include <commctrl.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "viewer/ToolBar_win.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

/// What a person does in the tree. Parts are numbered from 1.
class PartsTreeEvents {
 public:
  virtual ~PartsTreeEvents() = default;
  /// A check box was clicked, or that of the model (part 0) or of the program (part kProgram).
  virtual void partChecked(int part, bool shown) = 0;
  virtual void partClicked(int part) = 0;
};

/// The panel beside the view: the model, below it its parts, and then the program, with a check box
/// each. The window that it is a child of destroys it.
class PartsTree {
 public:
  static constexpr int kProgram = -1;

  PartsTree(HWND parent, PartsTreeEvents& events, const UiScale& scale);

  void scaleTo(const UiScale& scale);
  void place(const RECT& area) const;
  void setVisible(bool visible) const;
  bool isVisible() const;

  /// Names of the model and of its parts, UTF-8; all are checked.
  void fill(const std::string& model, const std::vector<std::string>& parts);

  void clear();

  /// The name of the program, checked; empty for none.
  void showProgram(const std::string& name);

  /// Checks parts, or part 0, the model's own box, or kProgram.
  void check(int part, bool shown);

  /// Marks the rows of these parts, and only these, and scrolls to the first.
  void emphasise(const std::set<int>& parts);

  /// The answer to a message from the tree; none where it needs no answer.
  std::optional<LRESULT> notified(NMHDR& message);

  /// Whether a key is the one that checks a row, and comes to the tree.
  bool keepsKey(const MSG& message) const {
    return message.hwnd == tree_ && message.wParam == VK_SPACE;
  }

 private:
  HTREEITEM insert(HTREEITEM parent, HTREEITEM after, const std::string& name, int part);
  HTREEITEM itemOf(int part) const {
    return part == kProgram ? program_ : items_[static_cast<std::size_t>(part)];
  }
  int partOf(HTREEITEM item) const;
  bool isEmphasised(HTREEITEM item) const;
  LRESULT paint(NMTVCUSTOMDRAW& drawing) const;
  void toggle(HTREEITEM item);

  PartsTreeEvents& events_;
  HWND tree_;
  Images boxes_;
  std::vector<HTREEITEM> items_;  ///< the model's, and those of the parts
  HTREEITEM program_ = nullptr;   ///< null for none
  bool filling_ = false;
};

}  // namespace zyn::viewer
