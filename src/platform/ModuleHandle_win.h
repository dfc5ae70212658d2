#pragma once

#include <windows.h>

#include <string>

namespace zyn {

/// The module that this code is linked into.
HINSTANCE moduleHandle() noexcept;

/// Full path of that module's file.
std::wstring modulePath();

}  // namespace zyn
