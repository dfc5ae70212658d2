#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>

#include "platform/WinHandles_win.h"

namespace zyn {

/// A file that takes its name only when it is whole. Until then it lies beside the file of that
/// name, which stays as it is; what has not become whole is deleted. Failures are thrown as
/// `Failure`.
class OutputFile {
 public:
  explicit OutputFile(const wchar_t* name);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Writes all of the bytes at the current place. A file that could not be written once is not
  /// whole, whatever is written then.
  void write(std::span<const std::uint8_t> bytes);

  /// Moves the current place, as SetFilePointerEx does, and answers it.
  std::int64_t seek(std::int64_t distance, DWORD from);

  /// Starts over with an empty file.
  void clear();

  /// Throws the first failure again, if there was one.
  void requireWhole() const;

  /// Gives the file its name, in place of an older one.
  void finish();

  const std::wstring& name() const { return name_; }

  /// Throws the failure of what was to be written to this file.
  [[noreturn]] void fail(HRESULT code, const std::wstring& cause) const;

 private:
  [[noreturn]] void failAs(DWORD error);

  std::wstring name_;
  std::wstring partial_;  ///< what it is called until it is whole
  UniqueKernelHandle file_;
  DWORD error_ = ERROR_SUCCESS;  ///< of the first call that failed
};

/// Whether both names lead to one file that exists.
bool isSameFile(const wchar_t* one, const wchar_t* other);

}  // namespace zyn
