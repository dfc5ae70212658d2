#include "viewer/PathPlayer.h"

#include <iterator>

namespace zyn::viewer {

namespace {

constexpr double kFactors[] = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};

}  // namespace

double PathPlayer::start(double time, double duration) {
  playing_ = duration > 0;
  return time < duration ? time : 0;
}

double PathPlayer::factor() const { return kFactors[step_]; }

bool PathPlayer::faster() {
  const bool possible = step_ + 1 < std::size(kFactors);
  step_ += possible ? 1 : 0;
  return possible;
}

bool PathPlayer::slower() {
  const bool possible = step_ > 0;
  step_ -= possible ? 1 : 0;
  return possible;
}

double PathPlayer::advance(double time, double seconds, double duration) {
  const double next = time + seconds * factor();
  if (next < duration) {
    return next;
  }
  stop();
  return duration;
}

}  // namespace zyn::viewer
