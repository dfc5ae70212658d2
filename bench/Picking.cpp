#include <algorithm>
#include <cmath>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "common/ClassObject_com.h"
#include "support/Texts_win.h"

namespace zyn::bench {

using test::ComPtr;
using test::require;
using test::Vec;
using test::View3DHost;

namespace {

constexpr double kCell = 10;        ///< model units between labels
constexpr long kTextHeight = 9;     ///< pixels
constexpr double kPanStep = 0.001;  ///< model units
constexpr int kPickX = kViewSize.cx / 2 + 3;
constexpr int kPickY = kViewSize.cy / 2 + 2;

/// A field of labels over the view, each nearer to the viewer than the one before.
class Field {
 public:
  explicit Field(int count)
      : columns_(static_cast<int>(std::ceil(std::sqrt(count * 4.0 / 3)))), count_(count) {}

  int count() const { return count_; }
  Vec place(int label) const {
    return {kCell * (label % columns_ + 0.5), kCell * (static_cast<double>(label / columns_) + 0.5),
            1e-4 * label};
  }
  test::Bounds bounds() const {
    return {0,  kCell * columns_, 0, kCell * std::ceil(static_cast<double>(count_) / columns_),
            -1, 1 + 1e-4 * count_};
  }

 private:
  int columns_;
  int count_;
};

std::vector<ComPtr<IZYNGLTexte>> makeLabels(const Field& field) {
  const host::ClassObject factory(test::kTextProgId);
  std::vector<ComPtr<IZYNGLTexte>> labels;
  for (int i = 0; i < field.count(); ++i) {
    auto label = factory.create<IZYNGLTexte>();
    const Vec at = field.place(i);
    test::setText(label.Get(), std::to_wstring(i));
    label->put_HauteurPixels(kTextHeight);
    label->setPosition(at.x, at.y, at.z, 1);
    label->put_NomSelection(i);
    labels.push_back(std::move(label));
  }
  return labels;
}

/// A label's rectangle in model units, from its place.
std::vector<test::Sides> rectanglesOf(const std::vector<ComPtr<IZYNGLTexte>>& labels,
                                      const View3DHost& view) {
  double pixel = 0;
  require(view->getWindowScale(&pixel), "getWindowScale");
  std::vector<test::Sides> rectangles;
  for (const auto& label : labels) {
    test::Sides sides = test::pixelRect(label.Get());
    for (double& side : sides) side *= pixel;
    rectangles.push_back(sides);
  }
  return rectangles;
}

void drawRectangles(const Field& field, const std::vector<test::Sides>& rectangles) {
  glPushName(0);
  for (int i = 0; i < field.count(); ++i) {
    const auto& [left, right, bottom, top] = rectangles[static_cast<std::size_t>(i)];
    const Vec at = field.place(i);
    glLoadName(static_cast<GLuint>(i));
    glBegin(GL_POLYGON);
    glVertex3d(at.x + left, at.y + bottom, at.z);
    glVertex3d(at.x + right, at.y + bottom, at.z);
    glVertex3d(at.x + right, at.y + top, at.z);
    glVertex3d(at.x + left, at.y + top, at.z);
    glEnd();
  }
  glPopName();
}

long pick(const View3DHost& view) {
  _variant_t found;
  require(view->getSelectionUnderMouse(kPickX, kPickY, &found), "getSelectionUnderMouse");
  long name = -1;
  LONG first = 0;
  if (found.vt == (VT_ARRAY | VT_I4)) SafeArrayGetElement(found.parray, &first, &name);
  return name;
}

}  // namespace

void measurePicking(Report& report, const Sizes& sizes) {
  const Field field(sizes.pickedLabels);
  const auto labels = makeLabels(field);
  const View3DHost ours(kViewSize);
  const View3DHost raw(kViewSize);
  const auto area = ours.addBox(field.bounds());
  require(raw->Add(area->dispatch(), 0), "Add");
  showAll(ours);
  showAll(raw);
  for (const auto& label : labels) require(ours->AddSelection(label.Get()), "AddSelection");
  static_cast<void>(pick(ours));  // a label knows its size once a view has asked for it
  const auto rectangles = rectanglesOf(labels, ours);
  const auto field3D = test::makeForeign<test::ForeignObject>();
  field3D->onDraw3D = [&](int) {
    drawRectangles(field, rectangles);
    return S_OK;
  };
  require(raw->AddSelection(field3D->dispatch()), "AddSelection");

  long oursFound = 0;
  long rawFound = 0;
  int differing = 0;
  double step = kPanStep;
  const auto pan = [&](const View3DHost& view) { require(view->TranslateH(step), "TranslateH"); };
  const Job oursJob{[&] { oursFound = pick(ours); },
                    [&] {
                      step = -step;
                      pan(ours);
                      pan(raw);
                    }};
  const Job rawJob{[&] { rawFound = pick(raw); }, [] {}};
  const Job compared{[&] { differing += oursFound == rawFound ? 0 : 1; }};
  const auto times = interleave({oursJob, rawJob, compared}, sizes.rounds);
  report.add(textOf("pick among %d labels, camera just moved", sizes.pickedLabels),
             "one GL_SELECT pass over their rectangles", times[0], times[1], 0.05);
  report.note(textOf("found label %ld; other answers than the limit's: %d", oursFound, differing));
}

}  // namespace zyn::bench
