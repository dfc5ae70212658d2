// The draw list of the 3D bitmap context: order, modes, transparency, changes, and objects of
// other components, failing ones included.
#include <climits>
#include <random>

#include "support/ForeignBounds_win.h"
#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 60;

// First of all, so that the library looks for its pixel formats now.
class FirstContextTest : public HostTest {};

TEST_F(FirstContextTest, LookingForPixelFormatsKeepsTheHostsContext) {
  GlCanvas canvas(16, 16);
  auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  EXPECT_TRUE(canvas.isCurrent());
}

class DrawListTest : public HostTest {
 protected:
  /// Keeps the view on the square 0..6, so that one unit is ten pixels whatever is in the list.
  DrawListTest() {
    auto box = makeForeign<ForeignBox>(0.0, 6.0, 0.0, 6.0, -3.0, 3.0);
    scene_->ViewParams(box.Get(), 0, nullptr);
  }
  void addRectangle(double xMin, double xMax, double z, const Rgb& colour, double alpha = 1,
                    int mode = 0) {
    scene_.addAll(makeRectangle(xMin, xMax, 0, 6, z, colour, alpha), mode);
  }
  static Rgb atUnit(const Image& image, double x, double y = 3) {
    return image.at(static_cast<int>(x * 10), kSize - 1 - static_cast<int>(y * 10));
  }
  /// A foreign object that paints a rectangle of the square with raw OpenGL calls.
  static ComPtr<ForeignObject> makePainter(double xMin, double xMax, double z, const Rgb& colour) {
    auto object = makeForeign<ForeignObject>();
    object->onDraw3D = [=](int) {
      glDisable(GL_LIGHTING);
      glColor3ub(static_cast<GLubyte>(colour.r), static_cast<GLubyte>(colour.g),
                 static_cast<GLubyte>(colour.b));
      glBegin(GL_QUADS);
      glVertex3d(xMin, 0, z);
      glVertex3d(xMax, 0, z);
      glVertex3d(xMax, 6, z);
      glVertex3d(xMin, 6, z);
      glEnd();
      glEnable(GL_LIGHTING);
      return S_OK;
    };
    return object;
  }

  OffscreenScene scene_{kSize, kSize};
};

// --- order and depth -----------------------------------------------------------------------------

TEST_F(DrawListTest, FirstAddedIsDrawnFirst) {
  addRectangle(0, 4, 0, kRed);
  auto painter = makePainter(2, 6, 0, kBlue);
  scene_.add(painter->dispatch());
  addRectangle(1, 6, 0, kGreen);
  const Image image = scene_.render();
  // At equal depth what was drawn first stays.
  EXPECT_EQ(atUnit(image, 1.5), kRed);
  EXPECT_EQ(atUnit(image, 3), kRed);
  EXPECT_EQ(atUnit(image, 5), kBlue);
}

TEST_F(DrawListTest, NearerHidesFartherWhateverTheOrder) {
  addRectangle(0, 4, 1, kRed);
  addRectangle(2, 6, -1, kGreen);
  addRectangle(3, 6, 2, kBlue);
  const Image image = scene_.render();
  EXPECT_EQ(atUnit(image, 1), kRed);
  EXPECT_EQ(atUnit(image, 2.5), kRed);
  EXPECT_EQ(atUnit(image, 3.5), kBlue);
  EXPECT_EQ(atUnit(image, 5), kBlue);
}

TEST_F(DrawListTest, TransparentBlendsOverWhatIsThere) {
  addRectangle(0, 3, 0, kYellow);
  addRectangle(0, 6, 1, kBlue, 0.25);
  const Image image = scene_.render();
  EXPECT_LE(difference(atUnit(image, 1), {191, 191, 64}), 1);
  EXPECT_LE(difference(atUnit(image, 5), {0, 38, 140}), 1);
}

TEST_F(DrawListTest, TransparentWritesNoDepth) {
  addRectangle(0, 6, 2, kBlue, 0.5);
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(atUnit(scene_.render(), 3), kRed);
}

TEST_F(DrawListTest, BacksOfOpaqueTrianglesAreCulled) {
  scene_.add(makeFlatTriangle({0, 0, 0}, {0, 6, 0}, {6, 0, 0}, kRed).Get());
  EXPECT_EQ(atUnit(scene_.render(), 1, 1), kBackground);
  scene_.add(makeFlatTriangle({0, 0, 0}, {0, 6, 0}, {6, 0, 0}, kRed, 0.5).Get());
  EXPECT_NE(atUnit(scene_.render(), 1, 1), kBackground);
}

