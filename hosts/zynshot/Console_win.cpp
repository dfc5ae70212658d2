#include "zynshot/Console_win.h"

#include <windows.h>

#include "common/Utf8_win.h"

namespace zyn::shot {

namespace {

bool isConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != FALSE;
}

void write(DWORD stream, const std::string& utf8) {
  const HANDLE handle = GetStdHandle(stream);
  DWORD written = 0;
  if (isConsole(handle)) {
    const std::wstring wide = host::toWide(utf8);
    WriteConsoleW(handle, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  } else {
    WriteFile(handle, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
  }
}

}  // namespace

void writeOutput(const std::string& utf8) { write(STD_OUTPUT_HANDLE, utf8); }
void writeError(const std::string& utf8) { write(STD_ERROR_HANDLE, utf8); }

bool isErrorConsole() { return isConsole(GetStdHandle(STD_ERROR_HANDLE)); }

}  // namespace zyn::shot
