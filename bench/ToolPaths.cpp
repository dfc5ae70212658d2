#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>
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
using test::View3DHost;

namespace {

/// Layers of a part as a printer or a mill makes them: to the begin, down, there and back, round,
/// up. As a host has it in memory.
struct Route {
  std::vector<double> points;
  std::vector<std::int32_t> types;

  std::size_t segmentCount() const { return types.size(); }
  void start(double x, double y, double z) { points = {x, y, z}; }
  void to(double x, double y, double z, std::int32_t type) {
    points.insert(points.end(), {x, y, z});
    types.push_back(type);
  }
  test::Bounds bounds() const;
};

test::Bounds Route::bounds() const {
  const double none = std::numeric_limits<double>::infinity();
  std::array<double, 3> low{none, none, none};
  std::array<double, 3> high{-none, -none, -none};
  for (std::size_t i = 0; i < points.size(); ++i) {
    low[i % 3] = std::min(low[i % 3], points[i]);
    high[i % 3] = std::max(high[i % 3], points[i]);
  }
  return {low[0], high[0], low[1], high[1], low[2], high[2]};
}

constexpr int kLines = 160;   // of a layer, there and back, each in two pieces
constexpr int kCircle = 480;  // chords of its round

Route makeRoute(int segments) {
  Route route;
  route.start(0, 0, 50);
  const auto count = static_cast<std::size_t>(segments);
  const int layers = segments / (2 * kLines + kCircle + 4) + 1;
  for (int layer = 0; route.segmentCount() < count; ++layer) {
    const double z = 40.0 * layer / layers;
    route.to(5, 5, z + 5, 0);
    route.to(5, 5, z, 2);
    for (int line = 0; line < kLines; ++line) {
      const double y = 5 + 90.0 * line / kLines;
      route.to(50 + std::sin(0.1 * line + layer), y, z, 1);
      route.to(line % 2 == 0 ? 95 : 5, y + 0.1, z, 1);
    }
    for (int i = 0; i < kCircle; ++i) {
      const double angle = 6.283185307179586 * i / kCircle;
      route.to(50 + 48 * std::cos(angle), 50 + 48 * std::sin(angle), z, 4);
    }
    route.to(98, 50, z + 5, 3);
    route.to(0, 50, z + 6, 0);
  }
  route.types.resize(count);
  route.points.resize(3 * (count + 1));
  return route;
}

/// What a host hands over.
struct RouteArrays {
  explicit RouteArrays(const Route& route) : types(arrayOf(VT_I4, route.types)) {
    std::vector<double> columns[3];
    for (std::size_t i = 0; i < route.points.size(); ++i) columns[i % 3].push_back(route.points[i]);
    x = arrayOf(VT_R8, columns[0]);
    y = arrayOf(VT_R8, columns[1]);
    z = arrayOf(VT_R8, columns[2]);
  }

  void fill(IZYNGLTrajet& path) const {
    require(path.setPoints3D(x, y, z), "setPoints3D");
    require(path.setTypes(types), "setTypes");
  }

  _variant_t x, y, z, types;
};

ComPtr<IZYNGLTrajet> makePath(const RouteArrays& arrays) {
  auto path = test::createObject<IZYNGLTrajet>(test::kPathProgId);
  arrays.fill(*path.Get());
  return path;
}

/// The route with plain OpenGL calls: a strip for each run of one type, in the library's colours.
class RawRoute {
 public:
  explicit RawRoute(const Route& route) { take(route); }

  void take(const Route& route) {
    points_.assign(route.points.begin(), route.points.end());
    runs_.clear();
    for (std::size_t segment = 0; segment < route.segmentCount(); ++segment) {
      const std::int32_t type = route.types[segment];
      if (runs_.empty() || runs_.back().type != type) {
        runs_.push_back({type, static_cast<GLint>(segment), 1});
      }
      ++runs_.back().count;
    }
  }

  void draw() const {
    constexpr GLfloat kColours[5][3] = {{0.95F, 0.55F, 0.1F},
                                        {0.1F, 0.3F, 0.85F},
                                        {0.85F, 0.1F, 0.15F},
                                        {0.1F, 0.65F, 0.2F},
                                        {0.1F, 0.6F, 0.9F}};
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    glDisable(GL_LIGHTING);
    glLineStipple(1, 0x1F1F);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, points_.data());
    for (const Run& run : runs_) {
      glColor3fv(kColours[run.type]);
      if (run.type == 0) {
        glEnable(GL_LINE_STIPPLE);
      }
      glDrawArrays(GL_LINE_STRIP, run.first, run.count);
      if (run.type == 0) {
        glDisable(GL_LINE_STIPPLE);
      }
    }
    glPopClientAttrib();
    glPopAttrib();
  }

