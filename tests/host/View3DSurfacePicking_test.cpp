// getPointSurface of the 3D view: what is drawn under a pixel, and how it is turned.
#include <algorithm>
#include <cmath>
#include <optional>

#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/Random.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

struct Triangle {
  Vec a, b, c;
};

struct Surface {
  Vec point;
  Vec normal;
};

double length(const Vec& v) { return std::sqrt(dot(v, v)); }

class View3DSurfacePicking : public HostTest {
 protected:
  /// A box to look at, as the view shows it after VueXYp: 400 x 200 pixels.
  void look(const Vec& centre, double size) {
    box_ = host.addBox({centre.x - size, centre.x + size, centre.y - size / 2, centre.y + size / 2,
                        centre.z - size / 2, centre.z + size / 2});
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
    size_ = 2 * size;
  }

  ComPtr<IZYNGLTriangle> add(const Triangle& t, int mode = 0) {
    auto triangle = makeTriangle(t.a, t.b, t.c);
    require(host->Add(triangle.Get(), mode), "Add");
    return triangle;
  }

  std::optional<Surface> surfaceAt(int x, int y) const {
    _variant_t found(5L);
    VariantClear(&found);
    const HRESULT answer = view()->getPointSurface(x, y, &found);
    EXPECT_EQ(answer, S_OK);
    if (found.vt == VT_EMPTY) return std::nullopt;
    const std::vector<double> v = doublesIn(found);
    EXPECT_EQ(v.size(), 6U);
    return Surface{{v.at(0), v.at(1), v.at(2)}, {v.at(3), v.at(4), v.at(5)}};
  }

  /// The line of sight through a pixel's centre: a point before the scene and a direction.
  std::array<Vec, 2> sightAt(int x, int y, const Vec& about) const {
    _variant_t frame;
    require(host->XFormView(&frame), "XFormView");
    const std::vector<double> f = doublesIn(frame);
    const Vec along{f.at(6), f.at(7), f.at(8)};
    const auto meetPlane = [&](const Vec& through) {
      _variant_t point;
      require(host->getPixelPlanIntersection(
                  x, y, doubleArray({along.x, along.y, along.z, -dot(along, through)}), &point),
              "getPixelPlanIntersection");
      const std::vector<double> p = doublesIn(point);
      return Vec{p.at(0), p.at(1), p.at(2)};
    };
    const Vec front = meetPlane(about - 0.6 * size_ * along);
    return {front, normalised(meetPlane(about + size_ * along) - front)};
  }

  void switchPerspective(bool on) const {
    ComPtr<IDispatch> camera;
    require(view()->get_Camera(&camera), "Camera");
    require(queryFor<IZYNCamera>(camera.Get())->put_Perspective(on ? VARIANT_TRUE : VARIANT_FALSE),
            "Perspective");
    require(view()->put_Camera(camera.Get()), "Camera");
  }

  ComPtr<IZYNVue3D2> view() const { return queryFor<IZYNVue3D2>(host.get()); }

  View3DHost host;
  ComPtr<ForeignObject> box_;
  double size_ = 1;
};

/// Where a line meets a triangle, by its plane and the sides of that.
std::optional<double> meet(const std::array<Vec, 2>& sight, const Triangle& t) {
  const Vec normal = cross(t.b - t.a, t.c - t.a);
  const double slope = dot(normal, sight[1]);
  const double along = dot(normal, t.a - sight[0]) / slope;
  const Vec at = sight[0] + along * sight[1];
  const auto isLeft = [&](const Vec& p, const Vec& q) {
    return dot(cross(q - p, at - p), normal) >= 0;
  };
  const bool isMet = slope != 0 && isLeft(t.a, t.b) && isLeft(t.b, t.c) && isLeft(t.c, t.a);
  return isMet ? std::optional(along) : std::nullopt;
}

TEST_F(View3DSurfacePicking, NothingGivesNothing) {
  EXPECT_FALSE(surfaceAt(200, 100)) << "no camera";
  EXPECT_EQ(view()->getPointSurface(0, 0, nullptr), E_POINTER);
  look({0, 0, 0}, 10);
  EXPECT_FALSE(surfaceAt(200, 100)) << "nothing drawn";
  add({{-1000, -1000, 0}, {1000, -1000, 0}, {0, 1000, 0}});
  EXPECT_TRUE(surfaceAt(0, 0));
  EXPECT_TRUE(surfaceAt(399, 199));
  for (const auto& [x, y] : {std::pair{-1, 100}, {400, 100}, {200, -1}, {200, 200}}) {
    EXPECT_FALSE(surfaceAt(x, y)) << "outside of the client area";
  }
  host.close();
  EXPECT_FALSE(surfaceAt(200, 100)) << "no window";
}

