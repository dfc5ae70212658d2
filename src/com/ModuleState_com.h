#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>
#include <wrl/client.h>

#include <atomic>
#include <memory>
#include <utility>
#include <vector>

#include "com/DispatchTable_com.h"
#include "platform/Mutex_win.h"

namespace zyn {

/// What a DLL keeps for all of its objects: the number of reasons to stay loaded, and what it has
/// read from its type library. Any thread.
class ModuleState {
 public:
  static ModuleState& instance() noexcept;

  void lock() noexcept { ++locks_; }
  void unlock() noexcept { --locks_; }
  bool isLocked() const noexcept { return locks_ != 0; }

  /// The type library in the module's own resources; needs no registration.
  Microsoft::WRL::ComPtr<ITypeLib> typeLibrary();

  /// The members of a dual interface of that type library.
  std::shared_ptr<const DispatchTable> dispatchTable(REFIID iid);

  /// Gives back what was read from the type library.
  void forgetTypes() noexcept;

 private:
  ModuleState() = default;
  ~ModuleState() = default;

  std::shared_ptr<const DispatchTable> knownTable(REFIID iid);

  std::atomic<LONG> locks_ = 0;
  Mutex typesMutex_;
  Microsoft::WRL::ComPtr<ITypeLib> library_;
  std::vector<std::pair<IID, std::shared_ptr<const DispatchTable>>> tables_;
};

}  // namespace zyn
