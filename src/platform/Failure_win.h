#pragma once

#include <windows.h>

#include <exception>
#include <string>
#include <utility>

namespace zyn {

/// A failure that says more than its code: what failed, on what file or device, and why. The caller
/// of the member that throws it gets the text as error information.
class Failure : public std::exception {
 public:
  Failure(HRESULT code, std::wstring text) : code_(code), text_(std::move(text)) {}

  HRESULT code() const noexcept { return code_; }
  const std::wstring& text() const noexcept { return text_; }
  const char* what() const noexcept override { return "a call of the system failed"; }

 private:
  HRESULT code_;
  std::wstring text_;
};

/// The system's message for an error code of its own or an HRESULT, without a line end. It may be
/// cut off.
inline std::wstring systemMessage(DWORD code) {
  wchar_t text[512] = L"";
  DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                     std::data(text), static_cast<DWORD>(std::size(text)), nullptr);
  while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r')) {
    --length;
  }
  return {std::data(text), length};
}

/// The failure of a call that has set GetLastError to `error`; `what` names what was to be done.
inline Failure systemFailure(DWORD error, const std::wstring& what) {
  return {HRESULT_FROM_WIN32(error),
          what + L": " + systemMessage(error) + L" (error " + std::to_wstring(error) + L")"};
}

}  // namespace zyn
