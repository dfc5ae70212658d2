#include "objects/triangle/TriangleRun_gl.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <limits>
#include <list>
#include <numeric>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "objects/triangle/TrianglePainter_gl.h"
#include "support/GlTest_gl.h"
#include "view3d/Lights_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

using Shapes = std::vector<TriangleShape>;

constexpr int kSurface = 0;
constexpr int kOutline = 1;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

/// Choices that are the same in every run of the tests.
class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}

  double between(double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(engine_);
  }
  int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(engine_); }
  bool once(int in) { return below(in) == 0; }
  template <class T>
  T oneOf(std::initializer_list<T> values) {
    return values.begin()[below(static_cast<int>(values.size()))];
  }

 private:
  std::mt19937 engine_;
};

/// What of the surroundings decides how triangles look and which state they leave.
struct Surroundings {
  bool lighting = true;
  bool colourMaterial = false;
  bool cullFace = true;
  bool depthMask = true;
  bool depthTest = true;
  bool blend = false;
  GLint twoSide = 0;
  GLfloat frontShininess = 20;
  GLfloat backShininess = 30;
  GLenum polygonMode = GL_FILL;
  GLenum shadeModel = GL_SMOOTH;
  bool fog = false;
  bool clipping = false;
  bool stipple = false;
  bool localViewer = false;
};

void setLights() {
  LightBlock lights;
  lights.put(LightBlock::Section::kAmbient, std::vector<double>{1, 0.5, 0.25, 1, 0.4});
  lights.put(LightBlock::Section::kLight1,
             std::vector<double>{1, 1, 0.5, 0.25, 0.1, 0.5, 0.3, 0.5, 0.25});
  lights.put(LightBlock::Section::kLight2,
             std::vector<double>{2, 0.25, 0.5, 1, 0.05, 0.4, 0.2, -0.75, -0.5});
  applyLights(lights);
}

void setFoundMaterial(GLenum face, GLfloat shininess) {
  applyColours({.ambient = {0.1F, 0.2F, 0.3F, 0.4F},
                .diffuse = {0.5F, 0.6F, 0.7F, 0.8F},
                .specular = {0.9F, 0.8F, 0.7F, 0.6F},
                .emission = {0.5F, 0.4F, 0.3F, 0.2F}},
               face);
  glMaterialf(face, GL_SHININESS, shininess);
}

void setSurroundings(const Surroundings& s) {
  setLights();
  setEnabled(GL_LIGHTING, s.lighting);
  setEnabled(GL_COLOR_MATERIAL, false);
  setFoundMaterial(GL_FRONT, s.frontShininess);
  setFoundMaterial(GL_BACK, s.backShininess);
  currentMaterial(
      GL_FRONT);  // Mesa applies materials set so far only now, over those from the colour
  setEnabled(GL_COLOR_MATERIAL, s.colourMaterial);
  setEnabled(GL_CULL_FACE, s.cullFace);
  glDepthMask(s.depthMask ? GL_TRUE : GL_FALSE);
  setEnabled(GL_DEPTH_TEST, s.depthTest);
  setEnabled(GL_BLEND, s.blend);
  glBlendFunc(GL_DST_COLOR, GL_ONE);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, s.twoSide);
  glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, s.localViewer ? 1 : 0);
  glPolygonMode(GL_FRONT_AND_BACK, s.polygonMode);
  glShadeModel(s.shadeModel);
  setEnabled(GL_FOG, s.fog);
  setEnabled(GL_CLIP_PLANE0, s.clipping);
  constexpr GLdouble kPlane[] = {0.6, 0.8, 0.1, 0.2};
  glClipPlane(GL_CLIP_PLANE0, kPlane);
  setEnabled(GL_LINE_STIPPLE, s.stipple);
  glLineStipple(1, 0x0FF7);
  glNormal3f(0.25F, 0.5F, 0.75F);
  glColor4f(0.125F, 0.25F, 0.375F, 0.5F);
}

Vecteur anyNormal(Chance& chance) {
  return {chance.between(-0.7, 0.7), chance.between(-0.7, 0.7), chance.between(-1, 1)};
}

