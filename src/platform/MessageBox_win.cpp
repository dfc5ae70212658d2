#include "platform/MessageBox_win.h"

#include <windows.h>

#include <iterator>

#include "platform/ModuleHandle_win.h"

namespace zyn {
namespace {

/// Whether the environment asks for silence. A text too long for the buffer is a text.
bool isSilenceWanted() {
  wchar_t text[2] = L"";
  const DWORD length =
      GetEnvironmentVariableW(L"ZYNVUE_SILENCIEUX", text, static_cast<DWORD>(std::size(text)));
  return length > 1 || (length == 1 && text[0] != L'0');
}

/// Whether a user may be there to answer. What cannot be found out is taken for a yes.
bool isUserPresent() {
  DWORD session = 0;
  if (ProcessIdToSessionId(GetCurrentProcessId(), &session) && session == 0) {
    return false;
  }
  USEROBJECTFLAGS station{};
  return !GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &station, sizeof station,
                                    nullptr) ||
         (station.dwFlags & WSF_VISIBLE) != 0;
}

}  // namespace

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

bool staysSilent() { return isSilenceWanted() || !isUserPresent(); }

void tellUser(const std::wstring& text, bool isSilent) {
  const std::wstring name = projectName();
  if (isSilent || staysSilent()) {
    OutputDebugStringW((name + L": " + text + L"\n").c_str());
  } else {
    MessageBoxW(GetActiveWindow(), text.c_str(), name.c_str(), MB_OK);
  }
}

}  // namespace zyn
