#include "glcontext/RasterImage_gl.h"

#include <cmath>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

/// Pixels outside the view from where no picture reaches into it, and raster positions still are
/// exact to a fraction of a pixel.
constexpr double kFarthest = 65536.0;

struct Homogeneous {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double w = 1.0;
};

Homogeneous transform(const GlMatrix& m, const Homogeneous& point) {
  const auto row = [&](std::size_t i) {
    return m[i] * point.x + m[i + 4] * point.y + m[i + 8] * point.z + m[i + 12] * point.w;
  };
  return {row(0), row(1), row(2), row(3)};
}

/// The projection moved across the screen for the life of this object. It is kept here rather than
/// on OpenGL's stack, of which two places are all that can be relied on.
class ShiftedProjection {
 public:
  ShiftedProjection(const GlMatrix& projection, double x, double y)
      : modeGuard_(GL_TRANSFORM_BIT), projection_(projection) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glTranslated(x, y, 0);
    glMultMatrixd(projection.data());
  }
  ~ShiftedProjection() { glLoadMatrixd(projection_.data()); }
  ShiftedProjection(const ShiftedProjection&) = delete;
  ShiftedProjection& operator=(const ShiftedProjection&) = delete;

 private:
  PushedAttributes modeGuard_;
  const GlMatrix& projection_;
};

bool setRaster(double x, double y, double z) {
  glRasterPos3d(x, y, z);
  return booleanState(GL_CURRENT_RASTER_POSITION_VALID);
}

bool moveRasterBy(double dx, double dy) {
  GLdouble raster[4] = {};
  glGetDoublev(GL_CURRENT_RASTER_POSITION, raster);
  GLdouble viewport[4] = {};
  glGetDoublev(GL_VIEWPORT, viewport);
  const double x = raster[0] + dx - viewport[0];
  const double y = raster[1] + dy - viewport[1];
  const bool reaches = x > -kFarthest && x < viewport[2] + kFarthest && y > -kFarthest &&
                       y < viewport[3] + kFarthest;
  if (reaches) {
    glBitmap(0, 0, 0, 0, static_cast<GLfloat>(dx), static_cast<GLfloat>(dy), nullptr);
  }
  return reaches;
}

/// For a point that the sides of the view cut off: the projection brings it to the middle of the
/// viewport, where OpenGL judges its depth and the clip planes as ever, and the raster position
/// goes from there to where the point really is.
bool moveRasterOutside(double x, double y, double z, double offsetX, double offsetY) {
  const GlMatrix projection = matrixState(GL_PROJECTION_MATRIX);
  const Homogeneous clip =
      transform(projection, transform(matrixState(GL_MODELVIEW_MATRIX), {x, y, z, 1.0}));
  const double screenX = clip.x / clip.w;
  const double screenY = clip.y / clip.w;
  if (!std::isfinite(screenX) || !std::isfinite(screenY)) {
    return false;
  }
  const ShiftedProjection centred(projection, -screenX, -screenY);
  if (!setRaster(x, y, z)) {
    return false;
  }
  GLdouble viewport[4] = {};
  glGetDoublev(GL_VIEWPORT, viewport);
  return moveRasterBy(screenX * viewport[2] / 2 + offsetX, screenY * viewport[3] / 2 + offsetY);
}

/// Draws pixels as they are, but for their opacity, a colour added.
void setTransfer(double opacity, const Float4& added) {
  glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
  for (const GLenum name : GLNames{GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE}) {
    glPixelTransferf(name, 1);
  }
  glPixelTransferf(GL_ALPHA_SCALE, static_cast<GLfloat>(opacity));
  glPixelTransferf(GL_RED_BIAS, added[0]);
  glPixelTransferf(GL_GREEN_BIAS, added[1]);
  glPixelTransferf(GL_BLUE_BIAS, added[2]);
  glPixelTransferf(GL_ALPHA_BIAS, added[3]);
}

void setPlainTransfer(double opacity) {
  setTransfer(opacity, {});
  for (const GLenum capability : GLNames{GL_TEXTURE_1D, GL_TEXTURE_2D, GL_FOG}) {
    glDisable(capability);
  }
}

}  // namespace

bool moveRasterTo(double x, double y, double z, double offsetX, double offsetY) {
  if (isRecording()) {  // where that is, is known only when the list is called
    glRasterPos3d(x, y, z);
    const GLubyte clear = 0;  // Mesa takes no bitmap without pixels into a list
    glBitmap(1, 1, 0, 0, static_cast<GLfloat>(offsetX), static_cast<GLfloat>(offsetY), &clear);
    return true;
  }
  if (setRaster(x, y, z)) {
    return moveRasterBy(offsetX, offsetY);
  }
  // A selection pass counts valid raster positions as hits: those outside must stay outside.
  return integerState(GL_RENDER_MODE) != GL_SELECT && moveRasterOutside(x, y, z, offsetX, offsetY);
}

void drawImage(const PixelImage& image, double scale, double opacity) {
  if (image.isEmpty()) {
    return;
  }
  const PushedAttributes attributes(GL_PIXEL_MODE_BIT | GL_ENABLE_BIT);
  const PlainPixelStore store(4);
  setPlainTransfer(opacity);
  glPixelZoom(static_cast<GLfloat>(scale), static_cast<GLfloat>(scale));
  glDrawPixels(image.width, image.height, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
}

void drawImagePart(const PixelImage& image, const PixelRect& part) {
  const PushedAttributes attributes(GL_PIXEL_MODE_BIT | GL_ENABLE_BIT);
  const PlainPixelStore store(4);
  setPlainTransfer(1);
  glPixelZoom(1, 1);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, image.width);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, part.y);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, part.x);
  glDrawPixels(part.width, part.height, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
}

void drawCover(int width, int height, const std::uint8_t* cover, const Float4& colour) {
  const PushedAttributes attributes(GL_PIXEL_MODE_BIT);
  const PlainPixelStore store(1);
  setTransfer(1, {colour[0], colour[1], colour[2], 0});
  glPixelZoom(1, 1);
  glDrawPixels(width, height, GL_ALPHA, GL_UNSIGNED_BYTE, cover);
}

}  // namespace zyn
