#include "glcontext/CurrentContext_win.h"

namespace zyn {

namespace {

/// Lets go of the current context before it makes another one current: Wine's drivers for windows
/// and for bitmaps do not know of each other, and each takes a context of its own for current still
/// that the other one has replaced.
bool makeCurrent(HDC dc, HGLRC context) {
  if (dc == nullptr || context == nullptr) {
    return false;
  }
  const HGLRC current = wglGetCurrentContext();
  if (current != nullptr && current != context) {
    wglMakeCurrent(nullptr, nullptr);
  }
  return wglMakeCurrent(dc, context) != FALSE;
}

}  // namespace

CurrentContext::CurrentContext(HDC dc, HGLRC context)
    : previousDc_(wglGetCurrentDC()),
      previousContext_(wglGetCurrentContext()),
      isCurrent_(makeCurrent(dc, context)) {}

CurrentContext::~CurrentContext() {
  // A previous context that was deleted meanwhile leaves none.
  if (!makeCurrent(previousDc_, previousContext_)) {
    wglMakeCurrent(nullptr, nullptr);
  }
}

NotedContext::NotedContext() : dc_(wglGetCurrentDC()), context_(wglGetCurrentContext()) {}

void NotedContext::restore() const {
  if (wglGetCurrentContext() == context_ && wglGetCurrentDC() == dc_) {
    return;
  }
  // Others may have made theirs current without letting go of this one before, which makes Wine do
  // nothing the first time.
  for (int i = 0; i < 2; ++i) {
    wglMakeCurrent(nullptr, nullptr);
    makeCurrent(dc_, context_);
  }
}

}  // namespace zyn
