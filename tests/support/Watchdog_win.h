#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

#include "support/HostSession_win.h"

namespace zyn::test {

/// Watches over a long run of calls: when one crashes, hangs or takes memory without bounds, names
/// the call and ends the process with exit code 3. One at a time, on the thread that makes the
/// calls.
class Watchdog {
 public:
  /// A call may take this long, and the process this much memory.
  Watchdog(double longestSeconds, double mostMegabytes);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// What is printed before the call's name: how to run it again.
  void setContext(const std::string& context) { context_ = context; }
  /// A call begins. The name must outlive it.
  void enter(const char* name);
  void leave() { since_ = 0; }
  /// How many calls have begun.
  std::uint64_t calls() const { return calls_; }

  /// Prints what is going on and ends the process.
  [[noreturn]] void fail(const std::string& what) const;

 private:
  void watch();
  std::string lastNames() const;

  double longestSeconds_;
  double mostMegabytes_;
  std::string context_;
  std::array<std::atomic<const char*>, 8> names_{};  ///< of the last calls, in a ring
  std::atomic<std::uint64_t> since_ = 0;
  std::atomic<std::uint64_t> calls_ = 0;
  std::atomic<bool> done_ = false;
  HANDLE watched_ = nullptr;
  std::thread thread_;
};

}  // namespace zyn::test
