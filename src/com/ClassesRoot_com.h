#pragma once

#include <windows.h>

#include "com/RegistryKey_com.h"

namespace zyn {

/// For whom classes and type libraries are registered.
enum class RegistrationScope { kMachine, kUser };

/// The key below which classes are registered: HKEY_CLASSES_ROOT, or the user's own part of it.
class ClassesRoot {
 public:
  explicit ClassesRoot(RegistrationScope scope)
      : user_(scope == RegistrationScope::kUser ? createKey(HKEY_CURRENT_USER, L"Software\\Classes")
                                                : nullptr) {}

  HKEY get() const { return user_ ? user_.get() : HKEY_CLASSES_ROOT; }

 private:
  UniqueRegistryKey user_;
};

}  // namespace zyn
