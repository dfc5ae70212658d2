#include "viewer/Pane_com.h"

#include "common/Utf8_win.h"

namespace zyn::viewer {

Pane::Pane(const wchar_t* progId, PaneOwner& owner)
    : owner_(owner),
      control_(progId, owner.window(), owner.accelerators(), owner.viewArea(),
               [&owner](const std::wstring& text) {
                 owner.status().show(StatusBar::kMessage, host::toUtf8(text));
               }) {}

}  // namespace zyn::viewer
