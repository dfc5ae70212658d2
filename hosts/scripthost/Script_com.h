#pragma once

#include <windows.h>
// After windows.h:
#include <activscp.h>
#include <wrl/client.h>

#include <map>
#include <string>

#include "common/ComObject_com.h"

namespace zyn::sample {

/// A script and the objects that it knows by name. Errors go to the standard error stream.
class Script final : public host::ComObject<IActiveScriptSite> {
 public:
  /// Loads a file in VBScript or, when its name ends with .js, JScript. Throws ComFailure.
  explicit Script(const std::wstring& file);

  /// Makes an object known; before start.
  void add(const wchar_t* name, IDispatch& object);

  /// Runs the script from its first line to its last one.
  void start();

  /// Calls a function of the script, if it has it.
  void call(const std::wstring& function, const DISPPARAMS& arguments);

  /// Lets go of the engine, and the engine of this.
  void stop();

  // IActiveScriptSite
  STDMETHODIMP GetLCID(LCID*) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                           ITypeInfo** type) noexcept override;
  STDMETHODIMP GetDocVersionString(BSTR*) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) noexcept override {
    return S_OK;
  }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) noexcept override { return S_OK; }
  STDMETHODIMP OnScriptError(IActiveScriptError* error) noexcept override;
  STDMETHODIMP OnEnterScript() noexcept override { return S_OK; }
  STDMETHODIMP OnLeaveScript() noexcept override { return S_OK; }

 private:
  std::wstring text_;
  std::map<std::wstring, Microsoft::WRL::ComPtr<IDispatch>> objects_;
  Microsoft::WRL::ComPtr<IActiveScript> engine_;
};

}  // namespace zyn::sample