Point anyPoint(Chance& chance) {
  return {chance.between(-1.1, 1.1), chance.between(-1.1, 1.1), chance.between(-0.9, 0.9)};
}

TriangleShape anyShape(Chance& chance, bool withMaterials) {
  TriangleShape shape;
  for (int i = 0; i < 3; ++i) {
    shape.vertices[i] = anyPoint(chance);
    shape.normals[i] = anyNormal(chance);
  }
  shape.r = chance.once(20) ? kNotANumber : chance.oneOf({0.2, 0.9, chance.between(0, 1)});
  shape.g = chance.oneOf({0.4, chance.between(0, 1)});
  shape.b = chance.oneOf({0.7, chance.between(0, 1)});
  shape.alpha = chance.oneOf({1.0, 1.0, 1.0, 0.5, chance.between(0, 1), 1.5, kNotANumber});
  shape.hasMaterial = withMaterials && !chance.once(3);
  shape.ambient = chance.oneOf({0.0, 0.5, chance.between(0, 1)});
  shape.diffuse = chance.oneOf({0.6, chance.between(0, 1)});
  shape.specular = chance.oneOf({0.0, 0.4, chance.between(0, 1)});
  shape.shininess = chance.oneOf({0.0, 0.25, 1.0, chance.between(0, 1), -1.0, 50.0, kNotANumber});
  shape.emissive = chance.oneOf({0.0, 0.1, chance.between(0, 0.3)});
  return shape;
}

Shapes anyShapes(Chance& chance) {
  const bool withMaterials = !chance.once(3);
  Shapes shapes;
  for (int count = 1 + chance.below(12); count > 0; --count) {
    shapes.push_back(shapes.empty() || !chance.once(4) ? anyShape(chance, withMaterials)
                                                       : shapes.back());
    for (Point& vertex : shapes.back().vertices) {
      vertex = anyPoint(chance);
    }
  }
  return shapes;
}

void drawOneByOne(const Shapes& shapes, bool isOutline) {
  for (const TriangleShape& shape : shapes) {
    drawTriangle3D(shape, isOutline ? kOutline : kSurface);
  }
}

TriangleCalls emit(std::span<const TriangleShape> shapes, const TriangleSetting& setting) {
  TriangleEmitter emitter(setting);
  for (const TriangleShape& shape : shapes) {
    emitter.add(shape);
  }
  return emitter.finish();
}

void drawAtOnce(const Shapes& shapes, bool isOutline) {
  TriangleRun run(isOutline);
  run.pass(emit(shapes, run.setting()));
}

/// Triangles compiled into a display list as often as the surroundings ask for it.
class Chunk {
 public:
  explicit Chunk(Shapes shapes) : shapes_(std::move(shapes)), list_(glGenLists(1)) {}
  ~Chunk() { glDeleteLists(list_, 1); }
  Chunk(const Chunk&) = delete;
  Chunk& operator=(const Chunk&) = delete;

  void draw(TriangleRun& run) {
    if (!calls_ || !calls_->suit(run.setting())) {
      glNewList(list_, GL_COMPILE);
      calls_ = emit(shapes_, run.setting());
      glEndList();
      ++compilations_;
    }
    glCallList(list_);
    run.pass(*calls_);
  }

  int compilations() const { return compilations_; }

 private:
  Shapes shapes_;
  GLuint list_;
  std::optional<TriangleCalls> calls_;
  int compilations_ = 0;
};

/// Chunks of up to this many triangles, as a list keeps them from frame to frame.
class Chunks {
 public:
  Chunks(const Shapes& shapes, int most) {
    const auto length = static_cast<std::ptrdiff_t>(most);
    for (auto from = shapes.begin(); from != shapes.end();) {
      const auto to = from + std::min(length, shapes.end() - from);
      chunks_.emplace_back(Shapes(from, to));
      from = to;
    }
  }

  void draw(bool isOutline) {
    TriangleRun run(isOutline);
    for (Chunk& chunk : chunks_) {
      chunk.draw(run);
    }
  }

