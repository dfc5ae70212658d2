// OpenGL alone: a display list for each scene, which is what the other figures are compared with.

#include <cmath>

#include "GlWindow.h"
#include "Scenes.h"
#include "Steps.h"

namespace {

class ListScene : public Scene {
 public:
  void build() override {
    list_ = glGenLists(1);
    compile();
  }
  void look() override {
    glMatrixMode(GL_PROJECTION);
    const double height = std::tan(0.26) * 10;
    glFrustum(-height * 4 / 3, height * 4 / 3, -height, height, 10, 1000);
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_DEPTH_TEST);
    glClearColor(1, 1, 1, 1);
  }
  void turn() override { angle_ += 3; }
  void draw() override {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    glTranslated(0, 0, -distance());
    glRotated(-55, 1, 0, 0);
    glRotated(angle_, 0, 0, 1);
    glCallList(list_);
    window_.present();
  }
  bool pick(int, int) override { return false; }
  void change() override { compile(); }
  void save(const std::string& path) override {
    window_.save(path, [this] { draw(); });
  }

 protected:
  virtual void emit() = 0;
  virtual double distance() const { return 146; }

 private:
  void compile() {
    glNewList(list_, GL_COMPILE);
    emit();
    glEndList();
  }

  GlWindow window_;
  GLuint list_ = 0;
  double angle_ = 0;
};

class Triangles : public ListScene {
 protected:
  void emit() override {
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glEnable(GL_COLOR_MATERIAL);
    glEnable(GL_NORMALIZE);
    glBegin(GL_TRIANGLES);
    for (std::size_t i = 0; i < mesh_.faces.size(); ++i) {
      if (i % 3 == 0) {
        glColor3fv(scenes::randomColour(static_cast<unsigned>(i / 3)).data());
      }
      glNormal3fv(mesh_.normals[mesh_.faces[i]].data());
      glVertex3fv(mesh_.points[mesh_.faces[i]].data());
    }
    glEnd();
  }

 private:
  const scenes::Mesh mesh_ = scenes::objects();
};

class Mesh : public ListScene {
 protected:
  void emit() override {
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, mesh_.points.data());
    glNormalPointer(GL_FLOAT, 0, mesh_.normals.data());
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh_.faces.size()), GL_UNSIGNED_INT,
                   mesh_.faces.data());
  }

 private:
  const scenes::Mesh mesh_ = scenes::mesh();
};

class Path : public ListScene {
 protected:
  double distance() const override { return 232; }
  void emit() override {
    glTranslated(-45, -45, -30);
    glColor3d(0.1, 0.3, 0.85);
    glBegin(GL_LINE_STRIP);
    for (const scenes::Vec& point : line_.points) {
      glVertex3fv(point.data());
    }
    glEnd();
  }

 private:
  const scenes::Line line_ = scenes::path();
};

class Trace : public ListScene {
 public:
  void look() override {
    ListScene::look();
    glDisable(GL_DEPTH_TEST);
  }

 protected:
  void emit() override {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, 0.5, 0, 1, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glColor3d(0.1, 0.3, 0.85);
    glBegin(GL_LINE_STRIP);
    for (std::size_t i = 0; i < plane_.x.size(); ++i) {
      glVertex2d(plane_.x[i], plane_.y[i]);
    }
    glEnd();
  }

 private:
  const scenes::Plane plane_ = scenes::trace();
};

}  // namespace

int main(int count, char** arguments) {
  return measure(count, arguments,
                 {{"objects", makes<Triangles>()},
                  {"mesh", makes<Mesh>()},
                  {"path", makes<Path>()},
                  {"trace", makes<Trace>()}});
}
