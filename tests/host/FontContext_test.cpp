// The fonts of views and bitmap contexts as labels show them: wherever a label is drawn, it is
// drawn right, whatever became of the other contexts that it was drawn in.
#include <optional>
#include <utility>
#include <vector>

#include "support/ControlTest_win.h"
#include "support/ForeignBounds_win.h"
#include "support/ForeignCollection_win.h"
#include "support/OffscreenContext_win.h"
#include "support/Pickable_win.h"
#include "support/Scene_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr ViewAxes kFromTheFront = {{0, 0, -1}, {0, 1, 0}};
constexpr Bounds kBounds = {-2, 2, -1, 1, -1, 1};
constexpr SIZE kSize = {240, 120};
constexpr long kCentred = 9;

ComPtr<IZYNGLTexte> makeLabel(const wchar_t* text = L"Cote \u00E9\u00E7",
                              const Rgb& colour = kRed) {
  auto label = createObject<IZYNGLTexte>(kTextProgId);
  label->put_Texte(_bstr_t(text));
  label->put_HauteurPixels(40);
  label->setPosition(0, 0, 0, kCentred);
  label->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, 1);
  return label;
}

/// A 3D bitmap context that looks at kBounds.
class LabelPicture {
 public:
  explicit LabelPicture(SIZE size = kSize) : scene_(size.cx, size.cy) {
    auto box = makeForeign<ForeignBox>(kBounds.xMin, kBounds.xMax, kBounds.yMin, kBounds.yMax,
                                       kBounds.zMin, kBounds.zMax);
    scene_.look(kFromTheFront, 0, box->dispatch());
  }
  OffscreenScene* operator->() { return &scene_; }
  OffscreenScene& scene() { return scene_; }

 private:
  OffscreenScene scene_;
};

/// A 3D view that looks at kBounds.
class LabelView {
 public:
  explicit LabelView(SIZE size = kSize) {
    host_.emplace(size);
    (*host_)->put_DrawCoordSys(VARIANT_FALSE);
    host_->addBox(kBounds);
    (*host_)->initView(0);
    (*host_)->VueXYp(0);
  }
  View3DHost& operator*() { return *host_; }
  View3DHost* operator->() { return &*host_; }
  IZYNVue3D* view() const { return host_->get(); }
  void destroy() { host_.reset(); }

 private:
  std::optional<View3DHost> host_;
};

Image pictureOf(IDispatch* object, SIZE size = kSize) {
  LabelPicture picture(size);
  picture->add(object);
  return picture->render();
}

Image viewOf(IDispatch* object) {
  LabelView view;
  view.view()->Add(object, 0);
  return view->scene();
}

bool shows(const Image& image, const Rgb& colour = kRed) { return image.count(colour) > 100; }

/// A scene object of another component that draws others, and lets them be picked.
ComPtr<ForeignObject> makeComposite(std::vector<ComPtr<IGLDraw>> parts) {
  auto composite = makeForeign<ForeignObject>();
  composite->onDraw3D = [parts](int mode) {
    for (const auto& part : parts) part->Draw3D(mode);
    return S_OK;
  };
  return composite;
}

/// A collection that draws its items itself.
class DrawnGroup final : public ForeignBase<DrawnGroup, IBasicCollection, IGLDraw> {
 public:
  explicit DrawnGroup(std::vector<ComPtr<IZYNGLTexte>> labels) : labels_(std::move(labels)) {
    for (const auto& label : labels_) {
      collection_->items.emplace_back(static_cast<IDispatch*>(label.Get()));
    }
  }

