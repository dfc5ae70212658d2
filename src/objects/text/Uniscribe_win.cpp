#include "objects/text/Uniscribe_win.h"

#include <mutex>

#include "platform/Mutex_win.h"
#include "platform/SystemLibrary_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

namespace {

template <class Function>
bool find(HMODULE module, const char* name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  return function != nullptr;
}

bool findAll(HMODULE module, Uniscribe& found) {
  return module != nullptr && find(module, "ScriptItemize", found.itemize) &&
         find(module, "ScriptLayout", found.layout) && find(module, "ScriptShape", found.shape) &&
         find(module, "ScriptPlace", found.place) &&
         find(module, "ScriptFreeCache", found.freeCache);
}

}  // namespace

const Uniscribe* Uniscribe::get() {
  static Mutex mutex;
  static Uniscribe functions;
  static bool isLoaded = false;
  const std::lock_guard lock(mutex);
  if (!isLoaded) {
    UniqueModule module(loadSystemLibrary(L"usp10.dll"));
    isLoaded = findAll(module.get(), functions);
    if (isLoaded) {
      static_cast<void>(module.release());
    }
  }
  return isLoaded ? &functions : nullptr;
}

}  // namespace zyn
