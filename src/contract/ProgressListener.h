#pragma once

#include <string>

#include "core/ZYNList.h"

namespace zyn {

/// Somebody who hears how far long work of an object is, and may stop it.
class ProgressListener {
 public:
  /// `part`: 0 to 1; `text`: what the work is. False to stop it.
  virtual bool progressed(double part, const std::wstring& text) noexcept = 0;

 protected:
  ~ProgressListener() = default;
};

/// Those who listen to one object. Owns none of them: each leaves before its end.
class ProgressListeners {
 public:
  void add(ProgressListener& listener) { listeners_.append(&listener); }
  void remove(ProgressListener& listener) noexcept { listeners_.remove(&listener, true); }

  /// Whether the work goes on. Listeners run foreign code, which may add and remove them.
  bool goesOn(double part, const std::wstring& text) {
    bool wanted = true;
    for (ZYNList<ProgressListener*>::Walk walk(listeners_); walk; walk.advance()) {
      wanted = (**walk).progressed(part, text) && wanted;
    }
    return wanted;
  }

 private:
  ZYNList<ProgressListener*> listeners_;
};

}  // namespace zyn
