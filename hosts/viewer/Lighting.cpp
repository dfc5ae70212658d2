#include "viewer/Lighting.h"

#include <numbers>

namespace zyn::viewer {

namespace {

constexpr DirectionalLight kOff{.on = false, .strength = 0.5};

double radians(int degrees) { return degrees * std::numbers::pi / 180.0; }

}  // namespace

Lighting presetLighting(LightPreset preset) {
  switch (preset) {
    case LightPreset::kHeadLight:
      return {{.intensity = 0.3}, {{{.strength = 0.9}, kOff}}};
    case LightPreset::kSide:
      return {{.intensity = 0.15}, {{{.strength = 1.0, .azimuth = -75, .elevation = 20}, kOff}}};
    case LightPreset::kTwoSides:
      return {{.intensity = 0.2},
              {{{.strength = 0.8, .azimuth = -50, .elevation = 30},
                {.strength = 0.5, .azimuth = 60, .elevation = -10}}}};
    case LightPreset::kAmbientOnly:
      return {{.intensity = 1.0}, {{kOff, kOff}}};
    case LightPreset::kStudio:
      break;
  }
  // The second one keeps what faces away from the first from being black.
  return {{.intensity = 0.4},
          {{{.strength = 0.9, .azimuth = -30, .elevation = 30},
            {.strength = 0.3, .azimuth = 60, .elevation = 0}}}};
}

std::array<double, 5> lightValues(const AmbientLight& light) {
  return {light.on ? 1.0 : 0.0, 1.0, 1.0, 1.0, light.intensity};
}

std::array<double, 9> lightValues(const DirectionalLight& light) {
  constexpr double kAmbient = 0.0;
  constexpr double kSpecular = 0.4;
  return {light.on ? 1.0 : 0.0,
          1.0,
          1.0,
          1.0,
          kAmbient,
          light.strength,
          kSpecular * light.strength,
          radians(light.azimuth),
          radians(light.elevation)};
}

}  // namespace zyn::viewer
