#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <span>

namespace zyn {

/// Makes an object of one class: `createInstance<Class>`.
using CreateFunction = HRESULT (*)(IUnknown* outer, REFIID iid, void** out) noexcept;

/// One creatable class of a module.
struct ClassEntry {
  const CLSID* id;
  CreateFunction create;
  UINT registrationScript;  ///< number of its script among the resources of type REGISTRY
};

/// The creatable classes of a module.
using ClassTable = std::span<const ClassEntry>;

/// The entry of a class; null when there is none.
const ClassEntry* findClass(ClassTable classes, REFCLSID id);

}  // namespace zyn
