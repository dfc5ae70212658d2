// OpenSceneGraph: geometries with buffers in a viewer that is embedded in a window.

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/KdTree>
#include <osg/Version>
#include <osgText/Text>
#include <osgUtil/LineSegmentIntersector>
#include <osgUtil/PolytopeIntersector>
#include <osgViewer/Viewer>

#include "GlWindow.h"
#include "Scenes.h"
#include "Steps.h"

namespace {

using scenes::kHeight;
using scenes::kWidth;

osg::Vec3 vec(const scenes::Vec& v) { return {v[0], v[1], v[2]}; }

osg::ref_ptr<osg::Vec3Array> arrayOf(const std::vector<scenes::Vec>& points) {
  osg::ref_ptr<osg::Vec3Array> array = new osg::Vec3Array;
  array->reserve(static_cast<unsigned>(points.size()));
  for (const scenes::Vec& point : points) {
    array->push_back(vec(point));
  }
  return array;
}

osg::ref_ptr<osg::Geometry> bufferedGeometry() {
  osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
  geometry->setUseDisplayList(false);
  geometry->setUseVertexBufferObjects(true);
  return geometry;
}

class View : public Scene {
 public:
  View() : group_(new osg::Group), camera_(viewer_.getCamera()) {
    viewer_.setUpViewerAsEmbeddedInWindow(0, 0, kWidth, kHeight);
    viewer_.setThreadingModel(osgViewer::ViewerBase::SingleThreaded);
    camera_->setClearColor({1, 1, 1, 1});
    camera_->setProjectionMatrixAsPerspective(30, double{kWidth} / kHeight, 10, 1000);
    viewer_.setSceneData(group_);
    viewer_.realize();
    draw();
  }
  void look() override { turnTo(0); }
  void turn() override { turnTo(angle_ + osg::DegreesToRadians(3.0)); }
  void draw() override {
    viewer_.frame();
    window_.present();
  }
  bool pick(int x, int y) override {
    osg::ref_ptr<osgUtil::LineSegmentIntersector> line =
        new osgUtil::LineSegmentIntersector(osgUtil::Intersector::WINDOW, x, kHeight - y);
    line->setIntersectionLimit(osgUtil::Intersector::LIMIT_NEAREST);
    return hits(line);
  }
  void save(const std::string& path) override {
    window_.save(path, [this] { draw(); });
  }

 protected:
  virtual osg::Vec3d middle() const { return {}; }
  virtual double distance() const { return 120; }
  bool hits(osgUtil::Intersector* intersector) {
    osgUtil::IntersectionVisitor visitor(intersector);
    visitor.setUseKdTreeWhenAvailable(true);
    camera_->accept(visitor);
    return intersector->containsIntersections();
  }
  bool hitsNear(int x, int y) {
    constexpr int kReach = 2;
    osg::ref_ptr<osgUtil::PolytopeIntersector> box =
        new osgUtil::PolytopeIntersector(osgUtil::Intersector::WINDOW, x - kReach,
                                         kHeight - y - kReach, x + kReach, kHeight - y + kReach);
    box->setIntersectionLimit(osgUtil::Intersector::LIMIT_NEAREST);
    return hits(box);
  }

  GlWindow window_;
  osgViewer::Viewer viewer_;
  osg::ref_ptr<osg::Group> group_;
  osg::Camera* camera_;

 private:
  void turnTo(double angle) {
    angle_ = angle;
    const osg::Vec3d from(std::sin(angle_), -std::cos(angle_), 0.7);
    camera_->setViewMatrixAsLookAt(middle() + from * distance(), middle(), {0, 0, 1});
  }

  double angle_ = 0;
};

/// Builds the trees of its surfaces when something is picked first.
class Surfaces : public View {
 public:
  bool pick(int x, int y) override {
    if (!hasTrees_) {
      osg::ref_ptr<osg::KdTreeBuilder> builder = new osg::KdTreeBuilder;
      group_->accept(*builder);
      hasTrees_ = true;
    }
    return View::pick(x, y);
  }

 private:
  bool hasTrees_ = false;
};

/// One geometry, whose triangles have colours.
class Objects : public Surfaces {
 public:
  void build() override {
    osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array;
    for (std::size_t i = 0; i < mesh_.faces.size(); ++i) {
      points->push_back(vec(mesh_.points[mesh_.faces[i]]));
      normals->push_back(vec(mesh_.normals[mesh_.faces[i]]));
      const scenes::Vec colour = scenes::randomColour(static_cast<unsigned>(i / 3));
      colours_->push_back({colour[0], colour[1], colour[2], 1});
    }
    const auto geometry = bufferedGeometry();
    geometry->setVertexArray(points);
    geometry->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
    geometry->setColorArray(colours_, osg::Array::BIND_PER_VERTEX);
    geometry->addPrimitiveSet(
        new osg::DrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(points->size())));
    group_->addChild(geometry);
  }
  void change() override {
    const std::size_t first = colours_->size() / 9 * 3;
    for (std::size_t i = first; i < first + 3; ++i) {
      (*colours_)[i] = {1, 0, 0, 1};
    }
    colours_->dirty();
  }

