#include "view/CursorGlyph_gl.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "glcontext/StateGuards_gl.h"

namespace zyn {

namespace {

constexpr GLsizei kSide = 13;
constexpr GLfloat kCentre = 6.0F;

/// From the bottom, two bytes a row, the leftmost pixel being the highest bit.
constexpr GLubyte kRows[kSide * 2] = {
    0x07, 0x00,  //      ###
    0x07, 0x00,  //      ###
    0x07, 0x00,  //      ###
    0x07, 0x00,  //      ###
    0x02, 0x00,  //       #
    0xF0, 0x78,  // ####     ####
    0xF8, 0xF8,  // #####   #####
    0xF0, 0x78,  // ####     ####
    0x02, 0x00,  //       #
    0x07, 0x00,  //      ###
    0x07, 0x00,  //      ###
    0x07, 0x00,  //      ###
    0x07, 0x00,  //      ###
};

bool isBlack(int x, int y) { return (kRows[2 * y + x / 8] >> (7 - x % 8) & 1) != 0; }

/// The cross in another size: each pixel is as the one of the cross in which its centre lies.
void drawScaled(double scale) {
  const int side = static_cast<int>(std::lround(kSide * scale));
  const int bytesOfRow = (side + 7) / 8;
  const auto source = [&](int pixel) { return static_cast<int>((pixel + 0.5) * kSide / side); };
  std::vector<GLubyte> rows(static_cast<std::size_t>(side * bytesOfRow));
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      if (isBlack(source(x), source(y))) {
        rows[static_cast<std::size_t>(y * bytesOfRow + x / 8)] |=
            static_cast<GLubyte>(0x80 >> x % 8);
      }
    }
  }
  const PlainPixelStore store(1);
  const auto centre = static_cast<GLfloat>((side - 1) / 2.0);
  glBitmap(side, side, centre, centre, 0, 0, rows.data());
}

}  // namespace

CursorGlyph::CursorGlyph() : list_(glGenLists(1)) {
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glNewList(list_, GL_COMPILE);
  glBitmap(kSide, kSide, kCentre, kCentre, 0, 0, kRows);
  glEndList();
}

CursorGlyph::~CursorGlyph() { glDeleteLists(list_, 1); }

void CursorGlyph::draw(float x, float y, float z, double pixelScale, const Colour3& colour) const {
  const PushedAttributes colourAndRasterPosition(GL_CURRENT_BIT);
  const AutoGLLighting lighting(AutoGLLighting::kOff);
  glColor3f(colour[0], colour[1], colour[2]);  // before the raster position, which takes it
  glRasterPos3f(x, y, z);
  if (pixelScale == 1) {
    glCallList(list_);
  } else {
    drawScaled(pixelScale);
  }
}

}  // namespace zyn
