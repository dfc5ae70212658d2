#include <cmath>

#include "bench/Groups.h"
#include "bench/Pictures.h"
#include "bench/RawScene.h"
#include "bench/TriangleMesh.h"
#include "support/Groups_win.h"

namespace zyn::bench {

using test::require;
using test::View3DHost;

namespace {

/// A group of all triangles, alone in a view.
class Assembly {
 public:
  explicit Assembly(const Triangles& triangles) {
    for (const auto& triangle : triangles) test::addTo(group.Get(), triangle.Get());
    require(view->Add(group.Get(), 0), "Add");
    showAll(view);
  }

  void show(bool isShown) {
    require(group->put_Visible(isShown ? VARIANT_TRUE : VARIANT_FALSE), "Visible");
    view.paint();
  }
  void place(const test::Matrix16& matrix) {
    test::move(group.Get(), matrix);
    view.paint();
  }

  test::ComPtr<IZYNGroupe> group = test::makeGroup();
  View3DHost view{kViewSize};
};

}  // namespace

void measureAssemblies(Report& report, const Sizes& sizes) {
  const Mesh mesh = makeTorus(sizes.triangles, Look::kColours);
  const Triangles triangles = createTriangles(mesh);
  Assembly assembly(triangles);
  View3DHost plain(kViewSize);
  addAll(plain, triangles);
  showAll(plain);
  int step = 0;
  const auto next = [&] { return 1e-4 * (++step % 100); };
  const auto times = interleave({{[&] { assembly.view.paint(); }},
                                 {[&] { plain.paint(); }},
                                 {[&] { assembly.place(test::translation(next(), 0, 0)); }},
                                 {[&] {
                                   assembly.place(test::rotation({1, 2, 3}, next()));
                                 }},
                                 {[&] { assembly.show(false); }},
                                 {[&] { assembly.show(true); }}},
                                sizes.rounds);
  report.add("a group's steady frame", "the same triangles in the view itself", times[0], times[1],
             1.05);
  constexpr const char* kSteady = "its steady frame";
  report.add("the group moved, and the next frame", kSteady, times[2], times[0], 1.1);
  report.add("turned, and the next frame", kSteady, times[3], times[0], 1.1);
  report.add("hidden, and the next frame", kSteady, times[4], times[0], 1.1);
  report.add("shown again, and the next frame", kSteady, times[5], times[0], 1.1);
  test::move(assembly.group.Get(), test::kUnmoved);
  noteDifference(report, assembly.view.scene(), plain.scene());
}

}  // namespace zyn::bench
