#pragma once

#include <cstdint>
#include <memory>

#include "support/Imports_win.h"

namespace zyn::test {

/// How a system function fails: what it returns, and the thread's last error then.
struct Failure {
  std::uintptr_t result = 0;
  DWORD lastError = 0;
};

/// Which calls of one or several functions fail, counted together.
struct FailingCalls {
  static constexpr std::uint32_t kAll = 0x7FFFFFFF;

  std::uint32_t made = 0;     ///< so far
  std::uint32_t passed = 0;   ///< that succeed first
  std::uint32_t failing = 1;  ///< that fail then

  /// Starts over: the calls from the nth on fail, `count` of them.
  void fail(std::uint32_t nth, std::uint32_t count = 1) { *this = {0, nth - 1, count}; }
  bool hasFailed() const { return made > passed && failing != 0; }
};

/// Has calls of an imported function fail, for a scope: the others reach the function. It takes
/// functions of any signature that return an integer or a pointer; what is to be returned through
/// arguments stays as it was.
class FailingImport {
 public:
  FailingImport(HMODULE module, const std::string& function, Failure failure, FailingCalls& calls);
  /// With a count of its own.
  FailingImport(HMODULE module, const std::string& function, Failure failure = {},
                std::uint32_t nth = 1, std::uint32_t count = FailingCalls::kAll);
  ~FailingImport();
  FailingImport(const FailingImport&) = delete;
  FailingImport& operator=(const FailingImport&) = delete;

  const FailingCalls& calls() const { return calls_; }

 private:
  FailingCalls own_;
  FailingCalls& calls_;
  void* code_;
  std::unique_ptr<ImportPatch> patch_;
};

}  // namespace zyn::test
