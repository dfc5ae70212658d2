#pragma once

#include "common/SceneObject_com.h"
#include "common/Vector.h"
#include "zynshot/Colour.h"

namespace zyn::shot {

/// The edges of a box as faint lines, hidden where the model is in front of them.
class BoxObject final : public host::SceneObject {
 public:
  BoxObject(const host::Bounds& bounds, const Colour& colour) : bounds_(bounds), colour_(colour) {}

  STDMETHODIMP Draw3D(int mode) noexcept override;

 private:
  host::Bounds bounds_;
  Colour colour_;
};

}  // namespace zyn::shot
