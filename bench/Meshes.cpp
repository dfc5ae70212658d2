#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>
#include <unordered_map>
#include <vector>

#include "bench/Groups.h"
#include "bench/HostArrays.h"
#include "bench/Pictures.h"
#include "bench/RawScene.h"
#include "support/LateBinding_win.h"
#include "support/TempFolder_win.h"

namespace zyn::bench {

using test::ComPtr;
using test::require;
using test::Vec;
using test::View3DHost;

namespace {

constexpr double kTube = 1;
constexpr double kRing = 3;

/// A torus as a host has it in memory.
struct Part {
  std::vector<double> points;
  std::vector<std::int32_t> corners;
  std::vector<std::int32_t> edges;  ///< the sharp ones, where the tube has sides
  std::vector<float> colours;       ///< red, green, blue of each face

  std::size_t pointCount() const { return points.size() / 3; }
  std::size_t faceCount() const { return corners.size() / 3; }
  Vec point(std::size_t corner) const {
    const double* const p = points.data() + 3 * static_cast<std::size_t>(corners[corner]);
    return {p[0], p[1], p[2]};
  }
  static test::Bounds bounds() { return {-4, 4, -4, 4, -1, 1}; }
};

/// How far a side of the tube lies from its middle in a direction, its corners being at 1.
double flattened(double angle, int sides) {
  if (sides == 0) {
    return 1;
  }
  const double half = std::numbers::pi / sides;
  return std::cos(half) / std::cos(std::fmod(angle, 2 * half) - half);
}

/// `sides`: of the tube, which is round with 0.
Part makePart(int triangles, int sides) {
  Part part;
  const int rough = static_cast<int>(std::sqrt(triangles / 4.0));
  const int around = sides == 0 ? rough : rough / sides * sides;
  const int along = 2 * around;
  for (int i = 0; i < along; ++i) {
    for (int j = 0; j < around; ++j) {
      const double u = 2 * std::numbers::pi * i / along;
      const double v = 2 * std::numbers::pi * j / around;
      const double tube = kTube * flattened(v, sides);
      const double radius = kRing + tube * std::cos(v);
      part.points.insert(part.points.end(),
                         {radius * std::cos(u), radius * std::sin(u), tube * std::sin(v)});
      if (sides != 0 && j % (around / sides) == 0) {
        part.edges.insert(part.edges.end(), {i * around + j, (i + 1) % along * around + j});
      }
    }
  }
  for (int i = 0; i < along; ++i) {
    for (int j = 0; j < around; ++j) {
      const int a = i * around + j;
      const int b = (i + 1) % along * around + j;
      const int c = (i + 1) % along * around + (j + 1) % around;
      const int d = i * around + (j + 1) % around;
      part.corners.insert(part.corners.end(), {a, b, c, a, c, d});
    }
  }
  for (std::size_t face = 0; face < part.faceCount(); ++face) {
    const auto shade = static_cast<float>(face / 64 % 16) / 16;
    part.colours.insert(part.colours.end(), {shade, 1 - shade, 0.5F});
  }
  return part;
}

/// What a host hands over.
struct PartArrays {
  explicit PartArrays(const Part& part)
      : points(arrayOf(VT_R8, part.points)), corners(arrayOf(VT_I4, part.corners)) {}

  void fill(IZYNGLMaillage& mesh) const {
    require(mesh.setSommets(points), "setSommets");
    require(mesh.setFaces(corners), "setFaces");
  }

