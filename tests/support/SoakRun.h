#pragma once

#include <cstdint>
#include <cstdlib>

namespace zyn::test {

/// How long a soak program runs and from which seed: what ZYN_COUNT and ZYN_SEED say, if they do.
struct SoakRun {
  explicit SoakRun(std::uint64_t usualCount)
      : count(numberFrom("ZYN_COUNT", usualCount)), seed(numberFrom("ZYN_SEED", 1)) {}

  std::uint64_t count;
  std::uint64_t seed;

 private:
  static std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
    const char* const text = std::getenv(variable);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
  }
};

}  // namespace zyn::test
