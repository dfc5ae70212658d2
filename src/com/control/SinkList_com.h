#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <wrl/client.h>

#include <vector>

#include "platform/Mutex_win.h"

namespace zyn {

/// The sinks of one connection point, under their own critical section. No lock is held while a
/// sink is called or released.
class SinkList {
 public:
  struct Entry {
    DWORD cookie;  ///< never 0
    Microsoft::WRL::ComPtr<IUnknown> sink;
  };

  /// Gives the cookie under which the sink can be removed.
  DWORD add(Microsoft::WRL::ComPtr<IUnknown> sink);

  /// False when no sink has the cookie.
  bool remove(DWORD cookie);

  void clear() noexcept;

  std::vector<Entry> snapshot() const;
  bool holds(DWORD cookie) const;

  /// Calls `visit(IUnknown*)` for every sink there is now, unless it is removed in the meantime.
  template <class Visit>
  void forEach(Visit visit) const {
    for (const Entry& entry : snapshot()) {
      if (holds(entry.cookie)) {
        visit(entry.sink.Get());
      }
    }
  }

 private:
  mutable Mutex mutex_;
  std::vector<Entry> entries_;
  DWORD lastCookie_ = 0;
};

}  // namespace zyn
