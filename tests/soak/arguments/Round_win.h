#pragma once

#include <string>
#include <vector>

#include "soak/arguments/Objects_win.h"
#include "support/GlCanvas_win.h"
#include "support/Watchdog_win.h"

namespace zyn::test {

/// Objects that live for some thousands of calls in random order, with paints, input and messages
/// between them. At the end nothing of them may be left.
class Round {
 public:
  Round(std::uint64_t seed, const Published& published, const std::wstring& folder,
        Watchdog& watchdog);

  void run(int calls);

 private:
  void call();
  template <class Step>
  void guarded(const Step& step);
  void callPublished();
  void callStandard();
  void between();
  void switchHostContext();
  void sendInput();
  HWND anyWindow();
  void finish();

  const Published& published_;
  const std::wstring& folder_;
  Watchdog& watchdog_;
  Random random_;
  GlCanvas hostContext_{32, 24};  ///< for objects that draw into the host's own context
  Objects objects_;
};

}  // namespace zyn::test
