#pragma once

#include <memory>
#include <mutex>

#include "platform/Mutex_win.h"

namespace zyn {

/// A value that the process makes when it is first wanted. Any thread.
template <class T>
class MadeOnce {
 public:
  /// The value; `make(isWhole)` gives it the first time. Where the system refuses something it
  /// needs, it sets `isWhole` to false: such a value is used, and made afresh the next time.
  template <class Make>
  std::shared_ptr<const T> get(const Make& make) {
    const std::lock_guard lock(mutex_);
    if (value_) {
      return value_;
    }
    bool isWhole = true;
    auto made = std::make_shared<const T>(make(isWhole));
    if (isWhole) {
      value_ = made;
    }
    return made;
  }

 private:
  Mutex mutex_;
  std::shared_ptr<const T> value_;
};

}  // namespace zyn
