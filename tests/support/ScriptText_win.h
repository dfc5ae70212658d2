#pragma once

#include <activscp.h>
#include <comutil.h>

#include <algorithm>
#include <vector>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// A script whose functions can be called, as script hosts call those that listen.
class ScriptText final : public ForeignBase<ScriptText, IDispatch, IActiveScriptSite> {
 public:
  void start(const wchar_t* engine, const wchar_t* text) {
    engine_ = createObject<IActiveScript>(engine);
    require(engine_->SetScriptSite(static_cast<IActiveScriptSite*>(this)), "SetScriptSite");
    const auto parser = queryFor<IActiveScriptParse>(engine_.Get());
    require(parser->InitNew(), "InitNew");
    require(parser->ParseScriptText(text, nullptr, nullptr, nullptr, 0, 0, 0, nullptr, nullptr),
            "ParseScriptText");
    require(engine_->SetScriptState(SCRIPTSTATE_CONNECTED), "SetScriptState");
    require(engine_->GetScriptDispatch(nullptr, &functions_), "GetScriptDispatch");
  }
  void stop() {
    functions_.Reset();
    engine_->Close();
    engine_.Reset();
  }

  HRESULT call(const wchar_t* function, const DISPPARAMS& arguments, VARIANT* answer) const {
    DISPID id = 0;
    auto* name = const_cast<LPOLESTR>(function);
    require(functions_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &id), "GetIDsOfNames");
    // Not every engine takes references.
    std::vector<_variant_t> values(arguments.cArgs);
    for (UINT i = 0; i < arguments.cArgs; ++i) VariantCopyInd(&values[i], &arguments.rgvarg[i]);
    DISPPARAMS passed = {values.data(), nullptr, arguments.cArgs, 0};
    return functions_->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &passed, answer,
                              nullptr, nullptr);
  }

  /// The arguments in the order in which the function has them.
  HRESULT call(const wchar_t* function, std::vector<_variant_t> arguments) const {
    std::ranges::reverse(arguments);
    const DISPPARAMS passed = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    return call(function, passed, nullptr);
  }

  STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetItemInfo(LPCOLESTR, DWORD, IUnknown**, ITypeInfo**) override {
    return TYPE_E_ELEMENTNOTFOUND;
  }
  STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
  STDMETHODIMP OnScriptError(IActiveScriptError*) override { return S_OK; }
  STDMETHODIMP OnEnterScript() override { return S_OK; }
  STDMETHODIMP OnLeaveScript() override { return S_OK; }

 private:
  ComPtr<IActiveScript> engine_;
  ComPtr<IDispatch> functions_;
};

}  // namespace zyn::test
