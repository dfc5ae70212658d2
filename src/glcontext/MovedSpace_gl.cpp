#include "glcontext/MovedSpace_gl.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

/// GL_RESCALE_NORMAL of OpenGL 1.2, which leaves normals their length under even scales.
constexpr GLenum kRescaleNormal = 0x803A;

/// Leaves room for products in single precision.
constexpr double kLargest = 1e18;

bool canRescale() {
  const auto* const version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  return version && std::strncmp(version, "1.0", 3) != 0 && std::strncmp(version, "1.1", 3) != 0;
}

double roundingOf(double value) { return value - static_cast<double>(static_cast<float>(value)); }

}  // namespace

MovedSpace::MovedSpace(const GlMatrix& matrix, bool isFlat)
    : matrixMode_(enumState(GL_MATRIX_MODE)), modelView_(matrixState(GL_MODELVIEW_MATRIX)) {
  if (isRecording()) {
    record(matrix);
  } else {
    load(product(modelView_, matrix), isFlat);
  }
  if (isMirror(matrix)) {
    turnWinding();
  }
  keepNormals(stretchOf(matrix));
}

MovedSpace::~MovedSpace() {
  if (normals_) {
    glDisable(*normals_);
  }
  if (winding_) {
    glFrontFace(*winding_);
  }
  glMatrixMode(GL_MODELVIEW);
  if (recorded_) {
    glPopMatrix();
    return;  // the matrix mode is among what was pushed
  }
  if (isUsable_) {
    glLoadMatrixd(modelView_.data());
  }
  if (projection_) {
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(projection_->data());
  }
  glMatrixMode(matrixMode_);
}

void MovedSpace::record(const GlMatrix& matrix) {
  recorded_.emplace(GL_ENABLE_BIT | GL_POLYGON_BIT | GL_TRANSFORM_BIT);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glMultMatrixd(matrix.data());
}

void MovedSpace::load(const GlMatrix& moved, bool isFlat) {
  isUsable_ = std::all_of(moved.begin(), moved.end(),
                          [](double value) { return std::abs(value) <= kLargest; });
  if (!isUsable_) {
    return;
  }
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(moved.data());
  const double x = isFlat ? roundingOf(moved[12]) : 0;
  const double y = isFlat ? roundingOf(moved[13]) : 0;
  if (x != 0 || y != 0) {
    projection_ = matrixState(GL_PROJECTION_MATRIX);
    GlMatrix shifted = *projection_;
    for (std::size_t row = 0; row < 4; ++row) {
      shifted[12 + row] += shifted[row] * x + shifted[4 + row] * y;
    }
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(shifted.data());
  }
  glMatrixMode(matrixMode_);
}

void MovedSpace::keepNormals(Stretch stretch) {
  if (stretch == Stretch::kNone) {
    return;
  }
  const GLenum wanted =
      stretch == Stretch::kEven && canRescale() ? kRescaleNormal : GLenum{GL_NORMALIZE};
  if (!isEnabled(wanted) && !isEnabled(GL_NORMALIZE)) {
    glEnable(wanted);
    normals_ = wanted;
  }
}

void MovedSpace::turnWinding() {
  winding_ = enumState(GL_FRONT_FACE);
  glFrontFace(*winding_ == GL_CW ? GL_CCW : GL_CW);
}

}  // namespace zyn
