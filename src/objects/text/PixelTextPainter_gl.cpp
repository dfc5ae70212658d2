#include "objects/text/PixelTextPainter_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"

namespace zyn {

namespace {

constexpr GLenum kSamples = 0x80A9;  // GL_SAMPLES, of OpenGL 1.3

/// Lines that are not wider look alike.
constexpr double kWidestLine = 1.0;

bool isMultisampled() {
  const auto* const version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  const bool isAsked = version && std::string_view(version).substr(0, 3) >= "1.3";
  return isAsked && integerState(kSamples) > 1;
}

bool isBlendedByOpacity() {
  return isEnabled(GL_BLEND) && enumState(GL_BLEND_SRC) == GL_SRC_ALPHA &&
         enumState(GL_BLEND_DST) == GL_ONE_MINUS_SRC_ALPHA;
}

bool showsFrontsFilled() {
  std::array<GLint, 2> modes{};
  glGetIntegerv(GL_POLYGON_MODE, modes.data());
  const bool isFilled = modes[0] == GL_FILL && modes[1] == GL_FILL;
  return isFilled && (!isEnabled(GL_CULL_FACE) || (enumState(GL_CULL_FACE_MODE) == GL_BACK &&
                                                   enumState(GL_FRONT_FACE) == GL_CCW));
}

/// Whether nothing but the scissor box, the colour mask and the opacity has a say in what glyphs
/// look like.
bool isPlain() {
  constexpr std::array<GLenum, 17> kCapabilities = {
      GL_DEPTH_TEST,     GL_ALPHA_TEST,  GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_FOG,
      GL_LIGHTING,       GL_TEXTURE_1D,  GL_TEXTURE_2D,   GL_LINE_STIPPLE,   GL_POLYGON_STIPPLE,
      GL_POLYGON_SMOOTH, GL_CLIP_PLANE0, GL_CLIP_PLANE1,  GL_CLIP_PLANE2,    GL_CLIP_PLANE3,
      GL_CLIP_PLANE4,    GL_CLIP_PLANE5};
  return isBlendedByOpacity() && showsFrontsFilled() &&
         std::none_of(kCapabilities.begin(), kCapabilities.end(), isEnabled);
}

/// Where a text is seen that starts at the origin of the current model-view matrix, an em a unit.
struct ScreenText {
  PlanePoint start;  ///< pixels from the lower left of the viewport
  double em;         ///< pixels
  int width;         ///< of the viewport
  int height;
};

/// None for a text that is not upright, of square pixels, and of a size for which pixels are kept.
std::optional<ScreenText> screenText() {
  const GlMatrix projection = matrixState(GL_PROJECTION_MATRIX);
  const GlMatrix plane = matrixState(GL_MODELVIEW_MATRIX);
  std::array<GLint, 4> viewport{};
  glGetIntegerv(GL_VIEWPORT, viewport.data());
  const auto clip = [&](std::size_t column, std::size_t row) {
    double sum = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      sum += projection[4 * i + row] * plane[4 * column + i];
    }
    return sum;
  };
  const double w = clip(3, 3);
  const double x = viewport[2] / (2 * w);
  const double y = viewport[3] / (2 * w);
  const double em = y * clip(1, 1);
  constexpr double kExact = 1e-4;
  const double error =
      std::max({std::abs(x * clip(0, 0) - em), std::abs(y * clip(0, 1)), std::abs(x * clip(1, 0)),
                em / w * std::abs(clip(0, 3)), em / w * std::abs(clip(1, 3))});
  const bool isUpright = w > 0 && em >= 1 && em <= PixelText::kLargestEm && error <= kExact * em;
  const PlanePoint start = {x * (clip(3, 0) + w), y * (clip(3, 1) + w)};
  constexpr double kFarthest = 1e6;  // beyond, single precision has lost the pixels
  return isUpright && std::max(std::abs(start.x), std::abs(start.y)) < kFarthest
             ? std::optional(ScreenText{start, em, viewport[2], viewport[3]})
             : std::nullopt;
}

}  // namespace

bool drawAsPixels(const CGLFontContext& fonts, std::string_view text, double lineWidth) {
  if (!fonts.pixels() || lineWidth > kWidestLine || isRecording() || !isRendering() || !isPlain() ||
      isMultisampled()) {
    return false;
  }
  const std::optional<ScreenText> seen = screenText();
  if (!seen) {
    return false;
  }
  Float4 colour{};
  glGetFloatv(GL_CURRENT_COLOR, colour.data());
  const PixelCover cover = fonts.pixels()->coverOf(
      {text, seen->start, seen->em, std::clamp(static_cast<double>(colour[3]), 0.0, 1.0)},
      seen->width, seen->height);
  if (cover.bytes.empty()) {
    return true;
  }
  const PushedAttributes rasterPosition(GL_CURRENT_BIT);
  constexpr double kWithinPixel = 0.25;
  glRasterPos2d((cover.left + kWithinPixel - seen->start.x) / seen->em,
                (cover.bottom + kWithinPixel - seen->start.y) / seen->em);
  drawCover(cover.width, cover.height, cover.bytes.data(), colour);
  return true;
}

}  // namespace zyn
