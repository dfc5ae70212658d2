#include <windows.h>
// After windows.h:
#include <objbase.h>
#include <olectl.h>

#include "com/DllServer_com.h"
#include "contract/CompanionObjects_com.h"
#include "module/LibraryClasses_com.h"

namespace {

zyn::DllServer server() {
  return zyn::DllServer(zyn::libraryClasses(), zyn::choosePixelFormatsFor);
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* reserved) {
  return server().onEvent(reason, reserved);
}

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** out) {
  return server().getClassObject(id, iid, out);
}

STDAPI DllCanUnloadNow() {
  const HRESULT own = server().canUnloadNow();
  return own == S_OK && !zyn::releaseCompanion() ? S_FALSE : own;
}

STDAPI DllRegisterServer() {
  const HRESULT companion = zyn::findCompanion();
  return FAILED(companion) ? companion : server().registerServer();
}

STDAPI DllUnregisterServer() { return server().unregisterServer(); }

STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  const HRESULT companion = install ? zyn::findCompanion() : S_OK;
  return FAILED(companion) ? companion : server().install(install, commandLine);
}
