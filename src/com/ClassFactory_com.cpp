#include "com/ClassFactory_com.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "com/ModuleState_com.h"

namespace zyn {

namespace {

/// More than the runtime takes.
constexpr std::size_t kRuntimeBytes = 4096;

bool isThereMemory() noexcept {
  void* volatile memory = std::malloc(kRuntimeBytes);  // volatile: not to be optimised away
  std::free(memory);
  return memory != nullptr;
}

}  // namespace

const ClassEntry* findClass(ClassTable classes, REFCLSID id) {
  const auto found = std::find_if(classes.begin(), classes.end(),
                                  [&](const ClassEntry& entry) { return *entry.id == id; });
  return found != classes.end() ? &*found : nullptr;
}

bool readyToThrow() noexcept {
  if (!isThereMemory()) {
    return false;
  }
  // A local static object that is made at run time, and the thread's record of exceptions. What the
  // record counts tells nothing: exceptions that other modules throw through us are not all in it.
  static const bool isFirst = isThereMemory();
  const volatile void* const volatile record = abi::__cxa_get_globals();
  return isFirst && record != nullptr;
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** out) noexcept {
  // On this thread there may have been no object yet.
  if (out && !readyToThrow()) {
    *out = nullptr;
    return E_OUTOFMEMORY;
  }
  return create_(outer, iid, out);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) noexcept {
  if (lock) {
    ModuleState::instance().lock();
  } else {
    ModuleState::instance().unlock();
  }
  return S_OK;
}

}  // namespace zyn
