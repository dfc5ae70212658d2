#pragma once

#include <functional>

namespace zyn {

/// Long work tells how much of it is done, 0 to 1, a hundred times at most, and goes on where the
/// answer is true; where not, it throws Aborted and has changed nothing. May be empty.
using Progress = std::function<bool(double part)>;

/// For a stage of longer work, which takes it from one part to another.
inline Progress stageOf(const Progress& whole, double from, double to) {
  return [&whole, from, to](double part) { return !whole || whole(from + (to - from) * part); };
}

/// Thrown by long work that was asked to stop.
struct Aborted {};

}  // namespace zyn
