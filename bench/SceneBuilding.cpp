#include <algorithm>
#include <functional>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "bench/TriangleMesh.h"

namespace zyn::bench {

using test::OffscreenScene;
using test::require;
using test::View3DHost;

namespace {

/// 21 doubles, a reference and a mode.
constexpr double kBytesOfTriangle = 21 * 8 + 8;

constexpr double kNanoseconds = 1e6;  ///< in a millisecond

/// Milliseconds after which a series of removals ends: its cost shows long before.
constexpr double kLongestRemoval = 2000;

void measureMemory(Report& report, const Mesh& mesh) {
  View3DHost view(kViewSize);
  const Mesh sample(mesh.begin(), mesh.begin() + 100);
  const Triangles first = createTriangles(sample);
  addAll(view, first);
  showAll(view);
  drawOrbitFrame(view);  // what the first frame of any scene takes is not a triangle's
  const double before = residentBytes();
  const Triangles triangles = createTriangles(mesh);
  addAll(view, triangles);
  const double added = residentBytes();
  drawOrbitFrame(view);
  drawOrbitFrame(view);
  const double drawn = residentBytes();
  const auto count = static_cast<double>(mesh.size());
  report.add({.figure = "memory of an added and drawn triangle",
              .limit = "21 doubles and 8 bytes",
              .value = (drawn - before) / count,
              .bound = kBytesOfTriangle,
              .unit = "bytes",
              .required = 3});
  report.note(textOf("of these before the first frame: %.0f bytes", (added - before) / count));
}

/// Creates and fills the mesh's objects, and adds them to a view if there is one.
class Creation {
 public:
  Creation(const Mesh& mesh, const View3DHost* view) : mesh_(mesh), view_(view) {}

  Job job() {
    return {[this] { run(); }, [this] { clear(); }};
  }

 private:
  void run() {
    triangles_ = createTriangles(mesh_);
    if (view_) addAll(*view_, triangles_);
  }
  void clear() {
    if (view_) require((*view_)->RemoveAll(), "RemoveAll");
    triangles_.clear();
  }

  const Mesh& mesh_;
  const View3DHost* view_;
  Triangles triangles_;
};

void measureAdding(Report& report, const Sizes& sizes, const Mesh& mesh, const Mesh& smallMesh) {
  const View3DHost many(kViewSize);
  const View3DHost few(kViewSize);
  Creation added(mesh, &many);
  Creation kept(mesh, nullptr);
  Creation fewAdded(smallMesh, &few);
  const auto times = interleave({added.job(), kept.job(), fewAdded.job()}, sizes.rounds);
  report.add("create, fill and Add all triangles", "create, fill and keep them", times[0], times[1],
             1.5);
  report.add({.figure = textOf("the same, each of %d", sizes.triangles),
              .limit = textOf("each of %d", sizes.fewTriangles),
              .value = times[0].median() * kNanoseconds / sizes.triangles,
              .bound = times[2].median() * kNanoseconds / sizes.fewTriangles,
              .unit = "ns",
              .required = 1.2,
              .samples = times[0].count()});
}

/// Removes all objects from a view one by one.
class Removal {
 public:
  Removal(const Triangles& triangles, bool isReversed)
      : triangles_(triangles), isReversed_(isReversed) {}

  Job job() {
    return {[this] { run(); }, [this] { fill(); }};
  }

  /// Milliseconds that one took, in the mean over all that were removed, in each round.
  const Samples& each() const { return each_; }
  /// How many were removed in the last round.
  std::size_t removed() const { return removed_; }

 private:
  void fill() {
    require(view_->RemoveAll(), "RemoveAll");
    addAll(view_, triangles_);
  }
  void removeNext() {
    const std::size_t place = isReversed_ ? triangles_.size() - 1 - removed_ : removed_;
    require(view_->Remove(triangles_[place].Get()), "Remove");
    ++removed_;
  }
  void run() {
    constexpr std::size_t kBatch = 100;
    double elapsed = 0;
    removed_ = 0;
    while (removed_ < triangles_.size() && elapsed < kLongestRemoval) {
      const std::size_t end = std::min(removed_ + kBatch, triangles_.size());
      elapsed += millisecondsOf([&] {
        while (removed_ < end) removeNext();
      });
    }
    each_.add(elapsed / static_cast<double>(removed_));
  }

