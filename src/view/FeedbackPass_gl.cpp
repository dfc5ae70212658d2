#include "view/FeedbackPass_gl.h"

#include <algorithm>
#include <cstddef>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

constexpr std::size_t kFirstBuffer = 1024;
/// Then what it holds counts.
constexpr std::size_t kLargestBuffer = std::size_t{1} << 26U;

/// The context is in feedback mode for the object's life.
class FeedbackMode {
 public:
  FeedbackMode(std::vector<float>& buffer, GLenum type) {
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), type, buffer.data());
    glRenderMode(GL_FEEDBACK);
  }
  ~FeedbackMode() { end(); }
  FeedbackMode(const FeedbackMode&) = delete;
  FeedbackMode& operator=(const FeedbackMode&) = delete;

  /// Goes back to render mode; nothing happens the second time. How much has been written; negative
  /// when the buffer was too small.
  static GLint end() {
    glFlush();
    return glRenderMode(GL_RENDER);
  }
};

GLint fill(std::vector<float>& buffer, GLenum type, const std::function<void()>& draw) {
  const BalancedStacks stacks;
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  const FeedbackMode mode(buffer, type);
  draw();
  return FeedbackMode::end();
}

std::vector<float> run(GLenum type, const std::function<void()>& draw) {
  if (!isRendering()) {
    return {};
  }
  std::vector<float> buffer(kFirstBuffer);
  GLint written = fill(buffer, type, draw);
  while (written < 0 && buffer.size() < kLargestBuffer) {
    buffer.assign(std::min(2 * buffer.size(), kLargestBuffer), 0);
    written = fill(buffer, type, draw);
  }
  if (written >= 0) {
    buffer.resize(std::min(buffer.size(), static_cast<std::size_t>(written)));
  }
  return buffer;
}

}  // namespace

std::vector<float> runFeedbackPass(const PicturePart& part,
                                   const std::function<void(const PicturePart&)>& draw) {
  return run(GL_2D, [&] { draw(part); });
}

std::vector<float> runColouredFeedbackPass(const std::function<void()>& draw) {
  return run(GL_3D_COLOR, draw);
}

}  // namespace zyn
