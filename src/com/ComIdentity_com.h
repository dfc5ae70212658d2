#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <atomic>

#include "platform/HostState_win.h"
#include "platform/ModuleStatic.h"

namespace zyn {

/// Identity and lifetime of one COM object: its reference count, and the unknown that controls it,
/// which is the outer object's when it is aggregated. Holds a module lock.
class ComIdentity {
 public:
  ComIdentity(const ComIdentity&) = delete;
  ComIdentity& operator=(const ComIdentity&) = delete;

  /// The unknown whose count keeps the object alive; not counted here.
  IUnknown* controllingUnknown() const noexcept { return controlling_; }

  /// The thread that made the object, on which alone it may be called.
  DWORD thread() const noexcept { return thread_; }

 protected:
  /// `own`: the unknown of the object itself.
  explicit ComIdentity(IUnknown* own) noexcept;
  ~ComIdentity();

  /// Makes the object part of `outer`. For a new object that nobody has seen yet.
  void aggregateInto(IUnknown* outer) noexcept { controlling_ = outer; }

  ULONG addReference() noexcept { return ++references_; }

  /// Calls `destroy` after the last reference.
  template <class Destroy>
  ULONG dropReference(const Destroy& destroy) noexcept {
    const ULONG left = --references_;
    if (left == 0 && !ProcessEnd::hasBegun()) {
      const HostState state;
      references_ = kDestructionCount;
      destroy();
    }
    return left;
  }

 private:
  /// An object under destruction may hand itself out and take itself back without dying again.
  static constexpr ULONG kDestructionCount = 0x40000000;

  IUnknown* controlling_;
  std::atomic<ULONG> references_ = 1;
  DWORD thread_ = GetCurrentThreadId();
};

}  // namespace zyn
