#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "support/ArrayVariant_win.h"
#include "support/View2DHost_win.h"

namespace zyn::bench {

using test::ComPtr;
using test::createObject;
using test::queryFor;
using test::require;
using test::View2DHost;

namespace {

constexpr int kManySeries = 100;
constexpr int kPanPixels = 16;
constexpr int kPanFrames = 12;  ///< in one direction
constexpr int kMapSide = 2000;  ///< cells
constexpr int kQueries = 20;    ///< in a round
constexpr double kNoise = 0.002;

/// A measurement: waves, and noise upon them. x runs from 0 to 1.
struct Curve {
  explicit Curve(int count, unsigned seed = 1, double start = 0) {
    std::mt19937 random(seed);
    std::normal_distribution<double> noise(0, kNoise);
    for (int i = 0; i < count; ++i) {
      x.push_back(start + static_cast<double>(i) / count);
      y.push_back(0.5 + 0.3 * std::sin(20 * x.back() + seed) + 0.1 * std::sin(300 * x.back()) +
                  noise(random));
    }
  }
  std::vector<double> x;
  std::vector<double> y;
};

ComPtr<IZYNSerie> makeSeries(const Curve& curve) {
  auto series = createObject<IZYNSerie>(L"ZYNVue.ZYNSerie");
  const _variant_t x = test::doubleArray(curve.x);
  const _variant_t y = test::doubleArray(curve.y);
  require(series->setPoints(x, y), "setPoints");
  return series;
}

/// A 2D view as a plot.
class Plot {
 public:
  Plot() {
    ComPtr<IDispatch> graph;
    require(queryFor<IZYNVue2D2>(view_.get())->get_Graphe(&graph), "Graphe");
    graph_ = queryFor<IZYNGraphe>(graph.Get());
    require(graph_->put_Actif(VARIANT_TRUE), "Actif");
    bottom_ = axis(0);
    left_ = axis(1);
  }

  void add(IDispatch* object) const {
    const _variant_t leftOut(DISP_E_PARAMNOTFOUND, VT_ERROR);
    require(graph_->Ajouter(object, leftOut, leftOut), "Ajouter");
  }
  void addCurves(int count, int points) const {
    for (int i = 0; i < count; ++i) add(makeSeries(Curve(points, static_cast<unsigned>(i))).Get());
  }
  void show(double xMin, double xMax, double yMin, double yMax) const {
    require(bottom_->setPlage(xMin, xMax), "setPlage");
    require(left_->setPlage(yMin, yMax), "setPlage");
  }
  void paint() const { view_.paint(); }
  const View2DHost& view() const { return view_; }
  IZYNGraphe* graph() const { return graph_.Get(); }
  ComPtr<IZYNAxe> axis(long side) const {
    ComPtr<IDispatch> found;
    require(graph_->Axe(side, &found), "Axe");
    return queryFor<IZYNAxe>(found.Get());
  }
  /// Pixels from end to end of the bottom axis.
  double width() const {
    double from = 0;
    double to = 0;
    double min = 0;
    double max = 0;
    bottom_->get_Minimum(&min);
    bottom_->get_Maximum(&max);
    require(bottom_->Pixel(min, &from), "Pixel");
    require(bottom_->Pixel(max, &to), "Pixel");
    return to - from;
  }

 private:
  View2DHost view_{kViewSize};
  ComPtr<IZYNGraphe> graph_;
  ComPtr<IZYNAxe> bottom_;
  ComPtr<IZYNAxe> left_;
};

/// Pans to and fro as a mouse does, by whole pixels; or zooms. Each frame comes after another one
/// of the same view: what the other views drew before is no part of it.
class Moving {
 public:
  Moving(const Plot& plot, double left, double width, double height)
      : plot_(plot), left_(left), width_(width), height_(height) {
    plot_.show(left_, left_ + width_, 0, height_);
    plot_.paint();
    pixel_ = width_ / plot_.width();
  }
  Job pan() {
    const auto step = [this] {
      step_ = (step_ + 1) % (2 * kPanFrames);
      const double by = pixel_ * kPanPixels * (kPanFrames - std::abs(kPanFrames - step_));
      plot_.show(left_ + by, left_ + by + width_, 0, height_);
      plot_.paint();
    };
    return {step, step};
  }
  Job zoom() {
    const auto step = [this] {
      step_ = (step_ + 1) % (2 * kPanFrames);
      const double by = std::pow(1.1, std::abs(kPanFrames - step_));
      plot_.show(left_, left_ + width_ / by, 0, height_);
      plot_.paint();
    };
    return {step, step};
  }

