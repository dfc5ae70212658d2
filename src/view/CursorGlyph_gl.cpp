#include "view/CursorGlyph_gl.h"

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

}  // namespace

CursorGlyph::CursorGlyph() : list_(glGenLists(1)) {
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glNewList(list_, GL_COMPILE);
  glBitmap(kSide, kSide, kCentre, kCentre, 0, 0, kRows);
  glEndList();
}

CursorGlyph::~CursorGlyph() { glDeleteLists(list_, 1); }

void CursorGlyph::draw(float x, float y, float z) const {
  const PushedAttributes colourAndRasterPosition(GL_CURRENT_BIT);
  const AutoGLLighting lighting(AutoGLLighting::kOff);
  glColor3f(0, 0, 0);  // before the raster position, which takes it
  glRasterPos3f(x, y, z);
  glCallList(list_);
}

}  // namespace zyn
