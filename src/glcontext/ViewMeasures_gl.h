#pragma once

namespace zyn {

/// Model units that the current projection, an orthographic one, shows from bottom to top, scales
/// of the model-view matrix apart.
double shownHeight();

/// Model units of one pixel of the current viewport, in a view that shows `viewHeight` of them from
/// bottom to top; 0 in a viewport without height.
double pixelLength(double viewHeight);

}  // namespace zyn
