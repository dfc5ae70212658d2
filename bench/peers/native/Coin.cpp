// Coin: shapes with vertex properties, drawn by a scene manager in a window.

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/SoSceneManager.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <cmath>

#include "GlWindow.h"
#include "Scenes.h"
#include "Steps.h"

namespace {

const SbVec3f* vectors(const std::vector<scenes::Vec>& points) {
  return reinterpret_cast<const SbVec3f*>(points.data());
}

uint32_t packed(const scenes::Vec& colour) {
  return SbColor(colour[0], colour[1], colour[2]).getPackedValue();
}

/// Corners of faces as Coin takes them: -1 ends a face.
std::vector<int32_t> endedFaces(const std::vector<unsigned>& faces) {
  std::vector<int32_t> ended;
  ended.reserve(faces.size() / 3 * 4);
  for (std::size_t i = 0; i < faces.size(); ++i) {
    ended.push_back(static_cast<int32_t>(faces[i]));
    if (i % 3 == 2) {
      ended.push_back(-1);
    }
  }
  return ended;
}

class View : public Scene {
 public:
  View() : root_(new SoSeparator), camera_(new SoPerspectiveCamera) {
    root_->addChild(camera_);
    root_->addChild(new SoDirectionalLight);
    auto* hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    root_->addChild(hints);
    camera_->heightAngle = 0.5236F;
    camera_->nearDistance = 10;
    camera_->farDistance = 1000;
    manager_.setWindowSize(SbVec2s(scenes::kWidth, scenes::kHeight));
    manager_.setViewportRegion(region_);
    manager_.setBackgroundColor(SbColor(1, 1, 1));
    manager_.setSceneGraph(root_);
    manager_.activate();
    glEnable(GL_DEPTH_TEST);  // which is left to the window
    draw();
  }
  void look() override { turnTo(0); }
  void turn() override { turnTo(angle_ + 0.0524); }
  void draw() override {
    manager_.render();
    window_.present();
  }
  bool pick(int x, int y) override {
    SoRayPickAction action(region_);
    action.setPoint(SbVec2s(static_cast<short>(x), static_cast<short>(scenes::kHeight - y)));
    action.setRadius(2);
    action.apply(root_);
    return action.getPickedPoint() != nullptr;
  }
  void save(const std::string& path) override {
    window_.save(path, [this] { draw(); });
  }

 protected:
  virtual SbVec3f middle() const { return {0, 0, 0}; }
  virtual float distance() const { return 120; }

  GlWindow window_;
  SbViewportRegion region_{scenes::kWidth, scenes::kHeight};
  SoSceneManager manager_;
  SoSeparator* root_;  // the manager's
  SoPerspectiveCamera* camera_;

 private:
  void turnTo(double angle) {
    angle_ = angle;
    const SbVec3f from(static_cast<float>(std::sin(angle_)), static_cast<float>(-std::cos(angle_)),
                       0.7F);
    camera_->position = middle() + from * distance();
    camera_->pointAt(middle(), SbVec3f(0, 0, 1));
  }

  double angle_ = 0;
};

/// One set of faces, each of which has a colour.
class Objects : public View {
 public:
  void build() override {
    std::vector<uint32_t> colours;
    for (std::size_t i = 0; i < mesh_.faces.size() / 3; ++i) {
      colours.push_back(packed(scenes::randomColour(static_cast<unsigned>(i))));
    }
    property_ = new SoVertexProperty;
    property_->vertex.setValues(0, static_cast<int>(mesh_.points.size()), vectors(mesh_.points));
    property_->normal.setValues(0, static_cast<int>(mesh_.normals.size()), vectors(mesh_.normals));
    property_->orderedRGBA.setValues(0, static_cast<int>(colours.size()), colours.data());
    property_->materialBinding = SoVertexProperty::PER_FACE;
    auto* faces = new SoIndexedFaceSet;
    const std::vector<int32_t> corners = endedFaces(mesh_.faces);
    faces->coordIndex.setValues(0, static_cast<int>(corners.size()), corners.data());
    faces->vertexProperty = property_;
    root_->addChild(faces);
  }
  void change() override {
    property_->orderedRGBA.set1Value(property_->orderedRGBA.getNum() / 3, 0xFF0000FF);
  }

