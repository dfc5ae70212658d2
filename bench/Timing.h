#pragma once

#include <functional>
#include <vector>

namespace zyn::bench {

/// Something to time, and what has to be done before each time, which is not.
struct Job {
  std::function<void()> run;
  std::function<void()> prepare = [] {};
};

/// Milliseconds of each time that one job ran.
class Samples {
 public:
  void add(double milliseconds) { values_.push_back(milliseconds); }
  int count() const { return static_cast<int>(values_.size()); }
  double median() const;
  double worst() const;

 private:
  std::vector<double> values_;
};

double millisecondsOf(const std::function<void()>& work);

/// Runs the jobs in turn, so that what else the machine does slows all of them alike: one round to
/// warm up, then `rounds`, or as many as fit into some seconds where a job is slow (one at least).
std::vector<Samples> interleave(const std::vector<Job>& jobs, int rounds);

}  // namespace zyn::bench
