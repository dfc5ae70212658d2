#pragma once

#include "glcontext/gl_api.h"

namespace zyn {

/// Groups of the server's state, given back at the end of the scope.
class PushedAttributes {
 public:
  explicit PushedAttributes(GLbitfield groups) { glPushAttrib(groups); }
  ~PushedAttributes() { glPopAttrib(); }
  PushedAttributes(const PushedAttributes&) = delete;
  PushedAttributes& operator=(const PushedAttributes&) = delete;
};

}  // namespace zyn
