#include "platform/MessageBox_win.h"

#include <windows.h>

#include "platform/ModuleHandle_win.h"

namespace zyn {

std::wstring projectName() {
  const wchar_t* text = nullptr;
  const int length =
      LoadStringW(moduleHandle(), kProjectNameString, reinterpret_cast<wchar_t*>(&text), 0);
  if (length > 0) {
    return {text, static_cast<std::size_t>(length)};
  }
  const std::wstring path = modulePath();
  return path.substr(path.find_last_of(L'\\') + 1);
}

void showMessage(const wchar_t* text) {
  MessageBoxW(GetActiveWindow(), text, projectName().c_str(), MB_OK);
}

}  // namespace zyn
