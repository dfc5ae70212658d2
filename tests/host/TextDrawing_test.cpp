// Labels in pictures of the 3D bitmap context: size, anchors, facing, depth, colour, what is
// written.
#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/ForeignBounds_win.h"
#include "support/ForeignCollection_win.h"
#include "support/ForeignObject_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

constexpr ViewAxes kFromTheFront = {{0, 0, -1}, {0, 1, 0}};

/// A picture on white that shows `height` units from bottom to top, the origin in its centre.
class TextScene {
 public:
  explicit TextScene(SIZE size = {300, 200}, double height = 200,
                     const ViewAxes& axes = kFromTheFront)
      : size_(size), scene_(size.cx, size.cy) {
    scene_->put_BackColor(colourArray(kWhite));
    scene_.resize(size.cx, size.cy);
    const double side = height / size.cy / 2;
    const auto box = makeForeign<ForeignBox>(-side * size.cx, side * size.cx, -side * size.cy,
                                             side * size.cy, -side * size.cy, side * size.cy);
    scene_.look(axes, 0, box->dispatch());
  }

  OffscreenScene& operator*() { return scene_; }
  OffscreenScene* operator->() { return &scene_; }
  void add(IZYNGLTexte* label) { scene_.add(label); }
  Image render() { return scene_.render(); }
  /// Around what is seen of the labels, in pixels from the centre, y upwards.
  Sides ink() {
    const PixelBox box = inkBox(render(), kWhite);
    return {box.left - size_.cx / 2.0, box.right + 1 - size_.cx / 2.0,
            size_.cy / 2.0 - box.bottom - 1, size_.cy / 2.0 - box.top};
  }

 private:
  SIZE size_;
  OffscreenScene scene_;
};

class TextDrawing : public HostTest {
 protected:
  /// Of this label alone.
  Image pictureOf(IZYNGLTexte* label) {
    (*alone_)->RemoveAll();
    alone_.add(label);
    return alone_.render();
  }
  Image pictureOf(const std::wstring& text, long height = 40) {
    return pictureOf(makeText(text, height).Get());
  }
  static bool isBlank(const Image& picture) {
    return picture.count(kWhite) == picture.width() * picture.height();
  }

 private:
  TextScene alone_;
};

TEST_F(TextDrawing, TheLineIsAsHighAsItSaysAtEveryZoomAndSize) {
  // Of the line's 122 pixels the letters have 100, 20 are above them and 2 below.
  const auto label = makeText(L"Mp", 122);
  label->setPosition(0, 0, 0, 8);
  for (const SIZE size : {SIZE{300, 200}, SIZE{500, 420}}) {
    for (const double height : {0.01, 200.0, 3e6}) {
      TextScene scene(size, height);
      scene.add(label.Get());
      const Sides ink = scene.ink();
      EXPECT_NEAR(ink[2], -61 + 2, 1);
      EXPECT_NEAR(ink[3], 61 - 20, 1);
      EXPECT_NEAR(ink[0], 0, 1);
    }
  }
}

TEST_F(TextDrawing, ALineOfDigitsIsAsHighAsDigits) {
  const auto label = makeText(L"0123456789", 20);
  label->put_UseNumericSize(VARIANT_TRUE);
  label->setPosition(0, 0, 0, 1);
  for (const double height : {1.0, 200.0, 1e5}) {
    TextScene scene({300, 200}, height);
    scene.add(label.Get());
    const Sides ink = scene.ink();
    EXPECT_NEAR(ink[2], 0, 1);
    EXPECT_NEAR(ink[3], 20, 1);
  }
}

TEST_F(TextDrawing, LiesInItsRectangleByEveryAnchor) {
  const auto label = makeText(L"0246", 31);
  label->put_UseNumericSize(VARIANT_TRUE);
  for (long reference = -1; reference <= 10; ++reference) {
    SCOPED_TRACE(reference);
    label->setPosition(20, -10, 0, reference);
    TextScene scene;
    scene.add(label.Get());
    const Sides ink = scene.ink();
    const Sides rectangle = pixelRect(label.Get());
    EXPECT_NEAR(ink[0], 20 + rectangle[0], 1.5);
    EXPECT_NEAR(ink[1], 20 + rectangle[1], 1.5);
    EXPECT_NEAR(ink[2], -10 + rectangle[2], 1.5);
    EXPECT_NEAR(ink[3], -10 + rectangle[3], 1.5);
  }
}

