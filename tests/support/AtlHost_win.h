#pragma once

#include "support/HostSession_win.h"

namespace zyn::test {

/// The system's own control container, atl.dll.
class AtlHost {
 public:
  /// Loads it, once in a process.
  AtlHost();

  /// A container window, child of `parent`, that creates the control named by its text.
  HWND createWindow(HWND parent, const wchar_t* control, SIZE size) const;

  /// The control in a container window.
  ComPtr<IUnknown> controlOf(HWND window) const;

  /// Puts a control into a plain window, which becomes its container.
  HRESULT attach(IUnknown* control, HWND window) const;

 private:
  HMODULE library_;
};

}  // namespace zyn::test
