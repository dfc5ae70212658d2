#pragma once

#include <xmmintrin.h>

namespace zyn {

/// Sets the floating-point environment that this library computes in, and gives the caller's back
/// at the end of the scope. Hosts written in Delphi or VBA run with floating-point exceptions
/// unmasked or with another rounding; our divisions and OpenGL's need the default.
///
/// fesetenv(FE_DFL_ENV) does not do it: MinGW's leaves the SSE unit as it is.
class HostState {
 public:
  HostState() noexcept : sse_(_mm_getcsr()) {
    asm volatile("fnstcw %0" : "=m"(x87_));
    setOurs();
  }
  HostState(const HostState&) = delete;
  HostState& operator=(const HostState&) = delete;
  ~HostState() {
    loadX87(x87_);
    _mm_setcsr(sse_);
  }

  /// Sets the environment again, after a call of the host's code, which may have changed it.
  static void setOurs() noexcept {
    _mm_setcsr(kSseDefault);
    loadX87(kX87Default);
  }

 private:
  // Every exception masked, rounding to nearest, 64-bit mantissa in the x87 unit.
  static constexpr unsigned kSseDefault = 0x1F80;
  static constexpr unsigned short kX87Default = 0x037F;

  /// What has been noted before must not become an exception under the new masks.
  static void loadX87(const unsigned short& control) noexcept {
    asm volatile("fnclex\n\tfldcw %0" : : "m"(control));
  }

  unsigned sse_;
  unsigned short x87_ = 0;
};

}  // namespace zyn
