#pragma once

#include <windows.h>
// After windows.h:
#include <oleauto.h>

#include <string>
#include <vector>

namespace zyn {

/// Null is the empty text. Null characters end nothing.
std::wstring textIn(BSTR value);

/// Answers a property get with a text. E_POINTER without a place.
HRESULT giveText(BSTR* place, const std::wstring& text);

/// The same with an array of texts, lower bound 0.
HRESULT giveTexts(VARIANT* place, const std::vector<std::wstring>& texts);

}  // namespace zyn
