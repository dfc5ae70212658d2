#pragma once

#include <windows.h>
// After windows.h:
#include <oleidl.h>
#include <wrl/client.h>

namespace zyn {

/// The one sink of a control's picture (IViewObject::SetAdvise), and what it is told.
class ViewAdvice {
 public:
  void set(DWORD aspects, DWORD flags, IAdviseSink* sink);
  Microsoft::WRL::ComPtr<IAdviseSink> get(DWORD* aspects, DWORD* flags) const;
  void clear() noexcept;

  /// The picture changed; kept back while it is frozen.
  void changed();

  /// Freezing nests. True when it was not frozen before, or is not any more.
  bool freeze() noexcept { return ++freezes_ == 1; }
  bool unfreeze() noexcept { return --freezes_ == 0; }
  bool isFrozen() const noexcept { return freezes_ > 0; }

  /// Tells what was kept back.
  void catchUp();

 private:
  Microsoft::WRL::ComPtr<IAdviseSink> sink_;
  DWORD aspects_ = 0;
  DWORD flags_ = 0;
  int freezes_ = 0;
  bool keptBack_ = false;
};

}  // namespace zyn
