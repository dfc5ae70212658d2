#pragma once

#include <optional>

#include "common/SceneObject_com.h"

namespace zyn::sample {

/// A coil spring around z that the views draw, measure and pick: each of its coils answers to a
/// name of its own, 0 for the lowest.
class Spring final : public host::SceneObject {
 public:
  /// Lengths in model units.
  struct Shape {
    int coils;
    double radius;
    double wire;   ///< radius of the wire
    double pitch;  ///< from coil to coil
  };

  explicit Spring(const Shape& shape) : shape_(shape) {}

  /// The coil that is drawn in another colour, if any. The view is not repainted.
  void mark(std::optional<LONG> coil) { marked_ = coil; }

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept override;

 private:
  void drawCoil(int coil, int mode) const;

  Shape shape_;
  std::optional<LONG> marked_;
};

}  // namespace zyn::sample
