#include "contract/CompanionObjects_com.h"

#include <bit>
#include <mutex>
#include <new>
#include <string>
#include <utility>

#include "com/automation_com.h"
#include "platform/ActivationContext_win.h"
#include "platform/Failure_win.h"
#include "platform/ModuleHandle_win.h"
#include "platform/Mutex_win.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr const wchar_t* kLibrary = L"ZYNVue";  // ours, as the source of errors
constexpr const wchar_t* kFile = L"ZYNModeleGeom.dll";

/// The companion's file beside our own, loaded when it is first needed.
class CompanionFile {
 public:
  static CompanionFile& instance() {
    static CompanionFile file;
    return file;
  }

  HRESULT create(REFCLSID id, REFIID iid, void** object) {
    const std::lock_guard lock(mutex_);
    ComPtr<IClassFactory> factory;
    HRESULT answer = load();
    if (SUCCEEDED(answer)) {
      answer = getClassObject_(id, IID_PPV_ARGS(&factory));
    }
    return SUCCEEDED(answer) ? factory->CreateInstance(nullptr, iid, object) : answer;
  }

  bool release() {
    const std::lock_guard lock(mutex_);
    if (module_ && canUnloadNow_() != S_OK) {
      return false;
    }
    unload();
    return true;
  }

 private:
  HRESULT load() {
    if (module_) {
      return S_OK;
    }
    const std::wstring own = modulePath();
    const std::wstring path = own.substr(0, own.find_last_of(L'\\') + 1) + kFile;
    module_ = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!module_) {
      return HRESULT_FROM_WIN32(GetLastError());
    }
    find(getClassObject_, "DllGetClassObject");
    find(canUnloadNow_, "DllCanUnloadNow");
    if (!getClassObject_ || !canUnloadNow_) {
      unload();
      return CO_E_ERRORINDLL;
    }
    return S_OK;
  }

  void unload() {
    if (module_) {
      FreeLibrary(std::exchange(module_, nullptr));
    }
  }

  template <class Function>
  void find(Function*& function, const char* name) const {
    function = std::bit_cast<Function*>(GetProcAddress(module_, name));
  }

  Mutex mutex_;
  HMODULE module_ = nullptr;  ///< left loaded where ours is unloaded without being asked
  HRESULT(WINAPI* getClassObject_)(REFCLSID, REFIID, void**) = nullptr;
  HRESULT(WINAPI* canUnloadNow_)() = nullptr;
};

HRESULT create(REFCLSID id, REFIID iid, void** object) {
  const LibraryActivation activation;
  const HRESULT registered = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, iid, object);
  if (SUCCEEDED(registered) || registered == E_OUTOFMEMORY) {
    return registered;
  }
  const HRESULT beside = CompanionFile::instance().create(id, iid, object);
  // Where there is no such file, the registration is what is missing.
  return beside == HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND) ? registered : beside;
}

template <class Interface>
ComPtr<Interface> createGeometry(REFCLSID id) {
  ComPtr<Interface> object;
  if (const HRESULT created = create(id, IID_PPV_ARGS(&object)); FAILED(created)) {
    if (created == E_OUTOFMEMORY) {
      throw std::bad_alloc();
    }
    throw Failure(
        created,
        L"ZYNModeleGeom is missing: register ZYNModeleGeom.dll, or put it beside ZYNVue.dll.");
  }
  return object;
}

template <class Box>
void putPlaneBounds(Box& box, const Box3& bounds) {
  box.put_XMin(bounds.xMin);
  box.put_XMax(bounds.xMax);
  box.put_YMin(bounds.yMin);
  box.put_YMax(bounds.yMax);
}

}  // namespace

HRESULT makeBox2D(const Box3& bounds, IDispatch** box) {
  if (!box) {
    return E_POINTER;
  }
  *box = nullptr;
  auto made = createGeometry<IZYNBox2D>(CLSID_Box2DGeom);
  putPlaneBounds(*made.Get(), bounds);
  *box = made.Detach();
  return S_OK;
}

HRESULT makeBox3D(const Box3& bounds, IDispatch** box) {
  if (!box) {
    return E_POINTER;
  }
  *box = nullptr;
  auto made = createGeometry<IZYNBox3D>(CLSID_Box3DGeom);
  putPlaneBounds(*made.Get(), bounds);
  made->put_ZMin(bounds.zMin);
  made->put_ZMax(bounds.zMax);
  *box = made.Detach();
  return S_OK;
}

ComPtr<IZYNRectangle> makeRectangle(double xMin, double xMax, double yMin, double yMax) {
  auto made = createGeometry<IZYNRectangle>(CLSID_RectangleGeom);
  made->setBornes(xMin, xMax, yMin, yMax);
  return made;
}

ComPtr<IZYNRectangle> tryMakeRectangle(double xMin, double xMax, double yMin,
                                       double yMax) noexcept {
  ComPtr<IZYNRectangle> made;
  boundary([&] { made = makeRectangle(xMin, xMax, yMin, yMax); });
  return made;
}

ComPtr<IZYNPoint> makePoint(const Point& at) {
  auto made = createGeometry<IZYNPoint>(CLSID_PointGeom);
  made->setCoordonnees(at.x, at.y, at.z);
  return made;
}

HRESULT findCompanion() noexcept {
  const bool entered = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  const HRESULT found = boundary([] {
    try {
      makePoint({});
    } catch (...) {
      reportFailure(currentFailure(), kLibrary, IID_NULL);
      throw;
    }
  });
  releaseCompanion();
  if (entered) {
    CoUninitialize();
  }
  return found;
}

bool releaseCompanion() noexcept { return CompanionFile::instance().release(); }

}  // namespace zyn
