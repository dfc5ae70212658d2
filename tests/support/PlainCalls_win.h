#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

/// What members are called with: numbers are small and positive.
struct PlainArguments {
  ComPtr<IDispatch> object;
  _variant_t array;            ///< for variants
  std::filesystem::path file;  ///< for texts
};

/// One member of an object's dual interface, to be called by name with plain arguments, as a script
/// does.
struct PlainCall {
  struct Parameter {
    VARTYPE type;
    bool isOut;
  };

  std::string name;  ///< "get Mode", "Add"
  DISPID id;
  WORD kind;  ///< DISPATCH_METHOD, DISPATCH_PROPERTYGET, ...
  std::vector<Parameter> parameters;

  /// The member's own answer.
  HRESULT operator()(IDispatch* target, const PlainArguments& arguments) const;
};

/// Every member that the object's type information tells of, except those of IDispatch itself.
std::vector<PlainCall> plainCallsOf(IDispatch* object);

}  // namespace zyn::test
