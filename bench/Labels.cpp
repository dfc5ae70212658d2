#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <random>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "bench/ReadyPictures.h"
#include "bench/TriangleMesh.h"
#include "common/ClassObject_com.h"
#include "objects/text/ContextFonts_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"

namespace zyn::bench {

using test::ComPtr;
using test::require;
using test::Vec;
using test::View2DHost;
using test::View3DHost;

namespace {

constexpr long kTextHeight = 14;  ///< pixels
constexpr double kHalfSide = 50;  ///< of the cube that the labels are in, model units
constexpr test::Bounds kCube = {-kHalfSide, kHalfSide,  -kHalfSide,
                                kHalfSide,  -kHalfSide, kHalfSide};

struct Label {
  std::string text;
  Vec at;
};

std::vector<Label> makeLabels(int count, const test::Bounds& bounds = kCube) {
  std::mt19937 random(1);
  const auto between = [&](double low, double high) {
    return std::uniform_real_distribution(low, high)(random);
  };
  std::vector<Label> labels;
  for (int i = 0; i < count; ++i) {
    const double x = between(bounds.xMin, bounds.xMax);
    const double y = between(bounds.yMin, bounds.yMax);
    labels.push_back({textOf("Label %06d", i), {x, y, between(bounds.zMin, bounds.zMax)}});
  }
  return labels;
}

std::vector<ComPtr<IZYNGLTexte>> createLabels(const std::vector<Label>& labels) {
  const host::ClassObject factory(test::kTextProgId);
  std::vector<ComPtr<IZYNGLTexte>> created;
  for (const auto& [text, at] : labels) {
    auto label = factory.create<IZYNGLTexte>();
    test::setText(label.Get(), std::wstring(text.begin(), text.end()));
    label->put_HauteurPixels(kTextHeight);
    label->setPosition(at.x, at.y, at.z, 1);
    label->setColor(0, 0, 0, 1);
    created.push_back(std::move(label));
  }
  return created;
}

/// Moves the origin to a point of the scene, axes parallel to the screen's.
void loadPlaneAt(const std::array<GLdouble, 16>& camera, const Vec& at, double scale) {
  const Vec eye = transformed(camera, at);
  const std::array<GLdouble, 16> plane = {scale, 0, 0,     0, 0,     scale, 0,     0,
                                          0,     0, scale, 0, eye.x, eye.y, eye.z, 1};
  glLoadMatrixd(plane.data());
}

void callGlyphs(GLuint lists, const std::string& text) {
  glListBase(lists);
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

void drawRaw(const std::vector<Label>& labels, const CGLFontContext& fonts, double scale) {
  std::array<GLdouble, 16> camera{};
  glGetDoublev(GL_MODELVIEW_MATRIX, camera.data());
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glPushMatrix();
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glEnable(GL_LINE_SMOOTH);
  glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  glLineWidth(0.1F);
  glColor4d(0, 0, 0, 1);
  for (const auto& [text, at] : labels) {
    loadPlaneAt(camera, at, scale);
    callGlyphs(fonts.filledLists(), text);
    loadPlaneAt(camera, at, scale);
    callGlyphs(fonts.outlineLists(), text);
  }
  glPopMatrix();
  glPopAttrib();
}

/// In em heights.
double widthOf(const std::string& text, const FontMetrics& metrics) {
  double width = 0;
  for (const char character : text) {
    width += metrics.glyphs[static_cast<unsigned char>(character)].cellIncX;
  }
  return width;
}

/// Model units of an em height of the label.
double emHeightOf(IZYNGLTexte* label, const View3DHost& view, const std::string& text,
                  const FontMetrics& metrics) {
  double pixel = 0;
  require(view->getWindowScale(&pixel), "getWindowScale");
  const test::Sides sides = test::pixelRect(label);
  return (sides[1] - sides[0]) * pixel / widthOf(text, metrics);
}

/// Draws ready pictures of the size of labels in their places, in one of the ways.
class PictureLayer {
 public:
  PictureLayer(const std::vector<Label>& labels, IZYNGLTexte* like)
      : pictures_(placesOf(labels), width(like), height(like)) {
    object_->onDraw3D = object_->onDraw2D = [this](int) {
      pictures_.draw(way);
      return S_OK;
    };
  }

  IDispatch* dispatch() const { return object_->dispatch(); }

  ReadyPictures::Way way = ReadyPictures::kPixels;

 private:
  static std::vector<Vec> placesOf(const std::vector<Label>& labels) {
    std::vector<Vec> places;
    for (const Label& label : labels) places.push_back(label.at);
    return places;
  }
  static int width(IZYNGLTexte* label) {
    const test::Sides sides = test::pixelRect(label);
    return static_cast<int>(std::lround(sides[1] - sides[0]));
  }
  static int height(IZYNGLTexte* label) {
    const test::Sides sides = test::pixelRect(label);
    return static_cast<int>(std::lround(sides[3] - sides[2]));
  }

  ReadyPictures pictures_;
  ComPtr<test::ForeignObject> object_ = test::makeForeign<test::ForeignObject>();
};

/// Compares frames of labels with frames of pictures, by the fastest of the ways to draw these.
void compareWithPictures(Report& report, const Sizes& sizes, const std::string& figure,
                         const std::function<void()>& drawLabels,
                         const std::function<void()>& drawPictures, PictureLayer& layer) {
  std::vector<Job> jobs = {{drawLabels}};
  for (const ReadyPictures::Way way : ReadyPictures::kWays) {
    jobs.push_back({[&, way] {
      layer.way = way;
      drawPictures();
    }});
  }
  const auto times = interleave(jobs, sizes.rounds);
  const auto isFaster = [](const Samples& a, const Samples& b) { return a.median() < b.median(); };
  report.add(figure, "ready pictures of their size, the fastest way", times[0],
             *std::min_element(times.begin() + 1, times.end(), isFaster), 1.3);
  std::string note;
  for (const ReadyPictures::Way way : ReadyPictures::kWays) {
    note += textOf("%s%s %.1f ms", note.empty() ? "" : ", ", ReadyPictures::nameOf(way),
                   times[1 + static_cast<std::size_t>(way)].median());
  }
  report.note(note);
}

/// With labels alone, against the outlines of their glyphs and against pictures.
void measureAlone(Report& report, const Sizes& sizes) {
  const auto labels = makeLabels(sizes.labels);
  const auto created = createLabels(labels);
  const View3DHost ours(kViewSize);
  const View3DHost outlines(kViewSize);
  const View3DHost raw(kViewSize);
  const auto cube = ours.addBox(kCube);
  require(outlines->Add(cube->dispatch(), 0), "Add");
  require(raw->Add(cube->dispatch(), 0), "Add");
  addAll(ours, created);
  for (const View3DHost* const view : {&ours, &outlines, &raw}) showAll(*view);
  ours.paint();

  CGLFontContext fonts;
  double scale = 0;
  const auto painter = test::makeForeign<test::ForeignObject>();
  painter->onDraw3D = [&](int) {
    if (fonts.filledLists() == 0) {
      buildOutlineFonts(fonts, true);
      scale = emHeightOf(created[0].Get(), ours, labels[0].text, fonts.metrics());
    }
    drawRaw(labels, fonts, scale);
    return S_OK;
  };
  require(outlines->Add(painter->dispatch(), 0), "Add");
  PictureLayer layer(labels, created[0].Get());
  require(raw->Add(layer.dispatch(), 0), "Add");
  const std::string figure = textOf("%d labels of 12 characters, orbit frame", sizes.labels);
  const auto times = interleave(
      {{[&] { drawOrbitFrame(ours); }}, {[&] { drawOrbitFrame(outlines); }}}, sizes.rounds);
  report.add(figure, "calling the same glyph lists", times[0], times[1], 1.0 / 15);
  compareWithPictures(
      report, sizes, figure, [&] { drawOrbitFrame(ours); }, [&] { drawOrbitFrame(raw); }, layer);
}

void measureAmongTriangles(Report& report, const Sizes& sizes) {
  const Mesh mesh = makeTorus(sizes.triangles, Look::kColours);
  const Triangles triangles = createTriangles(mesh);
  const auto labels = makeLabels(10 * sizes.labels, boundsOf(mesh));
  const auto created = createLabels(labels);
  const View3DHost ours(kViewSize);
  const View3DHost raw(kViewSize);
  for (const View3DHost* const view : {&ours, &raw}) addAll(*view, triangles);
  addAll(ours, created);
  for (const View3DHost* const view : {&ours, &raw}) showAll(*view);
  ours.paint();
  PictureLayer layer(labels, created[0].Get());
  require(raw->Add(layer.dispatch(), 0), "Add");
  compareWithPictures(
      report, sizes,
      textOf("%d labels among %d triangles, orbit frame", 10 * sizes.labels, sizes.triangles),
      [&] { drawOrbitFrame(ours); }, [&] { drawOrbitFrame(raw); }, layer);
}

/// A frame that has moved by a part of a pixel.
class PanFrames {
 public:
  explicit PanFrames(const View2DHost& view) : view_(view) {}

  void draw() {
    shift_ += 0.037;
    view_.look(
        {shift_ - 1.2 * kHalfSide, shift_ + 1.2 * kHalfSide, -0.9 * kHalfSide, 0.9 * kHalfSide});
    view_.paint();
  }

 private:
  const View2DHost& view_;
  double shift_ = 0;
};

/// `without`: the same objects without their texts, among which pictures are drawn.
void measureInPlane(Report& report, const Sizes& sizes, const std::string& what,
                    const std::vector<Label>& labels,
                    const std::vector<ComPtr<IZYNGLTexte>>& created,
                    const std::vector<ComPtr<IZYNGLTexte>>& without) {
  const View2DHost ours(kViewSize);
  const View2DHost raw(kViewSize);
  for (const auto& label : created) require(ours->Add(label.Get(), 0), "Add");
  for (const auto& label : without) require(raw->Add(label.Get(), 0), "Add");
  PanFrames frames(ours);
  PanFrames rawFrames(raw);
  frames.draw();
  PictureLayer layer(labels, created[0].Get());
  require(raw->Add(layer.dispatch(), 0), "Add");
  compareWithPictures(
      report, sizes, textOf("2D view, %d %s, pan frame", sizes.labels, what.c_str()),
      [&] { frames.draw(); }, [&] { rawFrames.draw(); }, layer);
}

void makeDimensions(const std::vector<Label>& labels,
                    const std::vector<ComPtr<IZYNGLTexte>>& created) {
  for (std::size_t i = 0; i < created.size(); ++i) {
    const Vec& at = labels[i].at;
    created[i]->put_TypeCotation(static_cast<long>(i % 3) + 1);
    created[i]->setPointsCotation(at.x, at.y, 0, at.x + 10, at.y + 5, 0);
    created[i]->put_DecalageCotation(3);
  }
}

void measurePlane(Report& report, const Sizes& sizes) {
  constexpr test::Bounds kSquare = {-kHalfSide, kHalfSide, -kHalfSide, kHalfSide, 0, 0};
  const auto labels = makeLabels(sizes.labels, kSquare);
  const auto created = createLabels(labels);
  measureInPlane(report, sizes, "labels", labels, created, {});
  auto without = labels;
  for (Label& label : without) label.text.clear();
  const auto empty = createLabels(without);
  makeDimensions(labels, created);
  makeDimensions(labels, empty);
  measureInPlane(report, sizes, "dimensions", labels, created, empty);
}

}  // namespace

void measureLabels(Report& report, const Sizes& sizes) {
  measureAlone(report, sizes);
  measureAmongTriangles(report, sizes);
  measurePlane(report, sizes);
}

}  // namespace zyn::bench
