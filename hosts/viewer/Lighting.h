#pragma once

#include <array>

namespace zyn::viewer {

/// White light from everywhere; intensity 0 to 1.
struct AmbientLight {
  bool on = true;
  double intensity = 0.4;

  bool operator==(const AmbientLight&) const = default;
};

/// A white light far away, fixed to the viewer: azimuth to the right, elevation upwards, whole
/// degrees; 0, 0 shines along the line of sight. Strength 0 to 1.
struct DirectionalLight {
  bool on = true;
  double strength = 1.0;
  int azimuth = 0;
  int elevation = 0;

  bool operator==(const DirectionalLight&) const = default;
};

struct Lighting {
  AmbientLight ambient;
  std::array<DirectionalLight, 2> directional;

  bool operator==(const Lighting&) const = default;
};

enum class LightPreset { kStudio, kHeadLight, kSide, kTwoSides, kAmbientOnly };

Lighting presetLighting(LightPreset preset);

/// The light as AmbientLightProperty takes it.
std::array<double, 5> lightValues(const AmbientLight& light);

/// The light as DirectionLight1Property and DirectionLight2Property take it.
std::array<double, 9> lightValues(const DirectionalLight& light);

}  // namespace zyn::viewer
