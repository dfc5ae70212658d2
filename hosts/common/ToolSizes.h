#pragma once

namespace zyn::host {

/// Diameters of cutters as they are sold: a usual one for a path whose box has this diagonal.
double usualDiameter(double diagonal);

/// The next larger and smaller one; the same where there is none.
double largerDiameter(double diameter);
double smallerDiameter(double diameter);

}  // namespace zyn::host
