#pragma once

#include <array>

#include "core/Box3.h"

namespace zyn {

/// The part of space that a selection pass looks at, with a margin for OpenGL's single precision:
/// what lies outside cannot be hit.
class PickVolume {
 public:
  /// OpenGL's matrices, column by column; their product maps model points to clip space.
  using Matrix = std::array<double, 16>;
  PickVolume(const Matrix& projection, const Matrix& modelView);

  /// False when nothing within the box can be hit. True for boxes that are not finite.
  bool mayMeet(const Box3& box) const;

 private:
  Matrix clip_;
};

}  // namespace zyn
