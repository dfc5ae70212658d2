// Pictures of meshes in both views and both bitmap contexts, against those of the same triangles as
// objects of their own, pixel for pixel.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "support/Drawer_win.h"
#include "support/Meshes.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;

using Numbers = std::vector<double>;

/// Faces of a mesh as triangles of their own.
class Triangles {
 public:
  Triangles(const Mesh& shape, IZYNGLMaillage* mesh) {
    const Numbers normals = doublesIn(callMethod(mesh, L"getNormales").value);
    for (std::size_t face = 0; face < shape.faceCount(); ++face) {
      auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
      for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t corner = 3 * face + i;
        const double* const p = shape.points.data() + 3 * shape.corners[corner];
        const double* const n =
            normals.data() +
            3 * (normals.size() == shape.points.size() ? shape.corners[corner] : corner);
        const long index = static_cast<long>(i);
        require(triangle->setPoint(index, p[0], p[1], p[2]), "setPoint");
        require(triangle->setNormale(index, n[0], n[1], n[2]), "setNormale");
      }
      all_.push_back(std::move(triangle));
    }
  }

  const std::vector<ComPtr<IZYNGLTriangle>>& all() const { return all_; }

 private:
  std::vector<ComPtr<IZYNGLTriangle>> all_;
};

/// Triangles of any size and turn within the picture; none is degenerate.
Mesh anyTriangles(Random& random) {
  Mesh mesh;
  for (int i = 0; i < 24; ++i) {
    addPoint(mesh, random.between(0, kWidth), random.between(0, kHeight), random.between(-40, 40));
  }
  for (int i = 0; i < 40; ++i) {
    const auto a = random.below(24U);
    const auto b = (a + 1 + random.below(11U)) % 24;
    addFace(mesh, {a, b, (b + 1 + random.below(11U)) % 24});
  }
  return mesh;
}

ComPtr<IZYNGLMaillage> meshOf(const Mesh& shape) {
  return makeMesh(shape.points, {shape.corners.begin(), shape.corners.end()});
}

class MaillageDrawingTest : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  /// Shows the whole picture, whatever else is added.
  std::unique_ptr<Drawer> makeDrawer() const {
    auto drawer = GetParam().make(kWidth, kHeight);
    for (const double z : {-50.0, 50.0}) {
      for (const auto& triangle : makeRectangle(0, kWidth, 0, kHeight, z, kBlue, 0.1)) {
        drawer->add(triangle.Get());
      }
    }
    return drawer;
  }
  /// From above, or obliquely for odd numbers.
  void look(Drawer& drawer, int number) const {
    if (GetParam().isPlane) return;
    if (drawer.view()) {
      require(drawer.call(L"initView", {0.0}).code(), "initView");
      if (number % 2 == 0) require(drawer.call(L"VueXYp", {0.0}).code(), "VueXYp");
      return;
    }
    const Vec forward = number % 2 == 0 ? Vec{0, 0, -1} : Vec{0.6, 0, -0.8};
    const _variant_t none(static_cast<IDispatch*>(nullptr));
    const _variant_t frame = doubleArray(frameOf({forward, {0, 1, 0}}));
    require(drawer.call(L"ViewParams", {none, 0.0, frame}).code(), "ViewParams");
  }
  void light(Drawer& drawer, int number) const {
    if (GetParam().isPlane || number == 0) return;
    const Numbers light2 = {1, 0.5, 1, 1, 0.2, 0.6, 0.5, -0.8, 0.4};
    require(drawer.put(L"DirectionLight2Property", doubleArray(light2)).code(), "light");
    if (number == 2) {
      require(drawer.put(L"AmbientLightProperty", doubleArray({1, 1, 0.5, 0.2, 0.3})).code(),
              "light");
    }
  }

  void expectSame(IDispatch* mesh, const Triangles& triangles, long mode, int number,
                  const std::string& what) {
    const auto withMesh = makeDrawer();
    const auto withTriangles = makeDrawer();
    require(withMesh->call(L"Add", {mesh, mode}).code(), "Add");
    for (const auto& triangle : triangles.all()) {
      require(withTriangles->call(L"Add", {triangle.Get(), mode}).code(), "Add");
    }
    for (Drawer* const drawer : {withMesh.get(), withTriangles.get()}) {
      look(*drawer, number);
      light(*drawer, number % 3);
    }
    const Image expected = withTriangles->frame();
    const Image found = withMesh->frame();
    EXPECT_GT(meanDifference(expected, makeDrawer()->frame()), 0.5) << what << ": nothing is shown";
    EXPECT_TRUE(found == expected) << what << ", " << meanDifference(found, expected);
    EXPECT_TRUE(withMesh->frame() == expected) << what << ", the next frame";
  }
};

