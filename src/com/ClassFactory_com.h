#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include "com/ClassTable_com.h"
#include "com/ComClass_com.h"

namespace zyn {

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
