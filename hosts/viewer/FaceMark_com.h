#pragma once

#include <wrl/client.h>

#include <span>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "common/Vector.h"
#include "viewer/PartColour.h"

namespace zyn::viewer {

/// A line around a face of the model, over it from both sides.
class FaceMark {
 public:
  FaceMark(const Colour& colour, double width);

  /// Adds the mark to the scene of a view; it shows nothing yet.
  void addTo(IZYNVue3D& view) const;

  /// Marks the face with these corners, `distance` away from it; no corners: nothing.
  void show(std::span<const host::Vector> corners, double distance) const;

 private:
  Microsoft::WRL::ComPtr<IZYNPolyligne> line_;
};

}  // namespace zyn::viewer
