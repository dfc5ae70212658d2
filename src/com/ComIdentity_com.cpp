#include "com/ComIdentity_com.h"

#include "com/ModuleState_com.h"
#include "platform/HostState_win.h"
#include "platform/ModuleStatic.h"

namespace zyn {

namespace {

// An object under destruction may hand itself out and take itself back without dying again.
constexpr ULONG kDestructionCount = 0x40000000;

}  // namespace

ComIdentity::ComIdentity() noexcept : outer_(innerUnknown()) { ModuleState::instance().lock(); }

ComIdentity::~ComIdentity() { ModuleState::instance().unlock(); }

// Volatile: a compiler that knows better than the virtual table what this object is would take
// calls through the result for impossible.
IUnknown* ComIdentity::innerUnknown() noexcept {
  IUnknown* volatile unknown = reinterpret_cast<IUnknown*>(static_cast<InnerUnknown*>(this));
  return unknown;
}

STDMETHODIMP ComIdentity::innerQueryInterface(REFIID iid, void** out) noexcept {
  if (!out) {
    return E_POINTER;
  }
  *out = nullptr;
  if (iid != IID_IUnknown) {
    return findInterface(iid, out);
  }
  innerAddRef();
  *out = innerUnknown();
  return S_OK;
}

STDMETHODIMP_(ULONG) ComIdentity::innerAddRef() noexcept { return ++references_; }

STDMETHODIMP_(ULONG) ComIdentity::innerRelease() noexcept {
  const ULONG left = --references_;
  if (left == 0 && !ProcessEnd::hasBegun()) {
    const HostState state;
    references_ = kDestructionCount;
    destroy();
  }
  return left;
}

}  // namespace zyn
