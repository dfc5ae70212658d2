#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "com/LateCall_com.h"

namespace zyn {

// The members of IDispatch for a dual interface of the module's type library. `object` is a pointer
// to that interface.

HRESULT typeInfoCount(UINT* count) noexcept;
HRESULT typeInfoOf(REFIID dual, UINT index, ITypeInfo** info) noexcept;
HRESULT idsOfNames(REFIID dual, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) noexcept;
HRESULT invokeMember(void* object, REFIID dual, REFIID reserved, const LateCall& call) noexcept;

}  // namespace zyn