 private:
  struct Run {
    std::int32_t type;
    GLint first;
    GLsizei count;
  };

  std::vector<float> points_;
  std::vector<Run> runs_;
};

void measureMemory(Report& report, const Route& route) {
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  const auto count = static_cast<double>(route.segmentCount());
  const std::vector<double> speeds(route.segmentCount(), 500);
  const std::vector<std::int32_t> lines(route.segmentCount(), 7);
  RawScene few([] {}, route.bounds());
  show(raw, few.dispatch());
  drawOrbitFrame(raw);
  double ofList = 0;
  {
    const RawRoute plain(route);
    const double withArrays = residentBytes();
    RawScene scene([&] { plain.draw(); }, route.bounds());
    show(raw, scene.dispatch());
    drawOrbitFrame(raw);
    drawOrbitFrame(raw);
    ofList = residentBytes() - withArrays;
  }
  const RouteArrays arrays(route);
  const _variant_t speedArray = arrayOf(VT_R8, speeds);
  const _variant_t lineArray = arrayOf(VT_I4, lines);
  show(ours, few.dispatch());
  drawOrbitFrame(ours);
  const double before = residentBytes();
  const auto path = makePath(arrays);
  require(path->setVitesses(speedArray), "setVitesses");
  require(path->setLignes(lineArray), "setLignes");
  require(path->put_Position(1), "Position");
  show(ours, path.Get());
  drawOrbitFrame(ours);
  drawOrbitFrame(ours);
  constexpr double kNumbers = 3 * 8 + 4 + 8 + 4;
  report.add({.figure = "memory of a segment of a path, drawn twice",
              .limit = "3 doubles, type, speed, line, a display list",
              .value = (residentBytes() - before) / count,
              .bound = kNumbers + ofList / count,
              .unit = "bytes",
              .required = 2});
  report.note(textOf("the limit's list: %.0f bytes", ofList / count));
}

void measureFrames(Report& report, const Sizes& sizes, const Route& route) {
  const RouteArrays arrays(route);
  RawRoute plain(route);
  const auto path = makePath(arrays);
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  RawScene scene([&] { plain.draw(); }, route.bounds());
  show(ours, path.Get());
  show(raw, scene.dispatch());
  const auto forget = [&] {
    scene.forget();
    raw.paint();
  };
  const auto first = interleave({{[&] {
                                   arrays.fill(*path.Get());
                                   ours.paint();
                                 }},
                                 {[&] {
                                    plain.take(route);
                                    raw.paint();
                                  },
                                  forget}},
                                sizes.rounds);
  report.add("path: setPoints3D, setTypes and first frame",
             "copy the arrays, compile and call one display list", first[0], first[1], 1.3);
  const auto orbit =
      interleave({{[&] { drawOrbitFrame(ours); }}, {[&] { drawOrbitFrame(raw); }}}, sizes.rounds);
  report.add("path: orbit frame, by type", "one display list", orbit[0], orbit[1], 1.1);
  noteDifference(report, ours.scene(), raw.scene());

  require(path->put_ModeCouleur(2), "ModeCouleur");
  double length = 0;
  require(path->get_Longueur(&length), "Longueur");
  double share = 0;
  const auto move = [&] {
    share = std::fmod(share + 0.377, 1);  // far to and fro
    require(path->put_Position(share * length), "Position");
    ours.paint();
  };
  const auto moved = interleave({{move}, {[&] { ours.paint(); }}}, sizes.rounds);
  report.add("path: Position moved, next frame", "steady frame", moved[0], moved[1], 1.1);

  require(path->put_ModeCouleur(0), "ModeCouleur");
  std::vector<double> more;
  for (int i = 0; i < 1000; ++i) {
    more.insert(more.end(), {50.0 + 0.01 * i, 50.0 + i % 7, 45});
  }
  const _variant_t points = arrayOf(VT_R8, more);
  const _variant_t none;
  const auto append = [&] {
    require(path->AjouterPoints(points, none, none, none), "AjouterPoints");
    ours.paint();
  };
  const auto grown = interleave({{append}, {[&] { ours.paint(); }}}, sizes.rounds);
  report.add("path: AjouterPoints of 1000, next frame", "steady frame", grown[0], grown[1], 1.2);
}