TEST_F(View3DSurfacePicking, TheNearestTriangleAndItsNormal) {
  look({0, 0, 0}, 10);
  add({{-5, -4, -2}, {5, -4, -2}, {0, 4, -2}});
  add({{-5, -4, 0}, {5, -4, 1}, {0, 4, 0.5}});
  add({{-5, -4, -3}, {5, -4, -3}, {0, 4, -3}});
  const auto found = surfaceAt(200, 100);
  ASSERT_TRUE(found);
  const Vec normal = normalised(cross({10, 0, 1}, {5, 8, 0.5}));
  EXPECT_NEAR(length(found->normal - normal), 0, 1e-12);
  EXPECT_NEAR(dot(normal, found->point - Vec{0, 4, 0.5}), 0, 1e-9);
  EXPECT_NEAR(found->point.x, 0.025, 1e-9);
}

/// Scenes of many sizes and places, from many sides, against each triangle in double precision.
TEST_F(View3DSurfacePicking, IsTheExactHitOfTheRay) {
  struct Scene {
    Vec centre;
    double size;
  };
  int hits = 0;
  for (const Scene& scene :
       {Scene{{0, 0, 0}, 10}, {{1e6, -2e6, 5e5}, 10}, {{3, 4, 5}, 1e-3}, {{0, 0, 0}, 1e6}}) {
    host->RemoveAll();
    look(scene.centre, scene.size);
    Random random(11);
    std::vector<Triangle> triangles;
    const auto point = [&](double spread) {
      return scene.centre +
             spread * scene.size *
                 Vec{random.between(-1, 1), random.between(-0.5, 0.5), random.between(-0.5, 0.5)};
    };
    for (int i = 0; i < 1500; ++i) {
      const Vec at = point(0.8) - scene.centre;
      triangles.push_back({at + point(0.2), at + point(0.2), at + point(0.2)});
      add(triangles.back());
    }
    for (int turn = 0; turn < 6; ++turn) {
      for (int i = 0; i < 25; ++i) {
        const int x = 40 + random.below(320);
        const int y = 20 + random.below(160);
        const std::array<Vec, 2> sight = sightAt(x, y, scene.centre);
        std::optional<double> nearest;
        Vec normal;
        for (const Triangle& t : triangles) {
          const Vec turned = cross(t.b - t.a, t.c - t.a);
          const auto along = meet(sight, t);
          const bool shows = along && *along > 0 && dot(turned, sight[1]) < 0;
          if (shows && (!nearest || *along < *nearest)) {
            nearest = along;
            normal = normalised(turned);
          }
        }
        const auto found = surfaceAt(x, y);
        ASSERT_EQ(found.has_value(), nearest.has_value()) << scene.size << " " << turn << " " << i;
        if (found) {
          ++hits;
          EXPECT_NEAR(length(found->point - (sight[0] + *nearest * sight[1])), 0, 1e-7 * size_);
          EXPECT_NEAR(length(found->normal - normal), 0, 1e-6);
        }
      }
      host->RotateH(37);
      host->RotateV(21);
      host->RotateA(10);
      host->TranslateH(0.05 * scene.size);
      host->Zoom(1.1);
    }
  }
  EXPECT_GT(hits, 200);
}

TEST_F(View3DSurfacePicking, AgreesWithThePicture) {
  look({0, 0, 0}, 10);
  Random random(3);
  std::vector<ComPtr<IZYNGLTriangle>> kept;
  for (int i = 0; i < 12; ++i) {
    const auto corner = [&] {
      return Vec{random.between(-9, 9), random.between(-4, 4), random.between(-4, 4)};
    };
    kept.push_back(makeFlatTriangle(corner(), corner(), corner(), kRed));
    host->Add(kept.back().Get(), 0);
  }
  host->put_DrawCoordSys(VARIANT_FALSE);
  host->RotateH(30);
  const Image image = host.scene();
  int differences = 0;
  for (int y = 0; y < 200; y += 3) {
    for (int x = 0; x < 400; x += 3) {
      differences += surfaceAt(x, y).has_value() == (image.at(x, y) == kRed) ? 0 : 1;
    }
  }
  EXPECT_LE(differences, 3) << "at edges";
}

