#include "platform/OutputFile_win.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <vector>

#include "platform/Failure_win.h"

namespace zyn {
namespace {

/// Some systems write no more than 2^31 bytes at once.
constexpr std::size_t kLargestWrite = std::size_t{1} << 28;

constexpr int kMostNames = 100;

/// Programs that read every new file let go of it soon.
constexpr int kRenamings = 6;
constexpr DWORD kBetweenRenamings = 50;  // milliseconds

/// A name that no file has, most likely, in the folder of `name`. It is no longer than the names
/// that fit into every folder of ordinary length.
std::wstring nameBeside(const std::wstring& name) {
  static std::atomic<unsigned> made = 0;
  const auto number = static_cast<std::uint16_t>(GetCurrentProcessId() + GetTickCount64() + ++made);
  std::array<wchar_t, 12> own{};
  std::swprintf(own.data(), own.size(), L"zyn%04x.tmp", number);
  return name.substr(0, name.find_last_of(L"\\/:") + 1) + own.data();
}

UniqueKernelHandle opened(HANDLE file) {
  return UniqueKernelHandle(file != INVALID_HANDLE_VALUE ? file : nullptr);
}

/// Gives `to` the attributes of `from` and whom that may be read and written by, if there is such a
/// file and as far as this user may do so.
void copyLook(const wchar_t* from, const wchar_t* to) {
  const DWORD attributes = GetFileAttributesW(from);
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return;
  }
  DWORD bytes = 0;
  GetFileSecurityW(from, DACL_SECURITY_INFORMATION, nullptr, 0, &bytes);
  std::vector<std::byte> access(bytes);
  if (GetFileSecurityW(from, DACL_SECURITY_INFORMATION, access.data(), bytes, &bytes)) {
    SetFileSecurityW(to, DACL_SECURITY_INFORMATION, access.data());
  }
  SetFileAttributesW(to, attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

/// Gives a file another name, which may be that of an older file; answers an error code. It has
/// patience with those who hold the older file for a moment.
DWORD rename(const wchar_t* from, const wchar_t* to) {
  DWORD error = ERROR_SUCCESS;
  for (int i = 0; i < kRenamings; ++i) {
    if (i > 0) {
      Sleep(kBetweenRenamings);
    }
    if (MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING)) {
      return ERROR_SUCCESS;
    }
    error = GetLastError();
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) {
      break;
    }
  }
  return error;
}

/// A folder, or a file that is not to be replaced: not every system refuses to.
bool isInTheWay(const wchar_t* name) {
  const DWORD attributes = GetFileAttributesW(name);
  return attributes != INVALID_FILE_ATTRIBUTES &&
         (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0;
}

bool describe(const wchar_t* name, BY_HANDLE_FILE_INFORMATION& description) {
  const UniqueKernelHandle file = opened(CreateFileW(
      name, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return file && GetFileInformationByHandle(file.get(), &description) != FALSE;
}

std::wstring notWritten(const std::wstring& name) { return L"\"" + name + L"\" was not written"; }

}  // namespace

OutputFile::OutputFile(const wchar_t* name) : name_(name ? name : L"") {
  if (name_.empty()) {
    failAs(ERROR_INVALID_NAME);
  }
  if (isInTheWay(name)) {
    failAs(ERROR_ACCESS_DENIED);
  }
  for (int i = 0; i < kMostNames && !file_; ++i) {
    partial_ = nameBeside(name_);
    file_ = opened(CreateFileW(partial_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                               CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file_ && GetLastError() != ERROR_FILE_EXISTS) {
      break;
    }
  }
  if (!file_) {
    failAs(GetLastError());
  }
}

OutputFile::~OutputFile() {
  file_.reset();
  if (!partial_.empty()) {
    DeleteFileW(partial_.c_str());
  }
}

void OutputFile::write(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto asked = static_cast<DWORD>(std::min(bytes.size(), kLargestWrite));
    DWORD written = 0;
    if (!WriteFile(file_.get(), bytes.data(), asked, &written, nullptr)) {
      failAs(GetLastError());
    }
    if (written != asked) {
      failAs(ERROR_DISK_FULL);
    }
    bytes = bytes.subspan(written);
  }
}

std::int64_t OutputFile::seek(std::int64_t distance, DWORD from) {
  LARGE_INTEGER wanted{};
  LARGE_INTEGER reached{};
  wanted.QuadPart = distance;
  if (!SetFilePointerEx(file_.get(), wanted, &reached, from)) {
    failAs(GetLastError());
  }
  return reached.QuadPart;
}

void OutputFile::clear() {
  seek(0, FILE_BEGIN);
  if (!SetEndOfFile(file_.get())) {
    failAs(GetLastError());
  }
}

void OutputFile::requireWhole() const {
  if (error_ != ERROR_SUCCESS) {
    throw systemFailure(error_, notWritten(name_));
  }
}

void OutputFile::finish() {
  requireWhole();
  if (!CloseHandle(file_.release())) {
    failAs(GetLastError());
  }
  // Opened before it takes over access rights that may forbid to delete it.
  const UniqueKernelHandle partial = opened(
      CreateFileW(partial_.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  copyLook(name_.c_str(), partial_.c_str());
  const DWORD error = rename(partial_.c_str(), name_.c_str());
  if (error != ERROR_SUCCESS) {
    FILE_DISPOSITION_INFO disposition{TRUE};
    SetFileInformationByHandle(partial.get(), FileDispositionInfo, &disposition,
                               sizeof(disposition));
    failAs(error);
  }
  partial_.clear();
}

void OutputFile::fail(HRESULT code, const std::wstring& cause) const {
  throw Failure(code, notWritten(name_) + L": " + cause);
}

void OutputFile::failAs(DWORD error) {
  error_ = error;
  throw systemFailure(error, notWritten(name_));
}

bool isSameFile(const wchar_t* one, const wchar_t* other) {
  BY_HANDLE_FILE_INFORMATION first{};
  BY_HANDLE_FILE_INFORMATION second{};
  return one && other && describe(one, first) && describe(other, second) &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
         first.nFileIndexHigh == second.nFileIndexHigh &&
         first.nFileIndexLow == second.nFileIndexLow;
}

}  // namespace zyn
