#include <vector>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "bench/TriangleMesh.h"
#include "support/LateBinding_win.h"

namespace zyn::bench {

using test::require;
using test::View3DHost;

namespace {

constexpr double kMostGrowth = 1.15;  ///< of the time for ten times as many objects

constexpr long kPickX = kViewSize.cx / 2;
constexpr long kPickY = kViewSize.cy / 6;

double drawnTwice(const View3DHost& view) {
  showAll(view);
  drawOrbitFrame(view);
  drawOrbitFrame(view);
  return residentBytes();
}

/// Bytes of the process for each triangle of a display list.
double bytesOfList(const Mesh& mesh) {
  View3DHost view(kViewSize);
  RawScene nothing([] {}, boundsOf(mesh));
  require(view->Add(nothing.dispatch(), 0), "Add");
  const double before = drawnTwice(view);
  RawScene scene([&] { drawRaw(mesh); }, boundsOf(mesh));
  require(view->Add(scene.dispatch(), 0), "Add");
  return (drawnTwice(view) - before) / static_cast<double>(mesh.size());
}

void measureMemory(Report& report, const Mesh& mesh) {
  View3DHost view(kViewSize);
  const Mesh sample(mesh.begin(), mesh.begin() + 100);
  const Triangles first = createTriangles(sample);
  addAll(view, first);
  const double before = drawnTwice(view);
  const Triangles triangles = createTriangles(mesh);
  addAll(view, triangles);
  const auto count = static_cast<double>(mesh.size());
  const auto addRow = [&](const char* figure, const char* limit, double bytes, double most) {
    report.add({.figure = figure,
                .limit = limit,
                .value = (bytes - before) / count,
                .bound = most,
                .unit = "bytes"});
  };
  const auto title = textOf("memory of each of %d triangles, added", static_cast<int>(count));
  addRow(title.c_str(), "200 bytes", residentBytes(), 200);
  addRow("the same, drawn twice", "500 bytes", drawnTwice(view), 500);
}

/// A scene of triangles in a view, and what a host does with it.
class Stage {
 public:
  explicit Stage(int count) : mesh_(makeTorus(count, Look::kColours)) {}

  void create() { triangles_ = createTriangles(mesh_); }
  void add() { addAll(view_, triangles_); }
  void showAll() { bench::showAll(view_); }
  void empty() { require(view_->RemoveAll(), "RemoveAll"); }
  void letGo() { triangles_.clear(); }
  void paint() { view_.paint(); }
  void orbit() { drawOrbitFrame(view_); }

  void select() {
    for (const auto& triangle : triangles_) {
      require(view_->AddSelection(triangle.Get()), "AddSelection");
    }
  }
  void turn() { require(view_->RotateH(1), "RotateH"); }
  void pick() {
    _variant_t found;
    require(view_->getSelectionUnderMouse(kPickX, kPickY, &found), "getSelectionUnderMouse");
  }
  void meet() {
    const _variant_t point =
        test::callMethod(view_.get(), L"getPointSurface", {kPickX, kPickY}).value;
    require(point.vt == (VT_ARRAY | VT_R8) ? S_OK : E_FAIL, "a surface");
  }

  /// Another triangle, far away from the one before.
  void choose() { place_ = (place_ + triangles_.size() / 3 + 17) % triangles_.size(); }
  void change() {
    const test::Vec& corner = mesh_[place_].points[0];
    require(chosen()->setPoint(0, corner.x, corner.y, corner.z + 0.01), "setPoint");
  }
  void remove() { require(view_->Remove(chosen()), "Remove"); }

 private:
  IZYNGLTriangle* chosen() const { return triangles_[place_].Get(); }

  const Mesh mesh_;
  View3DHost view_{kViewSize};
  Triangles triangles_;
  std::size_t place_ = 0;
};

/// Two stages, one with ten times as many triangles, that do the same in turn.
class Growth {
 public:
  Growth(Report& report, const Sizes& sizes)
      : report_(report), sizes_(sizes), few_(sizes.triangles), many_(kTimes * sizes.triangles) {}

  using Action = void (Stage::*)();
  using Actions = std::vector<Action>;

  void measure(const char* figure, const Actions& timed, const Actions& before = {}) {
    const auto times =
        interleave({jobOf(many_, timed, before), jobOf(few_, timed, before)}, sizes_.rounds);
    report_.add({.figure = figure,
                 .limit = textOf("%d times that of %d", kTimes, sizes_.triangles),
                 .value = times[0].median(),
                 .bound = kTimes * times[1].median(),
                 .required = kMostGrowth,
                 .samples = times[0].count()});
  }

  /// Shows all again, and has all picked among.
  void prepare() {
    for (Stage* const stage : {&few_, &many_}) {
      stage->add();
      stage->select();
    }
  }

 private:
  static constexpr int kTimes = 10;

  static Job jobOf(Stage& stage, const Actions& timed, const Actions& before) {
    const auto all = [&stage](const Actions& actions) {
      return [&stage, actions] {
        for (const Action action : actions) {
          (stage.*action)();
        }
      };
    };
    return {all(timed), all(before)};
  }

  Report& report_;
  const Sizes& sizes_;
  Stage few_;
  Stage many_;
};

}  // namespace

void measureMillion(Report& report, const Sizes& sizes) {
  const int count = 10 * sizes.triangles;
  const Mesh mesh = makeTorus(count, Look::kColours);
  measureMemory(report, mesh);
  report.note(textOf("one display list of them alone: %.0f bytes each", bytesOfList(mesh)));
  Growth growth(report, sizes);
  const auto title = textOf("create, fill and Add %d triangles", count);
  growth.measure(title.c_str(), {&Stage::create, &Stage::add}, {&Stage::empty, &Stage::letGo});
  growth.measure("first frame", {&Stage::paint},
                 {&Stage::empty, &Stage::paint, &Stage::add, &Stage::showAll});
  growth.measure("orbit frame", {&Stage::orbit});
  growth.measure("one vertex changed, next frame", {&Stage::change, &Stage::orbit},
                 {&Stage::choose});
  growth.measure("one object removed, next frame", {&Stage::remove, &Stage::orbit},
                 {&Stage::choose});
  growth.measure("RemoveAll", {&Stage::empty}, {&Stage::empty, &Stage::add});
  growth.prepare();
  growth.measure("pick, camera just moved", {&Stage::pick}, {&Stage::showAll, &Stage::turn});
  growth.measure("surface under a pixel", {&Stage::meet}, {&Stage::showAll, &Stage::turn});
}

}  // namespace zyn::bench
