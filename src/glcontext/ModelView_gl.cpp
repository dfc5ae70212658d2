#include "glcontext/ModelView_gl.h"

#include <algorithm>
#include <cmath>

#include "core/VectorMath.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

/// Leaves room for products in single precision.
constexpr double kLargest = 1e18;

constexpr std::size_t kTranslation = 3;

Vecteur column(const GlMatrix& matrix, std::size_t number) {
  return {matrix[4 * number], matrix[4 * number + 1], matrix[4 * number + 2]};
}

}  // namespace

ModelView::ModelView() : columns_(matrixState(GL_MODELVIEW_MATRIX)) {
  if (isRecording()) {
    origin_ = columns_;
  }
}

void ModelView::moveTo(const Point& point) {
  for (int row = 0; row < 4; ++row) {
    at(static_cast<int>(kTranslation), row) +=
        at(0, row) * point.x + at(1, row) * point.y + at(2, row) * point.z;
  }
}

Point ModelView::seenFromEye(const Point& point) const {
  ModelView moved(*this);
  moved.moveTo(point);
  const Vecteur seen = column(moved.columns_, kTranslation);
  return {seen.x, seen.y, seen.z};
}

void ModelView::faceViewer() {
  for (int column = 0; column < 3; ++column) {
    for (int row = 0; row < 3; ++row) {
      at(column, row) = row == column ? 1 : 0;
    }
  }
}

void ModelView::alignWith(const GlMatrix& matrix) {
  std::copy(matrix.begin(), matrix.begin() + 12, columns_.begin());
  for (int axis = 0; axis < 3; ++axis) {
    normalize(axis);
  }
}

void ModelView::scale(double factor) {
  std::for_each(columns_.begin(), columns_.begin() + 12, [&](double& value) { value *= factor; });
}

double ModelView::normalize(int axis) {
  const double length = std::hypot(at(axis, 0), at(axis, 1), at(axis, 2));
  if (length == 0 || !std::isfinite(length)) {
    return 1.0;
  }
  for (int row = 0; row < 3; ++row) {
    at(axis, row) /= length;
  }
  return length;
}

/// What turns `origin_`, which has no perspective, into this one; not finite where nothing does.
GlMatrix ModelView::relative() const {
  const Vecteur x = column(*origin_, 0);
  const Vecteur y = column(*origin_, 1);
  const Vecteur z = column(*origin_, 2);
  const double volume = dot(x, cross(y, z));
  GlMatrix result{};
  for (std::size_t i = 0; i < 4; ++i) {
    const Vecteur v =
        i == kTranslation ? column(columns_, i) + -column(*origin_, i) : column(columns_, i);
    result[4 * i] = dot(cross(y, z), v) / volume;
    result[4 * i + 1] = dot(cross(z, x), v) / volume;
    result[4 * i + 2] = dot(cross(x, y), v) / volume;
  }
  result[15] = 1;
  return result;
}

bool ModelView::isUsable() const {
  const GlMatrix loaded = origin_ ? relative() : columns_;
  return std::all_of(loaded.begin(), loaded.end(),
                     [](double value) { return std::abs(value) <= kLargest; });
}

void ModelView::load() const {
  if (origin_) {
    glMultMatrixd(relative().data());
  } else {
    glLoadMatrixd(columns_.data());
  }
}

}  // namespace zyn
