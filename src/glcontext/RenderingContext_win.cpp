#include "glcontext/RenderingContext_win.h"

#include <utility>

#include "glcontext/CurrentContext_win.h"

namespace zyn {

RenderingContext::~RenderingContext() {
  if (context_ && wglGetCurrentContext() == context_.get()) {
    wglMakeCurrent(nullptr, nullptr);
  }
  if (belongings_.empty()) {
    return;
  }
  const CurrentContext current(dc_, context_.get());
  if (!current) {
    // Its lists go with the context; those of another one must not be taken for them.
    wglMakeCurrent(nullptr, nullptr);
  }
  belongings_.clear();
}

bool RenderingContext::create(HDC dc) {
  dc_ = dc;
  context_.reset(wglCreateContext(dc));
  return context_ != nullptr;
}

void RenderingContext::keep(std::shared_ptr<void> belonging) {
  if (belonging) {
    belongings_.push_back(std::move(belonging));
  }
}

}  // namespace zyn