TEST_P(MaillageDrawingTest, LooksLikeTriangles) {
  Random random(17);
  for (int i = 0; i < 8; ++i) {
    const Mesh shape = anyTriangles(random);
    const auto mesh = meshOf(shape);
    require(mesh->put_DeuxFaces(VARIANT_FALSE), "DeuxFaces");
    if (i % 3 == 1) {
      Numbers normals;
      for (std::size_t n = 0; n < 3 * shape.pointCount(); ++n)
        normals.push_back(random.between(-1, 1));
      require(mesh->setNormales(doubleArray(normals)), "setNormales");
    }
    const double r = random.between(0, 1);
    const double g = random.between(0, 1);
    const double alpha = i % 2 == 0 ? 1 : random.between(0, 1);
    const Triangles triangles(shape, mesh.Get());
    const bool hasMaterial = random.oneIn(2);
    const double shininess = random.oneIn(3) ? 0 : random.between(0, 1);
    if (hasMaterial) {
      require(mesh->setMaterial(r, g, 0.25, alpha, 0.5, 0.6, 0.7, shininess, 0.1), "setMaterial");
    } else {
      require(mesh->setColor(r, g, 0.25, alpha), "setColor");
    }
    for (const auto& triangle : triangles.all()) {
      if (hasMaterial) {
        require(triangle->setMaterial(r, g, 0.25, alpha, 0.5, 0.6, 0.7, shininess, 0.1),
                "material");
      } else {
        require(triangle->setColor(r, g, 0.25, alpha), "setColor");
      }
    }
    expectSame(mesh.Get(), triangles, i % 4 == 3 ? 1 : 0, i, "number " + std::to_string(i));
  }
}

TEST_P(MaillageDrawingTest, FacesHaveTheirColours) {
  Random random(5);
  for (int i = 0; i < 3; ++i) {
    const Mesh shape = anyTriangles(random);
    const auto mesh = meshOf(shape);
    require(mesh->put_DeuxFaces(VARIANT_FALSE), "DeuxFaces");
    const Triangles triangles(shape, mesh.Get());
    Numbers colours;
    for (const auto& triangle : triangles.all()) {
      const double r = random.below(5) / 4.0;
      const double g = random.below(5) / 4.0;
      const double alpha = random.oneIn(3) ? 0.5 : 1;
      colours.insert(colours.end(), {r, g, 0.5, alpha});
      require(triangle->setColor(r, g, 0.5, alpha), "setColor");
    }
    require(mesh->setCouleursFaces(doubleArray(colours)), "setCouleursFaces");
    expectSame(mesh.Get(), triangles, i % 3 == 2 ? 1 : 0, i, "number " + std::to_string(i));
  }
}

TEST_P(MaillageDrawingTest, FollowsPointsThatMove) {
  Random random(9);
  Mesh shape = anyTriangles(random);
  const auto mesh = meshOf(shape);
  require(mesh->put_DeuxFaces(VARIANT_FALSE), "DeuxFaces");
  const auto drawer = makeDrawer();
  drawer->add(mesh.Get());
  look(*drawer, 0);
  drawer->frame();
  for (int i = 0; i < 5; ++i) {
    const std::size_t first = random.below(20U);
    Numbers moved;
    for (int n = 0; n < 3; ++n) {
      moved.insert(moved.end(), {random.between(0, kWidth), random.between(0, kHeight), 10});
    }
    std::copy(moved.begin(), moved.end(), shape.points.begin() + static_cast<long>(3 * first));
    require(mesh->setSommetsPartie(static_cast<long>(first), doubleArray(moved)), "move");
    const auto anew = makeDrawer();
    const auto other = meshOf(shape);
    require(other->put_DeuxFaces(VARIANT_FALSE), "DeuxFaces");
    anew->add(other.Get());
    look(*anew, 0);
    EXPECT_TRUE(drawer->frame() == anew->frame()) << i;
  }
}

