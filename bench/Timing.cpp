#include "bench/Timing.h"

#include <algorithm>
#include <chrono>

namespace zyn::bench {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{40};

}  // namespace

double Samples::median() const {
  std::vector<double> sorted = values_;
  const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
  std::nth_element(sorted.begin(), middle, sorted.end());
  return *middle;
}

double Samples::worst() const { return *std::max_element(values_.begin(), values_.end()); }

double millisecondsOf(const std::function<void()>& work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::vector<Samples> interleave(const std::vector<Job>& jobs, int rounds) {
  std::vector<Samples> samples(jobs.size());
  const auto start = Clock::now();
  for (int round = 0; round <= rounds; ++round) {
    if (round > 1 && Clock::now() - start > kPatience) {
      break;
    }
    for (std::size_t i = 0; i < jobs.size(); ++i) {
      jobs[i].prepare();
      const double milliseconds = millisecondsOf(jobs[i].run);
      if (round > 0) {
        samples[i].add(milliseconds);
      }
    }
  }
  return samples;
}

}  // namespace zyn::bench
