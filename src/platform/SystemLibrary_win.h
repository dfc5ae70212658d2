#pragma once

#include <windows.h>

namespace zyn {

/// Loads a library of the system by its file name, from nowhere but the system's own folder; null
/// where it cannot be loaded.
inline HMODULE loadSystemLibrary(const wchar_t* fileName) {
  return LoadLibraryExW(fileName, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

}  // namespace zyn
