#include "platform/ActivationContext_win.h"

#include <mutex>
#include <utility>

#include "platform/Mutex_win.h"

namespace zyn {

namespace {

Mutex rememberedLock;
HANDLE remembered = nullptr;

/// The calling thread's activation context with a reference of its own, or null.
HANDLE currentContext() noexcept {
  HANDLE context = nullptr;
  return GetCurrentActCtx(&context) ? context : nullptr;
}

void release(HANDLE context) noexcept {
  if (context) {
    ReleaseActCtx(context);
  }
}

HANDLE rememberedContext() noexcept {
  const std::lock_guard lock(rememberedLock);
  if (remembered) {
    AddRefActCtx(remembered);
  }
  return remembered;
}

void remember(HANDLE context) noexcept {
  {
    const std::lock_guard lock(rememberedLock);
    std::swap(remembered, context);
  }
  release(context);
}

}  // namespace

void rememberActivationContext() noexcept {
  if (const HANDLE context = currentContext()) {
    remember(context);
  }
}

void forgetActivationContext() noexcept { remember(nullptr); }

LibraryActivation::LibraryActivation() noexcept : context_(rememberedContext()) {
  active_ = context_ && ActivateActCtx(context_, &cookie_);
}

LibraryActivation::~LibraryActivation() {
  if (active_) {
    DeactivateActCtx(0, cookie_);
  }
  release(context_);
}

}  // namespace zyn
