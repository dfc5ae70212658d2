#include "objects/TextPainter_gl.h"

#include <array>
#include <cmath>

#include "glcontext/PushedAttributes_gl.h"
#include "glcontext/PushedMatrix_gl.h"

namespace zyn {

namespace {

/// Beyond it, OpenGL's single precision has no room left for a matrix product.
constexpr double kLargest = 1e18;

bool isCoordinate(double value) { return std::abs(value) <= kLargest; }

bool canPlace(const TextPlacement& placement) {
  const Point& at = placement.position;
  const double scale = placement.scale;
  return isCoordinate(at.x) && isCoordinate(at.y) && isCoordinate(at.z) &&
         isCoordinate(placement.anchor.x * scale) && isCoordinate(placement.anchor.y * scale) &&
         isCoordinate(scale) && scale != 0;
}

/// Cancels the rotation of the model-view matrix, so that x and y are the screen's.
void faceViewer() {
  std::array<GLdouble, 16> matrix{};
  glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
  for (std::size_t column = 0; column < 3; ++column) {
    for (std::size_t row = 0; row < 3; ++row) {
      matrix[4 * column + row] = row == column ? 1 : 0;
    }
  }
  glLoadMatrixd(matrix.data());
}

/// What the glyphs' lists and their smoothing change.
constexpr GLbitfield kTouchedState = GL_CURRENT_BIT | GL_ENABLE_BIT | GL_HINT_BIT | GL_LINE_BIT |
                                     GL_LIST_BIT | GL_POLYGON_BIT | GL_TRANSFORM_BIT;

/// The plane of a text for a scope: the origin is the start of its baseline, the unit an em height.
class TextPlane {
 public:
  explicit TextPlane(const TextPlacement& placement) {
    const double scale = placement.scale;
    glTranslated(placement.position.x, placement.position.y, placement.position.z);
    if (placement.facesViewer) {
      faceViewer();
    }
    glTranslated(-placement.anchor.x * scale, -placement.anchor.y * scale, 0);
    glScaled(scale, scale, scale);
  }

 private:
  PushedAttributes attributes_{kTouchedState};
  PushedMatrix modelView_{GL_MODELVIEW};
};

void callLists(GLuint base, std::string_view text) {
  const PushedMatrix start(GL_MODELVIEW);
  glListBase(base);
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

}  // namespace

void drawText(const CGLFontContext& fonts, std::string_view text, const TextPlacement& placement,
              double lineWidth) {
  if (text.empty() || !canPlace(placement)) {
    return;
  }
  const TextPlane plane(placement);
  if (glIsList(fonts.filledLists()) != GL_FALSE) {
    callLists(fonts.filledLists(), text);
  }
  if (glIsList(fonts.outlineLists()) != GL_FALSE) {
    glEnable(GL_LINE_SMOOTH);
    glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
    glLineWidth(static_cast<GLfloat>(lineWidth));
    callLists(fonts.outlineLists(), text);
  }
}

void drawTextBox(const TextBox& box, const TextPlacement& placement) {
  if (!canPlace(placement)) {
    return;
  }
  const TextPlane plane(placement);
  glBegin(GL_POLYGON);
  glVertex2d(box.left, box.bottom);
  glVertex2d(box.right, box.bottom);
  glVertex2d(box.right, box.top);
  glVertex2d(box.left, box.top);
  glEnd();
}

}  // namespace zyn
