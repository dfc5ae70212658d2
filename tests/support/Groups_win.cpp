#include "support/Groups_win.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "support/Pictures_win.h"

namespace zyn::test {

Matrix16 translation(double x, double y, double z) {
  Matrix16 matrix = kUnmoved;
  matrix[12] = x;
  matrix[13] = y;
  matrix[14] = z;
  return matrix;
}

Matrix16 scaling(double x, double y, double z) {
  return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1};
}

Matrix16 rotation(const Vec& axis, double angle) {
  const double length = std::sqrt(dot(axis, axis));
  const Vec u = (1 / length) * axis;
  const double radians = angle * std::numbers::pi / 180;
  const double c = std::cos(radians);
  const double s = std::sin(radians);
  const auto turned = [&](const Vec& v) {
    return c * v + s * cross(u, v) + ((1 - c) * dot(u, v)) * u;
  };
  const Vec x = turned({1, 0, 0});
  const Vec y = turned({0, 1, 0});
  const Vec z = turned({0, 0, 1});
  return {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, 0, 0, 0, 1};
}

Matrix16 operator*(const Matrix16& a, const Matrix16& b) {
  Matrix16 product{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 4; ++row) {
      for (std::size_t i = 0; i < 4; ++i) {
        product[4 * column + row] += a[4 * i + row] * b[4 * column + i];
      }
    }
  }
  return product;
}

Vec operator*(const Matrix16& m, const Vec& p) {
  return {m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12],
          m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
          m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
}

bool isMirror(const Matrix16& m) {
  return dot({m[0], m[1], m[2]}, cross({m[4], m[5], m[6]}, {m[8], m[9], m[10]})) < 0;
}

ComPtr<IZYNGroupe> makeGroup(const std::vector<ComPtr<IDispatch>>& objects) {
  auto group = createObject<IZYNGroupe>(kGroupProgId);
  for (const auto& object : objects) addTo(group.Get(), object.Get());
  return group;
}

ComPtr<IZYNGroupe> makeGroup(const std::vector<ComPtr<IDispatch>>& objects,
                             const Matrix16& matrix) {
  auto group = makeGroup(objects);
  move(group.Get(), matrix);
  return group;
}

void move(IZYNGroupe* group, const Matrix16& matrix) {
  require(group->put_Transformation(doubleArray({matrix.begin(), matrix.end()})),
          "put_Transformation");
}

void addTo(IZYNGroupe* group, IUnknown* object, long mode) {
  require(group->Add(queryFor<IDispatch>(object).Get(), mode), "Add");
}

void MovedObjects::triangle(const Vec& a, const Vec& b, const Vec& c, const Rgb& colour,
                            double alpha) {
  const Vec p = matrix_ * a;
  const Vec q = matrix_ * (isMirror(matrix_) ? c : b);
  const Vec r = matrix_ * (isMirror(matrix_) ? b : c);
  const auto made = makeTriangle(p, q, r);
  const Vec normal = cross(q - p, r - p);
  setNormals(made.Get(), (1 / std::sqrt(dot(normal, normal))) * normal);
  require(made->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, opacity_ * alpha),
          "setColor");
  objects_.push_back(queryFor<IDispatch>(made.Get()));
}

void MovedObjects::trace(const std::vector<Vec>& points, const Rgb& colour, double width) {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> z;
  for (const Vec& point : points) {
    const Vec at = matrix_ * point;
    x.push_back(at.x);
    y.push_back(at.y);
    z.push_back(at.z);
  }
  const auto made = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  require(made->setPoints3D(doubleArray(x), doubleArray(y), doubleArray(z)), "setPoints3D");
  made->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, opacity_);
  made->put_Epaisseur(width);
  objects_.push_back(queryFor<IDispatch>(made.Get()));
}

void MovedObjects::text(const Vec& at, const std::wstring& shown, const Rgb& colour,
                        bool facesViewer) {
  const Vec place = matrix_ * at;
  const auto made = createObject<IZYNGLTexte>(kTextProgId);
  setText(made.Get(), shown);
  made->put_HauteurPixels(24);
  made->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, opacity_);
  made->setPosition(place.x, place.y, place.z, 1);
  made->put_ToujoursLisible(facesViewer ? VARIANT_TRUE : VARIANT_FALSE);
  objects_.push_back(queryFor<IDispatch>(made.Get()));
}

void MovedObjects::sprite(const Vec& at) {
  const Vec place = matrix_ * at;
  const auto made = createObject<IZYNGLBitmap>(kSpriteProgId);
  made->putref_Picture(pictureOfBitmap24(makeQuarters(16, 12)).Get());
  made->setPosition(place.x, place.y, place.z);
  made->setOrigine(3, 4);
  objects_.push_back(queryFor<IDispatch>(made.Get()));
}

void MovedObjects::cuboid(const Bounds& b, const Rgb& colour, double alpha) {
  const auto corner = [&](int i) {
    return Vec{(i & 1) != 0 ? b.xMax : b.xMin, (i & 2) != 0 ? b.yMax : b.yMin,
               (i & 4) != 0 ? b.zMax : b.zMin};
  };
  constexpr int kFaces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
  for (const auto& f : kFaces) {
    triangle(corner(f[0]), corner(f[1]), corner(f[2]), colour, alpha);
    triangle(corner(f[0]), corner(f[2]), corner(f[3]), colour, alpha);
  }
}

int pixelsApart(const Image& a, const Image& b) {
  const auto isNear = [](const Rgb& colour, const Image& other, int x, int y) {
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, other.height() - 1); ++row) {
      for (int column = std::max(x - 1, 0); column <= std::min(x + 1, other.width() - 1);
           ++column) {
        if (difference(colour, other.at(column, row)) <= 1) return true;
      }
    }
    return false;
  };
  if (a.width() != b.width() || a.height() != b.height()) return a.width() * a.height();
  int apart = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      apart += isNear(a.at(x, y), b, x, y) && isNear(b.at(x, y), a, x, y) ? 0 : 1;
    }
  }
  return apart;
}

}  // namespace zyn::test
