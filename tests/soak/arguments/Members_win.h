#pragma once

#include <string>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

/// A parameter as its member takes it through the vtable.
struct ParameterType {
  VARTYPE type = VT_EMPTY;  ///< of the value itself; an interface is VT_DISPATCH or VT_UNKNOWN
  IID iid = IID_NULL;       ///< of an interface
  bool byReference = false;
  bool isOutput = false;
  bool isResult = false;
};

struct PublishedMember {
  std::string interfaceName;
  std::string name;
  IID iid;
  bool isDual;
  DISPID id;
  INVOKEKIND kind;
  ULONG_PTR vtableOffset;
  std::vector<ParameterType> parameters;
  std::vector<std::string> parameterNames;

  bool isPut() const { return kind == INVOKE_PROPERTYPUT || kind == INVOKE_PROPERTYPUTREF; }
  /// The arguments that a late-bound caller gives.
  std::size_t argumentCount() const {
    const bool hasResult = !parameters.empty() && parameters.back().isResult;
    return parameters.size() - (hasResult ? 1 : 0);
  }
};

struct PublishedClass {
  std::string name;
  CLSID id;
};

/// What both type libraries say at run time.
struct Published {
  std::vector<PublishedMember> members;
  std::vector<PublishedClass> classes;
};

/// Reads the type library in each DLL.
Published readPublished(const std::vector<std::wstring>& dlls);

}  // namespace zyn::test