TEST_F(View3DSurfacePicking, SharedSidesHaveNoGap) {
  look({0, 0, 0}, 10);
  // The diagonal runs through the centres of pixels.
  const double step = 0.05;
  const Vec a{-40 * step + step / 2, -40 * step - step / 2, 1};
  const Vec b{a.x + 80 * step, a.y, 1};
  const Vec c{b.x, b.y + 80 * step, 1};
  const Vec d{a.x, c.y, 1};
  add({a, b, c});
  add({a, c, d});
  int inside = 0;
  for (int i = 0; i < 400; ++i) {
    for (int j = 0; j < 200; j += 1) {
      const Vec p{(i + 0.5 - 200) * step, (100 - j - 0.5) * step, 1};
      const bool isInside = p.x > a.x + 1e-6 && p.x < b.x - 1e-6 && p.y > a.y + 1e-6 &&
                            p.y < c.y - 1e-6 && std::abs((p.x - a.x) - (p.y - a.y)) < 2 * step;
      if (isInside) {
        ++inside;
        EXPECT_TRUE(surfaceAt(i, j)) << i << " " << j;
      }
    }
  }
  EXPECT_GT(inside, 100);
}

TEST_F(View3DSurfacePicking, FrontsOnlyUnlessTranslucent) {
  look({0, 0, 0}, 10);
  const auto turned = add({{-5, -4, 0}, {0, 4, 0}, {5, -4, 0}});
  EXPECT_FALSE(surfaceAt(200, 100)) << "its back is not drawn";
  turned->setColor(1, 0, 0, 0.5);
  ASSERT_TRUE(surfaceAt(200, 100));
  EXPECT_NEAR(surfaceAt(200, 100)->normal.z, -1, 1e-12) << "out of its front";
  turned->setColor(1, 0, 0, 0);
  EXPECT_FALSE(surfaceAt(200, 100)) << "nothing is to be seen";
  turned->setColor(1, 0, 0, 1);
  host->VueXYm(0);
  EXPECT_TRUE(surfaceAt(200, 100));
}

TEST_F(View3DSurfacePicking, OutlinesAreNoSurfaces) {
  look({0, 0, 0}, 10);
  const auto outline = add({{-5, -4, 1}, {5, -4, 1}, {0, 4, 1}}, 1);
  EXPECT_FALSE(surfaceAt(200, 100));
  add({{-5, -4, 0}, {5, -4, 0}, {0, 4, 0}});
  ASSERT_TRUE(surfaceAt(200, 100));
  EXPECT_NEAR(surfaceAt(200, 100)->point.z, 0, 1e-9);
  host->Add(outline.Get(), 0);
  EXPECT_NEAR(surfaceAt(200, 100)->point.z, 1, 1e-9);
}

TEST_F(View3DSurfacePicking, TextsSpritesAndTracesAreNoSurfaces) {
  look({0, 0, 0}, 10);
  const auto text = createObject<IZYNGLTexte>(L"ZYNVue.ZYNGLTexte");
  text->put_Texte(_bstr_t(L"HHHHHHHH"));
  text->put_HauteurPixels(120);
  text->setPosition(0, 0, 2, 5);
  host->Add(text.Get(), 0);
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  trace->put_Epaisseur(9);
  trace->setPoints3D(doubleArray({-5, 5}), doubleArray({0, 0}), doubleArray({3, 3}));
  host->Add(trace.Get(), 0);
  host.paint();
  for (int x = 150; x < 250; x += 7) EXPECT_FALSE(surfaceAt(x, 100)) << x;
}

ComPtr<IZYNGLMaillage> makeMesh(const std::vector<Triangle>& triangles) {
  std::vector<double> points;
  std::vector<double> corners;
  for (const Triangle& t : triangles) {
    for (const Vec& p : {t.a, t.b, t.c}) {
      corners.push_back(static_cast<double>(points.size() / 3));
      points.insert(points.end(), {p.x, p.y, p.z});
    }
  }
  auto mesh = createObject<IZYNGLMaillage>(L"ZYNVue.ZYNGLMaillage");
  require(mesh->setSommets(doubleArray(points)), "setSommets");
  require(mesh->setFaces(doubleArray(corners)), "setFaces");
  return mesh;
}

