#include "zynshot/Lighting.h"

#include <numbers>
#include <vector>

#include "zynshot/OptionValue.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

double radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

/// What follows the first `count` comma-separated parts.
std::string_view behind(std::string_view text, int count) {
  for (; count > 0; --count) {
    text.remove_prefix(text.find(',') + 1);
  }
  return text;
}

}  // namespace

void parseLight(std::string_view text, DirectionalLight& light) {
  light.on = text != "off";
  if (!light.on) {
    return;
  }
  const std::vector<std::string_view> parts = split(text);
  if (parts.size() < 2) {
    throw UsageError('"' + std::string(text) + "\" is not AZIMUTH,ELEVATION");
  }
  light.azimuth = parseNumber(parts[0], -360, 360);
  light.elevation = parseNumber(parts[1], -90, 90);
  if (parts.size() > 2) {
    light.colour = parseColour(behind(text, 2));
  }
}

AmbientLight parseAmbient(std::string_view text) {
  const std::vector<std::string_view> parts = split(text);
  AmbientLight light;
  light.intensity = parseNumber(parts[0], 0, 1);
  if (parts.size() > 1) {
    light.colour = parseColour(behind(text, 1));
  }
  return light;
}

std::array<double, 9> lightValues(const DirectionalLight& light) {
  constexpr double kAmbient = 0.0;
  constexpr double kSpecular = 0.4;
  const auto& [r, g, b] = light.colour;
  return {light.on ? 1.0 : 0.0,
          r,
          g,
          b,
          kAmbient,
          light.strength,
          kSpecular * light.strength,
          radians(light.azimuth),
          radians(light.elevation)};
}

std::array<double, 5> lightValues(const AmbientLight& light) {
  const auto& [r, g, b] = light.colour;
  return {light.intensity > 0.0 ? 1.0 : 0.0, r, g, b, light.intensity};
}

}  // namespace zyn::shot
