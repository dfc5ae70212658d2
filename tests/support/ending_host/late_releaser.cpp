// A DLL that holds objects and lets go of them no sooner than it is told that the process ends.
// Once it has come through that, the exit code is 42: the system keeps quiet about crashes at this
// stage.
#include <windows.h>
// After windows.h:
#include <ole2.h>

#include <array>

namespace {

std::array<IUnknown*, 16> held;
bool closing = false;

void letGo(IUnknown* object) {
  IOleObject* control = nullptr;
  if (closing &&
      SUCCEEDED(object->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&control)))) {
    control->Close(OLECLOSE_NOSAVE);
    control->SetClientSite(nullptr);
    control->Release();
  }
  object->Release();
}

}  // namespace

/// Takes a reference over; `close`: controls are closed before they are released.
extern "C" __declspec(dllexport) void takeOver(IUnknown* object, BOOL close) {
  closing = close != FALSE;
  for (IUnknown*& place : held) {
    if (!place) {
      place = object;
      return;
    }
  }
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_DETACH) {
    bool heldAny = false;
    for (IUnknown* object : held) {
      if (!object) continue;
      heldAny = true;
      letGo(object);
    }
    if (heldAny) TerminateProcess(GetCurrentProcess(), 42);
  }
  return TRUE;
}
