#include "support/Scene_win.h"

namespace zyn::test {
namespace {

double unit(int component) { return component / 255.0; }

}  // namespace

ComPtr<IZYNGLTriangle> makeTriangle(const Vec& a, const Vec& b, const Vec& c) {
  auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  require(triangle->setPoint(0, a.x, a.y, a.z), "setPoint");
  require(triangle->setPoint(1, b.x, b.y, b.z), "setPoint");
  require(triangle->setPoint(2, c.x, c.y, c.z), "setPoint");
  setNormals(triangle.Get(), {0, 0, 1});
  return triangle;
}

void setNormals(IZYNGLTriangle* triangle, const Vec& normal) {
  for (long i = 0; i < 3; ++i) {
    require(triangle->setNormale(i, normal.x, normal.y, normal.z), "setNormale");
  }
}

void setFlatColour(IZYNGLTriangle* triangle, const Rgb& colour, double alpha) {
  require(
      triangle->setMaterial(unit(colour.r), unit(colour.g), unit(colour.b), alpha, 0, 0, 0, 0, 1),
      "setMaterial");
}

ComPtr<IZYNGLTriangle> makeFlatTriangle(const Vec& a, const Vec& b, const Vec& c, const Rgb& colour,
                                        double alpha) {
  auto triangle = makeTriangle(a, b, c);
  setFlatColour(triangle.Get(), colour, alpha);
  return triangle;
}

ComPtr<IZYNGLMaillage> makeMesh(const std::vector<double>& points,
                                const std::vector<double>& faces) {
  auto mesh = createObject<IZYNGLMaillage>(kMeshProgId);
  require(mesh->setSommets(doubleArray(points)), "setSommets");
  require(mesh->setFaces(numberArray(VT_I4, faces)), "setFaces");
  return mesh;
}

std::array<ComPtr<IZYNGLTriangle>, 2> makeRectangle(double xMin, double xMax, double yMin,
                                                    double yMax, double z, const Rgb& colour,
                                                    double alpha) {
  const Vec a = {xMin, yMin, z};
  const Vec b = {xMax, yMin, z};
  const Vec c = {xMax, yMax, z};
  const Vec d = {xMin, yMax, z};
  return {makeFlatTriangle(a, b, c, colour, alpha), makeFlatTriangle(a, c, d, colour, alpha)};
}

std::vector<ComPtr<IZYNGLTriangle>> makeCuboid(const Bounds& bounds, const Rgb& colour) {
  const auto corner = [&](int x, int y, int z) {
    return Vec{x ? bounds.xMax : bounds.xMin, y ? bounds.yMax : bounds.yMin,
               z ? bounds.zMax : bounds.zMin};
  };
  const Vec faces[6][4] = {
      {corner(1, 0, 0), corner(1, 1, 0), corner(1, 1, 1), corner(1, 0, 1)},
      {corner(0, 0, 0), corner(0, 0, 1), corner(0, 1, 1), corner(0, 1, 0)},
      {corner(0, 1, 0), corner(0, 1, 1), corner(1, 1, 1), corner(1, 1, 0)},
      {corner(0, 0, 0), corner(1, 0, 0), corner(1, 0, 1), corner(0, 0, 1)},
      {corner(0, 0, 1), corner(1, 0, 1), corner(1, 1, 1), corner(0, 1, 1)},
      {corner(0, 0, 0), corner(0, 1, 0), corner(1, 1, 0), corner(1, 0, 0)},
  };
  std::vector<ComPtr<IZYNGLTriangle>> triangles;
  for (const auto& face : faces) {
    triangles.push_back(makeFlatTriangle(face[0], face[1], face[2], colour));
    triangles.push_back(makeFlatTriangle(face[0], face[2], face[3], colour));
  }
  return triangles;
}

std::vector<double> frameOf(const ViewAxes& axes) {
  const Vec a = -1.0 * axes.right();
  const Vec b = cross(axes.forward, a);
  const Vec& d = axes.forward;
  return {a.x, a.y, a.z, b.x, b.y, b.z, d.x, d.y, d.z, 0, 0, 0, 1, 0, 0, 0};
}

_variant_t colourArray(const Rgb& colour) {
  return doubleArray({unit(colour.r), unit(colour.g), unit(colour.b)});
}

OffscreenScene::OffscreenScene(int width, int height) : OffscreenScene() {
  require(put_BackColor(colourArray(kBackground)), "BackColor");
  resize(width, height);
}

void OffscreenScene::look(const ViewAxes& axes, double surplus, IDispatch* box) {
  _variant_t frame = doubleArray(frameOf(axes));
  require(get()->ViewParams(box, surplus, &frame), "ViewParams");
}

}  // namespace zyn::test
