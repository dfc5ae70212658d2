#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "bench/Groups.h"
#include "bench/Pictures.h"
#include "bench/RawScene.h"
#include "support/ArrayVariant_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::bench {

using test::Area;
using test::ComPtr;
using test::createObject;
using test::require;
using test::View2DHost;
using test::View3DHost;

namespace {

constexpr double kAspect = static_cast<double>(kViewSize.cy) / kViewSize.cx;
constexpr int kPanSteps = 20;
constexpr int kZoomSteps = 24;  ///< from the whole to some points
constexpr double kPointsShown = 100;
constexpr int kQueries = 20;  ///< in a round

/// A measurement: waves, and noise upon them. x runs from 0 to 1.
struct Curve {
  std::vector<double> x;
  std::vector<double> y;
};

Curve makeCurve(int count) {
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 0.002);
  Curve curve;
  for (int i = 0; i < count; ++i) {
    const double x = static_cast<double>(i) / count;
    curve.x.push_back(x);
    curve.y.push_back(kAspect * (0.5 + 0.3 * std::sin(20 * x) + 0.1 * std::sin(300 * x)) +
                      noise(random));
  }
  return curve;
}

ComPtr<IZYNPolyligne> makeTrace(const Curve& curve) {
  auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  const _variant_t x = test::doubleArray(curve.x);
  const _variant_t y = test::doubleArray(curve.y);
  require(trace->setPoints(x, y), "setPoints");
  require(trace->setColor(0, 0, 0.5, 1), "setColor");
  return trace;
}

/// A knot around a ring, along which a measurement was made: its points lie less than a pixel
/// apart.
struct SpaceCurve {
  std::vector<double> x, y, z;
};

SpaceCurve makeKnot(int count) {
  constexpr int kTurns = 301;
  SpaceCurve curve;
  for (int i = 0; i < count; ++i) {
    const double around = 14 * 6.283185307179586 * i / count;
    const double turn = kTurns * 6.283185307179586 * i / count;
    const double radius = 3 + std::cos(turn);
    curve.x.push_back(radius * std::cos(around));
    curve.y.push_back(radius * std::sin(around));
    curve.z.push_back(std::sin(turn));
  }
  return curve;
}

/// In a turning view, where nothing that was drawn before helps.
void measureInSpace(Report& report, const Sizes& sizes) {
  const SpaceCurve curve = makeKnot(sizes.points);
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  const _variant_t x = test::doubleArray(curve.x);
  const _variant_t y = test::doubleArray(curve.y);
  const _variant_t z = test::doubleArray(curve.z);
  require(trace->setPoints3D(x, y, z), "setPoints3D");
  require(trace->setColor(0, 0, 0.5, 1), "setColor");
  std::vector<GLfloat> vertices;
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    for (const double coordinate : {curve.x[i], curve.y[i], curve.z[i]}) {
      vertices.push_back(static_cast<GLfloat>(coordinate));
    }
  }
  const auto strip = [&] {
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_LINE_SMOOTH);
    glColor4d(0, 0, 0.5, 1);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, vertices.data());
    glDrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(vertices.size() / 3));
    glPopAttrib();
    glPopClientAttrib();
  };
  const auto [left, right] = std::ranges::minmax(curve.x);
  const auto [front, back] = std::ranges::minmax(curve.y);
  const auto [bottom, top] = std::ranges::minmax(curve.z);
  RawScene scene(strip, {left, right, front, back, bottom, top});
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  show(ours, trace.Get());
  show(raw, scene.dispatch());
  const auto times =
      interleave({{[&] { drawOrbitFrame(ours); }}, {[&] { drawOrbitFrame(raw); }}}, sizes.rounds);
  report.add(textOf("trace in space, orbit frame of %d points", sizes.points),
             "display list of one line strip", times[0], times[1], 1.15);
  noteDifference(report, ours.scene(), raw.scene());
}

