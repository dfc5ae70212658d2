#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>
#include <wrl/client.h>

#include <vector>

namespace zyn {

/// An argument of a further interface that holds objects: one object, an array of objects or of
/// VARIANTs that hold them, with one dimension, by value or by reference; or a script object with
/// `length` and elements by number. Throws badArgument for `name` where it is anything else, or
/// something in it is no object. May run code of a script's object.
std::vector<Microsoft::WRL::ComPtr<IDispatch>> objectsIn(const wchar_t* name,
                                                         const VARIANT& argument);

}  // namespace zyn
