#include "viewer/WindowClass_win.h"

namespace zyn::viewer {

void registerWindowClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

}  // namespace zyn::viewer
