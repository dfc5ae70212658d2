#pragma once

#include <array>
#include <string_view>

#include "common/Vector.h"

namespace zyn::shot {

/// Where the camera looks from and what it shows upwards; perpendicular unit vectors.
struct View {
  host::Vector direction;  ///< from the eye to the model
  host::Vector up;

  bool operator==(const View&) const = default;
};

/// The view of a name: xy+ xy- xz+ xz- yz+ yz- turning iso iso-y. Throws UsageError for others.
View parseView(std::string_view name);

/// The view along a direction with `up` about upwards; neither need be one long.
View viewAlong(const host::Vector& direction, const host::Vector& up);

/// The view as ViewParams takes it: left, up, direction, then corner, pixel size and three zeros.
/// Corner and pixel size are left 0, since the context fits them to the box itself.
std::array<double, 16> viewNumbers(const View& view);

}  // namespace zyn::shot
