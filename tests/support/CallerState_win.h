#pragma once

#include <windows.h>
#include <xmmintrin.h>

#include <ostream>

namespace zyn::test {

/// What a call must leave on the calling thread as it was.
struct CallerState {
  HGLRC context;  ///< the current rendering context
  HDC dc;         ///< that it draws on
  unsigned sse;   ///< rounding and exception masks
  unsigned short x87;
  HANDLE activation;  ///< the activation context

  static CallerState current() {
    CallerState state{wglGetCurrentContext(), wglGetCurrentDC(), _mm_getcsr() & ~kSseNotes, 0, {}};
    asm volatile("fnstcw %0" : "=m"(state.x87));
    GetCurrentActCtx(&state.activation);
    ReleaseActCtx(state.activation);
    return state;
  }

  bool operator==(const CallerState&) const = default;

 private:
  static constexpr unsigned kSseNotes = 0x3F;  ///< of exceptions that were masked
};

inline void PrintTo(const CallerState& state, std::ostream* out) {
  *out << "context " << state.context << " on " << state.dc << ", SSE " << std::hex << state.sse
       << ", x87 " << state.x87 << ", activation context " << state.activation;
}

/// For a scope, a floating-point environment as odd hosts have it: rounding down, division by zero
/// not masked, 53 bits of mantissa.
class OddFloatingPoint {
 public:
  OddFloatingPoint() : sse_(_mm_getcsr()) {
    asm volatile("fnstcw %0" : "=m"(x87_));
    _mm_setcsr((kSseDefault | kSseRoundDown) & ~kSseZeroDivide);
    set(kX87Odd);
  }
  ~OddFloatingPoint() {
    set(x87_);
    _mm_setcsr(sse_);
  }
  OddFloatingPoint(const OddFloatingPoint&) = delete;
  OddFloatingPoint& operator=(const OddFloatingPoint&) = delete;

 private:
  static constexpr unsigned kSseDefault = 0x1F80;
  static constexpr unsigned kSseRoundDown = 0x2000;
  static constexpr unsigned kSseZeroDivide = 0x0200;
  static constexpr unsigned short kX87Odd = 0x067B;

  static void set(const unsigned short& control) {
    asm volatile("fnclex\n\tfldcw %0" : : "m"(control));
  }

  unsigned sse_;
  unsigned short x87_ = 0;
};

}  // namespace zyn::test
