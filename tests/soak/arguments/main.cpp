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

void run(const SoakRun& run) {
  const Apartment apartment;
  const TempFolder folder;
  // Names that are no paths must not lead out of it.
  std::filesystem::current_path(folder.path());
  const std::wstring folderName = folder.path().wstring();
  const Published published =
      readPublished({moduleOf(classOf(kVue3DProgId)), moduleOf(classOf(kRectangleProgId))});
  const DialogsCancelled dialogs;
  Watchdog watchdog(kLongestSeconds, kMostMegabytes);
  std::uint64_t done = 0;
  for (std::uint64_t seed = run.seed; done < run.count; ++seed) {
    const auto calls = static_cast<int>(std::min<std::uint64_t>(kRoundCalls, run.count - done));
    watchdog.setContext("again: ./zyn soak arguments " + std::to_string(calls) + " " +
                        std::to_string(seed));
    Round(seed, published, folderName, watchdog).run(calls);
    done += static_cast<std::uint64_t>(calls);
    std::printf("%llu calls, %.0f MB\n", static_cast<unsigned long long>(done), currentCommitMb());
    std::fflush(stdout);
  }
  std::filesystem::current_path(folder.path().parent_path());
}

}  // namespace

int main() {
  try {
    run(SoakRun(kUsualCount));
  } catch (const std::exception& failure) {
    std::printf("FAILED: %s\n", failure.what());
    return 1;
  }
  return 0;
}
