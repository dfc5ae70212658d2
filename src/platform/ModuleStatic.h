#pragma once

#include <atomic>
#include <utility>

namespace zyn {

/// Whether the system has told this DLL that the process ends. Other DLLs are told later and may
/// still let go of our objects then, when threads that held our locks are gone and the DLLs below
/// us no longer work: from then on nothing is destroyed any more, the system takes it all.
class ProcessEnd {
 public:
  static void begin() noexcept { begun_ = true; }
  static bool hasBegun() noexcept { return begun_; }

 private:
  static inline std::atomic<bool> begun_ = false;
};

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
