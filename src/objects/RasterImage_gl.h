#pragma once

#include "objects/PixelImage.h"

namespace zyn {

/// Moves the raster position to a model point and on by an offset in pixels (y upwards), also where
/// that lies outside the view: what is drawn there with glBitmap or glDrawPixels shows the part
/// that reaches into it. False, with nothing to be drawn, for a point in front of or behind the
/// visible depth.
bool moveRasterTo(double x, double y, double z, double offsetX = 0.0, double offsetY = 0.0);

/// Draws a picture with its lower left corner at the raster position.
void drawImage(const PixelImage& image);

}  // namespace zyn
