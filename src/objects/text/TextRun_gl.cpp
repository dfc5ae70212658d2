#include "objects/text/TextRun_gl.h"

#include <utility>

#include "glcontext/StateGuards_gl.h"
#include "objects/text/PixelTextPainter_gl.h"
#include "objects/text/TextPainter_gl.h"

namespace zyn {

namespace {

/// How texts that face the viewer are drawn, for a scope. Without a colour, which pixels do not
/// need: Mesa gives none back that nothing was drawn with.
class TextState : Unlit {
 public:
  TextState() { glDisable(GL_DEPTH_TEST); }
};

}  // namespace

void TextRun::begin(std::shared_ptr<const CGLFontContext> fonts, const ViewAxes* axes,
                    double lineWidth) {
  isBegun_ = true;
  if (!fonts) {
    return;
  }
  const TextState text;
  const PlaneState plane(axes);
  if (lookAlikeAsPixels(*fonts, lineWidth)) {
    texts_.emplace(*fonts->pixels());
    scene_.emplace(Scene{.fonts = std::move(fonts)});
  }
}

bool TextRun::add(std::string_view text, const ModelView& plane, const Float4& colour) {
  const Float4 opaque = {colour[0], colour[1], colour[2], 1};
  if (opaque != colour_ || texts_->areMany()) {
    drawPicture();
    colour_ = opaque;
  }
  hasTexts_ = true;
  return texts_->add(text, static_cast<double>(colour[3]), plane.columns(), scene_->stage);
}

void TextRun::drawPicture() {
  const TextState text;
  texts_->draw(colour_, scene_->stage);
}

void TextRun::draw() {
  if (std::exchange(hasTexts_, false)) {
    drawPicture();
    glEnable(GL_DEPTH_TEST);
  }
}

void TextRun::forget() {
  isBegun_ = false;
  texts_.reset();
  scene_.reset();
}

}  // namespace zyn
