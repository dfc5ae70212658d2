#include "scripthost/Script_com.h"

#include <comutil.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "common/ClassObject_com.h"
#include "common/NumberArray_com.h"

namespace zyn::sample {

using host::check;
using Microsoft::WRL::ComPtr;

namespace {

/// The numbers as an array of VARIANTs; empty when memory is short.
template <typename Number>
_variant_t variantArray(const std::vector<Number>& numbers) {
  _variant_t result;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(numbers.size()));
  if (array == nullptr) {
    return result;
  }
  result.vt = VT_ARRAY | VT_VARIANT;
  result.parray = array;
  for (LONG i = 0; i < static_cast<LONG>(numbers.size()); ++i) {
    _variant_t number(numbers[static_cast<std::size_t>(i)]);
    SafeArrayPutElement(array, &i, &number);
  }
  return result;
}

/// What a script gets for an event's argument: scripts read arrays of VARIANTs only.
_variant_t forScript(const VARIANT& argument) {
  if (argument.vt == (VT_ARRAY | VT_I4)) {
    return variantArray(host::integersOf(argument));
  }
  if (argument.vt == (VT_ARRAY | VT_R8)) {
    return variantArray(host::numbersOf(argument));
  }
  return argument;
}

}  // namespace

Script::Script(const std::wstring& file) {
  std::ifstream stream(std::filesystem::path(file), std::ios::binary);
  if (!stream) {
    throw host::ComFailure("the script cannot be read");
  }
  text_.assign(std::istreambuf_iterator<char>(stream), {});  // of ASCII characters
  const bool javaScript = std::filesystem::path(file).extension() == L".js";
  engine_ = host::ClassObject(javaScript ? L"JScript" : L"VBScript").create<IActiveScript>();
  check(engine_->SetScriptSite(this), L"SetScriptSite");
}

void Script::add(const wchar_t* name, IDispatch& object) {
  objects_[name] = &object;
  check(engine_->AddNamedItem(name, SCRIPTITEM_ISVISIBLE), L"AddNamedItem");
}

void Script::start() {
  ComPtr<IActiveScriptParse> parser;
  check(engine_.As(&parser), L"IActiveScriptParse");
  check(parser->InitNew(), L"InitNew");
  check(engine_->SetScriptState(SCRIPTSTATE_CONNECTED), L"SetScriptState");
  check(parser->ParseScriptText(text_.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                SCRIPTTEXT_ISVISIBLE, nullptr, nullptr),
        L"the script");
}

void Script::call(const std::wstring& function, const DISPPARAMS& arguments) {
  ComPtr<IDispatch> functions;
  LPOLESTR name = const_cast<LPOLESTR>(function.c_str());
  DISPID member = DISPID_UNKNOWN;
  if (FAILED(engine_->GetScriptDispatch(nullptr, &functions)) ||
      FAILED(functions->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &member))) {
    return;  // not every script listens to every event
  }
  std::vector<_variant_t> given;
  for (UINT i = 0; i < arguments.cArgs; ++i) {
    given.push_back(forScript(arguments.rgvarg[i]));
  }
  DISPPARAMS copy = {given.data(), nullptr, arguments.cArgs, 0};
  functions->Invoke(member, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &copy, nullptr, nullptr,
                    nullptr);
}

void Script::stop() {
  engine_->Close();
  engine_.Reset();
}

STDMETHODIMP Script::GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                                 ITypeInfo** type) noexcept {
  if (type != nullptr) {
    *type = nullptr;
  }
  const auto found = objects_.find(name);
  if (found == objects_.end() || (wanted & SCRIPTINFO_IUNKNOWN) == 0) {
    return TYPE_E_ELEMENTNOTFOUND;
  }
  return found->second.CopyTo(IID_PPV_ARGS(object));
}

STDMETHODIMP Script::OnScriptError(IActiveScriptError* error) noexcept {
  EXCEPINFO what = {};
  DWORD context = 0;
  ULONG line = 0;
  LONG column = 0;
  error->GetExceptionInfo(&what);
  error->GetSourcePosition(&context, &line, &column);
  const _bstr_t source(what.bstrSource, false);
  const _bstr_t description(what.bstrDescription, false);
  const _bstr_t help(what.bstrHelpFile, false);
  std::fprintf(stderr, "line %lu: %ls (0x%08lx)\n", line + 1,
               description.length() > 0 ? static_cast<const wchar_t*>(description) : L"error",
               static_cast<unsigned long>(what.scode));
  return S_OK;
}

}  // namespace zyn::sample
