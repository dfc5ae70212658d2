#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace zyn {

/// The lights of a scene: a global ambient term and two directional lights that turn with the eye.
/// By default white ambient light at 0.7 and one white light along the line of sight.
class LightBlock {
 public:
  enum class Section { kAmbient, kLight1, kLight2 };
  enum class Light { kOne, kTwo };

  using Values4 = std::array<float, 4>;  ///< what glLightfv takes

  /// The values of a section: switch, red, green, blue and intensity for the ambient term; switch,
  /// red, green, blue, ambient, diffuse and specular factor, azimuth and elevation (radians) for a
  /// light.
  std::vector<double> get(Section section) const;

  /// Replaces a section by as many values, narrowed to float; any other number of values changes
  /// nothing.
  void put(Section section, std::span<const double> values);

  /// Colour times intensity; (0, 0, 0, 0) when the ambient term is switched off.
  Values4 globalAmbient() const;

  bool isOn(Light light) const;

  /// Whether the light may be drawn as a line. Unlike lighting, which takes any switch other than
  /// 0, this takes a switch of exactly 1.
  bool isDrawn(Light light) const;

  /// Unit vector towards the light in eye coordinates, with 0 as fourth value: a light at infinity.
  /// Azimuth and elevation 0 is +Z, from the scene towards the viewer.
  Values4 position(Light light) const;

  Values4 ambient(Light light) const;
  Values4 diffuse(Light light) const;
  Values4 specular(Light light) const;

 private:
  Values4 scaledColour(std::size_t colourAt, float factor) const;

  std::array<float, 23> values_{
      1, 1, 1, 1, 0.7F,                            // ambient
      1, 1, 1, 1, 0.2F, 0.45F, 0.69F, 0.0F, 0.0F,  // light 1
      0, 1, 1, 1, 0.2F, 0.45F, 0.69F, 0.0F, 0.0F,  // light 2, switched off
  };
};

}  // namespace zyn