 private:
  const scenes::Mesh mesh_ = scenes::objects();
  osg::ref_ptr<osg::Vec4Array> colours_ = new osg::Vec4Array;
};

/// A geometry each.
class Few : public Surfaces {
 public:
  void build() override {
    for (std::size_t i = 0; i < mesh_.faces.size(); i += 3) {
      osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
      osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array;
      for (std::size_t k = i; k < i + 3; ++k) {
        points->push_back(vec(mesh_.points[mesh_.faces[k]]));
        normals->push_back(vec(mesh_.normals[mesh_.faces[k]]));
      }
      const scenes::Vec colour = scenes::randomColour(static_cast<unsigned>(i / 3));
      osg::ref_ptr<osg::Vec4Array> colours = new osg::Vec4Array;
      colours->push_back({colour[0], colour[1], colour[2], 1});
      const auto geometry = bufferedGeometry();
      geometry->setVertexArray(points);
      geometry->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
      geometry->setColorArray(colours, osg::Array::BIND_OVERALL);
      geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 3));
      group_->addChild(geometry);
      changed_ = i < mesh_.faces.size() / 3 ? colours : changed_;
    }
  }
  void change() override {
    (*changed_)[0] = {1, 0, 0, 1};
    changed_->dirty();
  }

 private:
  const scenes::Mesh mesh_ = scenes::few();
  osg::ref_ptr<osg::Vec4Array> changed_;
};

class Mesh : public Surfaces {
 public:
  void build() override {
    points_ = arrayOf(mesh_.points);
    osg::ref_ptr<osg::Vec4Array> colour = new osg::Vec4Array;
    colour->push_back({0.6F, 0.65F, 0.7F, 1});
    const auto geometry = bufferedGeometry();
    geometry->setVertexArray(points_);
    geometry->setNormalArray(arrayOf(mesh_.normals), osg::Array::BIND_PER_VERTEX);
    geometry->setColorArray(colour, osg::Array::BIND_OVERALL);
    geometry->addPrimitiveSet(
        new osg::DrawElementsUInt(GL_TRIANGLES, mesh_.faces.begin(), mesh_.faces.end()));
    group_->addChild(geometry);
  }
  void change() override {
    (*points_)[0] *= 1.01F;
    points_->dirty();
  }

 private:
  const scenes::Mesh mesh_ = scenes::mesh();
  osg::ref_ptr<osg::Vec3Array> points_;
};

class Path : public View {
 public:
  void build() override {
    points_ = arrayOf(line_.points);
    osg::ref_ptr<osg::Vec4Array> colour = new osg::Vec4Array;
    colour->push_back({0.1F, 0.3F, 0.85F, 1});
    geometry_ = bufferedGeometry();
    geometry_->setVertexArray(points_);
    geometry_->setColorArray(colour, osg::Array::BIND_OVERALL);
    range_ = new osg::DrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(points_->size()));
    geometry_->addPrimitiveSet(range_);
    geometry_->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    group_->addChild(geometry_);
  }
  bool pick(int x, int y) override { return hitsNear(x, y); }
  void change() override {
    for (const scenes::Vec& point : line_.appended) {
      points_->push_back(vec(point));
    }
    points_->dirty();
    range_->setCount(static_cast<GLsizei>(points_->size()));
    geometry_->dirtyBound();
  }

 protected:
  osg::Vec3d middle() const override { return {45, 45, 30}; }
  double distance() const override { return 190; }

 private:
  const scenes::Line line_ = scenes::path();
  osg::ref_ptr<osg::Vec3Array> points_;
  osg::ref_ptr<osg::Geometry> geometry_;
  osg::ref_ptr<osg::DrawArrays> range_;
};

class Labels : public View {
 public:
  void build() override {
    const osg::ref_ptr<osgText::Font> font =
        osgText::readRefFontFile("/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf");
    for (std::size_t i = 0; i < labels_.points.size(); ++i) {
      osg::ref_ptr<osgText::Text> text = new osgText::Text;
      text->setFont(font);
      text->setCharacterSize(14);
      text->setCharacterSizeMode(osgText::TextBase::SCREEN_COORDS);
      text->setAxisAlignment(osgText::TextBase::SCREEN);
      text->setDataVariance(osg::Object::DYNAMIC);
      text->setColor({0, 0, 0, 1});
      text->setPosition(vec(labels_.points[i]));
      text->setText(labels_.texts[i]);
      group_->addChild(text);
      first_ = i == 0 ? text : first_;
    }
    group_->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
  }
  bool pick(int x, int y) override { return hitsNear(x, y); }
  void change() override { first_->setText(scenes::kSpeech); }

 protected:
  double distance() const override { return 190; }

 private:
  const scenes::Labels labels_ = scenes::labels();
  osg::ref_ptr<osgText::Text> first_;
};

}  // namespace

int main(int count, char** arguments) {
  return measure(count, arguments,
                 {{"objects", makes<Objects>()},
                  {"few", makes<Few>()},
                  {"mesh", makes<Mesh>()},
                  {"path", makes<Path>()},
                  {"labels", makes<Labels>()}});
}
