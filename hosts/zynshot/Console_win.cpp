#include "zynshot/Console_win.h"

#include <windows.h>

namespace zyn::shot {

namespace {

bool isConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != FALSE;
}

std::wstring toWide(const std::string& utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(utf8.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), size)));
  return wide;
}

void write(DWORD stream, const std::string& utf8) {
  const HANDLE handle = GetStdHandle(stream);
  DWORD written = 0;
  if (isConsole(handle)) {
    const std::wstring wide = toWide(utf8);
    WriteConsoleW(handle, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  } else {
    WriteFile(handle, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
  }
}

}  // namespace

void writeOutput(const std::string& utf8) { write(STD_OUTPUT_HANDLE, utf8); }
void writeError(const std::string& utf8) { write(STD_ERROR_HANDLE, utf8); }

bool isErrorConsole() { return isConsole(GetStdHandle(STD_ERROR_HANDLE)); }

std::string toUtf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
  utf8.resize(utf8.size() - 1);  // the terminating zero
  return utf8;
}

}  // namespace zyn::shot
