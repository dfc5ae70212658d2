#pragma once

#include <atomic>

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

}  // namespace zyn