/// One mesh answers as its triangles do one by one.
TEST_F(View3DSurfacePicking, MeshesAsTheirTriangles) {
  const Vec centre{1e6, -2e6, 5e5};
  look(centre, 10);
  Random random(17);
  std::vector<Triangle> triangles;
  const auto point = [&](double spread) {
    return spread *
           Vec{random.between(-1, 1), random.between(-0.5, 0.5), random.between(-0.5, 0.5)};
  };
  for (int i = 0; i < 3000; ++i) {
    const Vec at = centre + point(8);
    triangles.push_back({at + point(1), at + point(1), at + point(1)});
  }
  const auto mesh = makeMesh(triangles);
  mesh->put_DeuxFaces(VARIANT_FALSE);
  std::vector<ComPtr<IZYNGLTriangle>> kept;
  int hits = 0;
  for (int turn = 0; turn < 4; ++turn) {
    std::vector<std::optional<Surface>> expected;
    host->RemoveAll();
    for (const Triangle& t : triangles) kept.push_back(add(t));
    const auto eachPixel = [](const auto& visit) {
      for (int x = 31; x < 400; x += 53) {
        for (int y = 13; y < 200; y += 29) visit(x, y);
      }
    };
    eachPixel([&](int x, int y) { expected.push_back(surfaceAt(x, y)); });
    host->RemoveAll();
    require(host->Add(mesh.Get(), 0), "Add");
    std::size_t next = 0;
    eachPixel([&](int x, int y) {
      const auto found = surfaceAt(x, y);
      const auto& wanted = expected[next++];
      ASSERT_EQ(found.has_value(), wanted.has_value()) << turn << " " << x << " " << y;
      if (found) {
        ++hits;
        EXPECT_NEAR(length(found->point - wanted->point), 0, 1e-7 * size_);
        EXPECT_NEAR(length(found->normal - wanted->normal), 0, 1e-9);
      }
    });
    host->RotateH(40);
    host->RotateV(25);
  }
  EXPECT_GT(hits, 50);
}

/// A group that turns by 90 degrees about z, stretches, mirrors, moves.
TEST_F(View3DSurfacePicking, GroupsMoveTheirSurfaces) {
  look({0, 0, 0}, 10);
  const auto group = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto triangle = makeTriangle({-1, -1, 0}, {1, -1, 0.5}, {0, 1, 0.25});
  group->Add(triangle.Get(), 0);
  host->Add(group.Get(), 0);
  ASSERT_TRUE(surfaceAt(200, 100));
  for (const double mirror : {1.0, -1.0}) {
    require(group->put_Transformation(
                doubleArray({0, 2, 0, 0, -3 * mirror, 0, 0, 0, 0, 0, 4, 0, 5, 1, -1, 1})),
            "Transformation");
    const auto moved = [&](const Vec& p) {
      return Vec{-3 * mirror * p.y + 5, 2 * p.x + 1, 4 * p.z - 1};
    };
    const Vec a = moved({-1, -1, 0}), b = moved({1, -1, 0.5}), c = moved({0, 1, 0.25});
    EXPECT_FALSE(surfaceAt(200, 100));
    const auto found = surfaceAt(300, 80);
    ASSERT_TRUE(found) << "its front stays its front in a mirror";
    const Vec normal = mirror * normalised(cross(b - a, c - a));
    EXPECT_NEAR(length(found->normal - normal), 0, 1e-9);
    EXPECT_NEAR(dot(normal, found->point - a), 0, 1e-9);
    EXPECT_NEAR(found->point.x, 5.025, 1e-9);
    EXPECT_NEAR(found->point.y, 0.975, 1e-9);
  }
}

