#include "com/Dual_com.h"

#include "com/ModuleState_com.h"
#include "com/automation_com.h"

namespace zyn {

HRESULT typeInfoCount(UINT* count) noexcept {
  if (!count) {
    return E_POINTER;
  }
  *count = 1;
  return S_OK;
}

HRESULT typeInfoOf(REFIID dual, UINT index, ITypeInfo** info) noexcept {
  if (!info) {
    return E_POINTER;
  }
  *info = nullptr;
  if (index != 0) {
    return DISP_E_BADINDEX;
  }
  return boundary(
      [&] { return ModuleState::instance().dispatchTable(dual)->typeInfo().CopyTo(info); });
}

HRESULT idsOfNames(REFIID dual, REFIID reserved, LPOLESTR* names, UINT count,
                   DISPID* ids) noexcept {
  if (reserved != IID_NULL) {
    return DISP_E_UNKNOWNINTERFACE;
  }
  if (!names || !ids || count == 0) {
    return E_INVALIDARG;
  }
  return boundary([&] {
    const auto table = ModuleState::instance().dispatchTable(dual);
    return table->typeInfo()->GetIDsOfNames(names, count, ids);
  });
}

HRESULT invokeMember(void* object, REFIID dual, REFIID reserved, const LateCall& call) noexcept {
  if (reserved != IID_NULL) {
    return DISP_E_UNKNOWNINTERFACE;
  }
  return boundary(
      [&] { return ModuleState::instance().dispatchTable(dual)->invoke(object, call); });
}

}  // namespace zyn
