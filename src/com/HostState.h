#pragma once

#include <cfenv>

namespace zyn {

/// Sets the floating-point environment that this library computes in, and gives the caller's back
/// at the end of the scope. Hosts written in Delphi or VBA run with floating-point exceptions
/// unmasked or with another rounding; our divisions and OpenGL's need the default.
class HostState {
 public:
  HostState() noexcept {
    std::fegetenv(&caller_);
    std::fesetenv(FE_DFL_ENV);
  }
  HostState(const HostState&) = delete;
  HostState& operator=(const HostState&) = delete;
  ~HostState() { std::fesetenv(&caller_); }

 private:
  std::fenv_t caller_;
};

}  // namespace zyn
