#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "com/errors_com.h"

namespace zyn {

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

}  // namespace zyn