/// A square over the whole picture, facing the viewer or not.
ComPtr<IZYNGLMaillage> plate(bool facesViewer, double z = 0) {
  const Numbers faces = facesViewer ? Numbers{0, 1, 2, 0, 2, 3} : Numbers{0, 2, 1, 0, 3, 2};
  return makeMesh({0, 0, z, kWidth, 0, z, kWidth, kHeight, z, 0, kHeight, z}, faces);
}

Rgb middle(const Image& image) { return image.at(kWidth / 2, kHeight / 2 + 3); }

TEST_P(MaillageDrawingTest, BothSidesAreDrawnAndLit) {
  const auto shown = [&](bool facesViewer, bool bothSides) {
    const auto drawer = GetParam().make(kWidth, kHeight);
    const auto mesh = plate(facesViewer);
    require(mesh->put_DeuxFaces(bothSides ? VARIANT_TRUE : VARIANT_FALSE), "DeuxFaces");
    drawer->add(mesh.Get());
    look(*drawer, 0);
    return middle(drawer->frame());
  };
  EXPECT_EQ(shown(false, true), shown(true, true));
  EXPECT_EQ(shown(true, false), shown(true, true));
  EXPECT_NE(shown(true, true), kBackground);
  if (!GetParam().isPlane) {
    EXPECT_EQ(shown(false, false), kBackground);
  }
}

TEST_P(MaillageDrawingTest, ValuesAreInterpolatedAsValues) {
  const auto drawer = GetParam().make(kWidth, kHeight);
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(scale->setCouleurs(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})), "setCouleurs");
  require(scale->put_NbPaliers(3), "NbPaliers");
  const auto mesh = plate(true);
  require(mesh->setMaterial(0.5, 0.5, 0.5, 1, 0, 0, 0, 0, 1), "setMaterial");
  require(mesh->setValeurs(doubleArray({0, 1, 1, 0})), "setValeurs");
  require(mesh->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  drawer->add(mesh.Get());
  look(*drawer, 0);
  const auto strongest = [](const Rgb& c) {
    return c.r > c.g && c.r > c.b ? 0 : c.g > c.b ? 1 : 2;
  };
  const Image image = drawer->frame();
  EXPECT_EQ(strongest(image.at(kWidth / 6, 50)), 0);
  EXPECT_EQ(strongest(image.at(kWidth / 2, 50)), 1) << "between the colours of the corners";
  EXPECT_EQ(strongest(image.at(kWidth * 5 / 6, 50)), 2);
  require(scale->put_Maximum(4), "Maximum");
  EXPECT_EQ(strongest(drawer->frame().at(kWidth * 5 / 6, 50)), 0);
  require(scale->setCouleurAbsente(0, 0, 1, 1), "setCouleurAbsente");
  require(mesh->setValeurs(doubleArray({0, std::numeric_limits<double>::quiet_NaN(), 1, 0})),
          "setValeurs");
  const Image absent = drawer->frame();
  EXPECT_EQ(strongest(absent.at(kWidth * 5 / 6, kHeight - 20)), 2) << "the face of that corner";
  EXPECT_EQ(strongest(absent.at(20, 20)), 0) << "the other face";
}

