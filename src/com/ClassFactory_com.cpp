#include "com/ClassFactory_com.h"

#include "com/ModuleState_com.h"
#include "com/readyToThrow.h"

namespace zyn {

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
