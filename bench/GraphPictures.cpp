#include <cmath>
#include <random>

#include "bench/Groups.h"
#include "bench/PngEncoder.h"
#include "bench/RawScene.h"
#include "support/GlCanvas_win.h"
#include "support/Graph_win.h"
#include "support/OffscreenContext_win.h"
#include "support/TempFolder_win.h"

namespace zyn::bench {

using test::bstr;
using test::ComPtr;
using test::Graph;
using test::OffscreenGraph;
using test::require;
using test::View2DHost;

namespace {

constexpr int kSeries = 5;
constexpr int kPoints = 1000;  ///< of each
constexpr SIZE kPictureSize = {1600, 1200};
constexpr int kGlyph = 16;  ///< pixels of a side of a glyph's picture
constexpr double kTick = 5;

double heightOf(int series, double x) { return 0.5 + 0.4 * std::sin(9 * x + series); }

/// A plot as users have it: titles, a grid, a legend, named series.
void fill(const Graph& graph) {
  require(graph->put_Actif(VARIANT_TRUE), "Actif");
  require(graph->put_Titre(bstr(L"Measurement")), "Titre");
  for (long side = 0; side < 2; ++side) {
    require(graph.axis(side)->put_Titre(bstr(L"Quantity")), "Titre");
    require(graph.axis(side)->setPlage(0, 1), "setPlage");
  }
  for (int series = 0; series < kSeries; ++series) {
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i < kPoints; ++i) {
      x.push_back(i / double{kPoints});
      y.push_back(heightOf(series, x.back()));
    }
    const auto object = test::makeSeries(x, y);
    require(object->put_Nom(bstr(L"Series")), "Nom");
    require(graph.add(object.Get()), "Ajouter");
  }
}

/// The lines, rectangles and glyphs of such a plot, ready to be drawn with plain OpenGL.
class ReadyPicture {
 public:
  ReadyPicture(const Graph& graph, SIZE size) : size_(size), area_(graph.area()) {
    for (int series = 0; series < kSeries; ++series) {
      for (int i = 0; i < kPoints; ++i) {
        const double x = i / double{kPoints};
        curves_.push_back(across(x));
        curves_.push_back(along(heightOf(series, x)));
      }
    }
    addAxis(graph, 0);
    addAxis(graph, 1);
    glyphs_ += 11 + 2 * 8 + kSeries * 6;  // titles and names
    std::mt19937 random(1);
    for (GLubyte& part : picture_) part = static_cast<GLubyte>(random());
  }

  /// In pixels from the lower left corner of the current viewport.
  void draw() const {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, size_.cx, 0, size_.cy, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    drawContents();
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopClientAttrib();
    glPopAttrib();
  }

 private:
  double across(double part) const { return area_[0] + part * (area_[2] - area_[0]); }
  double along(double part) const { return size_.cy - area_[3] + part * (area_[3] - area_[1]); }
  void line(double x0, double y0, double x1, double y1) {
    lines_.insert(lines_.end(), {x0, y0, x1, y1});
  }

  /// Grid, ticks and labels.
  void addAxis(const Graph& graph, long side) {
    const auto axis = graph.axis(side);
    for (const double tick : test::numbersOf(axis.Get(), &IZYNAxe::get_Graduations)) {
      if (side == 0) {
        line(across(tick), along(0), across(tick), along(1));
        line(across(tick), along(0) - kTick, across(tick), along(0));
      } else {
        line(across(0), along(tick), across(1), along(tick));
        line(across(0) - kTick, along(tick), across(0), along(tick));
      }
    }
    for (const std::wstring& label : test::labelsOf(axis.Get())) {
      glyphs_ += static_cast<int>(label.size());
    }
  }

  void drawContents() const {
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor3d(1, 1, 1);
    glRectd(across(0), along(0), across(1), along(1));
    glColor3d(0.8, 0.8, 0.8);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_DOUBLE, 0, lines_.data());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(lines_.size() / 2));
    glEnable(GL_LINE_SMOOTH);
    glVertexPointer(2, GL_DOUBLE, 0, curves_.data());
    for (int series = 0; series < kSeries; ++series) {
      glColor3d(0.2 * series, 0.4, 0.8);
      glDrawArrays(GL_LINE_STRIP, series * kPoints, kPoints);
    }
    glColor4d(1, 1, 1, 0.9);
    glRectd(across(0.8), along(0.7), across(0.98), along(0.98));
    drawGlyphs();
  }

  /// All with one texture, which is made of the ready picture.
  void drawGlyphs() const {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, kGlyph, kGlyph, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 picture_);
    glEnable(GL_TEXTURE_2D);
    glColor3d(0, 0, 0);
    glBegin(GL_QUADS);
    for (int i = 0; i < glyphs_; ++i) {
      const int x = 20 + kGlyph * (i % 40);
      const int y = 4 + kGlyph * (i / 40);
      glTexCoord2i(0, 0);
      glVertex2i(x, y);
      glTexCoord2i(1, 0);
      glVertex2i(x + kGlyph, y);
      glTexCoord2i(1, 1);
      glVertex2i(x + kGlyph, y + kGlyph);
      glTexCoord2i(0, 1);
      glVertex2i(x, y + kGlyph);
    }
    glEnd();
    glDeleteTextures(1, &texture);
  }

  SIZE size_;
  std::vector<double> area_;
  std::vector<double> curves_;
  std::vector<double> lines_;
  int glyphs_ = 0;
  GLubyte picture_[kGlyph * kGlyph];
};

