#pragma once

#include <vector>

#include "support/ForeignObject_win.h"
#include "support/Image.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {

/// A rectangle parallel to the XY plane.
struct Plate {
  double xMin, xMax, yMin, yMax, z;
};

inline void drawPlate(const Plate& p) {
  glBegin(GL_QUADS);
  glVertex3d(p.xMin, p.yMin, p.z);
  glVertex3d(p.xMax, p.yMin, p.z);
  glVertex3d(p.xMax, p.yMax, p.z);
  glVertex3d(p.xMin, p.yMax, p.z);
  glEnd();
}

/// Draws a plate in exactly this colour and leaves the state as it was.
inline void drawPlate(const Plate& p, const Rgb& colour) {
  glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
  glDisable(GL_LIGHTING);
  glColor3ub(static_cast<GLubyte>(colour.r), static_cast<GLubyte>(colour.g),
             static_cast<GLubyte>(colour.b));
  drawPlate(p);
  glPopAttrib();
}

/// A plate that shows itself to picks under its names, all of them on the stack at once.
inline ComPtr<ForeignObject> makePickable(const std::vector<GLuint>& names, const Plate& plate) {
  auto object = makeForeign<ForeignObject>();
  object->onDraw3D = [names, plate](int) {
    for (const GLuint name : names) glPushName(name);
    drawPlate(plate);
    for (size_t i = 0; i < names.size(); ++i) glPopName();
    return S_OK;
  };
  return object;
}

/// A plate that shows itself to pictures, in one colour whatever the lights.
inline ComPtr<ForeignObject> makePainted(const Plate& plate, const Rgb& colour) {
  auto object = makeForeign<ForeignObject>();
  object->onDraw3D = [plate, colour](int) {
    drawPlate(plate, colour);
    return S_OK;
  };
  return object;
}

/// The names of a pick; fails the test for anything but an array of them or nothing.
inline std::vector<long> namesIn(const VARIANT& value) {
  if (value.vt == VT_EMPTY) return {};
  EXPECT_EQ(value.vt, VT_ARRAY | VT_I4);
  if (value.vt != (VT_ARRAY | VT_I4)) return {};
  LONG lower = -1;
  LONG upper = -1;
  EXPECT_EQ(SafeArrayGetDim(value.parray), 1U);
  EXPECT_EQ(SafeArrayGetLBound(value.parray, 1, &lower), S_OK);
  EXPECT_EQ(SafeArrayGetUBound(value.parray, 1, &upper), S_OK);
  EXPECT_EQ(lower, 0);
  std::vector<long> names;
  for (LONG i = lower; i <= upper; ++i) {
    LONG name = 0;
    EXPECT_EQ(SafeArrayGetElement(value.parray, &i, &name), S_OK);
    names.push_back(name);
  }
  return names;
}

}  // namespace zyn::test
