#pragma once

#include <windows.h>

#include "com/ClassFactory_com.h"

namespace zyn {

/// What a DLL that offers COM classes does at its entry points.
class DllServer {
 public:
  /// `beforeClassObject`, if any, runs at each request for a class object.
  explicit constexpr DllServer(ClassTable classes, void (*beforeClassObject)(REFCLSID) = nullptr)
      : classes_(classes), beforeClassObject_(beforeClassObject) {}

  /// DllMain. `reserved` as there: set when the process ends.
  BOOL onEvent(DWORD reason, const void* reserved) const noexcept;

  HRESULT getClassObject(REFCLSID id, REFIID iid, void** out) const noexcept;
  HRESULT canUnloadNow() const noexcept;
  HRESULT registerServer() const noexcept;
  HRESULT unregisterServer() const noexcept;

  /// DllInstall: the command line "user" is for the user alone, an empty one for the machine.
  HRESULT install(BOOL add, const wchar_t* commandLine) const noexcept;

 private:
  ClassTable classes_;
  void (*beforeClassObject_)(REFCLSID);
};

}  // namespace zyn