TEST_F(TextDrawing, IsUpright) {
  // An L has its ink left and below.
  TextScene scene;
  const auto label = makeText(L"L", 150);
  label->setPosition(0, 0, 0, 9);
  scene.add(label.Get());
  const Image picture = scene.render();
  const PixelBox box = inkBox(picture, kWhite);
  ASSERT_GT(box.right - box.left, 20);
  EXPECT_NE(picture.at(box.left + 3, box.top + 3), kWhite);
  EXPECT_NE(picture.at(box.right - 3, box.bottom - 3), kWhite);
  EXPECT_EQ(picture.at(box.right - 3, box.top + 3), kWhite);
}

TEST_F(TextDrawing, ItsEdgesAreSmooth) {
  const Image picture = pictureOf(L"SO", 100);
  int between = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int grey = picture.at(x, y).g;
      between += grey > 20 && grey < 235 ? 1 : 0;
    }
  }
  EXPECT_GT(between, 100);
}

TEST_F(TextDrawing, IsReadableFromEverySide) {
  const auto label = makeText(L"Face", 40);
  label->setPosition(0, 0, 0, 9);
  const Image front = pictureOf(label.Get());
  EXPECT_FALSE(isBlank(front));
  const double s = std::sqrt(0.5);
  for (const ViewAxes& axes :
       {ViewAxes{{0, 0, 1}, {0, 1, 0}}, ViewAxes{{1, 0, 0}, {0, 0, 1}},
        ViewAxes{{0, -1, 0}, {1, 0, 0}}, ViewAxes{{s, s, 0}, {-0.5, 0.5, s}}}) {
    TextScene scene({300, 200}, 200, axes);
    scene.add(label.Get());
    EXPECT_LT(meanDifference(scene.render(), front), 1e-3);
  }
}

TEST_F(TextDrawing, LiesInTheSceneWhenItIsNotAlwaysReadable) {
  const auto label = makeText(L"Flat", 40);
  label->put_ToujoursLisible(VARIANT_FALSE);
  label->setPosition(0, 0, 0, 9);
  const Image front = pictureOf(label.Get());
  EXPECT_FALSE(isBlank(front));
  const Sides rectangle = pixelRect(label.Get());
  {
    TextScene turned({300, 200}, 200, {{0, 0, -1}, {1, 0, 0}});
    turned.add(label.Get());
    const Sides ink = turned.ink();
    EXPECT_NEAR(ink[3] - ink[2], rectangle[1] - rectangle[0], 3);
  }
  {
    const double s = std::sqrt(0.75);
    TextScene slanted({300, 200}, 200, {{s, 0, -0.5}, {0, 1, 0}});
    slanted.add(label.Get());
    const Sides ink = slanted.ink();
    EXPECT_NEAR(ink[1] - ink[0], (rectangle[1] - rectangle[0]) / 2, 3);
  }
}

TEST_F(TextDrawing, IsHiddenByWhatIsInFrontUnlessItIsAlwaysReadable) {
  for (const bool readable : {true, false}) {
    TextScene scene;
    const auto label = makeText(L"Hidden", 40);
    label->put_ToujoursLisible(readable ? VARIANT_TRUE : VARIANT_FALSE);
    label->setPosition(0, 0, -5, 9);
    scene->addAll(makeRectangle(-200, 200, -200, 200, 5, kYellow));
    scene.add(label.Get());
    EXPECT_EQ(inkOf(scene.render(), kYellow) > 0, readable);
  }
}

TEST_F(TextDrawing, ALabelDoesNotHideWhatFollows) {
  for (const VARIANT_BOOL readable : {VARIANT_TRUE, VARIANT_FALSE}) {
    TextScene scene;
    const auto label = makeText(L"MMMM", 60);
    label->put_ToujoursLisible(readable);
    label->setPosition(0, 0, -5, 9);
    scene.add(label.Get());
    scene->addAll(makeRectangle(-200, 200, -200, 200, 5, kYellow));
    EXPECT_EQ(inkOf(scene.render(), kYellow), 0);
  }
}

