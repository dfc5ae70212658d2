#include "view3d/LightBlock.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

struct Range {
  std::size_t first;
  std::size_t count;
};

constexpr Range kRanges[] = {{0, 5}, {5, 9}, {14, 9}};

constexpr Range rangeOf(LightBlock::Section section) {
  return kRanges[static_cast<std::size_t>(section)];
}

constexpr std::size_t firstOf(LightBlock::Light light) {
  return rangeOf(light == LightBlock::Light::kOne ? LightBlock::Section::kLight1
                                                  : LightBlock::Section::kLight2)
      .first;
}

/// Places within a section.
constexpr std::size_t kColour = 1;
constexpr std::size_t kIntensity = 4;
constexpr std::size_t kAmbient = 4;
constexpr std::size_t kDiffuse = 5;
constexpr std::size_t kSpecular = 6;
constexpr std::size_t kAzimuth = 7;
constexpr std::size_t kElevation = 8;

}  // namespace

std::vector<double> LightBlock::get(Section section) const {
  const auto [first, count] = rangeOf(section);
  const auto values = std::span(values_).subspan(first, count);
  return {values.begin(), values.end()};
}

void LightBlock::put(Section section, std::span<const double> values) {
  const auto [first, count] = rangeOf(section);
  if (values.size() != count) {
    return;
  }
  std::ranges::transform(values, values_.begin() + static_cast<std::ptrdiff_t>(first),
                         [](double value) { return static_cast<float>(value); });
}

LightBlock::Values4 LightBlock::globalAmbient() const {
  if (values_[0] == 0.0F) {
    return {0.0F, 0.0F, 0.0F, 0.0F};
  }
  return scaledColour(kColour, values_[kIntensity]);
}

bool LightBlock::isOn(Light light) const { return values_[firstOf(light)] != 0.0F; }

bool LightBlock::isDrawn(Light light) const { return values_[firstOf(light)] == 1.0F; }

LightBlock::Values4 LightBlock::position(Light light) const {
  const double azimuth = values_[firstOf(light) + kAzimuth];
  const double elevation = values_[firstOf(light) + kElevation];
  return {static_cast<float>(std::cos(elevation) * std::sin(azimuth)),
          static_cast<float>(std::sin(elevation)),
          static_cast<float>(std::cos(elevation) * std::cos(azimuth)), 0.0F};
}

LightBlock::Values4 LightBlock::ambient(Light light) const {
  return scaledColour(firstOf(light) + kColour, values_[firstOf(light) + kAmbient]);
}

LightBlock::Values4 LightBlock::diffuse(Light light) const {
  return scaledColour(firstOf(light) + kColour, values_[firstOf(light) + kDiffuse]);
}

LightBlock::Values4 LightBlock::specular(Light light) const {
  return scaledColour(firstOf(light) + kColour, values_[firstOf(light) + kSpecular]);
}

LightBlock::Values4 LightBlock::scaledColour(std::size_t colourAt, float factor) const {
  return {values_[colourAt] * factor, values_[colourAt + 1] * factor,
          values_[colourAt + 2] * factor, 1.0F};
}

}  // namespace zyn
