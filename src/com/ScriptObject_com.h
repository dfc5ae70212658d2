#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <optional>
#include <string>

#include "com/OwnedVariant_com.h"

namespace zyn {

/// Reads a property of a script's object, an array's element by its number. Fails where the object
/// has none of that name. Runs the object's code.
HRESULT readProperty(IDispatch& object, std::wstring name, OwnedVariant& value);

/// How many elements a script's array says that it has; none for another object. Runs its code.
std::optional<LONG> scriptLength(IDispatch& object);

}  // namespace zyn
