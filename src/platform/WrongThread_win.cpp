#include "platform/WrongThread_win.h"

#include <array>
#include <atomic>
#include <cwchar>

namespace zyn {

void reportWrongThread(const wchar_t* progId, DWORD owner) noexcept {
  constexpr int kMostReports = 100;
  static std::atomic<int> calls = 0;
  const int call = calls < kMostReports ? ++calls : kMostReports + 1;
  if (call > kMostReports) {
    return;
  }
  std::array<wchar_t, 200> text{};
  std::swprintf(text.data(), text.size(),
                L"%ls: call %d on a wrong thread: an object of thread %lu is called on thread %lu, "
                L"past the marshaler\n",
                progId, call, owner, GetCurrentThreadId());
  OutputDebugStringW(text.data());
}

}  // namespace zyn
