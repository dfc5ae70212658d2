#include "viewer/Problem_win.h"

#include <exception>

#include "common/Utf8_win.h"

namespace zyn::viewer {

void tellProblem(HWND owner, const std::string& message, bool batch) noexcept {
  try {
    if (!batch) {
      MessageBoxW(owner, host::toWide(message).c_str(), L"ZYNVue viewer", MB_OK | MB_ICONERROR);
      return;
    }
    const std::string line = "viewer: " + message + '\n';
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()),
              &written, nullptr);
  } catch (const std::exception&) {
    MessageBeep(MB_ICONERROR);  // no memory for words
  }
}

}  // namespace zyn::viewer
