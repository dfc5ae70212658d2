#include "viewer/Problem_win.h"

// After windows.h:
#include <commctrl.h>

#include <exception>

#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

constexpr wchar_t kTitle[] = L"ZYNVue viewer";

/// A task dialog; a message box where the program has not got the newer common controls, which its
/// manifest asks for.
void showProblem(HWND owner, const wchar_t* message) {
  const auto show = reinterpret_cast<decltype(&TaskDialog)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"comctl32.dll"), "TaskDialog")));
  if (show == nullptr || FAILED(show(owner, nullptr, kTitle, L"That did not work", message,
                                     TDCBF_OK_BUTTON, TD_ERROR_ICON, nullptr))) {
    MessageBoxW(owner, message, kTitle, MB_OK | MB_ICONERROR);
  }
}

}  // namespace

void tellProblem(HWND owner, const std::string& message, bool batch) noexcept {
  try {
    if (!batch) {
      showProblem(owner, host::toWide(message).c_str());
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
