#include "support/LightModel.h"

#include <algorithm>
#include <cmath>

namespace zyn::test {

double dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

Vec cross(const Vec& a, const Vec& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vec normalised(const Vec& a) { return (1.0 / std::sqrt(dot(a, a))) * a; }

Vec litColour(const LightModel& model, const SurfaceMaterial& material, const Vec& normal) {
  Vec colour = material.emission + model.globalAmbient * material.ambient;
  for (const DirectionalLight& light : model.lights) {
    colour = colour + light.ambient * material.ambient;
    const double facing = dot(normal, light.direction);
    if (facing <= 0) continue;
    colour = colour + facing * (light.diffuse * material.diffuse);
    const Vec halfway = normalised(light.direction + Vec{0, 0, 1});
    const double shine = std::pow(std::max(0.0, dot(normal, halfway)), material.shininess);
    colour = colour + shine * (light.specular * material.specular);
  }
  return colour;
}

Rgb toRgb(const Vec& colour) {
  const auto step = [](double component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255.0));
  };
  return {step(colour.x), step(colour.y), step(colour.z)};
}

}  // namespace zyn::test