/// Of a plot whose ranges have changed: all of it is laid out again.
void measureWholeFrame(Report& report, const Sizes& sizes) {
  const View2DHost ours(kViewSize);
  const View2DHost raw(kViewSize);
  const Graph graph(ours.get());
  fill(graph);
  ours.paint();
  const ReadyPicture ready(graph, kViewSize);
  const auto painter = test::makeForeign<test::ForeignObject>();
  painter->onDraw2D = [&](int) {
    ready.draw();
    return S_OK;
  };
  require(raw->Add(painter->dispatch(), 0), "Add");
  const auto bottom = graph.axis(0);
  double shift = 0;
  const auto frame = [&] {
    shift = 0.001 - shift;
    require(bottom->setPlage(shift, 1 + shift), "setPlage");
    ours.paint();
  };
  const auto bound = [&] { raw.paint(); };
  const auto times = interleave({{frame, frame}, {bound, bound}}, sizes.rounds);
  report.add(textOf("frame of a plot, %d series of %d points", kSeries, kPoints),
             "its lines, rectangles and glyphs from ready arrays", times[0], times[1], 1.3);
}

void write(const OffscreenGraph& picture, const std::filesystem::path& file) {
  require(test::queryFor<IZYN2DGLBitmapContext2>(picture.get())->Exporter(bstr(file)), "Exporter");
}

/// Encoders take the longer the more there is in a picture: that of the limit gets the same pixels.
void measurePng(Report& report, const Sizes& sizes) {
  const test::TempFolder folder;
  const OffscreenGraph ours(kPictureSize.cx, kPictureSize.cy);
  const Graph graph(ours.get());
  fill(graph);
  const ReadyPicture ready(graph, kPictureSize);
  write(ours, folder.file(L"ours.png"));
  PngEncoder drawn(kPictureSize);
  PngEncoder encoded(kPictureSize);
  encoded.readPixels(folder.file(L"ours.png"));
  const test::GlCanvas canvas(kPictureSize.cx, kPictureSize.cy);
  const auto bound = [&] {
    canvas.makeCurrent();
    glViewport(0, 0, kPictureSize.cx, kPictureSize.cy);
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    ready.draw();
    glFinish();
    drawn.readPixels();
    encoded.save(folder.file(L"raw.png"));
  };
  const auto times =
      interleave({{[&] { write(ours, folder.file(L"ours.png")); }}, {bound}}, sizes.rounds);
  report.add("that plot as PNG, 1600 x 1200", "ready arrays, and GDI+'s encoder", times[0],
             times[1], 1.15);
}

/// A long series as vectors, and as pixels.
void measureVectorFiles(Report& report, const Sizes& sizes) {
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 0.02);
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < sizes.seriesPoints; ++i) {
    x.push_back(static_cast<double>(i) / sizes.seriesPoints);
    y.push_back(heightOf(0, x.back()) + noise(random));
  }
  const test::TempFolder folder;
  const OffscreenGraph picture(kPictureSize.cx, kPictureSize.cy);
  const Graph graph(picture.get());
  require(graph->put_Actif(VARIANT_TRUE), "Actif");
  require(graph.add(test::makeSeries(x, y).Get()), "Ajouter");
  const auto writing = [&](const wchar_t* name) {
    return Job{[&, name] { write(picture, folder.file(name)); }};
  };
  const auto times = interleave(
      {writing(L"a.svg"), writing(L"a.pdf"), writing(L"a.emf"), writing(L"a.png")}, sizes.rounds);
  const char* const formats[] = {"SVG", "PDF", "EMF"};
  const wchar_t* const files[] = {L"a.svg", L"a.pdf", L"a.emf"};
  constexpr double kMostMb = 5;
  for (std::size_t i = 0; i < 3; ++i) {
    report.add(textOf("%s of %d points", formats[i], sizes.seriesPoints), "PNG of the same",
               times[i], times[3], 2);
    const auto bytes = static_cast<double>(std::filesystem::file_size(folder.file(files[i])));
    report.add({.figure = textOf("its size"),
                .limit = "5 MB",
                .value = bytes / 1e6,
                .bound = kMostMb,
                .unit = "MB"});
  }
}

}  // namespace

void measureGraphPictures(Report& report, const Sizes& sizes) {
  measureWholeFrame(report, sizes);
  measurePng(report, sizes);
  measureVectorFiles(report, sizes);
}

}  // namespace zyn::bench
