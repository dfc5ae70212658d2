#pragma once

#include <memory>
#include <vector>

#include "support/FailingImport_win.h"

namespace zyn::test {

/// Has chosen allocations of a module's own code fail, not those that the system does for it.
class FailingAllocations {
 public:
  explicit FailingAllocations(HMODULE module) {
    for (const char* function : {"malloc", "calloc", "realloc", "_aligned_malloc", "_strdup"}) {
      imports_.push_back(std::make_unique<FailingImport>(module, function, Failure{}, calls_));
    }
    stop();
  }

  /// The nth allocation from now fails, and `count - 1` after it.
  void fail(std::uint32_t nth, std::uint32_t count = 1) { calls_.fail(nth, count); }
  /// From now on none fails. Whether one did.
  bool stop() {
    const bool failed = calls_.hasFailed();
    calls_.fail(1, 0);
    return failed;
  }

  /// Calls `action` with its first allocation failing, then with its second one, and so on, and
  /// `check(n, answer)` after each, until nothing is left to fail. After the first few hundred
  /// some are left out. Gives the answer of the last call, which had all its memory.
  template <class Action, class Check>
  auto failEach(const Action& action, const Check& check) {
    for (std::uint32_t n = 1;; n += n < 300 ? 1 : n / 8) {
      fail(n);
      const auto answer = action();
      if (!stop()) return answer;
      check(n, answer);
    }
  }

 private:
  FailingCalls calls_;
  std::vector<std::unique_ptr<FailingImport>> imports_;
};

}  // namespace zyn::test
