#pragma once

#include <vector>

#include "support/Image.h"

namespace zyn::test {

struct Vec {
  double x = 0;
  double y = 0;
  double z = 0;
};
inline Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec operator*(double s, const Vec& a) { return {s * a.x, s * a.y, s * a.z}; }
/// Component by component.
inline Vec operator*(const Vec& a, const Vec& b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }
double dot(const Vec& a, const Vec& b);
Vec cross(const Vec& a, const Vec& b);
Vec normalised(const Vec& a);

/// A light at infinity; direction is the unit vector towards it, in eye coordinates.
struct DirectionalLight {
  Vec direction;
  Vec ambient;
  Vec diffuse;
  Vec specular;
};

struct LightModel {
  Vec globalAmbient;
  std::vector<DirectionalLight> lights;
};

struct SurfaceMaterial {
  Vec ambient;
  Vec diffuse;
  Vec specular;
  Vec emission;
  double shininess = 0;
};

/// The colour of a vertex by OpenGL's lighting equation (OpenGL 1.1, section 2.13.1) with an
/// infinite viewer; normal is a unit vector in eye coordinates.
Vec litColour(const LightModel& model, const SurfaceMaterial& material, const Vec& normal);

/// Components 0..1 as they are stored in a pixel: clamped, in steps of 1/255.
Rgb toRgb(const Vec& colour);

}  // namespace zyn::test
