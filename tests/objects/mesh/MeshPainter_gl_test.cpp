#include "objects/mesh/MeshPainter_gl.h"

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "glcontext/SurfaceState_gl.h"
#include "support/DisplayLists_gl.h"
#include "support/GlTest_gl.h"
#include "support/Meshes.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t kName = 17;

/// What of a mesh decides which calls draw it.
enum class Paint { kColour, kMaterial, kPointColours, kFaceColours, kValues, kAbsentValues };
constexpr Paint kPaints[] = {Paint::kColour,      Paint::kMaterial, Paint::kPointColours,
                             Paint::kFaceColours, Paint::kValues,   Paint::kAbsentValues};

class MeshPainterTest : public GlTest {
 protected:
  MeshPainterTest() {
    glMatrixMode(GL_PROJECTION);
    glOrtho(-1.5, 1.5, -1.5, 1.5, -3, 3);
    glMatrixMode(GL_MODELVIEW);
    glRotated(25, 1, 0.5, 0);
    glEnable(GL_DEPTH_TEST);
  }

  /// A lit scene with a state that nobody else has.
  static void surround(bool isLit) {
    setEnabled(GL_LIGHTING, isLit);
    setEnabled(GL_LIGHT0, isLit);
    glEnable(GL_CULL_FACE);
    glEnable(GL_NORMALIZE);
    glBlendFunc(GL_DST_COLOR, GL_ONE);
    glPolygonOffset(7, 3);
    glLineWidth(3);
    glPointSize(5);
    glListBase(41);
    glNormal3f(0.25F, 0.5F, 0.75F);
    glTexCoord1f(0.125F);
    glColor4f(0.5F, 0.25F, 0.125F, 0.75F);
    glDepthFunc(GL_LEQUAL);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 20);
  }

  void paint(Paint paint) {
    model_.take(sphere(12, 16));
    look_.material.reset();
    scale_.reset();
    const std::size_t points = model_.mesh().pointCount();
    const std::size_t faces = model_.mesh().faceCount();
    const auto numbers = [](std::size_t count) {
      std::vector<float> result;
      for (std::size_t i = 0; i < count; ++i) {
        result.push_back(0.25F * static_cast<float>(i % 5));
      }
      return result;
    };
    switch (paint) {
      case Paint::kColour:
        break;
      case Paint::kMaterial:
        look_.material = {0.2, 0.7, 0.4, 0.5, 0.1};
        break;
      case Paint::kPointColours:
        model_.setPointColours(numbers(4 * points));
        break;
      case Paint::kFaceColours:
        model_.setFaceColours(numbers(4 * faces));
        break;
      default: {
        std::vector<double> values;
        for (std::size_t i = 0; i < points; ++i) values.push_back(model_.mesh().points[3 * i]);
        if (paint == Paint::kAbsentValues) values[points / 2] = kNaN;
        model_.setValues(values);
        scale_.emplace(ColourScale{}, 1, model_);
      }
    }
  }

  void draw(MeshPass pass = {}) {
    drawMesh(model_, look_, scale_ ? &*scale_ : nullptr, pass, *lists_);
  }

  Image picture(const MeshPass& pass) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw(pass);
    return context.read();
  }

  /// Calls `check(pass)` with every kind of look and pass, without display lists.
  template <class Check>
  void forEachKind(const Check& check) {
    for (const Paint paint : kPaints) {
      this->paint(paint);
      for (look_.style = MeshLook::kSurfaces; look_.style <= MeshLook::kPoints; ++look_.style) {
        for (const int kind : {0, 1, 2, 3, 4, 5, 6, 7}) {
          look_.bothSides = (kind & 1) != 0;
          look_.colour.alpha = (kind & 1) != 0 ? 0.5 : 1;
          SCOPED_TRACE("paint " + std::to_string(static_cast<int>(paint)) + ", style " +
                       std::to_string(look_.style) + ", kind " + std::to_string(kind));
          check(MeshPass{.mode = (kind & 2) != 0 ? MeshPass::kOutline : 0,
                         .isFlat = (kind & 4) != 0,
                         .opacity = kind == 5 ? 0.25 : 1});
        }
      }
    }
  }

  MeshModel model_;
  MeshLook look_;
  std::optional<MeshScale> scale_;
  std::shared_ptr<DisplayLists> home_ = std::make_shared<DisplayLists>();
  std::unique_ptr<ObjectLists> lists_ = std::make_unique<ObjectLists>();
};

TEST_F(MeshPainterTest, GivesTheStateBack) {
  for (const bool isLit : {false, true}) {
    surround(isLit);
    const GlState before = readGlState();
    forEachKind([&](MeshPass pass) {
      draw(pass);
      EXPECT_EQ(differences(before, readGlState()), kNone);
      pass.lists = home_;
      for (int i = 0; i < 2; ++i) {
        draw(pass);
        EXPECT_EQ(differences(before, readGlState()), kNone) << "with lists";
      }
    });
  }
}

TEST_F(MeshPainterTest, DisplayListsShowTheSame) {
  surround(true);
  int shown = 0;
  forEachKind([&](MeshPass pass) {
    // Mesa does not draw blended lines between two colours the same each time, without lists
    // either.
    if (pass.mode == MeshPass::kOutline && !model_.mesh().pointColours.empty()) return;
    const Image expected = picture(pass);
    shown += expected.count({0, 0, 0}) < kSide * kSide ? 1 : 0;
    // A context shows either the plane or space.
    lists_ = std::make_unique<ObjectLists>();
    pass.lists = home_;
    EXPECT_TRUE(picture(pass) == expected) << "compiled";
    EXPECT_TRUE(picture(pass) == expected) << "called";
  });
  EXPECT_GT(shown, 150);
}

