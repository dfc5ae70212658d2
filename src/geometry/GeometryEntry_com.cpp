#include <windows.h>
// After windows.h:
#include <objbase.h>
#include <olectl.h>

#include "ZYNMODELEGEOM.h"
#include "com/DllServer_com.h"
#include "geometry/CZYNPolyligne_com.h"
#include "geometry/ValueObjects_com.h"
#include "geometry/resource.h"

namespace {

constexpr zyn::ClassEntry kClasses[] = {
    {&CLSID_RectangleGeom, zyn::createInstance<zyn::CZYNRectangle>, IDR_ZYNRECTANGLE},
    {&CLSID_Box2DGeom, zyn::createInstance<zyn::CZYNBox2D>, IDR_ZYNBOX2D},
    {&CLSID_Box3DGeom, zyn::createInstance<zyn::CZYNBox3D>, IDR_ZYNBOX3D},
    {&CLSID_PointGeom, zyn::createInstance<zyn::CZYNPoint>, IDR_ZYNPOINT},
    {&CLSID_CouleurGeom, zyn::createInstance<zyn::CZYNCouleur>, IDR_ZYNCOULEUR},
    {&CLSID_PolyligneGeom, zyn::createInstance<zyn::CZYNPolyligne>, IDR_ZYNPOLYLIGNE},
};

constexpr zyn::DllServer kServer(kClasses);

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* reserved) {
  return kServer.onEvent(reason, reserved);
}

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** out) {
  return kServer.getClassObject(id, iid, out);
}

STDAPI DllCanUnloadNow() { return kServer.canUnloadNow(); }

STDAPI DllRegisterServer() { return kServer.registerServer(); }

STDAPI DllUnregisterServer() { return kServer.unregisterServer(); }

STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  return kServer.install(install, commandLine);
}