  _variant_t points;
  _variant_t corners;
};

ComPtr<IZYNGLMaillage> makeMesh(const PartArrays& arrays) {
  auto mesh = test::createObject<IZYNGLMaillage>(test::kMeshProgId);
  arrays.fill(*mesh.Get());
  return mesh;
}

Vec unit(const Vec& v) { return (1 / std::sqrt(dot(v, v))) * v; }

/// At each point the mean of the faces around it, weighted by their angles there: what the library
/// calculates where no edge is sharp.
std::vector<float> plainNormals(const Part& part) {
  std::vector<Vec> sums(part.pointCount());
  for (std::size_t corner = 0; corner < part.corners.size(); corner += 3) {
    const Vec p[3] = {part.point(corner), part.point(corner + 1), part.point(corner + 2)};
    const Vec normal = unit(cross(p[1] - p[0], p[2] - p[0]));
    for (std::size_t i = 0; i < 3; ++i) {
      const Vec u = p[(i + 1) % 3] - p[i];
      const Vec v = p[(i + 2) % 3] - p[i];
      const double angle = std::acos(dot(u, v) / std::sqrt(dot(u, u) * dot(v, v)));
      Vec& sum = sums[static_cast<std::size_t>(part.corners[corner + i])];
      sum = sum + angle * normal;
    }
  }
  std::vector<float> normals;
  normals.reserve(3 * sums.size());
  for (const Vec& sum : sums) {
    const Vec n = unit(sum);
    normals.insert(normals.end(),
                   {static_cast<float>(n.x), static_cast<float>(n.y), static_cast<float>(n.z)});
  }
  return normals;
}

/// The state in which a mesh of the default colour is drawn, both sides lit.
void setSurface(float r, float g, float b) {
  const GLfloat ambient[4] = {0.8F * r, 0.8F * g, 0.8F * b, 1};
  const GLfloat diffuse[4] = {0.7F * r, 0.7F * g, 0.7F * b, 1};
  constexpr GLfloat kSpecular[4] = {0.8F, 0.8F, 0.8F, 0.8F};
  constexpr GLfloat kEmission[4] = {0, 0, 0, 1};
  glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient);
  glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, diffuse);
  glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, kSpecular);
  glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, kEmission);
  glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 100);
  glDisable(GL_CULL_FACE);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
}

std::vector<float> floatsOf(const std::vector<double>& numbers) {
  return {numbers.begin(), numbers.end()};
}

void drawElements(GLenum mode, const std::vector<float>& points, const std::vector<float>* normals,
                  const std::int32_t* indices, std::size_t count) {
  glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(3, GL_FLOAT, 0, points.data());
  if (normals) {
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, normals->data());
  }
  glDrawElements(mode, static_cast<GLsizei>(count), GL_UNSIGNED_INT, indices);
  glPopClientAttrib();
}

/// The part with plain OpenGL calls, in one colour.
class RawPart {
 public:
  explicit RawPart(const Part& part)
      : part_(part), points_(floatsOf(part.points)), normals_(plainNormals(part)) {}

  void draw() const {
    setSurface(0.5F, 0.5F, 0.5F);
    drawElements(GL_TRIANGLES, points_, &normals_, part_.corners.data(), part_.corners.size());
  }

  /// Each face in its colour.
  void drawColoured() const {
    setSurface(0, 0, 0);
    glBegin(GL_TRIANGLES);
    for (std::size_t corner = 0; corner < part_.corners.size(); ++corner) {
      const float* const c = part_.colours.data() + corner / 3 * 3;
      if (corner % 3 == 0) {
        const GLfloat ambient[4] = {0.8F * c[0], 0.8F * c[1], 0.8F * c[2], 1};
        const GLfloat diffuse[4] = {0.7F * c[0], 0.7F * c[1], 0.7F * c[2], 1};
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient);
        glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, diffuse);
      }
      const auto point = static_cast<std::size_t>(part_.corners[corner]);
      glNormal3fv(normals_.data() + 3 * point);
      glVertex3fv(points_.data() + 3 * point);
    }
    glEnd();
  }

  /// With its edges in black.
  void drawWithEdges() const {
    glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(2, 2);
    draw();
    glPopAttrib();
    glDisable(GL_LIGHTING);
    glColor3f(0, 0, 0);
    drawElements(GL_LINES, points_, nullptr, part_.edges.data(), part_.edges.size());
    glEnable(GL_LIGHTING);
  }

 private:
  const Part& part_;
  std::vector<float> points_;
  std::vector<float> normals_;
};

void measureMemory(Report& report, const Part& part) {
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  const auto count = static_cast<double>(part.faceCount());
  RawScene few([] {}, Part::bounds());
  show(raw, few.dispatch());
  drawOrbitFrame(raw);
  double before = residentBytes();
  double ofList = 0;
  {
    const RawPart plain(part);
    const double withArrays = residentBytes();
    RawScene scene([&] { plain.draw(); }, Part::bounds());
    show(raw, scene.dispatch());
    drawOrbitFrame(raw);
    drawOrbitFrame(raw);
    ofList = residentBytes() - withArrays;
  }
  const PartArrays arrays(part);
  show(ours, few.dispatch());
  drawOrbitFrame(ours);
  before = residentBytes();
  const auto mesh = makeMesh(arrays);
  const double filled = residentBytes();
  show(ours, mesh.Get());
  drawOrbitFrame(ours);
  drawOrbitFrame(ours);
  constexpr double kNumbers = 3 * 8 + 3 * 4;
  report.add({.figure = "memory of a triangle of a mesh, drawn twice",
              .limit = "3 doubles, 3 indices, a display list",
              .value = (residentBytes() - before) / count,
              .bound = kNumbers + ofList / count,
              .unit = "bytes",
              .required = 2});
  report.note(textOf("of these before the first frame: %.0f bytes; the limit's list: %.0f",
                     (filled - before) / count, ofList / count));
}

