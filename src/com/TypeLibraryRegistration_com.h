#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>
#include <objbase.h>

#include <string>

#include "com/RegistryKey_com.h"
#include "com/errors_com.h"

namespace zyn {

/// The GUID as the registry spells it, in braces.
std::wstring guidText(REFGUID id);

/// What identifies a type library; its memory belongs to the library, which must outlive it.
class TypeLibraryAttributes {
 public:
  explicit TypeLibraryAttributes(ITypeLib& library) : library_(library) {
    throwIfFailed(library.GetLibAttr(&value_));
  }
  TypeLibraryAttributes(const TypeLibraryAttributes&) = delete;
  TypeLibraryAttributes& operator=(const TypeLibraryAttributes&) = delete;
  ~TypeLibraryAttributes() { library_.ReleaseTLibAttr(value_); }

  const TLIBATTR* operator->() const { return value_; }

 private:
  ITypeLib& library_;
  TLIBATTR* value_ = nullptr;
};

/// Registers the module's type library, and with it the marshalling of its interfaces. Throws the
/// failure of the call that stopped it.
void registerTypeLibrary(RegistrationScope scope);

/// Takes the registration away where it names our own file; none to take away is no failure.
void unregisterTypeLibrary(RegistrationScope scope);

}  // namespace zyn
