#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "zynshot/Colour.h"
#include "zynshot/Lighting.h"
#include "zynshot/Material.h"
#include "zynshot/PathOptions.h"
#include "zynshot/View.h"

namespace zyn::shot {

/// Of models that have no colours and get none.
inline constexpr Colour kModelColour{0.76, 0.79, 0.84};

/// How the model's surface looks.
struct Appearance {
  std::optional<Colour> colour;      ///< none: those of the file
  double alpha = 1.0;                ///< 0 invisible, 1 opaque
  std::optional<Material> material;  ///< none: the component's own for plain colours

  bool operator==(const Appearance&) const = default;
};

/// How faces and edges are drawn.
struct Strokes {
  int style = 0;     ///< the component's StyleRendu
  Colour colour;     ///< of edges
  double width = 1;  ///< of edges and points

  bool operator==(const Strokes&) const = default;
};

/// What the bitmap context reads only when its surface is made.
struct Surface {
  int width = 1200;
  int height = 900;
  Colour background{1.0, 1.0, 1.0};

  bool operator==(const Surface&) const = default;
};

/// What is written over the model.
struct Annotations {
  bool dimensions = false;          ///< its box and overall sizes
  std::string title;                ///< UTF-8, in the upper left corner
  std::filesystem::path logo;       ///< a picture file, shown in the lower right corner
  std::optional<std::string> unit;  ///< UTF-8, behind the sizes; none: that of a program

  bool operator==(const Annotations&) const = default;
};

/// Everything that one picture is made from.
struct PictureOptions {
  std::filesystem::path file;
  Surface surface;
  View view = parseView("iso");
  std::optional<Colour> gradient;  ///< top colour
  Appearance appearance;
  Strokes strokes;
  bool outline = false;
  PathOptions path;
  std::optional<double> perspective;  ///< angle from bottom to top, degrees
  std::optional<std::string> camera;  ///< as a line of text, in place of view and surplus; UTF-8
  AmbientLight ambient{.intensity = 0.4};
  DirectionalLight light1{.azimuth = -30, .elevation = 30, .strength = 1.0};
  DirectionalLight light2{
      .azimuth = 60, .elevation = 0, .colour = {0.56, 0.56, 0.56}, .strength = 0.4};
  Annotations annotations;
  double surplus = 0.1;       ///< margin around the model, as a fraction of its size
  std::optional<double> dpi;  ///< none: as on the screen
  int quality = 90;           ///< of JPEG, 0 to 100
};

}  // namespace zyn::shot
