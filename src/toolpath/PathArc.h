#pragma once

#include <cstddef>

#include "toolpath/PathSink.h"

namespace zyn {

/// The length of an arc from where the tool is.
double arcLength(const PathPoint& start, const ArcMove& move);

/// An arc with the place where it begins.
struct PathArc {
  PathPoint start;
  ArcMove move;

  /// Where the tool is after a part of the turn, 0 to 1.
  PathPoint pointAt(double part) const;
  /// The length up to there.
  double lengthTo(double part) const;
  /// The part after which it has come so far, between two parts of the turn.
  double partAt(double length, double from, double to) const;

  /// In how many equal parts of the turn chords come at most so far from it.
  std::size_t chordCount(double tolerance) const;
};

}  // namespace zyn
