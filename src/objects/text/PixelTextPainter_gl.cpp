#include "objects/text/PixelTextPainter_gl.h"

#include <algorithm>
#include <array>

#include "glcontext/StateQuery_gl.h"
#include "objects/text/PixelTexts_gl.h"

namespace zyn {

namespace {

constexpr GLenum kSamples = 0x80A9;            // GL_SAMPLES, of OpenGL 1.3
constexpr GLenum kBlendEquation = 0x8009;      // GL_BLEND_EQUATION, of 1.4
constexpr GLenum kAdd = 0x8006;                // GL_FUNC_ADD
constexpr GLenum kProgram = 0x8B8D;            // GL_CURRENT_PROGRAM, of 2.0
constexpr GLenum kPixelSourceBuffer = 0x88EF;  // GL_PIXEL_UNPACK_BUFFER_BINDING, of 2.1

/// Lines that are not wider look alike.
constexpr double kWidestLine = 1.0;

/// Of what is newer than the rest of the drawing, and other components may have left on.
bool isPlainOfNewer() {
  const auto* const text = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  const std::string_view version = std::string_view(text ? text : "").substr(0, 3);
  const bool isOneSample = version < "1.3" || integerState(kSamples) <= 1;
  return isOneSample && (version < "1.4" || enumState(kBlendEquation) == kAdd) &&
         (version < "2.0" || integerState(kProgram) == 0) &&
         (version < "2.1" || integerState(kPixelSourceBuffer) == 0);
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

}  // namespace

bool lookAlikeAsPixels(const CGLFontContext& fonts, double lineWidth) {
  return fonts.pixels() && lineWidth <= kWidestLine && !isRecording() && isRendering() &&
         isPlain() && isPlainOfNewer();
}

bool drawAsPixels(const CGLFontContext& fonts, std::string_view text, double lineWidth) {
  if (!lookAlikeAsPixels(fonts, lineWidth)) {
    return false;
  }
  Float4 colour{};
  glGetFloatv(GL_CURRENT_COLOR, colour.data());
  const PixelStage stage;
  PixelTexts texts(*fonts.pixels());
  const bool isAdded =
      texts.add(text, static_cast<double>(colour[3]), matrixState(GL_MODELVIEW_MATRIX), stage);
  texts.draw(colour, stage);
  return isAdded;
}

}  // namespace zyn
