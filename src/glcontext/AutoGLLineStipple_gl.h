#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Draws stippled lines for a scope. Where stippling was off, factor and pattern stay set
/// afterwards.
class AutoGLLineStipple : CountedGuard {
 public:
  AutoGLLineStipple(GLint factor, GLushort pattern);
  virtual ~AutoGLLineStipple();
  AutoGLLineStipple(const AutoGLLineStipple&) = delete;
  AutoGLLineStipple& operator=(const AutoGLLineStipple&) = delete;

 private:
  bool enabled_;
  GLint factor_ = 1;
  GLushort pattern_ = 0xFFFF;
};

}  // namespace zyn
