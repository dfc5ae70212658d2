#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "contract/ViewAxes_gl.h"
#include "glcontext/ModelView_gl.h"
#include "glcontext/ViewMeasures_gl.h"
#include "objects/text/CGLFontContext_gl.h"
#include "objects/text/PixelTexts_gl.h"

namespace zyn {

/// Texts next to each other in a list that face the viewer: as long as nothing else draws, OpenGL
/// is asked once about what they all need, and those of one colour are drawn as one picture.
class TextRun {
 public:
  /// What the texts see of their view.
  struct Scene {
    std::shared_ptr<const CGLFontContext> fonts;
    ModelView space{};
    ShownView shown = shownView();
    double pixel = pixelLength(shown.height);  ///< units of the space, at distance 1 in perspective
    PixelStage stage{};
  };

  /// Whether begin() has been called since the last forget().
  bool isBegun() const { return isBegun_; }

  /// Asks OpenGL. `fonts` are those of the current context; null where there are none. `axes`: see
  /// DrawPass. `lineWidth` is that of outlines, in pixels.
  void begin(std::shared_ptr<const CGLFontContext> fonts, const ViewAxes* axes, double lineWidth);

  /// Null where texts have to be drawn each by itself.
  const Scene* scene() const { return scene_ ? &*scene_ : nullptr; }

  /// Adds a text to be drawn with its baseline's start at the origin of a plane, whose unit is an
  /// em height. False where it has to be drawn by itself. Throws std::bad_alloc. There is a scene.
  bool add(std::string_view text, const ModelView& plane, const Float4& colour);

  /// Draws what has been added. To be called before anything else draws. The depth test is on
  /// afterwards, as each text leaves it.
  void draw();

  /// To be called when somebody may have changed the state, after draw().
  void forget();

 private:
  void drawPicture();

  bool isBegun_ = false;
  bool hasTexts_ = false;  ///< since the last draw()
  std::optional<Scene> scene_;
  std::optional<PixelTexts> texts_;
  Float4 colour_{};  ///< of these, opacity apart
};

}  // namespace zyn