TEST_F(DrawListTest, ObjectAddedTwiceIsDrawnTwice) {
  auto glass = makeFlatTriangle({0, 0, 0}, {6, 0, 0}, {0, 6, 0}, kWhite, 0.5);
  scene_.add(glass.Get());
  scene_.add(glass.Get());
  // Half of the way to white, twice.
  EXPECT_LE(difference(atUnit(scene_.render(), 1, 1), {191, 204, 217}), 1);
  EXPECT_EQ(referencesOf(glass.Get()), 3u);
}

// --- modes ---------------------------------------------------------------------------------------

TEST_F(DrawListTest, ModeReachesTheObjectUnchanged) {
  for (int mode : {0, 1, 7, -1, -2, INT_MAX, INT_MIN}) {
    auto object = makeForeign<ForeignObject>();
    scene_.add(object->dispatch(), mode);
    scene_.render();
    EXPECT_EQ(object->modes, std::vector<int>{mode});
    EXPECT_TRUE(object->modes2D.empty());
    scene_->RemoveAll();
  }
}

TEST_F(DrawListTest, EachElementHasAModeOfItsOwn) {
  auto object = makeForeign<ForeignObject>();
  scene_.add(object->dispatch(), 3);
  scene_.add(object->dispatch(), 1);
  scene_.add(object->dispatch(), 0);
  scene_.render();
  EXPECT_EQ(object->modes, (std::vector<int>{3, 1, 0}));
}

TEST_F(DrawListTest, TrianglesDrawInTheirMode) {
  auto triangle = makeFlatTriangle({0, 0, 0}, {6, 0, 0}, {0, 6, 0}, kRed);
  scene_.add(triangle.Get(), 1);
  Image image = scene_.render();
  EXPECT_EQ(atUnit(image, 1.5, 1.5), kBackground);
  EXPECT_EQ(atUnit(image, 3, 2.95), kRed);
  scene_->RemoveAll();
  for (int mode : {0, 2, -1}) {
    scene_.add(triangle.Get(), mode);
    image = scene_.render();
    EXPECT_EQ(atUnit(image, 1.5, 1.5), kRed) << mode;
    scene_->RemoveAll();
  }
}

// --- changes between two pictures ----------------------------------------------------------------

TEST_F(DrawListTest, ChangedTrianglesShowInTheNextPicture) {
  auto triangles = makeRectangle(0, 6, 0, 6, 0, kRed);
  scene_.addAll(triangles);
  EXPECT_EQ(scene_.render().count(kRed), kSize * kSize);
  setFlatColour(triangles[0].Get(), kBlue);
  Image image = scene_.render();
  EXPECT_EQ(atUnit(image, 5, 1), kBlue);
  EXPECT_EQ(atUnit(image, 1, 5), kRed);
  triangles[0]->setPoint(1, 0, 0, 0);
  image = scene_.render();
  EXPECT_EQ(atUnit(image, 5, 1), kBackground);
  EXPECT_EQ(atUnit(image, 1, 5), kRed);
}

TEST_F(DrawListTest, ChangedNormalsShowInTheNextPicture) {
  auto triangles = makeRectangle(0, 6, 0, 6, 0, kRed);
  for (auto& triangle : triangles) triangle->setMaterial(1, 1, 1, 1, 0, 1, 0, 0, 0);
  scene_.addAll(triangles);
  EXPECT_LE(difference(atUnit(scene_.render(), 3), {115, 115, 115}), 1);  // diffuse 0.45
  for (auto& triangle : triangles) setNormals(triangle.Get(), {0, 0, -1});
  EXPECT_EQ(atUnit(scene_.render(), 3), kBlack);
}

TEST_F(DrawListTest, TheSameSceneGivesTheSamePicture) {
  addRectangle(0, 4, 0, kRed);
  addRectangle(2, 6, 1, kBlue, 0.5);
  const Bytes first = scene_.renderBytes();
  EXPECT_EQ(scene_.renderBytes(), first);
  EXPECT_EQ(scene_.renderBytes(), first);
}