/// The segment nearest to the viewer, who looks from above, within a reach of a place: by trying
/// all.
std::size_t nearestOf(const Route& route, const test::Vec& place, double reach) {
  std::size_t nearest = 0;
  double height = -1e300;
  for (std::size_t segment = 0; segment < route.segmentCount(); ++segment) {
    const double* const a = route.points.data() + 3 * segment;
    double from = 0;
    double to = 1;
    for (int axis = 0; axis < 2; ++axis) {
      const double middle = axis == 0 ? place.x : place.y;
      const double step = a[3 + axis] - a[axis];
      const double low = middle - reach - a[axis];
      const double high = middle + reach - a[axis];
      if (step == 0) {
        to = low > 0 || high < 0 ? -1 : to;
        continue;
      }
      from = std::max(from, std::min(low / step, high / step));
      to = std::min(to, std::max(low / step, high / step));
    }
    if (from <= to && std::max(a[2], a[5]) > height) {
      height = std::max(a[2], a[5]);
      nearest = segment;
    }
  }
  return nearest;
}

void measurePicks(Report& report, const Sizes& sizes, const Route& route) {
  const auto path = makePath(RouteArrays(route));
  View3DHost view(kViewSize);
  show(view, path.Get());
  require(view->AddSelection(path.Get()), "AddSelection");
  constexpr double kPickSize = 5;
  require(view->put_PickSize(kPickSize), "PickSize");
  const test::DrawnCamera camera = view.camera();
  const double reach = kPickSize / 2 * camera.width / camera.pixelWidth;
  std::vector<test::Vec> places;  // on segments all over the route
  constexpr std::size_t kPicks = 16;
  for (std::size_t i = 1; i <= kPicks; ++i) {
    const double* const a = route.points.data() + 3 * (i * 104729 % route.segmentCount());
    places.push_back({(a[0] + a[3]) / 2, (a[1] + a[4]) / 2, (a[2] + a[5]) / 2});
  }
  int picked = 0;
  std::size_t sum = 0;
  const auto pick = [&] {
    for (const test::Vec& place : places) {
      const auto [x, y] = camera.pixelOf(place);
      _variant_t found;
      require(view->getSelectionUnderMouse(static_cast<long>(x), static_cast<long>(y), &found),
              "getSelectionUnderMouse");
      picked += found.vt == (VT_ARRAY | VT_I4) ? 1 : 0;
    }
  };
  const auto linear = [&] {
    for (const test::Vec& place : places) {
      sum += nearestOf(route, place, reach);
    }
  };
  pick();  // makes the boxes
  const auto times = interleave({{pick}, {linear}}, sizes.rounds);
  report.add("path: getSelectionUnderMouse, 16 places", "linear scans of all segments", times[0],
             times[1], 0.02);
  report.note(textOf("picks that hit: %d; sum of the limit's segments: %.0f", picked,
                     static_cast<double>(sum)));
}

void measureLoading(Report& report, const Sizes& sizes, const Route& route) {
  const test::TempFolder folder;
  const auto file = folder.file(L"route.nc");
  {
    std::ofstream out(file, std::ios::binary);
    out << "G21 G90 F600\n";
    char line[80];
    for (std::size_t segment = 0; segment < route.segmentCount(); ++segment) {
      const double* const to = route.points.data() + 3 * (segment + 1);
      std::snprintf(line, sizeof line, "G%d X%.3f Y%.3f Z%.3f\n", route.types[segment] == 0 ? 0 : 1,
                    to[0], to[1], to[2]);
      out << line;
    }
  }
  const auto path = test::createObject<IZYNGLTrajet>(test::kPathProgId);
  double sum = 0;
  const auto plain = [&] {
    const auto bytes = test::readFile(file);
    std::string text(bytes.begin(), bytes.end());
    for (char* at = text.data(); *at != 0;) {
      if (*at >= 'A' && *at <= 'Z') {
        sum += std::strtod(at + 1, &at);
      } else {
        ++at;
      }
    }
  };
  const auto times = interleave(
      {{[&] { require(path->ChargerGCode(test::bstr(file)), "ChargerGCode"); }}, {plain}},
      sizes.rounds);
  report.add("path: ChargerGCode", "read the lines, strtod of every number", times[0], times[1], 2);
  long points = 0;
  path->get_NbPoints(&points);
  report.note(textOf("points: %ld, sum of the limit: %.0f", points, sum));
}

}  // namespace

void measureToolPaths(Report& report, const Sizes& sizes) {
  const Route route = makeRoute(sizes.pathSegments);
  measureMemory(report, route);
  measureFrames(report, sizes, route);
  measurePicks(report, sizes, route);
  measureLoading(report, sizes, route);
}

}  // namespace zyn::bench
