#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

namespace zyn {

/// How a member of a dual interface takes one parameter.
struct ParameterType {
  VARTYPE type;      ///< VT_I4 for enumerations; VT_DISPATCH or VT_UNKNOWN for interfaces
  bool byReference;  ///< the member gets the address of the value
  IID interfaceId;   ///< what an object must offer
};

/// Reads it from the description in a type library. Throws where the type is none of automation's.
ParameterType parameterType(ITypeInfo& info, const TYPEDESC& description);

}  // namespace zyn
