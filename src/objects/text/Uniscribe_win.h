#pragma once

#include <windows.h>
// After windows.h:
#include <usp10.h>

namespace zyn {

/// The system's library that lays out text of all scripts. It stays loaded.
struct Uniscribe {
  /// Null where it cannot be loaded; it is tried again then.
  static const Uniscribe* get();

  decltype(&ScriptItemize) itemize;
  decltype(&ScriptLayout) layout;
  decltype(&ScriptShape) shape;
  decltype(&ScriptPlace) place;
  decltype(&ScriptFreeCache) freeCache;
};

/// What the library keeps of a font.
class ScriptCache {
 public:
  ScriptCache() = default;
  ~ScriptCache() {
    if (cache_ != nullptr) {
      Uniscribe::get()->freeCache(&cache_);
    }
  }
  ScriptCache(const ScriptCache&) = delete;
  ScriptCache& operator=(const ScriptCache&) = delete;

  SCRIPT_CACHE* get() { return &cache_; }

 private:
  SCRIPT_CACHE cache_ = nullptr;
};

}  // namespace zyn
