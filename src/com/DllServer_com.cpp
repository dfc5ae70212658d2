#include "com/DllServer_com.h"

// After windows.h:
#include <objbase.h>

#include <string>

#include "com/ClassFactory_com.h"
#include "com/ModuleState_com.h"
#include "com/Registrar_com.h"
#include "com/TypeLibraryRegistration_com.h"
#include "com/automation_com.h"
#include "platform/ActivationContext_win.h"
#include "platform/ModuleHandle_win.h"
#include "platform/ModuleStatic.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

void throwLastError() { throwIfFailed(HRESULT_FROM_WIN32(GetLastError())); }

std::wstring loadScript(UINT number) {
  const HRSRC found = FindResourceW(moduleHandle(), MAKEINTRESOURCEW(number), L"REGISTRY");
  const HGLOBAL loaded = found ? LoadResource(moduleHandle(), found) : nullptr;
  if (!loaded) {
    throwLastError();
  }
  const auto* const text = static_cast<const char*>(LockResource(loaded));
  return {text, text + SizeofResource(moduleHandle(), found)};
}

std::wstring libraryId() {
  const ComPtr<ITypeLib> library = ModuleState::instance().typeLibrary();
  return guidText(TypeLibraryAttributes(*library.Get())->guid);
}

std::vector<ScriptKey> readScript(const ClassEntry& entry) {
  return parseRegistrationScript(
      loadScript(entry.registrationScript),
      {{L"MODULE", modulePath()}, {L"CLSID", guidText(*entry.id)}, {L"LIBID", libraryId()}});
}

HRESULT registerAll(ClassTable classes, RegistrationScope scope) noexcept {
  return boundary([&] {
    for (const ClassEntry& entry : classes) {
      applyScript(readScript(entry), scope);
    }
    registerTypeLibrary(scope);
  });
}

/// Whether another file than ours serves the class: a copy of this one that was registered later.
bool isServedByAnother(REFCLSID id, RegistrationScope scope) {
  const auto server =
      readText(ClassesRoot(scope).get(), L"CLSID\\" + guidText(id) + L"\\InprocServer32");
  return server && !isSameText(*server, modulePath());
}

HRESULT unregisterAll(ClassTable classes, RegistrationScope scope) noexcept {
  return boundary([&] {
    for (const ClassEntry& entry : classes) {
      if (!isServedByAnother(*entry.id, scope)) {
        undoScript(readScript(entry), scope);
      }
    }
    unregisterTypeLibrary(scope);
  });
}

}  // namespace

BOOL DllServer::onEvent(DWORD reason, const void* reserved) const noexcept {
  if (reason == DLL_PROCESS_ATTACH) {
    DisableThreadLibraryCalls(moduleHandle());
    return readyToThrow();
  }
  if (reason == DLL_PROCESS_DETACH && reserved) {
    ProcessEnd::begin();
  } else if (reason == DLL_PROCESS_DETACH) {
    ModuleState::instance().forgetTypes();
    forgetActivationContext();
  }
  return TRUE;
}

HRESULT DllServer::getClassObject(REFCLSID id, REFIID iid, void** out) const noexcept {
  if (!out) {
    return E_POINTER;
  }
  *out = nullptr;
  if (!readyToThrow()) {
    return E_OUTOFMEMORY;
  }
  rememberActivationContext();
  return boundary([&] {
    if (beforeClassObject_) {
      beforeClassObject_(id);
    }
    const ClassEntry* const entry = findClass(classes_, id);
    return entry ? makeObject<ClassFactory>(entry->create).CopyTo(iid, out)
                 : CLASS_E_CLASSNOTAVAILABLE;
  });
}

HRESULT DllServer::canUnloadNow() const noexcept {
  return ModuleState::instance().isLocked() ? S_FALSE : S_OK;
}

HRESULT DllServer::registerServer() const noexcept {
  return registerAll(classes_, RegistrationScope::kMachine);
}

HRESULT DllServer::unregisterServer() const noexcept {
  return unregisterAll(classes_, RegistrationScope::kMachine);
}

HRESULT DllServer::install(BOOL add, const wchar_t* commandLine) const noexcept {
  const bool forUser = commandLine && _wcsicmp(commandLine, L"user") == 0;
  if (!forUser && commandLine && *commandLine) {
    return E_INVALIDARG;
  }
  const RegistrationScope scope = forUser ? RegistrationScope::kUser : RegistrationScope::kMachine;
  return add ? registerAll(classes_, scope) : unregisterAll(classes_, scope);
}

}  // namespace zyn
