#pragma once

#include <array>
#include <vector>

#include "support/Scene_win.h"
#include "support/Texts_win.h"

namespace zyn::test {

/// Column after column, the last row 0 0 0 1.
using Matrix16 = std::array<double, 16>;

inline constexpr Matrix16 kUnmoved = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
Matrix16 translation(double x, double y, double z);
Matrix16 scaling(double x, double y, double z);
/// About the axis through the origin, degrees.
Matrix16 rotation(const Vec& axis, double angle);
Matrix16 operator*(const Matrix16& a, const Matrix16& b);
Vec operator*(const Matrix16& matrix, const Vec& point);
bool isMirror(const Matrix16& matrix);

ComPtr<IZYNGroupe> makeGroup(const std::vector<ComPtr<IDispatch>>& objects = {});
/// With this transformation.
ComPtr<IZYNGroupe> makeGroup(const std::vector<ComPtr<IDispatch>>& objects, const Matrix16& matrix);
void move(IZYNGroupe* group, const Matrix16& matrix);
void addTo(IZYNGroupe* group, IUnknown* object, long mode = 0);

/// Makes objects as hosts do that have no groups: with every point moved by a matrix.
class MovedObjects {
 public:
  explicit MovedObjects(const Matrix16& matrix = kUnmoved, double opacity = 1)
      : matrix_(matrix), opacity_(opacity) {}

  /// Lit, its normal that of its plane. Where the matrix is a mirror, what was its front stays it.
  void triangle(const Vec& a, const Vec& b, const Vec& c, const Rgb& colour, double alpha = 1);
  void trace(const std::vector<Vec>& points, const Rgb& colour, double width = 1);
  void text(const Vec& at, const std::wstring& shown, const Rgb& colour, bool facesViewer = true);
  void sprite(const Vec& at);
  /// The faces of a cuboid.
  void cuboid(const Bounds& bounds, const Rgb& colour, double alpha = 1);

  void add(const MovedObjects& others) {
    objects_.insert(objects_.end(), others.objects_.begin(), others.objects_.end());
  }

  const std::vector<ComPtr<IDispatch>>& all() const { return objects_; }

 private:
  Matrix16 matrix_;
  double opacity_;
  std::vector<ComPtr<IDispatch>> objects_;
};

/// How many pixels of either picture have none like them in the other one, at their place or beside
/// it: within a step of 255.
int pixelsApart(const Image& a, const Image& b);

}  // namespace zyn::test
