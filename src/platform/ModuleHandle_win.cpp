#include "platform/ModuleHandle_win.h"

#include <bit>

// Provided by the linker: the address at which the module is loaded.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier)

namespace zyn {

HINSTANCE moduleHandle() noexcept { return std::bit_cast<HINSTANCE>(&__ImageBase); }

std::wstring modulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(moduleHandle(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace zyn
