#include "com/ClassFactory_com.h"

#include "com/ModuleState_com.h"

namespace zyn {

STDMETHODIMP ClassFactory::LockServer(BOOL lock) noexcept {
  if (lock) {
    ModuleState::instance().lock();
  } else {
    ModuleState::instance().unlock();
  }
  return S_OK;
}

}  // namespace zyn