/// An outside object that draws the curve as one line strip.
ComPtr<test::ForeignObject> makeStrip(const Curve& curve) {
  std::vector<GLfloat> vertices;
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    vertices.push_back(static_cast<GLfloat>(curve.x[i]));
    vertices.push_back(static_cast<GLfloat>(curve.y[i]));
  }
  auto strip = test::makeForeign<test::ForeignObject>();
  strip->onDraw2D = [vertices = std::move(vertices)](int) {
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT);
    glDisable(GL_LINE_SMOOTH);  // as lines whose width is a whole number of pixels are drawn
    glColor4d(0, 0, 0.5, 1);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, vertices.data());
    glDrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(vertices.size() / 2));
    glPopAttrib();
    glPopClientAttrib();
    return S_OK;
  };
  return strip;
}

Area areaAround(double x, double y, double width) {
  return {x - width / 2, x + width / 2, y - kAspect * width / 2, y + kAspect * width / 2};
}

/// Pans over the curve, half of which is in sight; in an empty view without a trace.
class Panning {
 public:
  explicit Panning(IDispatch* trace) {
    view_.addBox({0, 1, 0, kAspect});
    require(view_->Add(trace, 0), "Add");
    for (int step = 0; step < kPanSteps; ++step) {
      places_.push_back(test::makeArea(areaAround(0.3 + 0.4 * step / kPanSteps, kAspect / 2, 0.5)));
    }
  }
  /// A frame after another one of the same view: what the other views drew before, of which the
  /// strip is large, is no part of it.
  Job job() {
    const auto step = [this] { move(); };
    return {step, step};
  }
  test::Image whole() const {
    view_.look(areaAround(0.5, kAspect / 2, 1));
    return view_.scene();
  }

 private:
  void move() {
    step_ = (step_ + 1) % places_.size();
    require(view_->View(places_[step_].Get(), 0), "View");
    view_.paint();
  }

  View2DHost view_{kViewSize};
  std::vector<ComPtr<IZYNRectangle>> places_;  ///< made beforehand: a host's own objects
  std::size_t step_ = 0;
};

void measurePanning(Report& report, const Sizes& sizes, const Curve& curve, IDispatch* trace) {
  const auto fewPoints = makeTrace(makeCurve(sizes.fewPoints));
  const auto strip = makeStrip(curve);
  Panning ours(trace);
  Panning few(fewPoints.Get());
  Panning raw(strip->dispatch());
  Panning empty(nullptr);
  const auto times = interleave({ours.job(), few.job(), raw.job(), empty.job()}, sizes.rounds);
  report.add(textOf("2D view, pan frame of %d points", sizes.points),
             textOf("the same of %d points", sizes.fewPoints), times[0], times[1], 1.3);
  report.add("that frame", "line strip of all points", times[0], times[2], 0.02);
  report.note(textOf("frame of an empty view: %.3f ms", times[3].median()));
  noteDifference(report, ours.whole(), raw.whole());
}

void measureZooming(Report& report, const Sizes& sizes, const Curve& curve, IDispatch* trace) {
  View2DHost view(kViewSize);
  require(view->Add(trace, 0), "Add");
  const std::size_t middle = curve.x.size() / 2;
  const double smallest = kPointsShown / static_cast<double>(curve.x.size());
  std::vector<Job> frames;
  for (int step = -kZoomSteps; step < kZoomSteps; ++step) {
    const double depth = 1 - std::abs(step) / static_cast<double>(kZoomSteps);
    const Area area = areaAround(curve.x[middle], curve.y[middle], std::pow(smallest, depth));
    frames.push_back({[&view, area] {
      view.look(area);
      view.paint();
    }});
  }
  // The median over the sweeps of each frame: what another program does is no frame's fault.
  const auto times = interleave(frames, sizes.rounds);
  Samples sweep;
  for (const Samples& frame : times) sweep.add(frame.median());
  report.add({.figure = textOf("zoom from %d points to 100 and back, worst", sizes.points),
              .limit = "median frame",
              .value = sweep.worst(),
              .bound = sweep.median(),
              .required = 3,
              .samples = times[0].count()});
}

