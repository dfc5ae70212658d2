#pragma once

#include <bit>

#include "support/HostSession_win.h"

namespace zyn::test {

/// A DLL that lies beside the test program, by its entry points.
class ServerModule {
 public:
  explicit ServerModule(const wchar_t* file) : module_(LoadLibraryW(file)) {
    if (!module_) throw std::runtime_error("the DLL cannot be loaded");
  }
  ServerModule(const ServerModule&) = delete;
  ServerModule& operator=(const ServerModule&) = delete;
  ~ServerModule() { FreeLibrary(module_); }

  HRESULT getClassObject(REFCLSID id, REFIID iid, void** out) const {
    return entry<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(id, iid, out);
  }
  HRESULT canUnloadNow() const { return entry<HRESULT WINAPI()>("DllCanUnloadNow")(); }
  HRESULT registerServer() const { return entry<HRESULT WINAPI()>("DllRegisterServer")(); }
  HRESULT unregisterServer() const { return entry<HRESULT WINAPI()>("DllUnregisterServer")(); }
  HRESULT install(BOOL add, const wchar_t* commandLine) const {
    return entry<HRESULT WINAPI(BOOL, const wchar_t*)>("DllInstall")(add, commandLine);
  }

  /// The class object, straight from the DLL.
  ComPtr<IClassFactory> classObject(REFCLSID id) const {
    ComPtr<IClassFactory> factory;
    require(getClassObject(id, IID_PPV_ARGS(&factory)), "DllGetClassObject");
    return factory;
  }

  std::wstring path() const {
    wchar_t path[1024] = {};
    GetModuleFileNameW(module_, path, static_cast<DWORD>(std::size(path)));
    return path;
  }

  HMODULE handle() const { return module_; }

 private:
  template <class Function>
  Function* entry(const char* name) const {
    const auto found = std::bit_cast<Function*>(GetProcAddress(module_, name));
    if (!found) throw std::runtime_error(std::string(name) + " is not exported");
    return found;
  }

  HMODULE module_;
};

}  // namespace zyn::test
