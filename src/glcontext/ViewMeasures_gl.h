#pragma once

#include "core/Point.h"
#include "glcontext/ModelView_gl.h"

namespace zyn {

/// What the current projection shows.
struct ShownView {
  /// Model units from bottom to top, scales of the model-view matrix apart; with perspective at
  /// distance 1 from the eye.
  double height = 0.0;
  bool perspective = false;
};
ShownView shownView();
inline double shownHeight() { return shownView().height; }

/// How much longer a pixel is at a point of `space` than at distance 1 from the eye, in the
/// perspective of a projection; 0 behind the eye.
double perspectiveScale(const GlMatrix& projection, const ModelView& space, const Point& at);

/// Model units of one pixel of the current viewport, in a view that shows `viewHeight` of them from
/// bottom to top; 0 in a viewport without height.
double pixelLength(double viewHeight);

}  // namespace zyn
