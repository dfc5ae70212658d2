#pragma once

#include "support/ScriptText_win.h"

namespace zyn::test {

/// A script that measures: it shows series in the graph of a view and appends to all of them again
/// and again. `x` runs on by 1 a round, series k lies within 0.1 of `levelOf(k, round)`.
class ScriptedStream {
 public:
  static constexpr int kSeries = 8;
  static constexpr int kPoints = 1000;  ///< that each gets in a round
  static constexpr int kKept = 20 * kPoints;
  static constexpr int kShown = 15;  ///< rounds

  explicit ScriptedStream(IDispatch* view);
  ~ScriptedStream() { script_->stop(); }
  ScriptedStream(const ScriptedStream&) = delete;
  ScriptedStream& operator=(const ScriptedStream&) = delete;

  /// Appends what was measured from x = round to round + 1.
  void append(int round) const;

  static double levelOf(int series, int round) {
    return series + 0.25 + 0.5 * ((round + series) % 2);
  }

 private:
  ComPtr<ScriptText> script_ = makeForeign<ScriptText>();
};

}  // namespace zyn::test