void measureFilling(Report& report, const Sizes& sizes, const Part& part) {
  const PartArrays arrays(part);
  ComPtr<IZYNGLMaillage> mesh;
  std::vector<double> points;
  std::vector<std::int32_t> corners;
  std::vector<float> normals;
  const auto plain = [&] {
    points = part.points;
    corners = part.corners;
    normals = plainNormals(part);
  };
  const auto forget = [&] {
    points = {};
    corners = {};
    normals = {};
  };
  const auto times =
      interleave({{[&] { arrays.fill(*mesh.Get()); },
                   [&] { mesh = test::createObject<IZYNGLMaillage>(test::kMeshProgId); }},
                  {plain, forget}},
                 sizes.rounds);
  report.add("mesh: setSommets, setFaces and normals", "copy, normals in a plain loop", times[0],
             times[1], 1.5);
}

void measureFrames(Report& report, const Sizes& sizes, const Part& part) {
  const PartArrays arrays(part);
  const RawPart plain(part);
  const auto mesh = makeMesh(arrays);
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  RawScene scene([&] { plain.draw(); }, Part::bounds());
  show(ours, mesh.Get());
  show(raw, scene.dispatch());
  const auto build = [&] { arrays.fill(*mesh.Get()); };
  const auto forget = [&] {
    scene.forget();
    raw.paint();
  };
  const auto first =
      interleave({{[&] { ours.paint(); }, build}, {[&] { raw.paint(); }, forget}}, sizes.rounds);
  report.add("mesh: first frame", "compile and call one display list", first[0], first[1], 1.15);

  double shift = 0;
  const auto move = [&] {
    shift = 0.001 - shift;
    std::vector<double> moved(part.points.begin(), part.points.begin() + 3000);
    for (double& coordinate : moved) coordinate += shift;
    require(mesh->setSommetsPartie(0, arrayOf(VT_R8, moved)), "setSommetsPartie");
    ours.paint();
  };
  const auto orbit = interleave({{[&] { drawOrbitFrame(ours); }},
                                 {[&] { drawOrbitFrame(raw); }},
                                 {[&] { ours.paint(); }},
                                 {move}},
                                sizes.rounds);
  report.add("mesh: orbit frame", "one display list", orbit[0], orbit[1], 1.05);
  report.add("mesh: 1000 points moved, next frame", "steady frame", orbit[3], orbit[2], 1.2);
  arrays.fill(*mesh.Get());
  ours.paint();
  noteDifference(report, ours.scene(), raw.scene());
}

void compareStyle(Report& report, const Sizes& sizes, const char* name, IZYNGLMaillage* mesh,
                  const std::function<void()>& draw, double required) {
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  RawScene scene(draw, Part::bounds());
  show(ours, mesh);
  show(raw, scene.dispatch());
  const auto times =
      interleave({{[&] { drawOrbitFrame(ours); }}, {[&] { drawOrbitFrame(raw); }}}, sizes.rounds);
  report.add(name, "one display list", times[0], times[1], required);
  noteDifference(report, ours.scene(), raw.scene());
}

void measureColours(Report& report, const Sizes& sizes, const Part& part) {
  const RawPart plain(part);
  const auto mesh = makeMesh(PartArrays(part));
  require(mesh->setCouleursFaces(arrayOf(VT_R4, part.colours)), "setCouleursFaces");
  compareStyle(
      report, sizes, "mesh: orbit frame, colours of faces", mesh.Get(),
      [&] { plain.drawColoured(); }, 1.1);
}

void measureEdges(Report& report, const Sizes& sizes) {
  const Part part = makePart(sizes.meshTriangles, 10);
  const RawPart plain(part);
  const auto mesh = makeMesh(PartArrays(part));
  require(mesh->put_AngleLissage(90), "AngleLissage");
  require(mesh->put_StyleRendu(2), "StyleRendu");
  compareStyle(
      report, sizes, "mesh: orbit frame, feature edges", mesh.Get(), [&] { plain.drawWithEdges(); },
      1.15);
  report.note(textOf("edges: %d", static_cast<int>(part.edges.size() / 2)));
}

