#pragma once

#ifdef ZYN_COUNT_GUARDS
#include <cstddef>
#include <vector>
#endif

namespace zyn {

/// Base of what gives OpenGL's state back at the end of a scope. Builds for tests
/// (ZYN_COUNT_GUARDS) keep account of the guards: each must go, before those that came earlier.
class CountedGuard {
 public:
  CountedGuard(const CountedGuard&) = delete;
  CountedGuard& operator=(const CountedGuard&) = delete;

#ifdef ZYN_COUNT_GUARDS
  struct Account {
    std::vector<const CountedGuard*> living{};
    std::size_t made = 0;
    std::size_t disordered = 0;  ///< that went before later ones
  };
  static Account& account() {
    static Account account;
    return account;
  }

 protected:
  CountedGuard() {
    account().living.push_back(this);
    ++account().made;
  }
  ~CountedGuard() {
    if (account().living.back() != this) {
      ++account().disordered;
    }
    std::erase(account().living, this);
  }
#else
 protected:
  CountedGuard() = default;
  ~CountedGuard() = default;
#endif
};

}  // namespace zyn
