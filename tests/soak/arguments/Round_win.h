#pragma once

#include <string>
#include <vector>

#include "soak/arguments/Objects_win.h"
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
  void callPublished();
  void callStandard();
  void between();
  void sendInput();
  HWND anyWindow();
  void finish();

  const Published& published_;
  const std::wstring& folder_;
  Watchdog& watchdog_;
  Random random_;
  Objects objects_;
};

}  // namespace zyn::test