TEST_P(MaillageDrawingTest, OnALogarithmicScaleValuesAreInterpolatedToo) {
  const auto drawer = GetParam().make(kWidth, kHeight);
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(scale->setCouleurs(doubleArray({1, 0, 0, 0, 1, 0})), "setCouleurs");
  require(scale->put_Logarithmique(VARIANT_TRUE), "Logarithmique");
  const auto mesh = plate(true);
  require(mesh->setMaterial(0.5, 0.5, 0.5, 1, 0, 0, 0, 0, 1), "setMaterial");
  require(mesh->setValeurs(doubleArray({1, 100, 100, 1})), "setValeurs");
  require(mesh->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  drawer->add(mesh.Get());
  look(*drawer, 0);
  const Image image = drawer->frame();
  const Rgb quarter = image.at(kWidth / 4, 50);
  EXPECT_GT(quarter.g, quarter.r * 3 / 2) << "25 lies beyond the middle, 10";
  const Rgb half = image.at(kWidth / 2, 50);
  EXPECT_NEAR(static_cast<double>(half.g) / (half.r + half.g), std::log10(50.5) / 2, 0.02);
}

int drawnPixels(const Image& image) {
  return image.width() * image.height() - image.count(kBackground);
}

TEST_P(MaillageDrawingTest, StylesShowSurfacesEdgesOrPoints) {
  const auto drawer = GetParam().make(kWidth, kHeight);
  const auto mesh = plate(true);
  drawer->add(mesh.Get());
  look(*drawer, 0);
  const auto shown = [&](long style) {
    require(mesh->put_StyleRendu(style), "StyleRendu");
    return drawer->frame();
  };
  const Image surfaces = shown(0);
  EXPECT_GT(drawnPixels(surfaces), kWidth * kHeight / 2);
  const Image edges = shown(1);
  EXPECT_EQ(drawnPixels(edges), edges.count(kBlack));
  EXPECT_GT(drawnPixels(edges), kWidth);
  EXPECT_LT(drawnPixels(edges), 4 * (kWidth + kHeight));
  const Image both = shown(2);
  EXPECT_GT(both.count(kBlack), kWidth / 2);
  EXPECT_LT(both.count(kBlack), drawnPixels(edges)) << "the diagonal is no feature";
  EXPECT_EQ(middle(both), middle(surfaces));
  const Image hidden = shown(3);
  EXPECT_EQ(hidden.count(kBlack), drawnPixels(hidden));
  EXPECT_EQ(middle(hidden), kBackground);
  require(mesh->setSommetsPartie(0, doubleArray({40, 30, 0})), "setSommetsPartie");
  require(mesh->put_EpaisseurAretes(9), "EpaisseurAretes");
  const Image points = shown(4);
  EXPECT_GT(drawnPixels(points), 40);
  EXPECT_LT(drawnPixels(points), 4 * 100);
  require(mesh->setCouleurAretes(1, 0, 0, 1), "setCouleurAretes");
  EXPECT_GT(shown(1).count(kRed), 9 * kWidth / 2);
}

TEST_P(MaillageDrawingTest, HiddenLinesAreHidden) {
  if (GetParam().isPlane) return;
  const auto front = plate(true, 20);
  require(front->put_StyleRendu(3), "StyleRendu");
  const auto behind = makeMesh({40, 30, 0, 120, 30, 0, 80, 90, 0}, {0, 1, 2});
  const auto shown = [&](const std::vector<IDispatch*>& objects) {
    const auto drawer = GetParam().make(kWidth, kHeight);
    for (IDispatch* const object : objects) drawer->add(object);
    look(*drawer, 0);
    return drawer->frame();
  };
  const Image expected = shown({front.Get()});
  for (const long style : {0, 1, 2, 3, 4}) {
    require(behind->put_StyleRendu(style), "StyleRendu");
    EXPECT_TRUE(shown({front.Get(), behind.Get()}) == expected) << "style " << style;
    EXPECT_TRUE(shown({behind.Get(), front.Get()}) == expected) << "style " << style << ", first";
  }
}

/// The least number of black pixels in the middle columns between these rows.
int leastInColumns(const Image& image, int top, int bottom) {
  int least = image.height();
  for (int x = kWidth / 4; x < kWidth * 3 / 4; ++x) {
    int count = 0;
    for (int y = top; y < bottom; ++y) count += image.at(x, y) == kBlack ? 1 : 0;
    least = std::min(least, count);
  }
  return least;
}

TEST_P(MaillageDrawingTest, LinesOfManyEdgesHaveNoGaps) {
  constexpr int kSteps = 16;
  Mesh band;
  // Every other point first: the edges of the border run towards these and away from these by
  // turns.
  for (const int parity : {0, 1}) {
    for (int i = parity; i <= kSteps; i += 2) {
      addPoint(band, i * kWidth / kSteps, 20, 0);
      addPoint(band, i * kWidth / kSteps, kHeight - 20, 0);
    }
  }
  const auto lowAt = [](int i) {
    return static_cast<std::uint32_t>(2 * (i / 2 + (i % 2 == 0 ? 0 : kSteps / 2 + 1)));
  };
  for (int i = 0; i < kSteps; ++i) {
    addFace(band, {lowAt(i), lowAt(i + 1), lowAt(i + 1) + 1});
    addFace(band, {lowAt(i), lowAt(i + 1) + 1, lowAt(i) + 1});
  }
  const auto mesh = meshOf(band);
  const auto drawer = GetParam().make(kWidth, kHeight);
  drawer->add(mesh.Get());
  look(*drawer, 0);
  for (const long style : {1, 2, 3}) {
    for (const double width : {1, 3}) {
      require(mesh->put_StyleRendu(style), "StyleRendu");
      require(mesh->put_EpaisseurAretes(width), "EpaisseurAretes");
      const Image picture = drawer->frame();
      EXPECT_GE(leastInColumns(picture, 0, kHeight / 2), width) << style;
      EXPECT_GE(leastInColumns(picture, kHeight / 2, kHeight), width) << style;
    }
  }
}

/// A tube of 36 facets along x, turned by so many degrees about its axis.
Mesh tube(double turn) {
  constexpr std::uint32_t kFacets = 36;
  constexpr double kRadius = 50;
  Mesh mesh;
  for (std::uint32_t i = 0; i < kFacets; ++i) {
    const double angle = (10.0 * i + turn) * std::numbers::pi / 180;
    for (const double x : {0, kWidth}) {
      addPoint(mesh, x, kHeight / 2 + kRadius * std::cos(angle), kRadius * std::sin(angle));
    }
  }
  for (std::uint32_t i = 0; i < kFacets; ++i) {
    const std::uint32_t a = 2 * i;
    const std::uint32_t b = 2 * ((i + 1) % kFacets);
    addFace(mesh, {a, b, b + 1});
    addFace(mesh, {a, b + 1, a + 1});
  }
  return mesh;
}

TEST_P(MaillageDrawingTest, SilhouettesAreAsThickAsOtherEdges) {
  if (GetParam().isPlane) return;
  for (double turn = 0; turn < 10; turn += 0.25) {
    const auto mesh = meshOf(tube(turn));
    const auto drawer = GetParam().make(kWidth, kHeight);
    drawer->add(mesh.Get());
    look(*drawer, 0);
    require(mesh->put_StyleRendu(3), "StyleRendu");
    for (const double width : {1, 3}) {
      require(mesh->put_EpaisseurAretes(width), "EpaisseurAretes");
      const Image picture = drawer->frame();
      EXPECT_GE(leastInColumns(picture, 0, kHeight / 2), width) << turn;
      EXPECT_GE(leastInColumns(picture, kHeight / 2, kHeight), width) << turn;
    }
  }
}

TEST_P(MaillageDrawingTest, WhatLiesBehindDoesNotShowBesideEdges) {
  if (GetParam().isPlane) return;
  // A wedge: two steep red faces meet above its green back.
  for (double x = 40.1; x < 41; x += 0.2) {
    const auto mesh =
        makeMesh({x, 20, -40, x, 100, -40, 80, 20, 40, 80, 100, 40, 120, 20, -40, 120, 100, -40},
                 {0, 2, 3, 0, 3, 1, 2, 4, 5, 2, 5, 3, 0, 1, 5, 0, 5, 4});
    const Numbers colours = {1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 1, 0};
    require(mesh->setCouleursFaces(doubleArray(colours)), "setCouleursFaces");
    require(mesh->put_StyleRendu(2), "StyleRendu");
    const auto drawer = GetParam().make(kWidth, kHeight);
    drawer->add(mesh.Get());
    look(*drawer, 0);
    for (const double width : {1, 3}) {
      require(mesh->put_EpaisseurAretes(width), "EpaisseurAretes");
      const Image picture = drawer->frame();
      int green = 0;
      int red = 0;
      for (int row = 0; row < kHeight; ++row) {
        for (int column = 0; column < kWidth; ++column) {
          const Rgb colour = picture.at(column, row);
          green += colour.g > colour.r && colour.g > colour.b ? 1 : 0;
          red += colour.r > colour.g && colour.r > colour.b ? 1 : 0;
        }
      }
      EXPECT_GT(red, 70 * 70) << x;
      EXPECT_EQ(green, 0) << x << ", " << width;
    }
  }
}

TEST_P(MaillageDrawingTest, DegenerateFacesAreDrawnAsNothing) {
  const auto drawer = GetParam().make(kWidth, kHeight);
  const auto mesh =
      makeMesh({0, 0, 0, kWidth, 0, 0, kWidth, kHeight, 0, 50, 0, 0}, {0, 1, 1, 0, 3, 1, 2, 2, 2});
  drawer->add(mesh.Get());
  look(*drawer, 0);
  for (const long style : {0, 1, 2, 3}) {
    require(mesh->put_StyleRendu(style), "StyleRendu");
    EXPECT_EQ(drawnPixels(drawer->frame()), 0) << style;
  }
}

INSTANTIATE_TEST_SUITE_P(All, MaillageDrawingTest, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
