#pragma once

#include <windows.h>

namespace zyn {

/// A mutex for std::lock_guard that takes no memory: std::mutex allocates when it is first locked,
/// and throws where there is nothing left.
class Mutex {
 public:
  Mutex() = default;
  Mutex(const Mutex&) = delete;
  Mutex& operator=(const Mutex&) = delete;

  void lock() noexcept { AcquireSRWLockExclusive(&lock_); }
  void unlock() noexcept { ReleaseSRWLockExclusive(&lock_); }

 private:
  SRWLOCK lock_ = SRWLOCK_INIT;
};

}  // namespace zyn
