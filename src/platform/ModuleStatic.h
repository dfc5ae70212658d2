#pragma once

#include <utility>

#include "platform/ProcessEnd.h"

namespace zyn {

/// Something that a DLL keeps for all of its objects: made when it is first needed, destroyed when
/// the DLL is unloaded, and left alone when the process ends.
///
///     static ModuleStatic<Register> theRegister;
template <class T>
class ModuleStatic {
 public:
  template <class... Arguments>
  explicit ModuleStatic(Arguments&&... arguments)
      : object_(new T(std::forward<Arguments>(arguments)...)) {}
  ModuleStatic(const ModuleStatic&) = delete;
  ModuleStatic& operator=(const ModuleStatic&) = delete;
  ~ModuleStatic() {
    if (!ProcessEnd::hasBegun()) {
      delete object_;
    }
  }

  T& operator*() const noexcept { return *object_; }

 private:
  T* object_;
};

}  // namespace zyn
