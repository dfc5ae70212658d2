#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace zyn::test {

/// How long a soak program runs and from which seed, as its arguments say: nothing (the short form
/// of the test suite), `long`, or a COUNT, and behind it a SEED.
struct SoakRun {
  std::uint64_t count;
  std::uint64_t seed;

  static SoakRun from(int argc, char** argv, std::uint64_t shortCount, std::uint64_t longCount) {
    SoakRun run{shortCount, 1};
    if (argc > 1) {
      run.count =
          std::strcmp(argv[1], "long") == 0 ? longCount : std::strtoull(argv[1], nullptr, 10);
    }
    if (argc > 2) run.seed = std::strtoull(argv[2], nullptr, 10);
    return run;
  }
};

}  // namespace zyn::test
