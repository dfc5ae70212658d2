#pragma once

#include <windows.h>

#include <stdexcept>

namespace zyn::host {

/// A call to a component that failed; the message is one line with the error's code.
class ComFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws ComFailure "`subject` `problem` (0x8…)" for a failed `result`.
void check(HRESULT result, const wchar_t* subject, const char* problem = "failed");

/// The same for a member that describes its errors: the description is the message.
void checkTold(HRESULT result, const wchar_t* member);

/// The same for a member that makes a picture: it answers S_OK when it has made none, and tells the
/// cause, in one line with the file's name, as the thread's error information.
void checkPicture(HRESULT result, const wchar_t* member);

}  // namespace zyn::host
