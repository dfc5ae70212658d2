#pragma once

#include "support/HostSession_win.h"

namespace zyn::test {

/// While it lives, every dialog and message box that opens on this thread is cancelled at once.
class DialogsCancelled {
 public:
  DialogsCancelled();
  ~DialogsCancelled();
  DialogsCancelled(const DialogsCancelled&) = delete;
  DialogsCancelled& operator=(const DialogsCancelled&) = delete;

 private:
  HHOOK hook_;
};

}  // namespace zyn::test
