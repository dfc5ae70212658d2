#include "view/PickPass_gl.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

static_assert(std::is_same_v<GLuint, std::uint32_t>);

constexpr int kUnchanged = 0;

/// Sides of regions in pixels, between which single precision tells their edges apart.
constexpr double kSmallestSide = 1.0 / 256;
constexpr double kLargestSide = 1e6;

/// The context is in selection mode for the object's life.
class SelectMode {
 public:
  explicit SelectMode(std::vector<GLuint>& buffer) {
    glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
    glRenderMode(GL_SELECT);
    glInitNames();
  }
  ~SelectMode() { end(); }
  SelectMode(const SelectMode&) = delete;
  SelectMode& operator=(const SelectMode&) = delete;

  /// Goes back to render mode; nothing happens the second time. The number of hits; negative when
  /// the buffer was too small.
  static GLint end() {
    glFlush();
    return glRenderMode(GL_RENDER);
  }
};

bool hasArea(const PickRegion& region) { return region.width > 0 && region.height > 0; }

/// The region as fractions of the viewport.
PicturePart partOf(const PickRegion& region, double viewWidth, double viewHeight) {
  const double halfWidth = std::clamp(region.width, kSmallestSide, kLargestSide) / 2;
  const double halfHeight = std::clamp(region.height, kSmallestSide, kLargestSide) / 2;
  const double centreY = viewHeight - region.centreY;
  return {(region.centreX - halfWidth) / viewWidth, (region.centreX + halfWidth) / viewWidth,
          (centreY - halfHeight) / viewHeight, (centreY + halfHeight) / viewHeight};
}

void drawPart(const PicturePart& part, const std::function<void(const PicturePart&)>& draw) {
  const BalancedStacks stacks;
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  draw(part);
}

GLint fill(std::vector<GLuint>& buffer, const PicturePart& part,
           const std::function<void(const PicturePart&)>& draw) {
  const SelectMode mode(buffer);
  drawPart(part, draw);
  return SelectMode::end();
}

}  // namespace

PickRecords runPickPass(const PickPass& pass, const std::function<void(const PicturePart&)>& draw) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const bool canSelect =
      viewport[2] > 0 && viewport[3] > 0 && enumState(GL_RENDER_MODE) == GL_RENDER;
  if (!canSelect || !hasArea(pass.region)) {
    return {};
  }
  const PicturePart part = partOf(pass.region, viewport[2], viewport[3]);
  const AutoGLLighting lighting(pass.unlit ? AutoGLLighting::kOff : kUnchanged);
  std::vector<GLuint> buffer(PickPass::kFirstBuffer);
  GLint hits = fill(buffer, part, draw);
  while (hits < 0 && buffer.size() < pass.largestBuffer) {
    buffer.assign(std::min(2 * buffer.size(), pass.largestBuffer), 0);
    hits = fill(buffer, part, draw);
  }
  constexpr GLint kAllStored = std::numeric_limits<GLint>::max();
  return PickRecords(buffer, hits < 0 ? kAllStored : hits);
}

}  // namespace zyn
