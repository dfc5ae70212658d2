#include "com/control/ProvideClassInfoFacet_com.h"

#include "com/ModuleState_com.h"
#include "com/control/Control_com.h"

namespace zyn {

STDMETHODIMP ProvideClassInfoFacet::GetClassInfo(ITypeInfo** info) noexcept {
  if (!info) {
    return E_POINTER;
  }
  *info = nullptr;
  return entry([&] {
    return ModuleState::instance().typeLibrary()->GetTypeInfoOfGuid(control().description().id,
                                                                    info);
  });
}

STDMETHODIMP ProvideClassInfoFacet::GetGUID(DWORD kind, GUID* guid) noexcept {
  if (!guid) {
    return E_POINTER;
  }
  *guid = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
    return E_INVALIDARG;
  }
  *guid = control().description().events;
  return S_OK;
}

}  // namespace zyn
