#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <span>

#include "com/ComClass_com.h"

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

/// Has the C++ runtime take the memory that it needs to throw exceptions on this thread, and to
/// make local static objects in this module. It takes it the first time otherwise, and ends the
/// process where there is none. False if there is none now.
bool readyToThrow() noexcept;

/// The class object of one class.
class ClassFactory final : public ComClass<ClassFactory, IClassFactory> {
 public:
  explicit ClassFactory(CreateFunction create) : create_(create) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** out) noexcept override;

  /// Keeps the module loaded, also without any object.
  STDMETHODIMP LockServer(BOOL lock) noexcept override;

 private:
  CreateFunction create_;
};

}  // namespace zyn
