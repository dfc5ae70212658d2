#include <array>

#include "bench/Groups.h"
#include "bench/Pictures.h"
#include "bench/RawScene.h"
#include "bench/TriangleMesh.h"

namespace zyn::bench {

using test::OffscreenScene;
using test::require;
using test::View3DHost;

namespace {

struct Case {
  Look look;
  const char* name;
  double required;
};
constexpr std::array<Case, 3> kCases = {{{Look::kColours, "own colours", 1.15},
                                         {Look::kSomeTransparent, "10 % transparent", 1.25},
                                         {Look::kMaterials, "full materials", 1.25}}};

void measureView(Report& report, const Sizes& sizes, const Case& chosen, const Triangles& triangles,
                 RawScene& rawScene) {
  View3DHost ours(kViewSize);
  View3DHost raw(kViewSize);
  const View3DHost empty(kViewSize);
  addAll(ours, triangles);
  require(raw->Add(rawScene.dispatch(), 0), "Add");
  showAll(ours);
  showAll(raw);
  const auto times = interleave({{[&] { drawOrbitFrame(ours); }},
                                 {[&] { drawOrbitFrame(raw); }},
                                 {[&] { ours.paint(); }},
                                 {[&] { empty.paint(); }}},
                                sizes.rounds);
  report.add(textOf("3D view, orbit frame, %s", chosen.name), "one display list", times[0],
             times[1], chosen.required);
  if (chosen.look == Look::kColours) {
    report.add("3D view, repaint with nothing changed", "orbit frame", times[2], times[0], 1.05);
    report.note(textOf("frame of an empty view: %.3f ms", times[3].median()));
  }
  noteDifference(report, ours.scene(), raw.scene());
}

void measureBitmapContext(Report& report, const Sizes& sizes, const Case& chosen,
                          const Triangles& triangles, RawScene& rawScene) {
  OffscreenScene ours(kViewSize.cx, kViewSize.cy);
  OffscreenScene raw(kViewSize.cx, kViewSize.cy);
  ours.addAll(triangles);
  raw.add(rawScene.dispatch());
  // Without a file name the picture is drawn, and nothing else done.
  const auto times =
      interleave({{[&] { ours->CreateBitmap(nullptr); }}, {[&] { raw->CreateBitmap(nullptr); }}},
                 sizes.rounds);
  report.add(textOf("3D bitmap context, picture, %s", chosen.name), "one display list", times[0],
             times[1], chosen.required);
  noteDifference(report, ours.render(), raw.render());
}

}  // namespace

void measureSceneFrames(Report& report, const Sizes& sizes) {
  for (const Case& chosen : kCases) {
    const Mesh mesh = makeTorus(sizes.triangles, chosen.look);
    const Triangles triangles = createTriangles(mesh);
    const auto draw = [&] { drawRaw(mesh); };
    RawScene inView(draw, boundsOf(mesh));
    measureView(report, sizes, chosen, triangles, inView);
    RawScene inPicture(draw, boundsOf(mesh));
    measureBitmapContext(report, sizes, chosen, triangles, inPicture);
  }
}

}  // namespace zyn::bench
