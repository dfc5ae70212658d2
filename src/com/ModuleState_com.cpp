#include "com/ModuleState_com.h"

#include <oleauto.h>

#include <cstddef>
#include <mutex>
#include <new>

#include "com/errors_com.h"
#include "platform/ModuleHandle_win.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

ModuleState& ModuleState::instance() noexcept {
  // Never destroyed: at process end the DLLs that its pointers lead into may be gone.
  // In memory that there always is.
  alignas(ModuleState) static std::byte memory[sizeof(ModuleState)];
  static ModuleState* const state = new (memory) ModuleState;
  return *state;
}

ComPtr<ITypeLib> ModuleState::typeLibrary() {
  const std::lock_guard lock(typesMutex_);
  if (!library_) {
    throwIfFailed(LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library_));
  }
  return library_;
}

std::shared_ptr<const DispatchTable> ModuleState::knownTable(REFIID iid) {
  const std::lock_guard lock(typesMutex_);
  for (const auto& [known, table] : tables_) {
    if (known == iid) {
      return table;
    }
  }
  return nullptr;
}

std::shared_ptr<const DispatchTable> ModuleState::dispatchTable(REFIID iid) {
  if (auto table = knownTable(iid)) {
    return table;
  }
  ComPtr<ITypeInfo> info;
  throwIfFailed(typeLibrary()->GetTypeInfoOfGuid(iid, &info));
  // Two threads may both come here; the second table is as good as the first.
  auto table = std::make_shared<const DispatchTable>(std::move(info));
  const std::lock_guard lock(typesMutex_);
  tables_.emplace_back(iid, table);
  return table;
}

void ModuleState::forgetTypes() noexcept {
  const std::lock_guard lock(typesMutex_);
  tables_.clear();
  library_.Reset();
}

}  // namespace zyn
