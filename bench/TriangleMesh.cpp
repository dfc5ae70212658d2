#include "bench/TriangleMesh.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "common/ClassObject_com.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::bench {

using test::ComPtr;
using test::Vec;

namespace {

constexpr double kRingRadius = 10;
constexpr double kTubeRadius = 4;
constexpr int kRingPerTube = 4;  ///< cells along the ring for each around the tube
constexpr double kTransparentPart = 0.1;

struct SurfacePoint {
  Vec point;
  Vec normal;
};

SurfacePoint torusAt(double ring, double tube) {
  const double u = 2 * std::numbers::pi * ring;
  const double v = 2 * std::numbers::pi * tube;
  const Vec normal = {std::cos(u) * std::cos(v), std::sin(u) * std::cos(v), std::sin(v)};
  const Vec centre = {kRingRadius * std::cos(u), kRingRadius * std::sin(u), 0};
  return {centre + kTubeRadius * normal, normal};
}

MeshTriangle triangleOf(const std::array<SurfacePoint, 3>& corners) {
  MeshTriangle triangle = {};
  for (std::size_t i = 0; i < corners.size(); ++i) {
    triangle.points[i] = corners[i].point;
    triangle.normals[i] = corners[i].normal;
  }
  return triangle;
}

void paint(MeshTriangle& triangle, Look look, std::mt19937& random) {
  const auto any = [&] { return std::uniform_real_distribution<double>(0.1, 1)(random); };
  triangle.r = any();
  triangle.g = any();
  triangle.b = any();
  triangle.alpha = look == Look::kSomeTransparent && any() < 0.1 + 0.9 * kTransparentPart ? 0.5 : 1;
  triangle.hasMaterial = look == Look::kMaterials;
  triangle.ambient = any();
  triangle.diffuse = any();
  triangle.specular = any();
  triangle.shininess = any();
  triangle.emissive = 0.3 * any();
}

void fill(IZYNGLTriangle& object, const MeshTriangle& t) {
  for (LONG i = 0; i < 3; ++i) {
    const Vec& point = t.points[static_cast<std::size_t>(i)];
    const Vec& normal = t.normals[static_cast<std::size_t>(i)];
    object.setPoint(i, point.x, point.y, point.z);
    object.setNormale(i, normal.x, normal.y, normal.z);
  }
  if (t.hasMaterial) {
    object.setMaterial(t.r, t.g, t.b, t.alpha, t.ambient, t.diffuse, t.specular, t.shininess,
                       t.emissive);
  } else {
    object.setColor(t.r, t.g, t.b, t.alpha);
  }
}

void setColours(GLenum name, const MeshTriangle& t, double factor) {
  const GLfloat values[4] = {static_cast<GLfloat>(factor * t.r), static_cast<GLfloat>(factor * t.g),
                             static_cast<GLfloat>(factor * t.b), static_cast<GLfloat>(t.alpha)};
  glMaterialfv(GL_FRONT_AND_BACK, name, values);
}

/// What the material of a triangle that has only a colour shares with all others.
void setPlainMaterial() {
  constexpr GLfloat kSpecular[4] = {0.8F, 0.8F, 0.8F, 0.8F};
  constexpr GLfloat kEmission[4] = {0, 0, 0, 1};
  glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, kSpecular);
  glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, kEmission);
  glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 100);
}

void setMaterial(const MeshTriangle& t) {
  if (!t.hasMaterial) {
    setColours(GL_AMBIENT, t, 0.8);
    setColours(GL_DIFFUSE, t, 0.7);
    return;
  }
  setColours(GL_AMBIENT, t, t.ambient);
  setColours(GL_DIFFUSE, t, t.diffuse);
  setColours(GL_EMISSION, t, t.emissive);
  const auto specular = static_cast<GLfloat>(t.specular);
  const GLfloat values[4] = {specular, specular, specular, static_cast<GLfloat>(t.alpha)};
  glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, values);
  glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, static_cast<GLfloat>(128 * t.shininess));
}

void setTransparency(bool isTransparent) {
  glDepthMask(isTransparent ? GL_FALSE : GL_TRUE);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, isTransparent ? 1 : 0);
  if (isTransparent) {
    glDisable(GL_CULL_FACE);
  } else {
    glEnable(GL_CULL_FACE);
  }
}

}  // namespace

Mesh makeTorus(int count, Look look) {
  const int tubeCells = static_cast<int>(std::ceil(std::sqrt(count / 2.0 / kRingPerTube)));
  const int ringCells = (count / 2 + tubeCells - 1) / tubeCells;
  std::mt19937 random(1);
  Mesh mesh;
  mesh.reserve(static_cast<std::size_t>(count));
  for (int cell = 0; cell < count / 2; ++cell) {
    const double ring = cell / tubeCells;
    const double tube = cell % tubeCells;
    const auto corner = [&](int alongRing, int alongTube) {
      return torusAt((ring + alongRing) / ringCells, (tube + alongTube) / tubeCells);
    };
    mesh.push_back(triangleOf({corner(0, 0), corner(1, 0), corner(1, 1)}));
    paint(mesh.back(), look, random);
    mesh.push_back(triangleOf({corner(0, 0), corner(1, 1), corner(0, 1)}));
    paint(mesh.back(), look, random);
  }
  return mesh;
}

test::Bounds boundsOf(const Mesh& mesh) {
  const Vec& first = mesh.front().points[0];
  test::Bounds bounds = {first.x, first.x, first.y, first.y, first.z, first.z};
  for (const MeshTriangle& triangle : mesh) {
    for (const Vec& p : triangle.points) {
      bounds = {std::min(bounds.xMin, p.x), std::max(bounds.xMax, p.x), std::min(bounds.yMin, p.y),
                std::max(bounds.yMax, p.y), std::min(bounds.zMin, p.z), std::max(bounds.zMax, p.z)};
    }
  }
  return bounds;
}

Triangles createTriangles(const Mesh& mesh) {
  const host::ClassObject factory(test::kTriangleProgId);
  Triangles triangles;
  triangles.reserve(mesh.size());
  for (const MeshTriangle& triangle : mesh) {
    triangles.push_back(factory.create<IZYNGLTriangle>());
    fill(*triangles.back().Get(), triangle);
  }
  return triangles;
}

void drawRaw(const Mesh& mesh) {
  setPlainMaterial();
  bool isTransparent = false;
  glBegin(GL_TRIANGLES);
  for (const MeshTriangle& triangle : mesh) {
    if ((triangle.alpha < 1) != isTransparent) {
      isTransparent = !isTransparent;
      glEnd();
      setTransparency(isTransparent);
      glBegin(GL_TRIANGLES);
    }
    setMaterial(triangle);
    for (std::size_t i = 0; i < 3; ++i) {
      glNormal3dv(&triangle.normals[i].x);
      glVertex3dv(&triangle.points[i].x);
    }
  }
  glEnd();
  setTransparency(false);
}

}  // namespace zyn::bench