  View3DHost view_{kViewSize};
  Triangles triangles_;
  bool isReversed_;
  std::size_t removed_ = 0;
  Samples each_;
};

void measureRemoving(Report& report, const Sizes& sizes, const Triangles& triangles) {
  const Triangles fewTriangles(triangles.begin(), triangles.begin() + sizes.fewTriangles);
  for (const bool isReversed : {false, true}) {
    Removal many(triangles, isReversed);
    Removal few(fewTriangles, isReversed);
    interleave({many.job(), few.job()}, sizes.rounds);
    report.add({.figure = textOf("Remove in %s order, each of %d",
                                 isReversed ? "reverse" : "insertion", sizes.triangles),
                .limit = textOf("each of %d", sizes.fewTriangles),
                .value = many.each().median() * kNanoseconds,
                .bound = few.each().median() * kNanoseconds,
                .unit = "ns",
                .required = 1.5,
                .samples = many.each().count()});
    if (many.removed() < triangles.size()) {
      report.note(
          textOf("stopped after %d of %d", static_cast<int>(many.removed()), sizes.triangles));
    }
  }
}

void measureFirstFrame(Report& report, const Sizes& sizes, const Mesh& mesh,
                       const Triangles& triangles) {
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  RawScene rawScene([&] { drawRaw(mesh); }, boundsOf(mesh));
  require(raw->Add(rawScene.dispatch(), 0), "Add");
  showAll(raw);
  const auto build = [&] {
    require(ours->RemoveAll(), "RemoveAll");
    ours.paint();
    addAll(ours, triangles);
    showAll(ours);
  };
  const auto forget = [&] {
    rawScene.forget();
    raw.paint();
  };
  const auto times =
      interleave({{[&] { ours.paint(); }, build}, {[&] { raw.paint(); }, forget}}, sizes.rounds);
  report.add("first frame after building the scene", "compile and call one display list", times[0],
             times[1], 1.3);
}

/// Goes from one triangle of a mesh to another, each time far away.
class Chooser {
 public:
  Chooser(const Mesh& mesh, const Triangles& triangles) : mesh_(mesh), triangles_(triangles) {}

  void next() { place_ = (place_ + mesh_.size() / 3 + 17) % mesh_.size(); }
  IZYNGLTriangle* object() const { return triangles_[place_].Get(); }
  HRESULT changeColour() const { return object()->setColor(0.9, 0.5, 0.1, 1); }
  HRESULT changeVertex() const {
    const test::Vec& vertex = mesh_[place_].points[0];
    return object()->setPoint(0, vertex.x, vertex.y, vertex.z + 0.01);
  }

 private:
  const Mesh& mesh_;
  const Triangles& triangles_;
  std::size_t place_ = 0;
};

void measureEdits(Report& report, const Sizes& sizes, const Mesh& mesh,
                  const Triangles& triangles) {
  View3DHost view(kViewSize);
  addAll(view, triangles);
  showAll(view);
  Chooser chosen(mesh, triangles);
  const auto change = [&](const std::function<HRESULT()>& edit) {
    return Job{[&view, edit] {
                 require(edit(), "an edit");
                 drawOrbitFrame(view);
               },
               [&] { chosen.next(); }};
  };
  const Job steady{[&] { drawOrbitFrame(view); }};
  // What is removed is added again in the same round: the scene keeps its size.
  const Job addedAgain{[&] {
    require(view->Add(chosen.object(), 0), "Add");
    drawOrbitFrame(view);
  }};
  const auto times = interleave({steady, change([&] { return chosen.changeColour(); }),
                                 change([&] { return chosen.changeVertex(); }),
                                 change([&] { return view->Remove(chosen.object()); }), addedAgain},
                                sizes.rounds);
  report.add("one colour changed, next frame", "steady frame", times[1], times[0], 1.3);
  report.add("one vertex changed, next frame", "steady frame", times[2], times[0], 1.3);
  report.add("one object removed, next frame", "steady frame", times[3], times[0], 1.3);
  report.add("one object added, next frame", "steady frame", times[4], times[0], 1.3);
}

/// The same with pictures of a bitmap context, which are drawn and, without a file name, not kept.
void measurePictures(Report& report, const Sizes& sizes, const Mesh& mesh,
                     const Triangles& triangles) {
  OffscreenScene ours(kViewSize.cx, kViewSize.cy);
  OffscreenScene raw(kViewSize.cx, kViewSize.cy);
  RawScene rawScene([&] { drawRaw(mesh); }, boundsOf(mesh));
  raw.add(rawScene.dispatch());
  const auto draw = [](OffscreenScene& scene) {
    require(scene->CreateBitmap(nullptr), "CreateBitmap");
  };
  const auto build = [&] {
    require(ours->RemoveAll(), "RemoveAll");
    draw(ours);
    ours.addAll(triangles);
  };
  const auto forget = [&] {
    rawScene.forget();
    draw(raw);
  };
  Chooser chosen(mesh, triangles);
  const auto change = [&] {
    chosen.next();
    require(chosen.changeColour(), "setColor");
    draw(ours);
  };
  const auto drawOurs = [&] { draw(ours); };
  const auto drawLimit = [&] { draw(raw); };
  const auto times =
      interleave({{drawOurs, build}, {drawLimit, forget}, {drawOurs}, {change}}, sizes.rounds);
  report.add("3D bitmap context, first picture", "compile and call one display list", times[0],
             times[1], 1.3);
  report.add("3D bitmap context, one colour changed, next picture", "steady picture", times[3],
             times[2], 1.3);
}

}  // namespace

void measureSceneBuilding(Report& report, const Sizes& sizes) {
  const Mesh mesh = makeTorus(sizes.triangles, Look::kColours);
  measureMemory(report, mesh);
  measureAdding(report, sizes, mesh, makeTorus(sizes.fewTriangles, Look::kColours));
  const Triangles triangles = createTriangles(mesh);
  measureRemoving(report, sizes, triangles);
  measureFirstFrame(report, sizes, mesh, triangles);
  measureEdits(report, sizes, mesh, triangles);
  measurePictures(report, sizes, mesh, triangles);
}

}  // namespace zyn::bench
