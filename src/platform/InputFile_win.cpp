#include "platform/InputFile_win.h"

#include <windows.h>

#include <algorithm>

#include "core/ProgressMeter.h"
#include "platform/Failure_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {
namespace {

/// Bytes that are read at once, between two looks whether to stop.
constexpr std::size_t kLargestRead = std::size_t{1} << 24;

[[noreturn]] void fail(DWORD error, const std::wstring& name) {
  throw systemFailure(error, L"\"" + name + L"\" was not read");
}

/// Text of a file in Windows' own encoding; empty for what is no text in `codePage`.
std::wstring widened(std::string_view text, UINT codePage) {
  const DWORD flags = codePage == CP_UTF8 ? MB_ERR_INVALID_CHARS : 0;
  const auto size = static_cast<int>(std::min(text.size(), std::size_t{MAXSHORT}));
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(codePage, flags, text.data(), size, wide.data(),
                      static_cast<int>(wide.size()));
  return wide;
}

}  // namespace

FileBytes readFile(const std::wstring& name, const Progress& progress) {
  const HANDLE opened = CreateFileW(name.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    fail(GetLastError(), name);
  }
  const UniqueKernelHandle file(opened);
  if (GetFileType(opened) != FILE_TYPE_DISK) {
    throw Failure(HRESULT_FROM_WIN32(ERROR_BAD_FILE_TYPE),
                  L"\"" + name + L"\" was not read: it is a device or a pipe, no file on a disk");
  }
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(opened, &size)) {
    fail(GetLastError(), name);
  }
  FileBytes bytes(static_cast<std::size_t>(size.QuadPart));
  ProgressMeter meter(progress, bytes.view().size());
  for (std::size_t done = 0; done < bytes.view().size();) {
    const auto asked = static_cast<DWORD>(std::min(bytes.view().size() - done, kLargestRead));
    DWORD count = 0;
    if (!ReadFile(opened, bytes.data() + done, asked, &count, nullptr)) {
      fail(GetLastError(), name);
    }
    if (count == 0) {
      fail(ERROR_HANDLE_EOF, name);
    }
    done += count;
    meter.reached(done);
  }
  return bytes;
}

std::optional<std::string> readSibling(const std::wstring& file, std::string_view name) {
  std::wstring wide = widened(name, CP_UTF8);
  if (wide.empty()) {
    wide = widened(name, CP_ACP);
  }
  if (wide.empty()) {
    return std::nullopt;
  }
  try {
    return std::string(readFile(file.substr(0, file.find_last_of(L"\\/:") + 1) + wide).view());
  } catch (const Failure&) {
    return std::nullopt;
  }
}

}  // namespace zyn
