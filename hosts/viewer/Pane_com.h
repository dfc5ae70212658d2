#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "viewer/Commands.h"
#include "viewer/ControlHost_com.h"
#include "viewer/FrameWindow_win.h"

namespace zyn::viewer {

/// What a pane needs of the window that it is in.
class PaneOwner {
 public:
  virtual ~PaneOwner() = default;

  virtual HWND window() = 0;
  virtual HACCEL accelerators() = 0;
  virtual RECT viewArea() = 0;
  virtual StatusBar& status() = 0;
  virtual PartsTree& parts() = 0;
  virtual PathBar& pathBar() = 0;
  virtual ProgramList& program() = 0;
  /// Whether somebody looks at the window: else nothing is to take time for its looks.
  virtual bool isWatched() = 0;
  /// To be called when the pane shows other files than before, but not from its loading.
  virtual void filesChanged() = 0;
  virtual void failed(const std::string& message) noexcept = 0;
};

/// What fills the window: a control, and what it shows.
class Pane {
 public:
  virtual ~Pane() = default;
  Pane(const Pane&) = delete;
  Pane& operator=(const Pane&) = delete;

  /// The files that are shown, the one that pictures are named after first; empty for none.
  virtual std::vector<std::filesystem::path> files() const = 0;

  /// The panels that are to be seen around the view.
  virtual Panels panels() const { return {}; }

  /// Whether the command was one of the pane's.
  virtual bool carryOut(Command command) = 0;

  /// Whether a switch or a choice of the pane is on; false for other commands.
  virtual bool isOn(Command command) = 0;

  /// Writes a picture of what is shown, of the size of the view, in the format that the name ends
  /// in. Throws std::runtime_error, and leaves no file, on failure.
  virtual void exportTo(const std::filesystem::path& file) = 0;

  /// The same into the clipboard.
  virtual void copyPicture() = 0;

  /// Draws the same into a device context, stretched to a place.
  virtual void drawOn(HDC dc, const RECT& place) = 0;

  /// What the mouse does.
  virtual std::vector<HelpRow> mouseHelp() const = 0;

  /// What the person does in the tree of parts.
  virtual void partChecked(int, bool) {}
  virtual void partClicked(int) {}

  /// What leads along a path: its slider, the lines of its program, and the timer.
  virtual void pathSlid(double) {}
  virtual void lineChosen(long) {}
  virtual void ticked() {}

  /// Whether the message was a key of the control, or of a window of the pane's own.
  virtual bool translate(MSG& message) { return control_.translate(message); }

  void place(const RECT& area) { control_.place(area); }
  void frameActivated(bool active) { control_.frameActivated(active); }

 protected:
  Pane(const wchar_t* progId, PaneOwner& owner);

  PaneOwner& owner() const { return owner_; }
  ControlHost& control() { return control_; }

 private:
  PaneOwner& owner_;
  ControlHost control_;
};

/// Draws a view into a device context.
template <typename View>
void printView(View& view, HDC dc, const RECT& place) {
  VARIANT handle = {};
  V_VT(&handle) = VT_I8;
  V_I8(&handle) = reinterpret_cast<LONG_PTR>(dc);
  host::checkTold(view.Imprimer(handle, place.left, place.top, place.right - place.left,
                                place.bottom - place.top),
                  L"Imprimer");
}

}  // namespace zyn::viewer
