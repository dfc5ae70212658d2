#include "offscreen/OutputFile_win.h"

#include <algorithm>
#include <utility>

namespace zyn {
namespace {

/// Some systems write no more than 2^31 bytes at once.
constexpr std::size_t kLargestWrite = std::size_t{1} << 28;

}  // namespace

OutputFile::OutputFile(const wchar_t* name)
    : file_(CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr)) {}

OutputFile::~OutputFile() {
  if (isOpen()) CloseHandle(file_);
}

bool OutputFile::write(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto asked = static_cast<DWORD>(std::min(bytes.size(), kLargestWrite));
    DWORD written = 0;
    if (!WriteFile(file_, bytes.data(), asked, &written, nullptr) || written != asked) return false;
    bytes = bytes.subspan(written);
  }
  return true;
}

bool OutputFile::close() {
  return CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE)) != FALSE;
}

}  // namespace zyn
