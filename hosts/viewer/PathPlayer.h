#pragma once

#include <cstddef>

namespace zyn::viewer {

/// The clock by which a path is played: the program's time runs a number of times as fast as that
/// of the person who looks on.
class PathPlayer {
 public:
  bool isPlaying() const { return playing_; }
  void stop() { playing_ = false; }

  /// Begins to play; answers from where: at the end it begins anew.
  double start(double time, double duration);

  double factor() const;
  /// Whether there was a faster or a slower step.
  bool faster();
  bool slower();

  /// The program's time after so many seconds; at the end it stops.
  double advance(double time, double seconds, double duration);

 private:
  std::size_t step_ = 3;
  bool playing_ = false;
};

}  // namespace zyn::viewer