  int compilations() const {
    return std::accumulate(chunks_.begin(), chunks_.end(), 0,
                           [](int sum, const Chunk& chunk) { return sum + chunk.compilations(); });
  }

 private:
  std::list<Chunk> chunks_;
};

/// All that drawing can change.
struct Outcome {
  std::vector<GLubyte> pixels;
  std::vector<GLuint> depths;
  GlState state;
};

void expectSame(const Outcome& expected, const Outcome& actual, const std::string& what) {
  EXPECT_EQ(differences(expected.state, actual.state), kNone) << what;
  EXPECT_TRUE(expected.pixels == actual.pixels) << what;
  EXPECT_TRUE(expected.depths == actual.depths) << what;
}

class TriangleRunTest : public test::GlTest {
 protected:
  static constexpr std::size_t kPixels = std::size_t{kSide} * kSide;

  static Outcome outcomeOf(const Surroundings& surroundings, const std::function<void()>& draw) {
    glDepthMask(GL_TRUE);
    glClearColor(0.3F, 0.6F, 0.9F, 0.5F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    setSurroundings(surroundings);
    glEnable(GL_INVALID_ENUM);  // leaves an error
    draw();
    Outcome outcome;
    outcome.state = readGlState();
    outcome.pixels.resize(kPixels * 4);
    glReadPixels(0, 0, kSide, kSide, GL_RGBA, GL_UNSIGNED_BYTE, outcome.pixels.data());
    outcome.depths.resize(kPixels);
    glReadPixels(0, 0, kSide, kSide, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT, outcome.depths.data());
    return outcome;
  }

  static void expectRunsLikeSingles(const Surroundings& surroundings, const Shapes& shapes,
                                    bool isOutline, int chunkLength, const std::string& what) {
    const Outcome expected = outcomeOf(surroundings, [&] { drawOneByOne(shapes, isOutline); });
    const Outcome atOnce = outcomeOf(surroundings, [&] { drawAtOnce(shapes, isOutline); });
    expectSame(expected, atOnce, what + ", at once");
    Chunks chunks(shapes, chunkLength);
    const Outcome compiled = outcomeOf(surroundings, [&] { chunks.draw(isOutline); });
    expectSame(expected, compiled, what + ", compiled");
  }
};

const std::vector<std::pair<std::string, Surroundings>> kSurroundings = {
    {"Lit", {}},
    {"Unlit", {.lighting = false}},
    {"ColourMaterial", {.colourMaterial = true}},
    {"UnlitColourMaterial", {.lighting = false, .colourMaterial = true}},
    {"BackFaces", {.cullFace = false}},
    {"NoDepthWrites", {.depthMask = false}},
    {"UnlitNoDepthWrites", {.lighting = false, .depthMask = false, .blend = true}},
    {"TwoSided", {.twoSide = 1}},
    {"LikeTransparent", {.cullFace = false, .depthMask = false, .twoSide = 1}},
    {"TwoSidedColourMaterial", {.colourMaterial = true, .cullFace = false, .twoSide = 1}},
    {"NoDepthTest", {.depthTest = false}},
    {"FrontWithoutShininess", {.frontShininess = 0}},
    {"BackWithoutShininess", {.backShininess = 0}},
    {"WithoutShininess", {.frontShininess = 0, .backShininess = 0}},
    {"Lines", {.polygonMode = GL_LINE}},
    {"Points", {.polygonMode = GL_POINT}},
    {"Flat", {.shadeModel = GL_FLAT}},
    {"Fog", {.fog = true}},
    {"Clipped", {.clipping = true}},
    {"Stippled", {.stipple = true}},
    {"LocalViewer", {.localViewer = true}},
};

class TriangleRunAnywhereTest
    : public TriangleRunTest,
      public testing::WithParamInterface<std::pair<std::string, Surroundings>> {};

TEST_P(TriangleRunAnywhereTest, LooksAndLeavesTheStateLikeSingleTriangles) {
  for (const bool isOutline : {false, true}) {
    for (unsigned seed = 0; seed < 20; ++seed) {
      Chance chance(seed);
      const Shapes shapes = anyShapes(chance);
      expectRunsLikeSingles(GetParam().second, shapes, isOutline, 1 + chance.below(6),
                            "seed " + std::to_string(seed) + (isOutline ? ", outlines" : ""));
      ASSERT_FALSE(HasFailure());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, TriangleRunAnywhereTest, testing::ValuesIn(kSurroundings),
                         [](const auto& surroundings) { return surroundings.param.first; });

TEST_F(TriangleRunTest, ListsAreCompiledAnewOnlyWhereTheyWouldBeWrong) {
  Chance chance(1);
  for (int scene = 0; scene < 20; ++scene) {
    const Shapes shapes = anyShapes(chance);
    Chunks chunks(shapes, 3);
    for (int frame = 0; frame < 10; ++frame) {
      const auto at =
          static_cast<std::size_t>(chance.below(static_cast<int>(kSurroundings.size())));
      const auto& [name, surroundings] = kSurroundings[at];
      const bool isOutline = chance.once(3);
      const Outcome expected = outcomeOf(surroundings, [&] { drawOneByOne(shapes, isOutline); });
      const Outcome compiled = outcomeOf(surroundings, [&] { chunks.draw(isOutline); });
      expectSame(expected, compiled, "scene " + std::to_string(scene) + ", " + name);
      ASSERT_FALSE(HasFailure());

      const int compilations = chunks.compilations();
      outcomeOf(surroundings, [&] { chunks.draw(isOutline); });
      EXPECT_EQ(chunks.compilations(), compilations);
    }
  }
}

TEST_F(TriangleRunTest, ShininessAroundThemMattersOnlyToTrianglesWithoutTheirOwn) {
  Chance chance(2);
  TriangleShape shape = anyShape(chance, false);
  const auto compilationsOf = [&] {
    Chunks chunks({shape}, 1);
    outcomeOf({.frontShininess = 5}, [&] { chunks.draw(false); });
    outcomeOf({.backShininess = 6}, [&] { chunks.draw(false); });
    return chunks.compilations();
  };
  EXPECT_EQ(compilationsOf(), 1);
  shape.hasMaterial = true;
  shape.shininess = 1;
  EXPECT_EQ(compilationsOf(), 1);
  shape.shininess = 2;
  EXPECT_EQ(compilationsOf(), 2);
}

TEST_F(TriangleRunTest, AShininessOfZeroGivesWayToTheFirstOther) {
  Chance chance(3);
  Shapes shapes;
  for (const double shininess : {0.0, 2.0, 0.25, 0.5}) {
    shapes.push_back(anyShape(chance, false));
    shapes.back().hasMaterial = true;
    shapes.back().shininess = shininess;
  }
  Chunks chunks(shapes, 1);
  const Outcome outcome =
      outcomeOf({.frontShininess = 0, .backShininess = 7}, [&] { chunks.draw(false); });
  EXPECT_EQ(outcome.state.at("GL_FRONT GL_SHININESS"), std::vector<double>{32});
  EXPECT_EQ(outcome.state.at("GL_BACK GL_SHININESS"), std::vector<double>{7});
}

TEST_F(TriangleRunTest, ManyTrianglesOfAllKindsLookLikeSingleOnes) {
  Chance chance(4);
  for (const bool isOutline : {false, true}) {
    Shapes shapes;
    for (int i = 0; i < 1000; ++i) {
      shapes.push_back(anyShape(chance, true));
    }
    expectRunsLikeSingles({}, shapes, isOutline, 1000, isOutline ? "outlines" : "surfaces");
  }
}

TEST_F(TriangleRunTest, ManyOfOneKindLookLikeSingleOnes) {
  Chance chance(5);
  for (const bool isOutline : {false, true}) {
    Shapes shapes;
    for (int i = 0; i < 5000; ++i) {
      shapes.push_back(anyShape(chance, false));
      shapes.back().alpha = 1;
    }
    expectRunsLikeSingles({}, shapes, isOutline, 5000, isOutline ? "outlines" : "surfaces");
  }
}

}  // namespace
}  // namespace zyn
