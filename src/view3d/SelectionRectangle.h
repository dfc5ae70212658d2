#pragma once

#include <optional>

#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// The part of a view that a rubber band selects, in fractions of the client area measured from its
/// centre: x from -0.5 at the left to 0.5 at the right, y from -0.5 at the bottom to 0.5 at the
/// top.
struct SelectionRectangle {
  float xMin = 0.0F;
  float xMax = 0.0F;
  float yMin = 0.0F;
  float yMax = 0.0F;
  float directionX = 1.0F;  ///< 1 when the drag ran to the right, -1 to the left
  float directionY = 1.0F;  ///< 1 when the drag ran upwards, -1 downwards

  bool operator==(const SelectionRectangle& other) const = default;

  /// None when the rectangle is less than a pixel wide or high, or the client area is empty.
  static std::optional<SelectionRectangle> between(PixelPoint press, PixelPoint release,
                                                   ClientSize client);

  PickRegion region(ClientSize client) const;

  /// The camera moved so that the rectangle's centre is the view's.
  CParamsVue3D centred(const CParamsVue3D& camera) const;

  /// What to pick with the centred camera: a region about the centre of the client area.
  PickRegion centredRegion(ClientSize client) const;
};

}  // namespace zyn