 private:
  const scenes::Mesh mesh_ = scenes::objects();
  SoVertexProperty* property_ = nullptr;
};

/// A set of faces each.
class Few : public View {
 public:
  void build() override {
    const std::array<int32_t, 4> corners = {0, 1, 2, -1};
    auto* all = new SoSeparator;
    for (std::size_t i = 0; i < mesh_.faces.size(); i += 3) {
      auto* property = new SoVertexProperty;
      for (std::size_t k = 0; k < 3; ++k) {
        const unsigned corner = mesh_.faces[i + k];
        property->vertex.set1Value(static_cast<int>(k), vectors(mesh_.points)[corner]);
        property->normal.set1Value(static_cast<int>(k), vectors(mesh_.normals)[corner]);
      }
      property->orderedRGBA = packed(scenes::randomColour(static_cast<unsigned>(i / 3)));
      auto* face = new SoIndexedFaceSet;
      face->coordIndex.setValues(0, 4, corners.data());
      face->vertexProperty = property;
      all->addChild(face);
      changed_ = i < mesh_.faces.size() / 3 ? property : changed_;
    }
    root_->addChild(all);
  }
  void change() override { changed_->orderedRGBA = 0xFF0000FF; }

 private:
  const scenes::Mesh mesh_ = scenes::few();
  SoVertexProperty* changed_ = nullptr;
};

class Mesh : public View {
 public:
  void build() override {
    property_ = new SoVertexProperty;
    property_->vertex.setValues(0, static_cast<int>(mesh_.points.size()), vectors(mesh_.points));
    property_->normal.setValues(0, static_cast<int>(mesh_.normals.size()), vectors(mesh_.normals));
    property_->orderedRGBA = packed({0.6F, 0.65F, 0.7F});
    auto* faces = new SoIndexedFaceSet;
    const std::vector<int32_t> corners = endedFaces(mesh_.faces);
    faces->coordIndex.setValues(0, static_cast<int>(corners.size()), corners.data());
    faces->vertexProperty = property_;
    root_->addChild(faces);
  }
  void change() override { property_->vertex.set1Value(0, property_->vertex[0] * 1.01F); }

 private:
  const scenes::Mesh mesh_ = scenes::mesh();
  SoVertexProperty* property_ = nullptr;
};

class Path : public View {
 public:
  void build() override {
    auto* model = new SoLightModel;
    model->model = SoLightModel::BASE_COLOR;
    root_->addChild(model);
    property_ = new SoVertexProperty;
    property_->vertex.setValues(0, static_cast<int>(line_.points.size()), vectors(line_.points));
    property_->orderedRGBA = packed({0.1F, 0.3F, 0.85F});
    auto* set = new SoLineSet;
    set->vertexProperty = property_;
    root_->addChild(set);
  }
  void change() override {
    property_->vertex.setValues(property_->vertex.getNum(), static_cast<int>(line_.appended.size()),
                                vectors(line_.appended));
  }

 protected:
  SbVec3f middle() const override { return {45, 45, 30}; }
  float distance() const override { return 190; }

 private:
  const scenes::Line line_ = scenes::path();
  SoVertexProperty* property_ = nullptr;
};

class Labels : public View {
 public:
  void build() override {
    auto* model = new SoLightModel;
    model->model = SoLightModel::BASE_COLOR;
    root_->addChild(model);
    auto* colour = new SoVertexProperty;
    colour->orderedRGBA = 0x000000FF;
    root_->addChild(colour);
    auto* font = new SoFont;
    font->name = "Liberation Sans";
    font->size = 14;
    root_->addChild(font);
    for (std::size_t i = 0; i < labels_.points.size(); ++i) {
      auto* place = new SoSeparator;
      auto* translation = new SoTranslation;
      translation->translation = vectors(labels_.points)[i];
      auto* text = new SoText2;
      text->string = labels_.texts[i].c_str();
      place->addChild(translation);
      place->addChild(text);
      root_->addChild(place);
      first_ = i == 0 ? text : first_;
    }
  }
  void change() override { first_->string = scenes::kSpeech; }

 protected:
  float distance() const override { return 190; }

 private:
  const scenes::Labels labels_ = scenes::labels();
  SoText2* first_ = nullptr;
};

}  // namespace

int main(int count, char** arguments) {
  SoDB::init();
  SoInteraction::init();
  return measure(count, arguments,
                 {{"objects", makes<Objects>()},
                  {"few", makes<Few>()},
                  {"mesh", makes<Mesh>()},
                  {"path", makes<Path>()},
                  {"labels", makes<Labels>()}});
}
