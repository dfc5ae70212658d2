#pragma once

#include <wrl/client.h>

#include <span>

#include "ZYNVUE.h"
#include "viewer/PartColour.h"

namespace zyn::viewer {

/// A broad, soft line over a piece of a path.
class PathMark {
 public:
  PathMark(const Colour& colour, double width);

  /// Adds the mark to the scene of a view; it shows nothing yet.
  void addTo(IZYNVue3D& view) const;

  /// Marks what leads through these points, x, y, z of each; no points: nothing.
  void show(std::span<const double> points) const;

 private:
  Microsoft::WRL::ComPtr<IZYNGLTrajet> line_;
};

}  // namespace zyn::viewer
