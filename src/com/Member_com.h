#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <algorithm>
#include <vector>

namespace zyn {

/// One call of IDispatch::Invoke as the caller made it. All pointers may be null.
struct LateCall {
  DISPID member;
  LCID locale;
  WORD flags;
  DISPPARAMS* arguments;
  VARIANT* result;
  EXCEPINFO* exception;
  UINT* wrongArgument;
};

/// How a member of a dual interface takes one parameter.
struct ParameterType {
  VARTYPE type;      ///< VT_I4 for enumerations; VT_DISPATCH or VT_UNKNOWN for interfaces
  bool byReference;  ///< the member gets the address of the value
  IID interfaceId;   ///< what an object must offer
};

struct Parameter : ParameterType {
  bool isInput;     ///< the caller's value goes in
  bool isOutput;    ///< the member's value comes back
  bool isOptional;  ///< a VARIANT that a caller may leave out
};

/// One member of a dual interface that can be called late.
struct Member {
  DISPID id;
  INVOKEKIND kind;
  ULONG_PTR vtableOffset;
  std::vector<Parameter> parameters;  ///< the result, if there is one, is the last
  bool hasResult;

  bool isPut() const { return kind == INVOKE_PROPERTYPUT || kind == INVOKE_PROPERTYPUTREF; }
  std::size_t argumentCount() const { return parameters.size() - (hasResult ? 1 : 0); }
  std::size_t requiredCount() const {
    return argumentCount() - static_cast<std::size_t>(std::count_if(
                                 parameters.begin(), parameters.end(),
                                 [](const Parameter& parameter) { return parameter.isOptional; }));
  }
};

/// Reads a function of an interface as it lies in memory.
Member readMember(ITypeInfo& info, UINT function);

}  // namespace zyn
