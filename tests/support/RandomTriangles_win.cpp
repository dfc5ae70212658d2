#include "support/RandomTriangles_win.h"

#include <array>
#include <limits>

namespace zyn::test {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double component(Random& rng) {
  static constexpr std::array kOdd = {0.0, 1.0, -0.5, 1.5, 1e30, kInfinity, 255.0, kNaN};
  return rng.oneIn(12) ? rng.pick(kOdd) : rng.between(0, 1);
}

double opacity(Random& rng) {
  static constexpr std::array kValues = {1.0, 1.0, 1.0, 1.0, 0.5, 0.25, 0.999999, 0.0};
  static constexpr std::array kOdd = {1.2, -0.3, kInfinity, -kInfinity, kNaN};
  return rng.oneIn(20) ? rng.pick(kOdd) : rng.pick(kValues);
}

double coordinate(Random& rng, double centre, double size) {
  static constexpr std::array kOdd = {0.0, 1e9, -1e20, 1e300, kNaN, kInfinity, -kInfinity};
  return rng.oneIn(300) ? rng.pick(kOdd) : centre + rng.between(-size, size);
}

double direction(Random& rng) {
  static constexpr std::array kOdd = {0.0, 1e-30, 1e30, kNaN, kInfinity};
  return rng.oneIn(60) ? rng.pick(kOdd) : rng.between(-1.5, 1.5);
}

double factor(Random& rng) { return rng.oneIn(30) ? kNaN : component(rng); }

/// OpenGL takes 0 to 1 only.
double shininess(Random& rng) {
  static constexpr std::array kOdd = {0.0, 1.0, 1.5, -0.1, kNaN};
  return rng.oneIn(3) ? rng.pick(kOdd) : rng.between(0, 1);
}

}  // namespace

void reshape(IZYNGLTriangle* triangle, Random& rng) {
  const double size = rng.between(0.5, 6);
  const double x = rng.between(-kRandomReach, kRandomReach);
  const double y = rng.between(-kRandomReach, kRandomReach);
  const double z = rng.between(-kRandomReach, kRandomReach);
  for (LONG i = 0; i < 3; ++i) {
    const double at[] = {coordinate(rng, x, size), coordinate(rng, y, size),
                         coordinate(rng, z, size)};
    require(triangle->setPoint(i, at[0], at[1], at[2]), "setPoint");
  }
}

void recolour(IZYNGLTriangle* triangle, Random& rng) {
  const double r = component(rng);
  const double g = component(rng);
  const double b = component(rng);
  const double alpha = opacity(rng);
  if (rng.oneIn(2)) {
    require(triangle->setColor(r, g, b, alpha), "setColor");
    return;
  }
  const double ambient = factor(rng);
  const double diffuse = factor(rng);
  const double specular = factor(rng);
  const double shine = shininess(rng);
  require(triangle->setMaterial(r, g, b, alpha, ambient, diffuse, specular, shine, factor(rng)),
          "setMaterial");
}

void turnNormal(IZYNGLTriangle* triangle, Random& rng) {
  const auto index = static_cast<LONG>(rng.below(3));
  const double x = direction(rng);
  const double y = direction(rng);
  require(triangle->setNormale(index, x, y, direction(rng)), "setNormale");
}

TriangleMaker::TriangleMaker() {
  require(CoGetClassObject(classOf(kTriangleProgId), CLSCTX_INPROC_SERVER, nullptr,
                           IID_PPV_ARGS(factory_.GetAddressOf())),
          "CoGetClassObject");
}

ComPtr<IZYNGLTriangle> TriangleMaker::makeRandom(Random& rng) const {
  ComPtr<IZYNGLTriangle> triangle;
  require(factory_->CreateInstance(nullptr, IID_PPV_ARGS(triangle.GetAddressOf())),
          "CreateInstance");
  reshape(triangle.Get(), rng);
  recolour(triangle.Get(), rng);
  for (int i = 0; i < 3; ++i) turnNormal(triangle.Get(), rng);
  return triangle;
}

ComPtr<IUnknown> TriangleMaker::makePartOf(IUnknown* outer) const {
  ComPtr<IUnknown> part;
  require(factory_->CreateInstance(outer, IID_PPV_ARGS(part.GetAddressOf())), "CreateInstance");
  return part;
}

ComPtr<ForeignObject> makeOutside(IUnknown* object) {
  const auto inside = queryFor<IGLDraw>(object);
  auto outside = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  outside->onDraw3D = [inside](int mode) { return inside->Draw3D(mode); };
  outside->onDraw2D = [inside](int mode) { return inside->Draw2D(mode); };
  return outside;
}

}  // namespace zyn::test