/// Two groups of groups whose objects lie in turn one behind the other, each stretched and mirrored
/// in another way: the nearest is told by where it is shown, not by its own units.
TEST_F(View3DSurfacePicking, TheNearestOfOverlappingGroups) {
  look({0, 0, 0}, 10);
  const auto placed = [](IDispatch* object, double scale, double z) {
    // Its z = 0 lies in z.
    auto inner = createObject<IZYNGroupe>(kGroupProgId);
    auto outer = createObject<IZYNGroupe>(kGroupProgId);
    inner->Add(object, 0);
    inner->put_Transformation(
        doubleArray({scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, -scale, 0, 0, 0, 100, 1}));
    outer->Add(inner.Get(), 0);
    outer->put_Transformation(doubleArray(
        {1 / scale, 0, 0, 0, 0, 1 / scale, 0, 0, 0, 0, 1 / scale, 0, 0, 0, z - 100 / scale, 1}));
    return outer;
  };
  const auto plate = makeMesh({{{-5, -4, 0}, {5, -4, 0}, {0, 4, 0}}});
  const auto triangle = makeTriangle({-5, -4, 0}, {5, -4, 0}, {0, 4, 0});
  triangle->setMaterial(1, 0, 0, 0.5, 1, 1, 0, 0, 0);  // backs count too
  const auto low = placed(plate.Get(), 1000, -2);
  const auto middle = placed(triangle.Get(), 0.001, 0.5);
  const auto high = placed(plate.Get(), 0.001, 1);
  const auto both = createObject<IZYNGroupe>(kGroupProgId);
  const auto expectHeight = [&](double z, const char* what) {
    const auto found = surfaceAt(200, 100);
    ASSERT_TRUE(found) << what;
    EXPECT_NEAR(found->point.z, z, 1e-7) << what;
    EXPECT_NEAR(std::abs(found->normal.z), 1, 1e-9) << what;
  };
  for (IZYNGroupe* const group : {low.Get(), high.Get(), middle.Get()}) {
    require(both->Add(group, 0), "Add");
  }
  host->Add(both.Get(), 0);
  for (const bool perspective : {false, true}) {
    switchPerspective(perspective);
    host->VueXYp(0);
    expectHeight(1, "from above");
    high->put_Visible(VARIANT_FALSE);
    expectHeight(0.5, "without the highest");
    middle->put_Visible(VARIANT_FALSE);
    expectHeight(-2, "the lowest alone");
    high->put_Visible(VARIANT_TRUE);
    middle->put_Visible(VARIANT_TRUE);
    host->VueXYm(0);
    expectHeight(-2, "from below");
    low->put_Visible(VARIANT_FALSE);
    expectHeight(0.5, "from below, without the lowest");
    low->put_Visible(VARIANT_TRUE);
  }
}

TEST_F(View3DSurfacePicking, GroupsAsTheyAreShown) {
  look({0, 0, 0}, 10);
  const auto group = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto turned = makeTriangle({-5, -4, 0}, {0, 4, 0}, {5, -4, 0});
  group->Add(turned.Get(), 0);
  host->Add(group.Get(), 0);
  EXPECT_FALSE(surfaceAt(200, 100)) << "its back";
  group->put_Opacite(0.5);
  EXPECT_TRUE(surfaceAt(200, 100)) << "a translucent group shows backs";
  group->put_Visible(VARIANT_FALSE);
  EXPECT_FALSE(surfaceAt(200, 100));
  group->put_Visible(VARIANT_TRUE);
  group->put_Opacite(0);
  EXPECT_FALSE(surfaceAt(200, 100));
  group->put_Opacite(0.5);
  host->RemoveAll();
  host->Add(group.Get(), 1);
  EXPECT_FALSE(surfaceAt(200, 100)) << "outlines";
}

TEST_F(View3DSurfacePicking, ObjectsOfOthersInGroups) {
  look({0, 0, 0}, 10);
  const auto inner = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto outer = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto object = makeForeign<ForeignObject>();
  object->onDraw3D = [](int) {
    drawPlate({-1, 1, -1, 1, 0.5});
    return S_OK;
  };
  inner->Add(object->dispatch(), 0);
  inner->put_Transformation(doubleArray({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1}));
  outer->Add(inner.Get(), 0);
  const auto own = makeTriangle({-9, -9, 0}, {9, -9, 0}, {0, 9, 0});
  outer->Add(own.Get(), 0);
  outer->put_Transformation(doubleArray({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 1, 1}));
  host->Add(outer.Get(), 0);
  ASSERT_TRUE(surfaceAt(300, 100));
  EXPECT_NEAR(surfaceAt(300, 100)->point.z, 1.5, 1e-4);
  EXPECT_NEAR(surfaceAt(200, 100)->point.z, 1, 1e-9);
  inner->put_Visible(VARIANT_FALSE);
  EXPECT_NEAR(surfaceAt(290, 120)->point.z, 1, 1e-9);
}