  STDMETHODIMP Item(VARIANT*, VARIANT*) override { return DISP_E_BADINDEX; }
  STDMETHODIMP Add(VARIANT*, VARIANT*, VARIANT*, VARIANT*) override { return E_ACCESSDENIED; }
  STDMETHODIMP Count(long* count) override { return collection_->Count(count); }
  STDMETHODIMP Remove(VARIANT*) override { return E_ACCESSDENIED; }
  STDMETHODIMP _NewEnum(IUnknown** enumerator) override {
    return collection_->_NewEnum(enumerator);
  }
  STDMETHODIMP Draw3D(int mode) override {
    for (const auto& label : labels_) queryFor<IGLDraw>(label.Get())->Draw3D(mode);
    return S_OK;
  }
  STDMETHODIMP Draw2D(int) override { return S_OK; }
  STDMETHODIMP GetBox2D(IDispatch** box) override {
    *box = nullptr;
    return S_OK;
  }
  STDMETHODIMP GetBox3D(IDispatch** box) override {
    *box = nullptr;
    return S_OK;
  }
  STDMETHODIMP GetParam(IDispatch*, double* value) override {
    *value = -1;
    return S_OK;
  }

 private:
  ~DrawnGroup() override = default;
  friend ForeignBase;
  std::vector<ComPtr<IZYNGLTexte>> labels_;
  ComPtr<ForeignCollection> collection_ = makeForeign<ForeignCollection>();
};

class FontContextTest : public HostTest {
 protected:
  ComPtr<IZYNGLTexte> label_ = makeLabel();
};

TEST_F(FontContextTest, OneLabelIsRightInManyContextsAtOnce) {
  const Image inView = viewOf(makeLabel().Get());
  const Image inPicture = pictureOf(makeLabel().Get());
  ASSERT_TRUE(shows(inView));
  ASSERT_TRUE(shows(inPicture));

  LabelView first;
  LabelView second;
  LabelPicture third;
  LabelPicture fourth;
  first.view()->Add(label_.Get(), 0);
  second.view()->Add(label_.Get(), 0);
  third->add(label_.Get());
  fourth->add(label_.Get());
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(first->scene(), inView);
    EXPECT_EQ(third->render(), inPicture);
    EXPECT_EQ(second->scene(), inView);
    EXPECT_EQ(fourth->render(), inPicture);
  }
}

TEST_F(FontContextTest, TheOthersGoOnWhenAContextDies) {
  const Image inView = viewOf(makeLabel().Get());
  const Image inPicture = pictureOf(makeLabel().Get());
  LabelView first;
  LabelView second;
  std::optional<LabelPicture> third(std::in_place);
  LabelPicture fourth;
  first.view()->Add(label_.Get(), 0);
  second.view()->Add(label_.Get(), 0);
  third->scene().add(label_.Get());
  fourth->add(label_.Get());
  first->scene();
  first.destroy();
  EXPECT_EQ(second->scene(), inView);
  EXPECT_EQ(fourth->render(), inPicture);
  third->scene().render();
  third.reset();
  EXPECT_EQ(fourth->render(), inPicture);
  EXPECT_EQ(second->scene(), inView);
  second.destroy();
  EXPECT_EQ(fourth->render(), inPicture);
}

TEST_F(FontContextTest, ASurfaceMadeAgainHasFonts) {
  const Image expected = pictureOf(makeLabel().Get());
  const Image larger = pictureOf(makeLabel().Get(), {300, 150});
  LabelPicture picture;
  picture->add(label_.Get());
  EXPECT_EQ(picture->render(), expected);
  picture->resize(300, 150);
  EXPECT_EQ(picture->render(), larger);
  for (int i = 0; i < 5; ++i) {
    picture->resize(kSize.cx, kSize.cy);
    EXPECT_EQ(picture->render(), expected);
  }
  picture->resize(0, 0);
  long made = 0;
  ASSERT_EQ(picture.scene()->CreateContext(kSize.cx, kSize.cy, &made), S_OK);
  EXPECT_EQ(picture->render(), expected);
}

TEST_F(FontContextTest, ALabelMayBeAddedBeforeTheSurface) {
  const Image expected = pictureOf(makeLabel().Get());
  LabelPicture picture;
  picture->resize(0, 0);
  picture->add(label_.Get());
  picture->resize(kSize.cx, kSize.cy);
  EXPECT_EQ(picture->render(), expected);
}

TEST_F(FontContextTest, ALabelMayBeAddedAfterOthersWereDrawn) {
  const Image expected = pictureOf(makeLabel().Get());
  LabelPicture picture;
  picture->addAll(makeRectangle(-2, 2, -1, 1, 0, kBlue));
  EXPECT_TRUE(shows(picture->render(), kBlue));
  picture.scene()->RemoveAll();
  picture->add(label_.Get());
  EXPECT_EQ(picture->render(), expected);
}

