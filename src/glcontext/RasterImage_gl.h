#pragma once

#include "core/PixelImage.h"
#include "glcontext/StateQuery_gl.h"
#include "glcontext/Tile.h"

namespace zyn {

/// Moves the raster position to a model point and on by an offset in pixels (y upwards), also where
/// that lies outside the view: what is drawn there with glBitmap or glDrawPixels shows the part
/// that reaches into it. False, with nothing to be drawn, for a point in front of or behind the
/// visible depth.
bool moveRasterTo(double x, double y, double z, double offsetX = 0.0, double offsetY = 0.0);

/// Draws a picture with its lower left corner at the raster position, `scale` pixels for each of
/// its own, its alpha multiplied by `opacity`. Blending and the tests of the context hold for it as
/// for anything drawn; textures, fog and the context's ways with pixels do not, and are left as
/// they were.
void drawImage(const PixelImage& image, double scale = 1.0, double opacity = 1.0);

/// Draws a part of a picture, which lies within it, pixel for pixel.
void drawImagePart(const PixelImage& image, const PixelRect& part);

/// Draws a colour at the raster position, pixel for pixel, as opaque as `cover` says, bytes row by
/// row without gaps. Blended and tested as drawImage is; textures and fog have to be off.
void drawCover(int width, int height, const std::uint8_t* cover, const Float4& colour);

}  // namespace zyn
