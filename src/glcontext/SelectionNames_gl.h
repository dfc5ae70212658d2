#pragma once

#include "glcontext/gl_api.h"

namespace zyn {

/// Names what is drawn during its lifetime in a selection pass: the type if asked for, then the
/// name. Nothing is pushed for a negative name, which is that of an object that cannot be picked.
class SelectionNames {
 public:
  SelectionNames(GLint typeSelection, GLint nomSelection, bool pushTypeSelection);
  virtual ~SelectionNames();
  SelectionNames(const SelectionNames&) = delete;
  SelectionNames& operator=(const SelectionNames&) = delete;

 private:
  int pushed_ = 0;
};

}  // namespace zyn
