#include "platform/RunningScope_win.h"

#include <algorithm>

namespace zyn {

namespace {

/// Where the stack begins, another one for each thread and fiber: NtCurrentTeb()->Tib.StackBase,
/// which GCC takes for an access out of bounds.
const void* currentStack() noexcept {
  const void* base = nullptr;
  asm volatile("movq %%gs:8, %0" : "=r"(base));
  return base;
}

}  // namespace

RunningScope::Guard::Guard(RunningScope& scope) noexcept
    : scope_(scope),
      isNested_(scope.guard_ && (!scope.isOnThisStack() || scope.includes(this))),
      followsLost_(!isNested_ && scope.guard_) {
  if (isNested_) {
    return;
  }
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;
  scope.guard_ = this;
  scope.thread_ = GetCurrentThreadId();
  scope.stack_ = currentStack();
  scope.mark_ += kOdd;
  std::ranges::fill(marks_, scope.mark_);
}

void RunningScope::Guard::end() noexcept {
  if (scope_.guard_ == this) {
    scope_.guard_ = nullptr;
  }
}

bool RunningScope::Guard::isIntact(std::uint64_t mark) const noexcept {
  return std::ranges::all_of(marks_, [&](std::uint64_t each) { return each == mark; });
}

bool RunningScope::isOnThisStack() const noexcept {
  return thread_ == GetCurrentThreadId() && stack_ == currentStack();
}

/// Whether the scope, of this stack, has called what now has something at `place`: the stack grows
/// downwards.
bool RunningScope::includes(const void* place) const noexcept {
  return place < guard_ && guard_->isIntact(mark_);
}

bool RunningScope::isRunning() const noexcept {
  return guard_ && (!isOnThisStack() || includes(__builtin_frame_address(0)));
}

bool RunningScope::isRunningHere() const noexcept {
  return guard_ && isOnThisStack() && includes(__builtin_frame_address(0));
}

}  // namespace zyn
