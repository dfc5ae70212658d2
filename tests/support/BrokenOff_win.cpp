#include "support/BrokenOff_win.h"

#include <csetjmp>
#include <cstdlib>

namespace zyn::test {
namespace {

Leaving leaving;
jmp_buf jumpPlace;
void* plainPlace[5];
CONTEXT handledPlace;
volatile bool handled;

/// As a frame of the host's that catches the exception would: goes on there.
LONG CALLBACK handle(EXCEPTION_POINTERS* exception) {
  if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_ACCESS_VIOLATION) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  handled = true;
  *exception->ContextRecord = handledPlace;
  return EXCEPTION_CONTINUE_EXECUTION;
}

[[gnu::noinline]] bool callWithHandler(const std::function<void()>& work) {
  handled = false;
  RtlCaptureContext(&handledPlace);
  if (handled) return true;
  work();
  return false;
}

[[gnu::noinline]] bool callWithLongJump(const std::function<void()>& work) {
  if (setjmp(jumpPlace) != 0) return true;
  work();
  return false;
}

[[gnu::noinline]] bool callWithPlainJump(const std::function<void()>& work) {
  if (__builtin_setjmp(plainPlace) != 0) return true;
  work();
  return false;
}

}  // namespace

bool callUntilLeft(Leaving how, const std::function<void()>& work) {
  leaving = how;
  if (how == Leaving::kLongJump) return callWithLongJump(work);
  if (how == Leaving::kPlainJump) return callWithPlainJump(work);
  void* const handler = AddVectoredExceptionHandler(1, handle);
  const bool left = callWithHandler(work);
  RemoveVectoredExceptionHandler(handler);
  return left;
}

void leave() {
  if (leaving == Leaving::kLongJump) longjmp(jumpPlace, 1);
  if (leaving == Leaving::kPlainJump) __builtin_longjmp(plainPlace, 1);
  *static_cast<volatile int*>(nullptr) = 1;
  std::abort();
}

}  // namespace zyn::test
