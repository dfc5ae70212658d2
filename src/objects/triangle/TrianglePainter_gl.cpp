#include "objects/triangle/TrianglePainter_gl.h"

#include "glcontext/SurfaceState_gl.h"

namespace zyn {

namespace {

constexpr int kOutline = 1;

void drawOutline3D(const TriangleShape& shape) {
  glBegin(GL_LINE_LOOP);
  for (const Point& vertex : shape.vertices) {
    glVertex3d(vertex.x, vertex.y, vertex.z);
  }
  glEnd();
}

void drawSurface3D(const TriangleShape& shape) {
  const CurrentNormal normalGuard;
  glBegin(GL_TRIANGLES);
  for (int i = 0; i < 3; ++i) {
    const Vecteur& normal = shape.normals[i];
    const Point& vertex = shape.vertices[i];
    glNormal3d(normal.x, normal.y, normal.z);
    glVertex3d(vertex.x, vertex.y, vertex.z);
  }
  glEnd();
}

void draw3D(const TriangleShape& shape, int mode) {
  if (mode == kOutline) {
    drawOutline3D(shape);
  } else {
    drawSurface3D(shape);
  }
}

}  // namespace

void drawTriangle3D(const TriangleShape& shape, int mode) {
  if (shape.hasMaterial) {
    const AutoGLColor material(shape.r, shape.g, shape.b, shape.alpha, shape.ambient, shape.diffuse,
                               shape.specular, shape.shininess, shape.emissive, kBothFaces);
    draw3D(shape, mode);
  } else {
    const AutoGLColor colour(shape.r, shape.g, shape.b, shape.alpha, kBothFaces);
    draw3D(shape, mode);
  }
}

void drawTriangle2D(const TriangleShape& shape, int mode) {
  const AutoGLColor colour(shape.r, shape.g, shape.b, shape.alpha, kBothFaces);
  const CurrentNormal normalGuard;
  if (mode == kOutline) {
    glBegin(GL_LINE_LOOP);
  } else {
    glBegin(GL_TRIANGLES);
    glNormal3d(0, 0, 1);
  }
  for (const Point& vertex : shape.vertices) {
    glVertex3d(vertex.x, vertex.y, 0);
  }
  glEnd();
}

}  // namespace zyn
