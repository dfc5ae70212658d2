#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h:
#include <comdef.h>
#include <objbase.h>
#include <wrl/client.h>

#include <atomic>
#include <stdexcept>
#include <string>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "support/ModuleLeaks_win.h"

namespace zyn::test {

using Microsoft::WRL::ComPtr;

inline constexpr const wchar_t* kTriangleProgId = L"ZYNVue.ZYNGLTriangle";
inline constexpr const wchar_t* kTextProgId = L"ZYNVue.ZYNGLTexte";
inline constexpr const wchar_t* kSpriteProgId = L"ZYNVue.ZYNGLBitmap";
inline constexpr const wchar_t* kCoteProgId = L"ZYNVue.ZYNGLCote";
inline constexpr const wchar_t* kMeshProgId = L"ZYNVue.ZYNGLMaillage";
inline constexpr const wchar_t* kPathProgId = L"ZYNVue.ZYNGLTrajet";
inline constexpr const wchar_t* kToolProgId = L"ZYNVue.ZYNOutil";
inline constexpr const wchar_t* kScaleProgId = L"ZYNVue.ZYNEchelleCouleurs";
inline constexpr const wchar_t* kGroupProgId = L"ZYNVue.ZYNGroupe";
inline constexpr const wchar_t* kCameraProgId = L"ZYNVue.ZYNCamera";
inline constexpr const wchar_t* kContextProgId = L"ZYNVue.ZYN3dGLBitmapContext";
inline constexpr const wchar_t* kContext2DProgId = L"ZYNVue.ZYN2DGLBitmapContext";
inline constexpr const wchar_t* kRectangleProgId = L"ZYNModeleGeom.Rectangle";
inline constexpr const wchar_t* kBox3DProgId = L"ZYNModeleGeom.Box3D";

/// Ends the running test with the failing code; success passes through.
inline void require(HRESULT result, const char* what) {
  if (SUCCEEDED(result)) return;
  char text[160];
  std::snprintf(text, sizeof text, "%s failed with 0x%08lx", what,
                static_cast<unsigned long>(result));
  throw std::runtime_error(text);
}

/// The calling thread's apartment for a scope. COM unloads the DLLs with the last one, whatever is
/// left of them: that is found out before.
class Apartment {
 public:
  explicit Apartment(DWORD model = COINIT_APARTMENTTHREADED) {
    require(CoInitializeEx(nullptr, model), "CoInitializeEx");
    ++apartments_;
  }
  ~Apartment() {
    if (--apartments_ == 0) expectNothingLeft();
    CoUninitialize();
  }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

 private:
  static inline std::atomic<int> apartments_ = 0;
};

inline CLSID classOf(const wchar_t* progId) {
  CLSID id = {};
  require(CLSIDFromProgID(progId, &id), "CLSIDFromProgID");
  return id;
}

/// A new object of the class registered under progId, as a host gets it.
template <class Interface>
ComPtr<Interface> createObject(const wchar_t* progId) {
  ComPtr<Interface> object;
  require(CoCreateInstance(classOf(progId), nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                           reinterpret_cast<void**>(object.GetAddressOf())),
          "CoCreateInstance");
  return object;
}

template <class Interface, class Object>
ComPtr<Interface> queryFor(Object* object) {
  ComPtr<Interface> found;
  require(
      object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(found.GetAddressOf())),
      "QueryInterface");
  return found;
}

/// The number of references held on an object, as its own counter tells it.
template <class Object>
ULONG referencesOf(Object* object) {
  object->AddRef();
  return object->Release();
}

/// Base of the tests that act as a host: the main thread is in a single-threaded apartment.
class HostTest : public testing::Test {
 private:
  Apartment apartment_;
};

}  // namespace zyn::test
