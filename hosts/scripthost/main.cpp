// scripthost: a window with a 3D view that a script fills and listens to.
//
//   scripthost SCRIPT.vbs|SCRIPT.js
//
// The script knows the view as View, and Host, whose member Print writes a line to the standard
// output. Events of the view call its functions View_MouseDown, View_MouseSelection, ...

#include <windows.h>
// After windows.h:
#include <comutil.h>

#include <cstdio>
#include <exception>
#include <string>

#include "minimal/ViewWindow_com.h"
#include "scripthost/Script_com.h"

namespace zyn::sample {
namespace {

/// What scripts know as Host.
class Host final : public host::NumberedDispatch<IDispatch> {
 public:
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                             DISPID* members) noexcept override {
    const bool known = count == 1 && _wcsicmp(names[0], L"Print") == 0;
    *members = known ? kPrint : DISPID_UNKNOWN;
    return known ? S_OK : DISP_E_UNKNOWNNAME;
  }

  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*,
                      EXCEPINFO*, UINT*) noexcept override {
    if (member != kPrint || arguments->cArgs != 1) {
      return DISP_E_MEMBERNOTFOUND;
    }
    _variant_t text;
    const HRESULT result = VariantChangeType(&text, &arguments->rgvarg[0], 0, VT_BSTR);
    if (SUCCEEDED(result)) {
      std::printf("%ls\n", text.bstrVal);
      std::fflush(stdout);
    }
    return result;
  }

 private:
  static constexpr DISPID kPrint = 1;
};

/// The name of an event in the type library of the view; empty for an unknown one.
std::wstring eventName(IDispatch& view, DISPID event) {
  Microsoft::WRL::ComPtr<ITypeInfo> members;
  Microsoft::WRL::ComPtr<ITypeInfo> events;
  Microsoft::WRL::ComPtr<ITypeLib> library;
  UINT index = 0;
  _bstr_t name;
  if (SUCCEEDED(view.GetTypeInfo(0, LOCALE_NEUTRAL, &members)) &&
      SUCCEEDED(members->GetContainingTypeLib(&library, &index)) &&
      SUCCEEDED(library->GetTypeInfoOfGuid(__uuidof(_IZYNVue3DEvents), &events))) {
    events->GetDocumentation(event, name.GetAddress(), nullptr, nullptr, nullptr);
  }
  return name.length() > 0 ? std::wstring(name) : std::wstring();
}

void run(const std::wstring& file) {
  ViewWindow window(L"Script");
  const Microsoft::WRL::ComPtr<Script> script(new Script(file));
  const Microsoft::WRL::ComPtr<Host> host(new Host);
  script->add(L"View", window.view());
  script->add(L"Host", *host.Get());
  window.events().handler = [&](DISPID event, const DISPPARAMS& arguments) {
    script->call(L"View_" + eventName(window.view(), event), arguments);
  };
  script->start();
  window.run();
  script->stop();
}

}  // namespace
}  // namespace zyn::sample

int wmain(int count, wchar_t** words) {
  if (count != 2) {
    std::fputs("usage: scripthost SCRIPT.vbs|SCRIPT.js\n", stderr);
    return 2;
  }
  try {
    zyn::host::check(OleInitialize(nullptr), L"OleInitialize");
    zyn::sample::run(words[1]);
    OleUninitialize();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "scripthost: %s\n", error.what());
    return 1;
  }
}
