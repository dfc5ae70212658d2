#include "glcontext/ModelView_gl.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

/// Leaves room for products in single precision.
constexpr double kLargest = 1e18;

constexpr int kTranslation = 3;

}  // namespace

ModelView::ModelView() { glGetDoublev(GL_MODELVIEW_MATRIX, columns_.data()); }

void ModelView::moveTo(const Point& point) {
  for (int row = 0; row < 4; ++row) {
    at(kTranslation, row) += at(0, row) * point.x + at(1, row) * point.y + at(2, row) * point.z;
  }
}

void ModelView::faceViewer() {
  for (int column = 0; column < 3; ++column) {
    for (int row = 0; row < 3; ++row) {
      at(column, row) = row == column ? 1 : 0;
    }
  }
}

void ModelView::scale(double factor) {
  std::for_each(columns_.begin(), columns_.begin() + 12, [&](GLdouble& value) { value *= factor; });
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

bool ModelView::isUsable() const {
  return std::all_of(columns_.begin(), columns_.end(),
                     [](GLdouble value) { return std::abs(value) <= kLargest; });
}

}  // namespace zyn