/// The distance of the nearest triangle that a ray meets, by trying all.
double nearestOf(const Part& part, const Vec& origin, const Vec& direction) {
  double nearest = 1e300;
  for (std::size_t corner = 0; corner < part.corners.size(); corner += 3) {
    const Vec a = part.point(corner);
    const Vec u = part.point(corner + 1) - a;
    const Vec v = part.point(corner + 2) - a;
    const Vec p = cross(direction, v);
    const double determinant = dot(u, p);
    const Vec from = origin - a;
    const double s = dot(from, p) / determinant;
    const Vec q = cross(from, u);
    const double t = dot(direction, q) / determinant;
    const double distance = dot(v, q) / determinant;
    if (s >= 0 && t >= 0 && s + t <= 1 && distance >= 0) {
      nearest = std::min(nearest, distance);
    }
  }
  return nearest;
}

void measurePicks(Report& report, const Sizes& sizes, const Part& part) {
  const PartArrays arrays(part);
  const auto mesh = makeMesh(arrays);
  View3DHost view(kViewSize);
  show(view, mesh.Get());
  require(view->AddSelection(mesh.Get()), "AddSelection");
  view.paint();
  int x = 0;
  int picked = 0;
  double nearest = 0;
  _variant_t surface;
  const auto pick = [&] {
    x = (x + 37) % 100;
    _variant_t found;
    require(view->getSelectionUnderMouse(80 + x, 300, &found), "getSelectionUnderMouse");
    picked += found.vt == (VT_ARRAY | VT_I4) ? 1 : 0;
  };
  const auto point = [&] {
    surface = test::callMethod(view.get(), L"getPointSurface", {80L + x, 300L}).value;
  };
  const auto linear = [&] { nearest += nearestOf(part, {3, 0.001 * x, 9}, {0, 0, -1}); };
  const auto times = interleave({{pick}, {linear}, {point}}, sizes.rounds);
  report.add("mesh: getSelectionUnderMouse", "ray test of all triangles", times[0], times[1], 0.02);
  report.add("mesh: getPointSurface", "ray test of all triangles", times[2], times[1], 0.02);
  report.note(textOf("picks that hit: %d", picked));
}

void measureLoading(Report& report, const Sizes& sizes, const Part& part) {
  const test::TempFolder folder;
  const auto file = folder.file(L"part.stl");
  const PartArrays arrays(part);
  require(makeMesh(arrays)->Enregistrer(test::bstr(file)), "Enregistrer");
  const auto mesh = test::createObject<IZYNGLMaillage>(test::kMeshProgId);
  int welded = 0;
  const auto plain = [&] {
    const auto bytes = test::readFile(file);
    struct Key {
      std::uint32_t x, y, z;
      bool operator==(const Key&) const = default;
    };
    struct Hash {
      std::size_t operator()(const Key& key) const {
        return ((key.x * 0x9E3779B97F4A7C15U ^ key.y) * 0x9E3779B97F4A7C15U ^ key.z) *
               0x9E3779B97F4A7C15U;
      }
    };
    std::unordered_map<Key, std::uint32_t, Hash> places;
    std::vector<std::uint32_t> corners;
    std::vector<float> points;
    constexpr std::size_t kHead = 84;
    constexpr std::size_t kFacet = 50;
    for (std::size_t at = kHead; at + kFacet <= bytes.size(); at += kFacet) {
      for (std::size_t i = 0; i < 3; ++i) {
        Key key{};
        std::memcpy(&key, bytes.data() + at + 12 * (i + 1), sizeof key);
        const auto [place, isNew] =
            places.emplace(key, static_cast<std::uint32_t>(points.size() / 3));
        if (isNew) {
          float xyz[3];
          std::memcpy(xyz, &key, sizeof xyz);
          points.insert(points.end(), xyz, xyz + 3);
        }
        corners.push_back(place->second);
      }
    }
    welded = static_cast<int>(points.size() / 3);
  };
  const auto times = interleave(
      {{[&] { require(mesh->Charger(test::bstr(file)), "Charger"); }}, {plain}}, sizes.rounds);
  report.add("mesh: Charger of a binary STL", "read, weld by a hash table", times[0], times[1],
             1.5);
  long points = 0;
  mesh->get_NbSommets(&points);
  report.note(textOf("points: %ld, the limit's %d", points, welded));
}

}  // namespace

void measureMeshes(Report& report, const Sizes& sizes) {
  const Part part = makePart(sizes.meshTriangles, 0);
  measureMemory(report, part);
  measureFilling(report, sizes, part);
  measureFrames(report, sizes, part);
  measureColours(report, sizes, part);
  measureEdges(report, sizes);
  measurePicks(report, sizes, part);
  measureLoading(report, sizes, part);
}

}  // namespace zyn::bench