TEST_F(TextDrawing, HasItsColourWhateverTheLight) {
  const auto label = makeText(L"M", 160);
  label->setPosition(0, 0, 0, 9);
  label->setColor(0, 0, 1, 1);
  const Image opaque = pictureOf(label.Get());
  EXPECT_GT(opaque.count(kBlue), 1000);
  label->setColor(0, 0, 1, 0.5);
  const Image half = pictureOf(label.Get());
  const PixelBox stem = inkBox(half, kWhite);
  EXPECT_LE(difference(half.at(stem.left + 8, stem.bottom - 8), {128, 128, 255}), 1);
  label->setColor(0, 0, 1, 0);
  EXPECT_TRUE(isBlank(pictureOf(label.Get())));
}

TEST_F(TextDrawing, ANewLabelCanBeSeen) {
  const auto label = createObject<IZYNGLTexte>(kTextProgId);
  setText(label.Get(), L"Abc");
  EXPECT_FALSE(isBlank(pictureOf(label.Get())));
}

// --- what is written -----------------------------------------------------------------------------

TEST_F(TextDrawing, ShowsItsValue) {
  const auto label = makeText(L"text", 40);
  label->put_IsNumeric(VARIANT_TRUE);
  const struct {
    double value;
    const wchar_t* shown;
  } cases[] = {{1234.5, L"1234.5"},  {-0.25, L"-0.25"}, {1.0 / 3, L"0.3333333333"},
               {1e-20, L"1e-20"},    {0, L"0"},         {double(INFINITY), L"inf"},
               {double(NAN), L"nan"}};
  for (const auto& [value, shown] : cases) {
    label->put_Value(value);
    EXPECT_TRUE(pictureOf(label.Get()) == pictureOf(shown)) << value;
  }
  label->put_IsNumeric(VARIANT_FALSE);
  EXPECT_TRUE(pictureOf(label.Get()) == pictureOf(L"text"));
}

TEST_F(TextDrawing, NumbersHaveAPointInEveryLocale) {
  const auto label = makeText(L"", 40);
  label->put_IsNumeric(VARIANT_TRUE);
  label->put_Value(1234.5);
  ASSERT_TRUE(std::setlocale(LC_ALL, "French_France"));
  char written[20];
  std::snprintf(written, sizeof written, "%g", 0.5);
  EXPECT_STREQ(written, "0,5") << "the locale is of no use here";
  const Image picture = pictureOf(label.Get());
  std::setlocale(LC_ALL, "C");
  EXPECT_TRUE(picture == pictureOf(L"1234.5"));
}

TEST_F(TextDrawing, WesternLettersAndSigns) {
  for (const wchar_t letter : std::wstring(L"ÀÉÈÊËÎÏÔÖÙÛÜŸàâäéèêëîïôöùûüñõøåæœßÑÅÆ€£°²µ§")) {
    EXPECT_GT(inkOf(pictureOf(std::wstring(1, letter)), kWhite), 40) << int(letter);
  }
  // The accent is above the letter, the cedilla below.
  const Sides e = pixelRect(makeText(L"e").Get());
  EXPECT_EQ(e[2], pixelRect(makeText(L"é").Get())[2]);
  const PixelBox plain = inkBox(pictureOf(L"e", 100), kWhite);
  const PixelBox accented = inkBox(pictureOf(L"é", 100), kWhite);
  EXPECT_LT(accented.top, plain.top - 8);
  EXPECT_NEAR(accented.bottom, plain.bottom, 1);
  EXPECT_GT(inkBox(pictureOf(L"ç", 100), kWhite).bottom,
            inkBox(pictureOf(L"c", 100), kWhite).bottom + 8);
}

TEST_F(TextDrawing, TheLastCharacterOfTheCodePageIsNotDrawn) {
  EXPECT_TRUE(isBlank(pictureOf(L"ÿ")));
  EXPECT_TRUE(pictureOf(L"aÿb") == pictureOf(L"ab"));
}

TEST_F(TextDrawing, EndsAtANullCharacter) {
  EXPECT_TRUE(pictureOf(std::wstring(L"Ab\0cd", 5)) == pictureOf(L"Ab"));
  EXPECT_TRUE(isBlank(pictureOf(std::wstring(L"\0cd", 3))));
}