TEST_F(FontContextTest, ContextsThatComeAndGoAllHaveFonts) {
  constexpr int kCycles = 100;
  const Image inView = viewOf(label_.Get());
  const Image inPicture = pictureOf(label_.Get());
  for (int i = 0; i < kCycles; ++i) {
    ASSERT_EQ(viewOf(label_.Get()), inView) << i;
    ASSERT_EQ(pictureOf(label_.Get()), inPicture) << i;
  }
}

TEST_F(FontContextTest, APartOfAnotherObjectIsDrawnInAView) {
  const Image expected = viewOf(makeLabel().Get());
  const auto composite = makeComposite({queryFor<IGLDraw>(label_.Get())});
  EXPECT_EQ(viewOf(composite->dispatch()), expected);
  // Also after it was drawn elsewhere.
  pictureOf(label_.Get());
  EXPECT_EQ(viewOf(composite->dispatch()), expected);
}

TEST_F(FontContextTest, APartOfAnotherObjectIsPickedWhereItWasDrawn) {
  label_->put_NomSelection(7);
  const auto composite = makeComposite({queryFor<IGLDraw>(label_.Get())});
  LabelView view;
  view.view()->Add(composite->dispatch(), 0);
  view.view()->AddSelection(composite->dispatch());
  view->paint();
  _variant_t found;
  EXPECT_EQ(view.view()->getSelectionUnderMouse(kSize.cx / 2, kSize.cy / 2, &found), S_OK);
  EXPECT_EQ(namesIn(found), std::vector<long>{7});
  VariantClear(&found);
  EXPECT_EQ(view.view()->getSelectionUnderMouse(kSize.cx / 2, kSize.cy - 5, &found), S_OK);
  EXPECT_TRUE(namesIn(found).empty());
}

TEST_F(FontContextTest, PicksKnowAZoomThatIsNotDrawnYet) {
  LabelView view;
  view.view()->put_PickSize(0.02);
  view.view()->Add(label_.Get(), 0);
  view.view()->AddSelection(label_.Get());
  const auto linesHit = [&] {
    int hit = 0;
    for (int y = 0; y < kSize.cy; ++y) {
      _variant_t found;
      EXPECT_EQ(view.view()->getSelectionUnderMouse(kSize.cx / 2, y, &found), S_OK);
      hit += namesIn(found).empty() ? 0 : 1;
    }
    return hit;
  };
  EXPECT_NEAR(linesHit(), 40, 1) << "never drawn";
  view->paint();
  view.view()->Zoom(3);
  EXPECT_NEAR(linesHit(), 40, 1);
}

TEST_F(FontContextTest, APartOfAnotherObjectHasNoFontsInABitmapContext) {
  LabelPicture picture;
  picture->add(makeComposite({queryFor<IGLDraw>(label_.Get())})->dispatch());
  EXPECT_FALSE(shows(picture->render()));
  viewOf(label_.Get());
  EXPECT_FALSE(shows(picture->render()));
}

TEST_F(FontContextTest, ItemsOfACollectionAreHandedTheFonts) {
  const Image expected = pictureOf(makeLabel().Get());
  auto collection = makeForeign<ForeignCollection>();
  collection->items.emplace_back(static_cast<IDispatch*>(label_.Get()));
  EXPECT_EQ(pictureOf(collection->dispatch()), expected);
}

TEST_F(FontContextTest, ItemsThatTheirCollectionDrawsAreHandedTheFonts) {
  const Image expected = pictureOf(makeLabel().Get());
  const auto group = makeForeign<DrawnGroup>(std::vector{label_});
  LabelPicture picture;
  picture->add(group->dispatch());
  EXPECT_EQ(picture->render(), expected);
  viewOf(label_.Get());
  picture->resize(kSize.cx, kSize.cy);
  EXPECT_EQ(picture->render(), expected);
  picture.scene()->RemoveAll();
  EXPECT_EQ(referencesOf(label_.Get()), 3U) << "the test's, the group's two";
}

