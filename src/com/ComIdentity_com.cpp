#include "com/ComIdentity_com.h"

#include "com/HostState_win.h"
#include "com/ModuleState_com.h"

namespace zyn {

namespace {

// An object under destruction may hand itself out and take itself back without dying again.
constexpr ULONG kDestructionCount = 0x40000000;

}  // namespace

ComIdentity::ComIdentity() noexcept { ModuleState::instance().lock(); }

ComIdentity::~ComIdentity() { ModuleState::instance().unlock(); }

STDMETHODIMP ComIdentity::Inner::QueryInterface(REFIID iid, void** out) noexcept {
  if (!out) {
    return E_POINTER;
  }
  *out = nullptr;
  if (iid != IID_IUnknown) {
    return object_.findInterface(iid, out);
  }
  AddRef();
  *out = static_cast<IUnknown*>(this);
  return S_OK;
}

STDMETHODIMP_(ULONG) ComIdentity::Inner::AddRef() noexcept { return ++object_.references_; }

STDMETHODIMP_(ULONG) ComIdentity::Inner::Release() noexcept {
  const ULONG left = --object_.references_;
  if (left == 0) {
    const HostState state;
    object_.references_ = kDestructionCount;
    object_.destroy();
  }
  return left;
}

}  // namespace zyn