TEST_F(TextDrawing, OddTextsDoNoHarm) {
  EXPECT_TRUE(isBlank(pictureOf(L"")));
  pictureOf(std::wstring(200'000, L'x'));
  pictureOf(L"\x1\x2\t\r\n\x7F");
  pictureOf(L"\xD800\xFFFF\x3A9\x4E2D\U0001F600");
}

TEST_F(TextDrawing, OddValuesDoNoHarm) {
  TextScene scene;
  std::vector<ComPtr<IZYNGLTexte>> labels;
  for (const double odd : {double(NAN), double(INFINITY), -double(INFINITY), 1e300, -1e38}) {
    labels.push_back(makeText(L"odd", 40));
    labels.back()->setPosition(odd, 0, 0, 0);
    labels.push_back(makeText(L"odd", 40));
    labels.back()->setPosition(0, 0, odd, 0);
  }
  for (const long height : {0L, -20L, LONG_MIN}) labels.push_back(makeText(L"odd", height));
  for (const auto& label : labels) scene.add(label.Get());
  EXPECT_TRUE(isBlank(scene.render()));
  const auto huge = makeText(L"M", LONG_MAX);
  scene.add(huge.Get());
  scene.render();
}

// --- the contexts --------------------------------------------------------------------------------

TEST_F(TextDrawing, OneLabelInSeveralContexts) {
  const auto label = makeText(L"Both", 40);
  TextScene first;
  TextScene second({500, 400}, 13);
  first.add(label.Get());
  second.add(label.Get());
  const Image small = first.render();
  const Image large = second.render();
  EXPECT_TRUE(first.render() == small);
  EXPECT_TRUE(second.render() == large);
  EXPECT_NEAR(inkOf(small, kWhite), inkOf(large, kWhite), inkOf(small, kWhite) / 10.0);
}

TEST_F(TextDrawing, OutlivesItsContexts) {
  const auto label = makeText(L"Lives", 40);
  const Image picture = pictureOf(label.Get());
  for (int i = 0; i < 5; ++i) {
    TextScene scene;
    scene.add(label.Get());
    EXPECT_TRUE(scene.render() == picture);
  }
  TextScene scene;
  scene.add(label.Get());
  scene.render();
  scene->resize(300, 200);
  EXPECT_TRUE(scene.render() == picture);
}

TEST_F(TextDrawing, MayBeAddedBeforeTheSurfaceIsThere) {
  const auto label = makeText(L"Early", 40);
  const Image expected = pictureOf(label.Get());
  OffscreenScene scene;
  scene->put_BackColor(colourArray(kWhite));
  scene.add(label.Get());
  const auto box = makeForeign<ForeignBox>(-150, 150, -100, 100, -100, 100);
  scene.look(kFromTheFront, 0, box->dispatch());
  scene.resize(300, 200);
  EXPECT_TRUE(scene.render() == expected);
}

TEST_F(TextDrawing, InACollection) {
  const auto label = makeText(L"Item", 40);
  const auto collection =
      makeForeign<ForeignCollection>(std::vector{_variant_t(static_cast<IDispatch*>(label.Get()))});
  TextScene scene;
  scene->add(collection->dispatch());
  EXPECT_TRUE(scene.render() == pictureOf(label.Get()));
}

TEST_F(TextDrawing, FinePicturesHaveLargerLabels) {
  const auto label = makeText(L"0123", 30);
  label->put_UseNumericSize(VARIANT_TRUE);
  label->setPosition(0, 0, 0, 1);
  TextScene scene({600, 400}, 400);
  double resolution = 0;
  scene->get_DPIResolution(&resolution);
  scene.add(label.Get());
  EXPECT_NEAR(scene.ink()[3], 30, 1);
  scene->put_DPIResolution(3 * resolution);
  EXPECT_NEAR(scene.ink()[3], 90, 1.5);
}

TEST_F(TextDrawing, AcrossTheTilesOfALargePicture) {
  const auto label = makeText(L"00000000", 60);
  label->put_UseNumericSize(VARIANT_TRUE);
  TextScene scene({17000, 100}, 100);
  for (const double x : {-308.0, 0.0, 7880.0}) {
    label->setPosition(x, 0, 0, 9);
    TextScene one({17000, 100}, 100);
    one.add(label.Get());
    const Sides ink = one.ink();
    const Sides rectangle = pixelRect(label.Get());
    EXPECT_NEAR(ink[0], x + rectangle[0], 2);
    EXPECT_NEAR(ink[1], x + rectangle[1], 2);
    EXPECT_NEAR(ink[3] - ink[2], 60, 2);
  }
}

}  // namespace
}  // namespace zyn::test