TEST_F(DrawListTest, OneTriangleMayBeInTwoContexts) {
  auto triangle = makeFlatTriangle({0, 0, 0}, {6, 0, 0}, {0, 6, 0}, kRed);
  OffscreenScene other(kSize, kSize);
  scene_.add(triangle.Get());
  other.add(triangle.Get());
  const Image here = scene_.render();
  EXPECT_EQ(other.render(), here);
  setFlatColour(triangle.Get(), kGreen);
  EXPECT_EQ(other.render().count(kGreen), here.count(kRed));
  EXPECT_EQ(scene_.render().count(kGreen), here.count(kRed));
}

// However the context draws its own objects, the picture is that of drawing them one by one.
TEST_F(DrawListTest, ManyTrianglesLookAsIfDrawnOneByOne) {
  OffscreenScene oneByOne(kSize, kSize);
  auto box = makeForeign<ForeignBox>(0.0, 6.0, 0.0, 6.0, -3.0, 3.0);
  oneByOne->ViewParams(box.Get(), 0, nullptr);
  std::mt19937 random(7);
  std::uniform_real_distribution<double> place(-0.5, 6.5);
  std::uniform_real_distribution<double> part(0, 1);
  for (int i = 0; i < 300; ++i) {
    const auto vertex = [&] { return Vec{place(random), place(random), 4 * part(random) - 2}; };
    auto triangle = makeTriangle(vertex(), vertex(), vertex());
    setNormals(triangle.Get(), normalised({part(random) - 0.5, part(random) - 0.5, 0.5}));
    const double alpha = i % 3 == 0 ? part(random) : 1.0;
    if (i % 2 == 0) {
      triangle->setColor(part(random), part(random), part(random), alpha);
    } else {
      triangle->setMaterial(part(random), part(random), part(random), alpha, part(random),
                            part(random), part(random), part(random), 0.2 * part(random));
    }
    const int mode = i % 7 == 0 ? 1 : 0;
    scene_.add(triangle.Get(), mode);
    auto proxy = makeForeign<ForeignObject>();
    auto draw = queryFor<IGLDraw>(triangle.Get());
    proxy->onDraw3D = [draw](int as) { return draw->Draw3D(as); };
    oneByOne.add(proxy->dispatch(), mode);
  }
  const Image expected = oneByOne.render();
  EXPECT_EQ(scene_.render(), expected);
  EXPECT_EQ(scene_.render(), expected) << "second picture";
  EXPECT_LT(expected.count(kBackground), kSize * kSize / 2);
}

// --- what may be added ---------------------------------------------------------------------------

TEST_F(DrawListTest, NullIsIgnored) {
  EXPECT_EQ(scene_->Add(nullptr, 0), S_OK);
  EXPECT_EQ(scene_.render().count(kBackground), kSize * kSize);
}

TEST_F(DrawListTest, ObjectsThatCannotDrawAreSkipped) {
  auto stranger = makeForeign<ForeignBox>(0, 1, 0, 1, 0, 1);
  EXPECT_EQ(scene_->Add(stranger.Get(), 0), S_OK);
  auto marked = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  marked->refuse(__uuidof(IGLDraw));
  EXPECT_EQ(scene_->Add(marked->dispatch(), 0), S_OK);
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(scene_.render().count(kRed), kSize * kSize);
  scene_->RemoveAll();
  EXPECT_EQ(referencesOf(stranger.Get()), 1u);
  EXPECT_EQ(referencesOf(marked.Get()), 1u);
}

TEST_F(DrawListTest, ListHoldsItsObjectsUntilRemoveAll) {
  auto object = makeForeign<ForeignObject>();
  scene_.add(object->dispatch());
  scene_.add(object->dispatch());
  scene_.render();
  EXPECT_GT(referencesOf(object.Get()), 1u);
  EXPECT_EQ(scene_->RemoveAll(), S_OK);
  EXPECT_EQ(referencesOf(object.Get()), 1u);
  EXPECT_EQ(scene_->RemoveAll(), S_OK);
  scene_.render();
  EXPECT_EQ(object->modes.size(), 2u);
}

TEST_F(DrawListTest, ContextKeepsAndGivesBackItsObjects) {
  scene_.add(makeForeign<ForeignObject>()->dispatch());
  EXPECT_EQ(ForeignObject::live(), 1);
  scene_.render();
  scene_.take().Reset();
  EXPECT_EQ(ForeignObject::live(), 0);
}