double squaredDistance(const Curve& curve, std::size_t i, double x, double y) {
  const double dx = curve.x[i + 1] - curve.x[i];
  const double dy = curve.y[i + 1] - curve.y[i];
  const double length = dx * dx + dy * dy;
  const double along = (x - curve.x[i]) * dx + (y - curve.y[i]) * dy;
  const double t = length > 0 ? std::clamp(along / length, 0.0, 1.0) : 0.0;
  const double restX = curve.x[i] + t * dx - x;
  const double restY = curve.y[i] + t * dy - y;
  return restX * restX + restY * restY;
}

double scanForDistance(const Curve& curve, double x, double y) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < curve.x.size(); ++i) {
    least = std::min(least, squaredDistance(curve, i, x, y));
  }
  return std::sqrt(least);
}

double askForDistance(IZYNProfil* profile, IZYNPoint* point, double x, double y) {
  require(point->setCoordonnees(x, y, 0), "setCoordonnees");
  double t = 0;
  ComPtr<IDispatch> nearest;
  ComPtr<IDispatch> asked;
  ComPtr<IDispatch> direction;
  ComPtr<IDispatch> attribute;
  require(profile->PlusProche(point, &t, &nearest, &asked, &direction, &attribute), "PlusProche");
  const auto found = test::queryFor<IZYNPoint>(nearest.Get());
  double foundX = 0;
  double foundY = 0;
  found->get_x(&foundX);
  found->get_y(&foundY);
  return std::hypot(foundX - x, foundY - y);
}

/// Asks for the points nearest to some that are at most `spread` from the curve along each axis.
void measureNearest(Report& report, const Sizes& sizes, const Curve& curve, IDispatch* trace,
                    const char* name, double spread) {
  const auto profile = test::queryFor<IZYNProfil>(trace);
  const auto point = createObject<IZYNPoint>(L"ZYNModeleGeom.Point");
  std::mt19937 random(1);
  std::uniform_int_distribution<std::size_t> place(0, curve.x.size() - 1);
  std::uniform_real_distribution<double> offset(-spread, spread);
  std::array<std::array<double, 2>, kQueries> asked{};
  const auto choose = [&] {
    for (auto& [x, y] : asked) {
      const std::size_t at = place(random);
      x = curve.x[at] + offset(random);
      y = curve.y[at] + offset(random);
    }
  };
  double ours = 0;
  double scanned = 0;
  double worst = 0;
  const auto ask = [&] {
    for (const auto& [x, y] : asked) ours = askForDistance(profile.Get(), point.Get(), x, y);
  };
  const auto scan = [&] { scanned = scanForDistance(curve, asked.back()[0], asked.back()[1]); };
  const auto compare = [&] { worst = std::max(worst, std::abs(ours - scanned)); };
  const auto times = interleave({{ask, choose}, {scan}, {compare}}, sizes.rounds);
  report.add({.figure = textOf("nearest point, %s", name),
              .limit = "linear scan",
              .value = times[0].median() / kQueries,
              .bound = times[1].median(),
              .required = 0.02,
              .samples = times[0].count()});
  report.note(textOf("largest difference of the distances found: %g", worst));
}

}  // namespace

void measureTraces(Report& report, const Sizes& sizes) {
  const Curve curve = makeCurve(sizes.points);
  const auto trace = makeTrace(curve);
  measurePanning(report, sizes, curve, trace.Get());
  measureZooming(report, sizes, curve, trace.Get());
  measureNearest(report, sizes, curve, trace.Get(), "far zoom", 0.1);
  measureNearest(report, sizes, curve, trace.Get(), "near zoom", 10.0 / sizes.points);
  measureInSpace(report, sizes);
}

}  // namespace zyn::bench