TEST_F(MeshPainterTest, EdgesOfEveryWidthAreSmoothIfTheSceneIs) {
  paint(Paint::kColour);
  look_.style = MeshLook::kEdges;
  look_.edgeColour = {1, 1, 1, 1};
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  for (const double width : {1.0, 1.5, 2.0}) {
    look_.edgeWidth = width;
    glDisable(GL_LINE_SMOOTH);
    const Image hard = picture({});
    glEnable(GL_LINE_SMOOTH);
    EXPECT_GT(meanDifference(picture({}), hard), 0.5) << width;
  }
}

TEST_F(MeshPainterTest, SoftEdgesHideNothingBesideThem) {
  paint(Paint::kColour);
  look_.style = MeshLook::kEdges;
  look_.edgeColour = {1, 1, 1, 1};
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  const auto depthsTaken = [&](bool isSmooth) {
    setEnabled(GL_LINE_SMOOTH, isSmooth);
    static_cast<void>(picture({}));
    std::vector<GLfloat> depths(static_cast<std::size_t>(kSide) * kSide);
    glReadPixels(0, 0, kSide, kSide, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
    return depths;
  };
  EXPECT_TRUE(depthsTaken(true) == depthsTaken(false));
}

TEST_F(MeshPainterTest, DisplayListsFollowChanges) {
  const auto expectCurrent = [&](const char* what) {
    MeshPass pass;
    const Image expected = picture(pass);
    pass.lists = home_;
    EXPECT_TRUE(picture(pass) == expected) << what;
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << what;
  };
  for (look_.style = MeshLook::kSurfaces; look_.style <= MeshLook::kPoints; ++look_.style) {
    paint(Paint::kValues);
    expectCurrent("values");
    scale_.emplace(ColourScale{.bands = 3}, 2, model_);
    expectCurrent("another scale");
    model_.movePoints(20, std::vector<double>{1.4, 0, 0});
    expectCurrent("a point");
    scale_.reset();
    model_.setValues({});
    expectCurrent("one colour");
    look_.featureAngle = 5;
    expectCurrent("an angle");
    model_.setFaces({0, 5, 9}, {});
    expectCurrent("other faces");
    model_.take(sphere(80, 160));  // more than a list holds
    expectCurrent("a larger one");
    model_.take({});
    expectCurrent("nothing");
  }
}

TEST_F(MeshPainterTest, DisplayListsGoWithTheMesh) {
  const int before = countLists();
  model_.take(sphere(80, 160));
  const MeshPass pass{.lists = home_};
  for (look_.style = MeshLook::kSurfaces; look_.style <= MeshLook::kPoints; ++look_.style) {
    draw(pass);
  }
  const int all = countLists();
  ASSERT_GT(all, before + 5);
  model_.take(sphere(8, 8));
  look_.style = MeshLook::kSurfaces;
  draw(pass);
  home_->collect();
  EXPECT_LT(countLists(), all) << "fewer faces need fewer lists";
  EXPECT_GT(countLists(), before);
  lists_.reset();
  home_->collect();
  EXPECT_EQ(countLists(), before);
}

TEST_F(MeshPainterTest, EachContextHasItsOwnDisplayLists) {
  model_.take(sphere(12, 16));
  const MeshPass pass{.lists = home_};
  const Image expected = picture(pass);
  {
    const EglContext other(kSide, kSide);
    const int before = countLists();
    const auto home = std::make_shared<DisplayLists>();
    draw({.lists = home});
    EXPECT_EQ(countLists(), before + 1);
  }
  // That context has gone, with its lists: the mesh does not give up what nobody has any more.
  context.makeCurrent();
  EXPECT_TRUE(picture(pass) == expected);
  lists_.reset();
  home_->collect();
  EXPECT_EQ(countLists(), 0);
}

TEST_F(MeshPainterTest, ASelectionNamesFacesAndCompilesNothing) {
  const int before = countLists();
  surround(true);
  for (const bool hasQuery : {false, true}) {
    forEachKind([&](MeshPass pass) {
      std::vector<GLuint> hits(1 << 16);
      glSelectBuffer(static_cast<GLsizei>(hits.size()), hits.data());
      look_.name = kName;
      const PickQuery query{
          .volume = {matrixState(GL_PROJECTION_MATRIX), matrixState(GL_MODELVIEW_MATRIX)},
          .isFlat = pass.isFlat};
      if (hasQuery) pass.query = &query;
      glRenderMode(GL_SELECT);
      glInitNames();
      glPushName(1);
      const GlState state = readGlState();
      draw(pass);
      EXPECT_EQ(differences(state, readGlState()), kNone);
      look_.name = -1;
      draw(pass);
      const GLint records = glRenderMode(GL_RENDER);
      ASSERT_GT(records, 0);
      std::size_t at = 0;
      for (GLint record = 0; record < records; ++record, at += 3 + hits[at]) {
        if (hits[at] == 1) continue;  // what was hit before the mesh
        ASSERT_EQ(hits[at], 3U);
        EXPECT_EQ(hits[at + 3], 1U);
        EXPECT_EQ(hits[at + 4], static_cast<GLuint>(kName));
        EXPECT_LT(hits[at + 5], model_.mesh().faceCount());
      }
    });
  }
  EXPECT_EQ(countLists(), before);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace zyn::test