TEST_F(DrawListTest, ObjectsMayBeAddedBeforeTheSurfaceExists) {
  TempFolder folder;
  auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  for (auto& triangle : makeRectangle(0, 6, 0, 6, 0, kRed)) {
    EXPECT_EQ(context->Add(triangle.Get(), 0), S_OK);
  }
  long made = 0;
  context->CreateContext(kSize, kSize, &made);
  context->CreateBitmap(bstr(folder.file(L"a.bmp")));
  EXPECT_EQ(decodeBmp(readFile(folder.file(L"a.bmp"))).count(kRed), kSize * kSize);
}

// --- the number of an object ---------------------------------------------------------------------

TEST_F(DrawListTest, AttributeIsAskedAndGivenBack) {
  auto attribute = makeForeign<ForeignAttribute>(12);
  auto object = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  object->onAttribut = [&](IDispatch** out) { return handOut(attribute, out); };
  EXPECT_EQ(scene_->Add(object->dispatch(), 0), S_OK);
  EXPECT_EQ(object->attributCalls, 1);
  EXPECT_EQ(attribute->asked, 1);
  scene_->RemoveAll();
  EXPECT_EQ(referencesOf(attribute.Get()), 1u);
  EXPECT_EQ(referencesOf(object.Get()), 1u);
}

TEST_F(DrawListTest, MissingAttributeIsNoError) {
  auto without = makeForeign<ForeignObject>();
  without->refuse(__uuidof(IZYNAttribuable));
  auto empty = makeForeign<ForeignObject>();
  auto refusing = makeForeign<ForeignObject>();
  refusing->onAttribut = [](IDispatch**) { return E_NOINTERFACE; };
  auto strange = makeForeign<ForeignObject>();
  strange->onAttribut = [](IDispatch** out) {
    return handOut(makeForeign<ForeignBox>(0, 1, 0, 1, 0, 1), out);
  };
  for (auto& object : {without, empty, refusing, strange}) {
    EXPECT_EQ(scene_->Add(object->dispatch(), 0), S_OK);
  }
  scene_.render();
  for (auto& object : {without, empty, refusing, strange}) EXPECT_EQ(object->modes.size(), 1u);
}

TEST_F(DrawListTest, FailingAttributeQuestionRaisesAndAddsNothing) {
  const auto attempt = [&](const char* where, HRESULT code, const ComPtr<ForeignObject>& object) {
    EXPECT_EQ(scene_->Add(object->dispatch(), 0), code) << where;
    scene_.render();
    EXPECT_TRUE(object->modes.empty()) << where;
    EXPECT_EQ(callMethod(scene_.get(), L"Add", {object->dispatch(), 0L}).code(), code) << where;
  };

  auto query = makeForeign<ForeignObject>();
  query->refuse(__uuidof(IZYNAttribuable), E_UNEXPECTED);
  attempt("asking for the interface", E_UNEXPECTED, query);

  auto get = makeForeign<ForeignObject>();
  get->onAttribut = [](IDispatch**) { return E_ACCESSDENIED; };
  attempt("asking for the attribute", E_ACCESSDENIED, get);

  auto unwilling = makeForeign<ForeignAttribute>(1);
  unwilling->refuse(__uuidof(IZYNAttribut), E_UNEXPECTED);
  auto second = makeForeign<ForeignObject>();
  second->onAttribut = [&](IDispatch** out) { return handOut(unwilling, out); };
  attempt("asking the attribute for its interface", E_UNEXPECTED, second);

  auto mute = makeForeign<ForeignAttribute>(1, E_OUTOFMEMORY);
  auto third = makeForeign<ForeignObject>();
  third->onAttribut = [&](IDispatch** out) { return handOut(mute, out); };
  attempt("asking for the number", E_OUTOFMEMORY, third);

  for (auto& object : {query, get, second, third}) EXPECT_LE(referencesOf(object.Get()), 2u);
  EXPECT_EQ(referencesOf(unwilling.Get()), 1u);
  EXPECT_EQ(referencesOf(mute.Get()), 1u);
}

TEST_F(DrawListTest, FailedAddKeepsNoReference) {
  auto object = makeForeign<ForeignObject>();
  object->onAttribut = [](IDispatch**) { return E_ACCESSDENIED; };
  EXPECT_EQ(scene_->Add(object->dispatch(), 0), E_ACCESSDENIED);
  EXPECT_EQ(referencesOf(object.Get()), 1u);
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(scene_.render().count(kRed), kSize * kSize);
}

