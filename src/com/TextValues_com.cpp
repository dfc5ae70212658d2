#include "com/TextValues_com.h"

namespace zyn {

std::wstring textIn(BSTR value) {
  return value ? std::wstring(value, SysStringLen(value)) : std::wstring();
}

HRESULT giveText(BSTR* place, const std::wstring& text) {
  if (!place) {
    return E_POINTER;
  }
  *place = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *place ? S_OK : E_OUTOFMEMORY;
}

HRESULT giveTexts(VARIANT* place, const std::vector<std::wstring>& texts) {
  if (!place) {
    return E_POINTER;
  }
  VariantInit(place);
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
  if (!array) {
    return E_OUTOFMEMORY;
  }
  auto* const elements = static_cast<VARIANT*>(array->pvData);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    V_VT(&elements[i]) = VT_BSTR;
    const HRESULT given = giveText(&V_BSTR(&elements[i]), texts[i]);
    if (FAILED(given)) {
      SafeArrayDestroy(array);
      return given;
    }
  }
  V_VT(place) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(place) = array;
  return S_OK;
}

}  // namespace zyn
