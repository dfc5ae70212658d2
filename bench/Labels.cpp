#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <random>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "bench/ReadyPictures.h"
#include "common/ClassObject_com.h"
#include "objects/text/ContextFonts_win.h"
#include "support/Texts_win.h"

namespace zyn::bench {

using test::ComPtr;
using test::require;
using test::Vec;
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

std::vector<Label> makeLabels(int count) {
  std::mt19937 random(1);
  const auto any = [&] { return std::uniform_real_distribution(-kHalfSide, kHalfSide)(random); };
  std::vector<Label> labels;
  for (int i = 0; i < count; ++i) {
    labels.push_back({textOf("Label %06d", i), {any(), any(), any()}});
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

SIZE pixelSizeOf(IZYNGLTexte* label) {
  const test::Sides sides = test::pixelRect(label);
  return {std::lround(sides[1] - sides[0]), std::lround(sides[3] - sides[2])};
}

std::vector<Vec> placesOf(const std::vector<Label>& labels) {
  std::vector<Vec> places;
  for (const Label& label : labels) places.push_back(label.at);
  return places;
}

/// Compares with the fastest of the ways to draw ready pictures.
void addReady(Report& report, const std::string& figure, const Samples& value,
              const std::vector<Samples>& ways) {
  const auto isFaster = [](const Samples& a, const Samples& b) { return a.median() < b.median(); };
  report.add(figure, "ready pictures of their size, the fastest way", value,
             *std::min_element(ways.begin(), ways.end(), isFaster), 1.3);
  std::string note;
  for (const ReadyPictures::Way way : ReadyPictures::kWays) {
    note += textOf("%s%s %.1f ms", note.empty() ? "" : ", ", ReadyPictures::nameOf(way),
                   ways[way].median());
  }
  report.note(note);
}

}  // namespace

void measureLabels(Report& report, const Sizes& sizes) {
  const auto labels = makeLabels(sizes.labels);
  const auto created = createLabels(labels);
  const View3DHost ours(kViewSize);
  const View3DHost raw(kViewSize);
  const auto cube = ours.addBox(kCube);
  require(raw->Add(cube->dispatch(), 0), "Add");
  addAll(ours, created);
  showAll(ours);
  showAll(raw);
  ours.paint();

  CGLFontContext fonts;
  double scale = 0;
  std::optional<ReadyPictures> pictures;
  std::optional<ReadyPictures::Way> way;
  const auto painter = test::makeForeign<test::ForeignObject>();
  painter->onDraw3D = [&](int) {
    if (fonts.filledLists() == 0) {
      buildOutlineFonts(fonts, true);
      scale = emHeightOf(created[0].Get(), ours, labels[0].text, fonts.metrics());
    }
    if (way) {
      pictures->draw(*way);
    } else {
      drawRaw(labels, fonts, scale);
    }
    return S_OK;
  };
  require(raw->Add(painter->dispatch(), 0), "Add");
  const SIZE size = pixelSizeOf(created[0].Get());
  pictures.emplace(placesOf(labels), size.cx, size.cy);
  std::vector<Job> jobs = {{[&] { drawOrbitFrame(ours); }}, {[&] {
                             way.reset();
                             drawOrbitFrame(raw);
                           }}};
  for (const ReadyPictures::Way each : ReadyPictures::kWays) {
    jobs.push_back({[&, each] {
      way = each;
      drawOrbitFrame(raw);
    }});
  }
  const auto times = interleave(jobs, sizes.rounds);
  const std::string figure = textOf("%d labels of 12 characters, orbit frame", sizes.labels);
  report.add(figure, "calling the same glyph lists", times[0], times[1], 1.0 / 15);
  addReady(report, figure, times[0], {times.begin() + 2, times.end()});
}

}  // namespace zyn::bench
