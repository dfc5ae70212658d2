#include "com/ErrorInfoSupport_com.h"

#include <new>

#include "platform/HostState_win.h"
#include "platform/ModuleStatic.h"

namespace zyn {

HRESULT ErrorInfoSupport::give(IUnknown& object, Answers answers, void** out) noexcept {
  *out = static_cast<ISupportErrorInfo*>(new (std::nothrow) ErrorInfoSupport(object, answers));
  return *out ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP ErrorInfoSupport::QueryInterface(REFIID iid, void** out) noexcept {
  if (out && iid == IID_ISupportErrorInfo) {
    AddRef();
    *out = static_cast<ISupportErrorInfo*>(this);
    return S_OK;
  }
  return object_->QueryInterface(iid, out);
}

STDMETHODIMP_(ULONG) ErrorInfoSupport::Release() noexcept {
  const ULONG left = --references_;
  if (left == 0 && !ProcessEnd::hasBegun()) {
    const HostState state;
    delete this;
  }
  return left;
}

}  // namespace zyn
