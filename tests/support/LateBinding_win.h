#pragma once

#include <string>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

/// What came back from a call made by name, as a script makes it.
struct CallResult {
  HRESULT invoked = E_FAIL;  ///< the answer of Invoke itself
  HRESULT scode = S_OK;      ///< the member's own code where Invoke answered DISP_E_EXCEPTION
  _variant_t value;
  std::wstring source;
  std::wstring description;

  /// The member's HRESULT however it travelled.
  HRESULT code() const { return invoked == DISP_E_EXCEPTION ? scode : invoked; }
};

CallResult callMethod(IDispatch* object, const wchar_t* name,
                      const std::vector<_variant_t>& arguments = {});
CallResult getProperty(IDispatch* object, const wchar_t* name);
CallResult putProperty(IDispatch* object, const wchar_t* name, const _variant_t& value);

/// Puts an object by reference, as `Set` does in scripts.
CallResult putReference(IDispatch* object, const wchar_t* name, const _variant_t& value);

/// The DISPID under which the object knows the name; DISPID_UNKNOWN when it does not.
DISPID dispidOf(IDispatch* object, const wchar_t* name);

/// An out argument of a late-bound call: refers to the variable.
_variant_t outArgument(double& variable);
_variant_t outArgument(long& variable);
_variant_t outArgument(VARIANT& variable);

}  // namespace zyn::test
