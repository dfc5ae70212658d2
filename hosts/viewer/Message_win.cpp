#include "viewer/Message_win.h"

// After windows.h:
#include <commctrl.h>

#include <exception>

#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

constexpr wchar_t kTitle[] = L"ZYNVue viewer";

/// A task dialog; a message box where the program has not got the newer common controls, which its
/// manifest asks for.
void showBox(HWND owner, const wchar_t* message, PCWSTR taskIcon, UINT boxIcon) {
  const auto show = reinterpret_cast<decltype(&TaskDialogIndirect)>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"comctl32.dll"), "TaskDialogIndirect")));
  TASKDIALOGCONFIG box = {};
  box.cbSize = sizeof box;
  box.hwndParent = owner;
  box.dwFlags =
      TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW | TDF_SIZE_TO_CONTENT;
  box.dwCommonButtons = TDCBF_OK_BUTTON;
  box.pszWindowTitle = kTitle;
  box.pszMainIcon = taskIcon;
  box.pszContent = message;
  if (show == nullptr || FAILED(show(&box, nullptr, nullptr, nullptr))) {
    MessageBoxW(owner, message, kTitle, MB_OK | boxIcon);
  }
}

/// False where there is nothing behind the handle.
bool write(HANDLE stream, const std::string& text) {
  DWORD written = 0;
  return stream != nullptr && stream != INVALID_HANDLE_VALUE &&
         WriteFile(stream, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

/// A program with windows has no console of its own.
bool writeOnConsoleOfStarter(const std::string& text) {
  if (!AttachConsole(ATTACH_PARENT_PROCESS)) {
    return false;
  }
  const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
  const bool written = write(console, '\n' + text);
  CloseHandle(console);
  FreeConsole();
  return written;
}

}  // namespace

void tellProblem(HWND owner, const std::string& message, bool batch) noexcept {
  try {
    if (batch) {
      write(GetStdHandle(STD_ERROR_HANDLE), "viewer: " + message + '\n');
    } else {
      showBox(owner, host::toWide(message).c_str(), TD_ERROR_ICON, MB_ICONERROR);
    }
  } catch (const std::exception&) {
    MessageBeep(MB_ICONERROR);  // no memory for words
  }
}

void tellUsage(const std::string& text, bool batch) {
  if (!write(GetStdHandle(STD_OUTPUT_HANDLE), text) && !writeOnConsoleOfStarter(text) && !batch) {
    showBox(nullptr, host::toWide(text).c_str(), TD_INFORMATION_ICON, MB_ICONINFORMATION);
  }
}

void tellAbout(HWND owner) {
  constexpr wchar_t kText[] =
      L"ZYNVue "
      L"viewer " ZYN_VERSION L"\n\nModels and tool paths in the 3D view and tables in the 2D view of ZYNVue.";
  showBox(owner, kText, TD_INFORMATION_ICON, MB_ICONINFORMATION);
}

}  // namespace zyn::viewer
