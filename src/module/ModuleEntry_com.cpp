#include <windows.h>
// After windows.h:
#include <objbase.h>
#include <olectl.h>

#include "com/DllServer_com.h"
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

STDAPI DllCanUnloadNow() { return server().canUnloadNow(); }

STDAPI DllRegisterServer() { return server().registerServer(); }

STDAPI DllUnregisterServer() { return server().unregisterServer(); }

STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  return server().install(install, commandLine);
}