TEST_F(FontContextTest, ItemsOfACollectionMayBeHandedBeforeTheSurface) {
  const Image expected = pictureOf(makeLabel().Get());
  LabelPicture picture;
  picture->resize(0, 0);
  picture->add(makeForeign<DrawnGroup>(std::vector{label_})->dispatch());
  picture->resize(kSize.cx, kSize.cy);
  EXPECT_EQ(picture->render(), expected);
}

TEST_F(FontContextTest, ASurfaceReplacedWhileItIsDrawnKeepsItsFonts) {
  const Image expected = pictureOf(makeLabel().Get());
  LabelPicture picture;
  auto replacing = makeForeign<ForeignObject>();
  replacing->onDraw3D = [&, done = false](int) mutable {
    long made = 0;
    if (!std::exchange(done, true)) picture.scene()->CreateContext(50, 50, &made);
    return S_OK;
  };
  picture->add(replacing->dispatch());
  picture->add(label_.Get());
  EXPECT_EQ(picture->render(), expected);
  picture->resize(kSize.cx, kSize.cy);
  EXPECT_EQ(picture->render(), expected);
}

TEST_F(FontContextTest, AWindowClosedWhileItIsDrawnKeepsItsFonts) {
  LabelView view;
  auto closing = makeForeign<ForeignObject>();
  auto reading = makeForeign<ForeignObject>();
  Image drawn;
  closing->onDraw3D = [&](int) {
    view->close();
    return S_OK;
  };
  reading->onDraw3D = [&](int) {
    drawn = readViewport();
    return S_OK;
  };
  view.view()->Add(closing->dispatch(), 0);
  view.view()->Add(label_.Get(), 0);
  view.view()->Add(reading->dispatch(), 0);
  view->paint();
  EXPECT_TRUE(shows(drawn));
  EXPECT_EQ(drawn, viewOf(makeLabel().Get()));
}

TEST_F(FontContextTest, PicturesForTheContainerHaveFonts) {
  LabelView view;
  view.view()->Add(label_.Get(), 0);
  const Image inWindow = view->scene();
  ASSERT_TRUE(shows(view->picture(kSize)));
  EXPECT_EQ(view->scene(), inWindow);

  LabelView composite;
  composite.view()->Add(makeComposite({queryFor<IGLDraw>(label_.Get())})->dispatch(), 0);
  EXPECT_EQ(composite->picture(kSize), view->picture(kSize));
}

TEST_F(FontContextTest, ALabelIsDrawnInAViewAndA2DPicture) {
  OffscreenGraph graph(kSize.cx, kSize.cy);
  graph.show(-2, 2, -1, 1);
  graph.add(label_.Get());
  const Image alone = graph.render();
  EXPECT_TRUE(shows(alone));
  const Image inView = viewOf(label_.Get());
  EXPECT_TRUE(shows(inView));
  EXPECT_EQ(graph.render(), alone);
  EXPECT_EQ(viewOf(label_.Get()), inView);
}

using WindowFontsTest = ControlTest;

TEST_F(WindowFontsTest, AWindowMadeAgainHasFonts) {
  const auto view = as<IZYNVue3D>();
  const auto label = makeLabel();
  const auto reading = makeForeign<ForeignObject>();
  Image drawn;
  reading->onDraw3D = [&](int) {
    drawn = readViewport();
    return S_OK;
  };
  reading->onGetBox3D = [](IDispatch** box) {
    return handOut(makeForeign<ForeignBox>(-2, 2, -1, 1, -1, 1), box);
  };
  const auto redrawn = [&] {
    drawn = {};
    InvalidateRect(window(), nullptr, FALSE);
    UpdateWindow(window());
    return drawn;
  };
  view->Add(label.Get(), 0);
  view->Add(reading->dispatch(), 0);
  show();
  view->put_DrawCoordSys(VARIANT_FALSE);
  view->initView(0);
  const Image before = redrawn();
  ASSERT_TRUE(shows(before));
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(as<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    ASSERT_EQ(window(), nullptr);
    ASSERT_EQ(doVerb(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_EQ(redrawn(), before);
  }
}

}  // namespace
}  // namespace zyn::test
