#include "glcontext/CurrentContext_win.h"

namespace zyn {

CurrentContext::CurrentContext(HDC dc, HGLRC context)
    : previousDc_(wglGetCurrentDC()),
      previousContext_(wglGetCurrentContext()),
      isCurrent_(dc != nullptr && context != nullptr && wglMakeCurrent(dc, context) != FALSE) {}

CurrentContext::~CurrentContext() {
  // A previous context that was deleted meanwhile leaves none.
  if (previousContext_ == nullptr || !wglMakeCurrent(previousDc_, previousContext_)) {
    wglMakeCurrent(nullptr, nullptr);
  }
}

}  // namespace zyn
