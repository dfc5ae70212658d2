#include <optional>

#include "bench/Groups.h"
#include "bench/PngEncoder.h"
#include "bench/RawScene.h"
#include "bench/TriangleMesh.h"
#include "support/GlCanvas_win.h"

namespace zyn::bench {

using test::OffscreenScene;
using test::require;

namespace {

constexpr SIZE kPictureSize = {1600, 1200};

/// The state that the limit draws in, taken from a picture of the library: matrices and lights.
struct DrawingState {
  GLdouble projection[16];
  GLdouble modelView[16];
  GLfloat globalAmbient[4];
  struct Light {
    bool isOn;
    GLfloat position[4], ambient[4], diffuse[4], specular[4];
  } lights[2];

  void read();
  void apply() const;
};

void DrawingState::read() {
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
  glGetFloatv(GL_LIGHT_MODEL_AMBIENT, globalAmbient);
  for (GLenum i = 0; i < 2; ++i) {
    Light& light = lights[i];
    light.isOn = glIsEnabled(GL_LIGHT0 + i) != GL_FALSE;
    glGetLightfv(GL_LIGHT0 + i, GL_POSITION, light.position);
    glGetLightfv(GL_LIGHT0 + i, GL_AMBIENT, light.ambient);
    glGetLightfv(GL_LIGHT0 + i, GL_DIFFUSE, light.diffuse);
    glGetLightfv(GL_LIGHT0 + i, GL_SPECULAR, light.specular);
  }
}

void DrawingState::apply() const {
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, globalAmbient);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  for (GLenum i = 0; i < 2; ++i) {
    if (!lights[i].isOn) continue;
    glEnable(GL_LIGHT0 + i);
    glLightfv(GL_LIGHT0 + i, GL_POSITION, lights[i].position);
    glLightfv(GL_LIGHT0 + i, GL_AMBIENT, lights[i].ambient);
    glLightfv(GL_LIGHT0 + i, GL_DIFFUSE, lights[i].diffuse);
    glLightfv(GL_LIGHT0 + i, GL_SPECULAR, lights[i].specular);
  }
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(projection);
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(modelView);
  glEnable(GL_LIGHTING);
  glEnable(GL_CULL_FACE);
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glClearColor(0, 0.2F, 0.4F, 0);
}

/// The state in which the library draws this box.
DrawingState stateFor(const test::Bounds& bounds) {
  DrawingState state = {};
  OffscreenScene scene(kPictureSize.cx, kPictureSize.cy);
  RawScene reader([&] {}, bounds);
  const auto probe = test::makeForeign<test::ForeignObject>();
  probe->onDraw3D = [&](int) {
    state.read();
    return S_OK;
  };
  scene.add(reader.dispatch());
  scene.add(probe->dispatch());
  require(scene->CreateBitmap(nullptr), "CreateBitmap");
  return state;
}

/// The limit: a context on a bitmap, one display list, GDI+.
class RawExport {
 public:
  explicit RawExport(const Mesh& mesh) : state_(stateFor(boundsOf(mesh))) {
    canvas_.emplace(kPictureSize.cx, kPictureSize.cy);
    state_.apply();
    list_ = glGenLists(1);
    glNewList(list_, GL_COMPILE);
    drawRaw(mesh);
    glEndList();
  }

  void write(const std::filesystem::path& file) {
    canvas_->makeCurrent();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glCallList(list_);
    glFinish();
    encoder_.readPixels();
    encoder_.save(file);
  }

 private:
  DrawingState state_;
  PngEncoder encoder_{kPictureSize};
  std::optional<test::GlCanvas> canvas_;
  GLuint list_ = 0;
};

}  // namespace

void measureExport(Report& report, const Sizes& sizes) {
  const Mesh mesh = makeTorus(sizes.triangles, Look::kColours);
  const Triangles triangles = createTriangles(mesh);
  OffscreenScene ours(kPictureSize.cx, kPictureSize.cy);
  ours.addAll(triangles);
  RawExport raw(mesh);
  const auto ourFile = ours.folder().file(L"ours.png");
  const auto rawFile = ours.folder().file(L"raw.png");
  const auto times = interleave({{[&] { require(ours.exportPng(ourFile), "CreatePNG"); }},
                                 {[&] { raw.write(rawFile); }},
                                 {[&] { require(ours->CreateBitmap(nullptr), "CreateBitmap"); }}},
                                sizes.rounds);
  report.add(textOf("export of %d x %d as PNG", static_cast<int>(kPictureSize.cx),
                    static_cast<int>(kPictureSize.cy)),
             "one display list, and GDI+'s encoder", times[0], times[1], 1.15);
  report.note(textOf("drawing alone: %.3f ms; bytes of both files: %d and %d", times[2].median(),
                     static_cast<int>(std::filesystem::file_size(ourFile)),
                     static_cast<int>(std::filesystem::file_size(rawFile))));
}

}  // namespace zyn::bench
