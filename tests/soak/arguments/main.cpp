// Calls every published member of both libraries, and the interfaces that the system expects of
// controls, with arguments of every kind on live objects. usage: soak_arguments [long | COUNT
// [SEED]]
#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "soak/arguments/Dialogs_win.h"
#include "soak/arguments/Round_win.h"
#include "support/ProcessUsage_win.h"
#include "support/RegisteredClasses_win.h"
#include "support/SoakRun.h"
#include "support/TempFolder_win.h"

namespace {

using namespace zyn::test;

constexpr std::uint64_t kUsualCount = 200000;
constexpr int kRoundCalls = 4000;
constexpr double kLongestSeconds = 10;
constexpr double kMostMegabytes = 1500;

/// The same calls again and again keep no memory. The first times fill what the system keeps.
constexpr int kRepeatedCalls = 1000;
constexpr int kFirstTimes = 4;
constexpr int kMoreTimes = 6;
constexpr double kAllowedLossMb = 0.02;

class Session {
 public:
  explicit Session(std::uint64_t seed) : seed_(seed) {
    // Names that are no paths must not lead out of it.
    std::filesystem::current_path(folder_.path());
  }
  ~Session() { std::filesystem::current_path(folder_.path().parent_path()); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void runRounds(std::uint64_t count) {
    std::uint64_t done = 0;
    for (std::uint64_t seed = seed_; done < count; ++seed) {
      const auto calls = static_cast<int>(std::min<std::uint64_t>(kRoundCalls, count - done));
      runRound(seed, calls);
      done += static_cast<std::uint64_t>(calls);
      std::printf("%llu calls, %.0f MB\n", static_cast<unsigned long long>(done),
                  currentCommitMb());
      std::fflush(stdout);
    }
  }

  /// Memory that is really lost is lost by every run of the same calls.
  void repeatRound() {
    for (int i = 0; i < kFirstTimes; ++i) runRound(seed_, kRepeatedCalls);
    double lost = kMostMegabytes;
    for (int i = 0; i < kMoreTimes; ++i) {
      const double before = currentCommitMb();
      runRound(seed_, kRepeatedCalls);
      lost = std::min(lost, currentCommitMb() - before);
    }
    std::printf("repeated: %.2f MB more each time\n", lost);
    if (lost > kAllowedLossMb) watchdog_.fail("repeated calls keep memory");
  }

 private:
  void runRound(std::uint64_t seed, int calls) {
    watchdog_.setContext("again: ./zyn soak arguments " + std::to_string(calls) + " " +
                         std::to_string(seed));
    Round(seed, published_, folderName_, watchdog_).run(calls);
  }

  const Apartment apartment_;
  const TempFolder folder_;
  const std::wstring folderName_ = folder_.path().wstring();
  const Published published_ =
      readPublished({moduleOf(classOf(kVue3DProgId)), moduleOf(classOf(kRectangleProgId))});
  const DialogsCancelled dialogs_;
  Watchdog watchdog_{kLongestSeconds, kMostMegabytes};
  std::uint64_t seed_;
};

}  // namespace

int main() {
  try {
    const SoakRun run(kUsualCount);
    Session session(run.seed);
    session.runRounds(run.count);
    session.repeatRound();
  } catch (const std::exception& failure) {
    std::printf("FAILED: %s\n", failure.what());
    return 1;
  }
  return 0;
}