// --- failing objects -----------------------------------------------------------------------------

class FailingDrawTest : public DrawListTest {
 protected:
  FailingDrawTest() {
    before_ = makeForeign<ForeignObject>();
    after_ = makeForeign<ForeignObject>();
    scene_.add(before_->dispatch());
    failing_->onDraw3D = [this](int) { return answer_; };
    scene_.add(failing_->dispatch());
    scene_.add(after_->dispatch());
  }
  HRESULT answer_ = E_ACCESSDENIED;
  ComPtr<ForeignObject> before_;
  ComPtr<ForeignObject> failing_ = makeForeign<ForeignObject>();
  ComPtr<ForeignObject> after_;
};

TEST_F(FailingDrawTest, EveryExportRaisesAndWritesNothing) {
  const _bstr_t target = bstr(scene_.folder().file(L"picture"));
  const _bstr_t spare = bstr(scene_.folder().file(L"spare"));
  ComPtr<IPictureDisp> picture;
  EXPECT_EQ(scene_->CreateBitmap(target), E_ACCESSDENIED);
  EXPECT_EQ(scene_->CreatePNG(spare, target), E_ACCESSDENIED);
  EXPECT_EQ(scene_->CreateGIF(spare, target), E_ACCESSDENIED);
  EXPECT_EQ(scene_->CreateJPG(spare, target, 90), E_ACCESSDENIED);
  EXPECT_EQ(scene_->GetPictureDisp(&picture), E_ACCESSDENIED);
  EXPECT_FALSE(picture);
  EXPECT_TRUE(scene_.folder().empty());
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST_F(FailingDrawTest, RaisesForScripts) {
  answer_ = HRESULT_FROM_WIN32(ERROR_DISK_FULL);
  const auto call = callMethod(scene_.get(), L"CreateBitmap",
                               {_variant_t(scene_.folder().file(L"a.bmp").wstring().c_str())});
  EXPECT_EQ(call.code(), answer_);
  EXPECT_FALSE(call.source.empty());
  EXPECT_FALSE(call.description.empty());
}

TEST_F(FailingDrawTest, HandsOnWhatTheObjectSaysAboutItsFailure) {
  failing_->onDraw3D = [](int) {
    ComPtr<ICreateErrorInfo> error;
    CreateErrorInfo(&error);
    std::wstring text = L"ink ran out";
    error->SetDescription(text.data());
    error->SetGUID(__uuidof(IGLDraw));
    SetErrorInfo(0, queryFor<IErrorInfo>(error.Get()).Get());
    return E_FAIL;
  };
  const auto call = callMethod(scene_.get(), L"CreateBitmap",
                               {_variant_t(scene_.folder().file(L"a.bmp").wstring().c_str())});
  EXPECT_EQ(call.code(), E_FAIL);
  EXPECT_EQ(call.description, L"ink ran out");
}

TEST_F(FailingDrawTest, EndsThePassAtTheFailingObject) {
  scene_->CreateBitmap(bstr(scene_.folder().file(L"a.bmp")));
  EXPECT_EQ(before_->modes.size(), 1u);
  EXPECT_EQ(after_->modes.size(), 0u);
}

TEST_F(FailingDrawTest, LaterPicturesAreWhole) {
  addRectangle(0, 6, 0, kRed);
  for (int i = 0; i < 40; ++i) scene_->CreateBitmap(bstr(scene_.folder().file(L"a.bmp")));
  answer_ = S_OK;
  EXPECT_EQ(scene_.render().count(kRed), kSize * kSize);
  EXPECT_EQ(after_->modes.size(), 1u);
}

TEST_F(FailingDrawTest, SuccessCodesOtherThanOkAreNoFailure) {
  answer_ = S_FALSE;
  scene_.render();
  EXPECT_EQ(after_->modes.size(), 1u);
}

TEST_F(FailingDrawTest, ReferencesBalance) {
  scene_->CreateBitmap(bstr(scene_.folder().file(L"a.bmp")));
  scene_->RemoveAll();
  EXPECT_EQ(referencesOf(failing_.Get()), 1u);
  EXPECT_EQ(referencesOf(after_.Get()), 1u);
}

TEST_F(DrawListTest, FailingBoxQuestionDoesNoHarm) {
  auto object = makeForeign<ForeignObject>();
  object->onGetBox3D = [](IDispatch**) { return E_ACCESSDENIED; };
  const HRESULT added = scene_->Add(object->dispatch(), 0);
  EXPECT_TRUE(added == S_OK || added == E_ACCESSDENIED) << added;
  scene_->ViewParams(nullptr, 0, nullptr);
  const HRESULT drawn = scene_->CreateBitmap(bstr(scene_.folder().file(L"a.bmp")));
  EXPECT_TRUE(drawn == S_OK || drawn == E_ACCESSDENIED) << drawn;
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  scene_->RemoveAll();
  EXPECT_EQ(referencesOf(object.Get()), 1u);
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(scene_.render().count(kRed), kSize * kSize);
}

TEST_F(DrawListTest, AnObjectThatIsNoBoxInPlaceOfABoxDoesNoHarm) {
  auto object = makeForeign<ForeignObject>();
  object->onGetBox3D = [](IDispatch** out) {
    return handOut(makeForeign<ForeignAttribute>(1), out);
  };
  scene_->Add(object->dispatch(), 0);
  scene_->ViewParams(nullptr, 0, nullptr);
  scene_->CreateBitmap(bstr(scene_.folder().file(L"a.bmp")));
  EXPECT_EQ(ForeignAttribute::live(), 0);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

// --- objects that leave OpenGL in disorder -------------------------------------------------------

TEST_F(DrawListTest, UnbalancedMatricesDoNotSpoilLaterPictures) {
  auto careless = makeForeign<ForeignObject>();
  careless->onDraw3D = [](int) {
    glPushMatrix();
    glPushAttrib(GL_CURRENT_BIT);
    glTranslated(100, 0, 0);
    return S_OK;
  };
  addRectangle(0, 6, 0, kRed);
  scene_.add(careless->dispatch());
  for (int i = 0; i < 50; ++i) ASSERT_EQ(scene_.render().count(kRed), kSize * kSize) << i;
}

TEST_F(DrawListTest, ObjectMayTakeTheContextAway) {
  auto thief = makeForeign<ForeignObject>();
  thief->onDraw3D = [](int) {
    wglMakeCurrent(nullptr, nullptr);
    return S_OK;
  };
  scene_.add(thief->dispatch());
  addRectangle(0, 6, 0, kRed);
  scene_->CreateBitmap(bstr(scene_.folder().file(L"a.bmp")));
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  EXPECT_EQ(thief->modes.size(), 1u);
  scene_->RemoveAll();
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(scene_.render().count(kRed), kSize * kSize);
}

// --- the host's own context ----------------------------------------------------------------------

TEST_F(DrawListTest, HostsCurrentContextSurvivesEveryCall) {
  GlCanvas canvas(16, 16);
  glClearColor(0, 1, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  const auto expectStill = [&](const char* after) { EXPECT_TRUE(canvas.isCurrent()) << after; };
  const _bstr_t target = bstr(scene_.folder().file(L"picture"));

  OffscreenScene other(20, 20);
  expectStill("creating a context");
  addRectangle(0, 6, 0, kRed);
  expectStill("Add");
  scene_->CreateBitmap(target);
  expectStill("CreateBitmap");
  scene_->CreatePNG(nullptr, target);
  expectStill("CreatePNG");
  scene_->CreateGIF(nullptr, target);
  expectStill("CreateGIF");
  scene_->CreateJPG(nullptr, target, 50);
  expectStill("CreateJPG");
  ComPtr<IPictureDisp> picture;
  scene_->GetPictureDisp(&picture);
  expectStill("GetPictureDisp");
  scene_.resize(30, 30);
  expectStill("CreateContext again");
  scene_->CreateContext(0, 0, nullptr);
  expectStill("CreateContext without a size");
  scene_->RemoveAll();
  expectStill("RemoveAll");
  auto failing = makeForeign<ForeignObject>();
  failing->onDraw3D = [](int) { return E_FAIL; };
  other.add(failing->dispatch());
  other->CreateBitmap(target);
  expectStill("a failing picture");
  scene_.take().Reset();
  other.take().Reset();
  expectStill("releasing the contexts");
  EXPECT_EQ(canvas.read().at(8, 8), kGreen);
}

}  // namespace
}  // namespace zyn::test
