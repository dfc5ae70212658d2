#pragma once

#include <string>
#include <utility>

#include "core/Progress.h"
#include "core/ZYNList.h"

namespace zyn {

/// Hears how far long work of one object is. Called on the object's thread; it may run foreign code
/// and stop listening meanwhile, and keeps itself alive until it returns.
class ProgressListener {
 public:
  /// Whether the work is to go on. `part`: 0 to 1.
  virtual bool progressed(double part, const std::wstring& what) noexcept = 0;

  /// The object is gone, and so is the place among its listeners.
  virtual void progressSourceEnded() noexcept = 0;

 protected:
  ~ProgressListener() = default;
};

/// Those who hear of one object's long work. Owns none of them.
class ProgressListeners {
 public:
  ProgressListeners() = default;
  ~ProgressListeners() {
    for (ZYNList<ProgressListener*>::Walk walk(listeners_); walk; walk.advance()) {
      (*walk)->progressSourceEnded();
    }
  }
  ProgressListeners(const ProgressListeners&) = delete;
  ProgressListeners& operator=(const ProgressListeners&) = delete;

  /// It does not hear what is being told now: a handler that attaches again would have no end.
  void add(ProgressListener& listener) { listeners_.prepend(&listener); }
  void remove(ProgressListener& listener) noexcept { listeners_.remove(&listener, true); }

  /// What the work tells: passed on at its begin, at each hundredth and at its end. Not to be used
  /// after the object's end.
  Progress about(std::wstring what) {
    return [this, what = std::move(what), told = -1](double part) mutable {
      const int hundredths = static_cast<int>(100 * part);
      if (hundredths <= told) {
        return true;
      }
      told = hundredths;
      return tell(part, what);
    };
  }

 private:
  bool tell(double part, const std::wstring& what) {
    bool goesOn = true;
    for (ZYNList<ProgressListener*>::Walk walk(listeners_); walk; walk.advance()) {
      goesOn = (*walk)->progressed(part, what) && goesOn;
    }
    return goesOn;
  }

  ZYNList<ProgressListener*> listeners_;
};

}  // namespace zyn
