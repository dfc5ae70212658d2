#include "support/AtlHost_win.h"

#include <bit>

namespace zyn::test {

namespace {

template <class Function>
Function* entryPoint(HMODULE library, const char* name) {
  return std::bit_cast<Function*>(GetProcAddress(library, name));
}

HMODULE loadAtl() {
  using Init = BOOL WINAPI();
  const HMODULE library = LoadLibraryW(L"atl.dll");
  require(library && entryPoint<Init>(library, "AtlAxWinInit")() ? S_OK : E_FAIL, "AtlAxWinInit");
  return library;
}

}  // namespace

AtlHost::AtlHost() {
  static const HMODULE loaded = loadAtl();
  library_ = loaded;
}

HWND AtlHost::createWindow(HWND parent, const wchar_t* control, SIZE size) const {
  return CreateWindowExW(0, L"AtlAxWin", control, WS_CHILD | WS_VISIBLE, 0, 0, size.cx, size.cy,
                         parent, nullptr, nullptr, nullptr);
}

ComPtr<IUnknown> AtlHost::controlOf(HWND window) const {
  using GetControl = HRESULT WINAPI(HWND, IUnknown**);
  ComPtr<IUnknown> control;
  require(
      entryPoint<GetControl>(library_, "AtlAxGetControl")(window, control.ReleaseAndGetAddressOf()),
      "AtlAxGetControl");
  return control;
}

HRESULT AtlHost::attach(IUnknown* control, HWND window) const {
  using Attach = HRESULT WINAPI(IUnknown*, HWND, IUnknown**);
  ComPtr<IUnknown> container;
  return entryPoint<Attach>(library_, "AtlAxAttachControl")(control, window,
                                                            container.ReleaseAndGetAddressOf());
}

}  // namespace zyn::test