 private:
  const Plot& plot_;
  double left_;
  double width_;
  double height_;
  double pixel_ = 0;
  int step_ = 0;
};

void measureOneSeries(Report& report, const Sizes& sizes, const Plot& many) {
  const Plot few;
  few.addCurves(1, sizes.fewPoints);
  Moving ours(many, 0.1, 0.5, 1);
  Moving bound(few, 0.1, 0.5, 1);
  const auto times = interleave({ours.pan(), bound.pan(), ours.zoom(), bound.zoom()}, sizes.rounds);
  report.add(textOf("series of %d points, pan frame", sizes.seriesPoints),
             textOf("of %d points", sizes.fewPoints), times[0], times[1], 1.3);
  report.add("zoom frame", textOf("of %d points", sizes.fewPoints), times[2], times[3], 1.3);
}

void measureManySeries(Report& report, const Sizes& sizes) {
  const int points = sizes.seriesPoints / kManySeries;
  const Plot many;
  const Plot few;
  many.addCurves(kManySeries, points);
  few.addCurves(kManySeries, points / 100);
  Moving ours(many, 0.1, 0.5, 1);
  Moving bound(few, 0.1, 0.5, 1);
  const auto times = interleave({ours.pan(), bound.pan()}, sizes.rounds);
  report.add(textOf("%d series of %d points, pan frame", kManySeries, points),
             textOf("of %d points", points / 100), times[0], times[1], 1.3);
}

/// Appends to a series that keeps as many points as it has, in a plot that follows it.
void measureAppending(Report& report, const Sizes& sizes) {
  const int count = sizes.seriesPoints;
  const int more = count / 1000;
  const Plot growing;
  const Plot panned;
  const auto series = makeSeries(Curve(count));
  require(series->put_Capacite(count), "Capacite");
  growing.add(series.Get());
  panned.addCurves(1, count);
  double end = 1;
  growing.show(end - 0.5, end, 0, 1);
  _variant_t x;
  _variant_t y;
  const auto prepare = [&] {
    Curve next(more, 1, end);
    for (int i = 0; i < more; ++i) {
      next.x[static_cast<std::size_t>(i)] = end + static_cast<double>(i) / count;
    }
    x = test::doubleArray(next.x);
    y = test::doubleArray(next.y);
    end += static_cast<double>(more) / count;
    growing.paint();
  };
  const auto append = [&] {
    require(series->AjouterPoints(x, y), "AjouterPoints");
    growing.show(end - 0.5, end, 0, 1);
    growing.paint();
  };
  Moving bound(panned, 0.1, 0.5, 1);
  const auto times = interleave({{append, prepare}, bound.pan()}, sizes.rounds);
  report.add(textOf("%d points appended to a ring of %d, and the frame", more, count),
             "a pan frame", times[0], times[1], 1.3);
}

/// Nearest on the screen, of which a unit of each axis has so many pixels.
double scanForDistance(const Curve& curve, double x, double y, double sx, double sy) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    const double dx = sx * (curve.x[i] - x);
    const double dy = sy * (curve.y[i] - y);
    least = std::min(least, dx * dx + dy * dy);
  }
  return std::sqrt(least);
}

double pixelsOfUnit(IZYNAxe* axis) {
  double from = 0;
  double to = 0;
  require(axis->Pixel(0.25, &from), "Pixel");
  require(axis->Pixel(0.75, &to), "Pixel");
  return 2 * std::abs(to - from);
}

