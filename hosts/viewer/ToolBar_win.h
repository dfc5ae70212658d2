#pragma once

#include <windows.h>
// After windows.h:
#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <type_traits>

#include "viewer/Commands.h"
#include "viewer/UiScale_win.h"

namespace zyn::viewer {

struct DestroyImages {
  void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
};
using Images = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, DestroyImages>;

/// Appends a picture of 0xAARRGGBB pixels from the top down, `side` pixels wide and high.
void addImage(HIMAGELIST images, std::span<const std::uint32_t> pixels, int side);

/// A row of buttons, for the commands that are used most.
class ToolBar {
 public:
  using Tools = std::span<const CommandEntry* const>;

  /// A gap for each null among the tools.
  ToolBar(HWND parent, Tools tools, const UiScale& scale);
  ~ToolBar();
  ToolBar(const ToolBar&) = delete;
  ToolBar& operator=(const ToolBar&) = delete;

  int width() const;
  int height() const;
  void place(const RECT& area) const;
  void setVisible(bool visible) const;

  /// Presses the buttons of the commands for which `isOn` answers true, or shows their other
  /// picture.
  void mark(const std::function<bool(Command)>& isOn);

 private:
  void addButtons(Tools tools, int icon, int margin);
  void showImage(const TBBUTTON& button, int image) const;

  HWND bar_;
  Images images_;
};

}  // namespace zyn::viewer
