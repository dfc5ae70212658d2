#pragma once

#include <string>

#include "support/HostSession_win.h"

namespace zyn::test {

inline std::wstring guidText(REFGUID id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return text;
}

/// A text below HKEY_CLASSES_ROOT; "(absent)" when the key or the value is not there.
inline std::wstring classesText(const std::wstring& key, const wchar_t* value = nullptr) {
  wchar_t text[MAX_PATH] = {};
  DWORD size = sizeof text;
  const LSTATUS read =
      RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), value, RRF_RT_REG_SZ, nullptr, text, &size);
  return read == ERROR_SUCCESS ? text : L"(absent)";
}

inline std::wstring classKey(REFCLSID id) { return L"CLSID\\" + guidText(id); }

/// The path of the DLL that serves a class.
inline std::wstring moduleOf(REFCLSID id) {
  return classesText(classKey(id) + L"\\InprocServer32");
}

}  // namespace zyn::test
