#pragma once

#include <array>
#include <string_view>

#include "zynshot/Colour.h"

namespace zyn::shot {

/// A light far away, fixed to the viewer: azimuth to the right, elevation upwards, in degrees; 0, 0
/// shines along the line of sight.
struct DirectionalLight {
  bool on = true;
  double azimuth = 0.0;
  double elevation = 0.0;
  Colour colour{1.0, 1.0, 1.0};
  double strength = 1.0;  ///< of what it adds to lit surfaces, 0 to 1
};

/// Light from everywhere.
struct AmbientLight {
  double intensity = 0.0;  ///< 0 to 1
  Colour colour{1.0, 1.0, 1.0};
};

/// Reads "off" or "AZIMUTH,ELEVATION[,COLOUR]" over `light`. Throws UsageError.
void parseLight(std::string_view text, DirectionalLight& light);

/// Reads "INTENSITY[,COLOUR]". Throws UsageError.
AmbientLight parseAmbient(std::string_view text);

/// The light as DirectionLight1Property and DirectionLight2Property take it.
std::array<double, 9> lightValues(const DirectionalLight& light);

/// The light as AmbientLightProperty takes it.
std::array<double, 5> lightValues(const AmbientLight& light);

}  // namespace zyn::shot
