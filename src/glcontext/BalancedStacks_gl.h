#pragma once

#include "glcontext/gl_api.h"

namespace zyn {

/// Takes off the stacks, at the end of its scope, what was pushed within and not popped: drawn
/// objects are foreign code and may fail halfway. Without it each failure would bring the stacks
/// nearer to their overflow.
class BalancedStacks {
 public:
  BalancedStacks();
  ~BalancedStacks();
  BalancedStacks(const BalancedStacks&) = delete;
  BalancedStacks& operator=(const BalancedStacks&) = delete;

 private:
  GLenum matrixMode_;
  GLint projection_;
  GLint modelview_;
  GLint texture_;
  GLint attributes_;
  GLint clientAttributes_;
  GLint names_;
};

}  // namespace zyn