TEST_F(View3DSurfacePicking, NearAndFarPlanesCutOff) {
  look({0, 0, 0}, 10);
  const DrawnCamera camera = host.camera();
  const auto plateAt = [&](double distance) {
    const double z = camera.ahead(distance).z;
    return add({{-50, -50, z}, {50, -50, z}, {0, 100, z}});
  };
  plateAt(camera.zNear * 0.99);
  plateAt(camera.zFar * 1.01);
  // Adding fits no depth of the camera.
  EXPECT_FALSE(surfaceAt(200, 100));
  plateAt(camera.zFar * 0.99);
  ASSERT_TRUE(surfaceAt(200, 100));
  EXPECT_NEAR(surfaceAt(200, 100)->point.z, camera.ahead(camera.zFar * 0.99).z, 1e-6);
  plateAt(camera.zNear * 1.01);
  EXPECT_NEAR(surfaceAt(200, 100)->point.z, camera.ahead(camera.zNear * 1.01).z, 1e-6);
}

TEST_F(View3DSurfacePicking, ObjectsOfOtherComponentsByTheirDepth) {
  look({0, 0, 0}, 10);
  add({{-5, -4, 0}, {5, -4, 0}, {0, 4, 0}});
  const auto tilted = host.add([](int) {
    glBegin(GL_QUADS);
    glVertex3d(0, -2, 1);
    glVertex3d(2, -2, 3);
    glVertex3d(2, 2, 3);
    glVertex3d(0, 2, 1);
    glEnd();
    return S_OK;
  });
  EXPECT_NEAR(surfaceAt(190, 100)->point.z, 0, 1e-9) << "beside it";
  const auto found = surfaceAt(220, 90);
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->point.x, 1.025, 1e-6);
  EXPECT_NEAR(found->point.y, 0.475, 1e-6);
  EXPECT_NEAR(found->point.z, 2.025, 1e-4);
  EXPECT_NEAR(length(found->normal - normalised({-1, 0, 1})), 0, 0.01);
  add({{-5, -4, 4}, {5, -4, 4}, {0, 4, 4}});
  EXPECT_NEAR(surfaceAt(220, 90)->point.z, 4, 1e-9) << "ours in front of it";
  EXPECT_EQ(tilted->modes.back(), 0);
}

TEST_F(View3DSurfacePicking, PerspectiveShowsOthersToo) {
  look({0, 0, 0}, 10);
  switchPerspective(true);
  host.add([](int) {
    drawPlate({-20, 20, -20, 20, 1.5});
    return S_OK;
  });
  for (const auto& [x, y] : {std::pair{0, 0}, {399, 0}, {200, 100}, {123, 45}}) {
    const auto found = surfaceAt(x, y);
    const auto [front, along] = sightAt(x, y, {0, 0, 0});
    const Vec expected = front + ((1.5 - front.z) / along.z) * along;
    ASSERT_TRUE(found) << x << " " << y;
    EXPECT_NEAR(length(found->point - expected), 0, 1e-3) << x << " " << y;
    EXPECT_NEAR(found->normal.z, 1, 1e-3);
  }
  add({{-9, -9, 2}, {9, -9, 3}, {0, 9, 2.5}});
  add({{-50, -50, 900}, {50, -50, 900}, {0, 90, 900}});  // behind the eye
  const Vec normal = normalised(cross({18, 0, 1}, {9, 18, 0.5}));
  for (const auto& [x, y] : {std::pair{200, 100}, {170, 150}, {230, 90}}) {
    const auto found = surfaceAt(x, y);
    const auto [front, along] = sightAt(x, y, {0, 0, 0});
    ASSERT_TRUE(found) << x << " " << y;
    EXPECT_NEAR(length(cross(found->point - front, along)), 0, 1e-9);
    EXPECT_NEAR(dot(found->point - Vec{0, 9, 2.5}, normal), 0, 1e-9);
    EXPECT_NEAR(length(found->normal - normal), 0, 1e-9);
  }
}

