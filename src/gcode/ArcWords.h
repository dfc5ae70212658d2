#pragma once

#include <optional>
#include <string>

#include "toolpath/PathSink.h"

namespace zyn {

/// An arc as a program gives it, in machine coordinates.
struct ArcWords {
  PathPoint start;
  PathPoint end;
  int axis;        ///< the normal of its plane
  bool clockwise;  ///< seen against that axis
};

/// The arc about a centre, a full circle where it ends as it starts; or else why there is none.
std::optional<ArcMove> arcAround(const ArcWords& words, const PathPoint& centre,
                                 std::string& cause);

/// The arc of a radius, of more than half a turn where that is negative; or else why there is none.
std::optional<ArcMove> arcOfRadius(const ArcWords& words, double radius, std::string& cause);

}  // namespace zyn
