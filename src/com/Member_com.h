#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <vector>

#include "com/ParameterType_com.h"

namespace zyn {

struct Parameter : ParameterType {
  bool isInput;   ///< the caller's value goes in
  bool isOutput;  ///< the member's value comes back
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
};

/// Reads a function of an interface as it lies in memory.
Member readMember(ITypeInfo& info, UINT function);

}  // namespace zyn
