#pragma once

#include <windows.h>
// After windows.h:
#include <objbase.h>

#include <iterator>
#include <string>

namespace zyn {

/// The GUID as the registry spells it, in braces.
inline std::wstring guidText(REFGUID id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

}  // namespace zyn
