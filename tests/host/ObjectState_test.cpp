// What objects leave of OpenGL's state, in all their looks: nothing, so that what is drawn next,
// and the next picture, look the same.
#include <vector>

#include "glcontext/gl_api.h"
#include "support/ArrayVariant_win.h"
#include "support/ForeignObject_win.h"
#include "support/GlState_gl.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

using Numbers = std::vector<double>;
using Objects = std::vector<ComPtr<IDispatch>>;

const Numbers kCorners = {0, 0, 0, 1, 0, 0, 1, 1, 0.5, 0, 1, 0.5, 0.5, 0.5, 1};

Objects makeMeshes() {
  Objects made;
  for (const long style : {0, 1, 2, 3, 4}) {
    const auto mesh = makeMesh(kCorners, {0, 1, 4, 1, 2, 4, 2, 3, 4});
    mesh->put_StyleRendu(style);
    mesh->put_EpaisseurAretes(style + 1);
    made.push_back(mesh);
  }
  return made;
}

Objects makePaths() {
  Objects made;
  for (const long colours : {0, 1, 2}) {
    for (const double width : {1.0, 2.5}) {
      auto path = createObject<IZYNGLTrajet>(kPathProgId);
      require(path->setPoints(doubleArray(kCorners)), "setPoints");
      require(path->setTypes(doubleArray({0, 1, 2, 1})), "setTypes");
      path->put_ModeCouleur(colours);
      path->put_EpaisseurTrait(width);
      path->put_Position(1);
      made.push_back(path);
    }
  }
  return made;
}

Objects makeTraces() {
  Objects made;
  for (const double width : {1.0, 2.0, 3.5}) {
    auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    require(trace->setPoints3D(doubleArray({0, 1, 1, 0}), doubleArray({0, 0, 1, 1}),
                               doubleArray({0, 0.5, 1, 0.5})),
            "setPoints3D");
    trace->put_Epaisseur(width);
    made.push_back(trace);
  }
  return made;
}

Objects makeTexts() {
  Objects made;
  for (const bool isFramed : {false, true}) {
    for (const bool isReadable : {true, false}) {
      auto text = makeText(L"State");
      ComPtr<IZYNGLTexte2> further;
      require(text.As(&further), "IZYNGLTexte2");
      further->put_Fond(isFramed ? VARIANT_TRUE : VARIANT_FALSE);
      further->put_Cadre(isFramed ? VARIANT_TRUE : VARIANT_FALSE);
      text->put_ToujoursLisible(isReadable ? VARIANT_TRUE : VARIANT_FALSE);
      made.push_back(text);
    }
  }
  return made;
}

Objects makeOthers() {
  Objects made = {makeRectangle(0, 1, 0, 1, 0.5, kGreen)[0]};
  made.push_back(createObject<IZYNEchelleCouleurs>(L"ZYNVue.ZYNEchelleCouleurs"));
  made.push_back(createObject<IZYNGLBitmap>(kSpriteProgId));
  return made;
}

struct Case {
  const char* name;
  Objects (*make)();
  VARIANT_BOOL smooth;
};

class ObjectStateTest : public HostTest, public testing::WithParamInterface<Case> {
 protected:
  /// What an object changes; texts leave the depth test on.
  static std::vector<std::string> changedBy(OffscreenScene& scene, IDispatch* object, int mode) {
    GlState before;
    GlState after;
    const auto first = makeForeign<ForeignObject>();
    first->onDraw3D = [&](int) {
      glEnable(GL_DEPTH_TEST);
      glColor4f(0.1F, 0.2F, 0.3F, 0.4F);
      glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 7);
      before = readGlState();
      return S_OK;
    };
    const auto last = makeForeign<ForeignObject>();
    last->onDraw3D = [&](int) {
      after = readGlState();
      return S_OK;
    };
    require(scene->RemoveAll(), "RemoveAll");
    require(scene->Add(first->dispatch(), 0), "Add");
    require(scene->Add(object, mode), "Add");
    require(scene->Add(last->dispatch(), 0), "Add");
    scene.render();
    return differences(before, after);
  }
};

TEST_P(ObjectStateTest, StaysAsItWas) {
  OffscreenScene scene;
  scene->put_LineAntialiasing(GetParam().smooth);
  scene.resize(120, 80);
  int number = 0;
  for (const auto& object : GetParam().make()) {
    SCOPED_TRACE(++number);
    for (const int mode : {0, 1}) {
      EXPECT_EQ(changedBy(scene, object.Get(), mode), kNone) << mode;
      EXPECT_EQ(changedBy(scene, object.Get(), mode), kNone) << mode << ", from what is kept";
    }
  }
}

/// A background of two colours is drawn first, and looks as in the first picture.
TEST_P(ObjectStateTest, TheNextPictureIsTheSame) {
  OffscreenScene scene;
  scene->put_LineAntialiasing(GetParam().smooth);
  scene.resize(120, 80);
  require(scene->put_GradientBackground(VARIANT_TRUE), "GradientBackground");
  require(scene->setGradientColor(0.2F, 0.4F, 0.8F), "setGradientColor");
  int number = 0;
  for (const auto& object : GetParam().make()) {
    SCOPED_TRACE(++number);
    require(scene->RemoveAll(), "RemoveAll");
    require(scene->Add(object.Get(), 0), "Add");
    const auto reader = makeForeign<ForeignObject>();
    GlState found;
    reader->onDraw3D = [&](int) {
      found = readGlState();
      return S_OK;
    };
    require(scene->Add(reader->dispatch(), 0), "Add");
    const Image first = scene.render();
    const GlState before = found;
    EXPECT_EQ(meanDifference(scene.render(), first), 0);
    EXPECT_EQ(differences(before, found), kNone);
  }
}

INSTANTIATE_TEST_SUITE_P(All, ObjectStateTest,
                         testing::Values(Case{"meshes", makeMeshes, VARIANT_FALSE},
                                         Case{"smoothMeshes", makeMeshes, VARIANT_TRUE},
                                         Case{"paths", makePaths, VARIANT_FALSE},
                                         Case{"smoothPaths", makePaths, VARIANT_TRUE},
                                         Case{"traces", makeTraces, VARIANT_FALSE},
                                         Case{"smoothTraces", makeTraces, VARIANT_TRUE},
                                         Case{"texts", makeTexts, VARIANT_FALSE},
                                         Case{"smoothTexts", makeTexts, VARIANT_TRUE},
                                         Case{"others", makeOthers, VARIANT_FALSE},
                                         Case{"smoothOthers", makeOthers, VARIANT_TRUE}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace zyn::test