void measureNearest(Report& report, const Sizes& sizes, const Plot& plot) {
  ComPtr<IDispatch> item;
  require(plot.graph()->Item(0, &item), "Item");
  const auto series = queryFor<IZYNSerie>(item.Get());
  const Curve curve(sizes.seriesPoints, 0);
  plot.show(0, 1, 0, 1);
  const double sx = pixelsOfUnit(plot.axis(0).Get());
  const double sy = pixelsOfUnit(plot.axis(1).Get());
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, 1);
  std::array<std::array<double, 2>, kQueries> asked{};
  double found = 0;
  double scanned = 0;
  double worst = 0;
  const auto choose = [&] {
    for (auto& at : asked) at = {place(random), place(random)};
  };
  const auto ask = [&] {
    for (const auto& [x, y] : asked) {
      _variant_t answer;
      require(series->PlusProche(x, y, &answer), "PlusProche");
      found = test::doublesIn(answer).at(3);
    }
  };
  const auto scan = [&] {
    scanned = scanForDistance(curve, asked.back()[0], asked.back()[1], sx, sy);
  };
  const auto compare = [&] { worst = std::max(worst, std::abs(found - scanned)); };
  const auto times = interleave({{ask, choose}, {scan}, {compare}}, sizes.rounds);
  report.add({.figure = "PlusProche of that series",
              .limit = "linear scan",
              .value = times[0].median() / kQueries,
              .bound = times[1].median(),
              .required = 0.005,
              .samples = times[0].count()});
  report.note(textOf("largest difference of the distances found: %g pixels", worst));
}

/// Of a map.
_variant_t waves() {
  _variant_t table = test::doubleTable(kMapSide, kMapSide);
  void* values = nullptr;
  require(SafeArrayAccessData(V_ARRAY(&table), &values), "SafeArrayAccessData");
  for (int i = 0; i < kMapSide * kMapSide; ++i) {
    static_cast<double*>(values)[i] = std::sin(0.01 * (i % kMapSide)) * std::cos(1e-5 * i);
  }
  SafeArrayUnaccessData(V_ARRAY(&table));
  return table;
}

/// A map, and an outside object in another plot that draws as many pixels.
void measureMap(Report& report, const Sizes& sizes) {
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  require(map->setValeurs(waves()), "setValeurs");
  const Plot ours;
  ours.add(map.Get());
  const Plot raw;
  constexpr double kShown = kMapSide / 2.0;
  Moving moving(ours, 100, kShown, kShown);
  Moving bound(raw, 100, kShown, kShown);
  _variant_t zone;
  require(raw.graph()->get_ZoneTrace(&zone), "ZoneTrace");
  const std::vector<double> area = test::doublesIn(zone);
  const auto width = static_cast<GLsizei>(area[2] - area[0]);
  const auto height = static_cast<GLsizei>(area[3] - area[1]);
  const auto painter = test::makeForeign<test::ForeignObject>();
  painter->onDraw2D = [&,
                       pixels = std::vector<GLubyte>(
                           std::size_t{4} * static_cast<std::size_t>(width * height), 128)](int) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushMatrix();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, kViewSize.cx, 0, kViewSize.cy, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glRasterPos2d(area[0], kViewSize.cy - area[3]);
    glDisable(GL_DEPTH_TEST);
    glDrawPixels(width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
    return S_OK;
  };
  require(raw.view()->Add(painter->dispatch(), 0), "Add");
  const auto times = interleave({moving.pan(), bound.pan()}, sizes.rounds);
  report.add(textOf("map of %d x %d, pan frame", kMapSide, kMapSide),
             "a plot in which glDrawPixels draws the visible part", times[0], times[1], 1.3);
}

}  // namespace

void measureGraphs(Report& report, const Sizes& sizes) {
  {
    const Plot one;
    one.addCurves(1, sizes.seriesPoints);
    measureOneSeries(report, sizes, one);
    measureNearest(report, sizes, one);
  }
  measureAppending(report, sizes);
  measureManySeries(report, sizes);
  measureMap(report, sizes);
}

}  // namespace zyn::bench