TEST_F(View3DSurfacePicking, OthersAtTheEdgeOfTheWindow) {
  look({0, 0, 0}, 10);
  host.add([](int) {
    drawPlate({-20, 20, -20, 20, 1.5});
    return S_OK;
  });
  for (const auto& [x, y] : {std::pair{0, 0}, {399, 0}, {0, 199}, {399, 199}, {398, 1}}) {
    const auto found = surfaceAt(x, y);
    ASSERT_TRUE(found) << x << " " << y;
    EXPECT_NEAR(found->point.x, (x + 0.5 - 200) / 20, 1e-6);
    EXPECT_NEAR(found->point.y, (99.5 - y) / 20, 1e-6);
    EXPECT_NEAR(found->point.z, 1.5, 1e-4);
    EXPECT_NEAR(found->normal.z, 1, 1e-3);
  }
}

TEST_F(View3DSurfacePicking, ThePictureAndTheStateStay) {
  look({0, 0, 0}, 10);
  host.add([](int) {
    drawPlate({-2, 2, -2, 2, 1.5}, kRed);
    return S_OK;
  });
  host.paint();
  const Image before = host.shown();
  EXPECT_TRUE(surfaceAt(200, 100));
  EXPECT_TRUE(host.shown() == before);
  const HGLRC current = wglGetCurrentContext();
  EXPECT_TRUE(surfaceAt(200, 100));
  EXPECT_EQ(wglGetCurrentContext(), current);
  EXPECT_TRUE(host.scene() == host.scene());
}

TEST_F(View3DSurfacePicking, DrawnObjectsMayDoAnything) {
  look({0, 0, 0}, 10);
  add({{-5, -4, 0}, {5, -4, 0}, {0, 4, 0}});
  std::optional<Surface> within;
  int calls = 0;
  const auto object = host.add([&](int) {
    if (++calls < 100) {
      within = surfaceAt(200, 100);  // within itself
    }
    host->VueXZp(0);
    host->RemoveAll();
    return S_OK;
  });
  surfaceAt(200, 100);
  EXPECT_EQ(calls, 1);
  ASSERT_TRUE(within);
  EXPECT_NEAR(within->point.z, 0, 1e-9);
  EXPECT_FALSE(surfaceAt(200, 100)) << "all removed";

  host->VueXYp(0);
  host.add([&](int) {
    host.close();
    return S_OK;
  });
  surfaceAt(200, 100);
  EXPECT_FALSE(host.hasWindow());
  EXPECT_FALSE(surfaceAt(200, 100));
}

TEST_F(View3DSurfacePicking, WithinAPaintTheDepthsStay) {
  look({0, 0, 0}, 10);
  add({{-5, -4, -1}, {5, -4, -1}, {0, 4, -1}});
  std::vector<bool> answers;
  host.add([&](int) {
    drawPlate({-2, 2, -2, 2, 1}, kRed);
    return S_OK;
  });
  host.add([&](int) {
    answers.push_back(surfaceAt(200, 100).has_value());
    return S_OK;
  });
  host.add([&](int) {
    drawPlate({-2, 2, -2, 2, 0}, kGreen);
    return S_OK;
  });
  host.paint();
  EXPECT_EQ(answers, (std::vector<bool>{true}));
  EXPECT_EQ(host.scene().at(200, 100), kRed) << "the green one lies behind";
}

TEST_F(View3DSurfacePicking, WhatFailsIsTold) {
  look({0, 0, 0}, 10);
  host.add([](int) { return E_ACCESSDENIED; });
  _variant_t found;
  EXPECT_EQ(view()->getPointSurface(200, 100, &found), E_ACCESSDENIED);
  EXPECT_EQ(found.vt, VT_EMPTY);
}

TEST_F(View3DSurfacePicking, ScriptsReadItByName) {
  look({0, 0, 0}, 10);
  add({{-5, -4, 0}, {5, -4, 0}, {0, 4, 0}});
  const CallResult found = callMethod(host.get(), L"getPointSurface", {200L, 100L});
  ASSERT_EQ(found.code(), S_OK);
  EXPECT_EQ(doublesIn(found.value).size(), 6U);
  EXPECT_EQ(callMethod(host.get(), L"getPointSurface", {0L, 0L}).value.vt, VT_EMPTY);
}

}  // namespace
}  // namespace zyn::test
