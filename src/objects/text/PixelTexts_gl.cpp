#include "objects/text/PixelTexts_gl.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"

namespace zyn {

namespace {

/// Where a text is seen.
struct ScreenText {
  PlanePoint start;  ///< pixels from the lower left of the viewport
  double em;         ///< pixels
  bool isCutOff;     ///< by the near or the far plane
};

/// None for a text that is not upright, of square pixels, and of a size for which pixels are kept.
std::optional<ScreenText> screenText(const GlMatrix& plane, const PixelStage& stage) {
  const auto clip = [&](std::size_t column, std::size_t row) {
    double sum = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      sum += stage.projection[4 * i + row] * plane[4 * column + i];
    }
    return sum;
  };
  const double w = clip(3, 3);
  const double x = stage.viewport[2] / (2 * w);
  const double y = stage.viewport[3] / (2 * w);
  const double em = y * clip(1, 1);
  constexpr double kExact = 1e-4;
  const double error =
      std::max({std::abs(x * clip(0, 0) - em), std::abs(y * clip(0, 1)), std::abs(x * clip(1, 0)),
                em / w * std::abs(clip(0, 3)), em / w * std::abs(clip(1, 3))});
  const bool isUpright = w > 0 && em >= 1 && em <= PixelText::kLargestEm && error <= kExact * em;
  const PlanePoint start = {x * (clip(3, 0) + w), y * (clip(3, 1) + w)};
  constexpr double kFarthest = 1e6;  // beyond, single precision has lost the pixels
  return isUpright && std::max(std::abs(start.x), std::abs(start.y)) < kFarthest
             ? std::optional(ScreenText{start, em, std::abs(clip(3, 2)) > w})
             : std::nullopt;
}

/// Pixels in place of the view's units, from the middle of the viewport, where no plane can cut
/// off a raster position. The projection is kept here rather than on OpenGL's stack, of which two
/// places are all that can be relied on.
class PixelPlane {
 public:
  explicit PixelPlane(const GlMatrix& projection) : modelView_(GL_MODELVIEW), back_(projection) {
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
  }
  ~PixelPlane() { glLoadMatrixd(back_.data()); }
  PixelPlane(const PixelPlane&) = delete;
  PixelPlane& operator=(const PixelPlane&) = delete;

 private:
  PushedAttributes attributes_{GL_CURRENT_BIT | GL_TRANSFORM_BIT};
  PushedMatrix modelView_;
  const GlMatrix& back_;
};

void moveRaster(double x, double y, const PixelStage& stage) {
  glRasterPos2i(0, 0);
  glBitmap(0, 0, 0, 0, static_cast<GLfloat>(x - stage.viewport[2] / 2.0),
           static_cast<GLfloat>(y - stage.viewport[3] / 2.0), nullptr);
}

}  // namespace

PixelStage::PixelStage() : projection(matrixState(GL_PROJECTION_MATRIX)) {
  glGetIntegerv(GL_VIEWPORT, viewport.data());
}

bool PixelTexts::add(std::string_view text, double opacity, const GlMatrix& plane,
                     const PixelStage& stage) {
  const std::optional<ScreenText> seen = screenText(plane, stage);
  if (!seen || seen->isCutOff) {
    return seen.has_value();
  }
  if (texts_.empty()) {
    pixels_->forgetMany();
  }
  const double seenOpacity = std::fmin(std::fmax(opacity, 0), 1);  // none for what is no number
  place({text, seen->start, seen->em, seenOpacity}, stage);
  return true;
}

/// All of it, or nothing where memory fails.
void PixelTexts::place(const PixelText& text, const PixelStage& stage) {
  const std::size_t first = glyphs_.size();
  try {
    const CoverBox box = pixels_->place(text, stage.viewport[2], stage.viewport[3], glyphs_);
    if (!box.isEmpty()) {
      texts_.push_back({first, box});
      box_.unite(box);
    }
  } catch (const std::bad_alloc&) {
    glyphs_.erase(glyphs_.begin() + static_cast<std::ptrdiff_t>(first), glyphs_.end());
    throw;
  }
}

bool PixelTexts::areMany() const {
  constexpr std::size_t kMostGlyphs = 50'000;
  return glyphs_.size() > kMostGlyphs || pixels_->keptBytes() > GlyphPixels::kMostBytes;
}

void PixelTexts::draw(const Float4& colour, const PixelStage& stage) {
  if (!texts_.empty()) {
    const PixelPlane plane(stage.projection);
    if (belongTogether()) {
      drawPart(0, glyphs_.size(), box_, colour, stage);
    } else {
      drawApart(colour, stage);
    }
  }
  texts_.clear();
  glyphs_.clear();
  box_ = {};
}

/// Whether one picture of them all, most of it perhaps empty, is drawn faster than one for each.
bool PixelTexts::belongTogether() const {
  constexpr std::size_t kPixelsForCall = 1500;  // in the time that it takes to begin a picture
  std::size_t apart = 0;
  for (const Placed& text : texts_) {
    apart += text.box.area() + kPixelsForCall;
  }
  return box_.area() <= apart;
}

void PixelTexts::drawApart(const Float4& colour, const PixelStage& stage) const {
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    const std::size_t end = i + 1 < texts_.size() ? texts_[i + 1].glyphs : glyphs_.size();
    drawPart(texts_[i].glyphs, end, texts_[i].box, colour, stage);
  }
}

void PixelTexts::drawPart(std::size_t first, std::size_t end, const CoverBox& box,
                          const Float4& colour, const PixelStage& stage) const {
  const PixelCover cover = coverOf(std::span(glyphs_).subspan(first, end - first), box);
  constexpr double kWithinPixel = 0.25;
  moveRaster(box.left + kWithinPixel, box.bottom + kWithinPixel, stage);
  drawCover(cover.width, cover.height, cover.bytes.data(), colour);
}

}  // namespace zyn
