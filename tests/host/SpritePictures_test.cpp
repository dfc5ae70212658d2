// The picture objects of the system and of other components that a sprite shows.
#include <algorithm>
#include <array>
#include <climits>
#include <utility>

#include "support/GlCanvas_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 64;
constexpr int kWidth = 20;
constexpr int kHeight = 12;
constexpr int kLeft = 10;
constexpr int kBottom = 30;

class SpritePictureTest : public HostTest {
 protected:
  SpritePictureTest() {
    glViewport(0, 0, kSize, kSize);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kSize, 0, kSize, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClearColor(0, 51.0F / 255, 102.0F / 255, 0);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    sprite_->setPosition(kLeft + 0.25, kBottom + 0.25, 0);
  }

  void show(IDispatch* picture) { EXPECT_EQ(sprite_->putref_Picture(picture), S_OK); }
  void show(const ComPtr<IPictureDisp>& picture) { show(picture.Get()); }

  Image drawn() {
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(queryFor<IGLDraw>(sprite_.Get())->Draw3D(0), S_OK);
    return canvas_.read();
  }

  /// The picture over the background, at its place.
  static Image expected(const AlphaImage& picture) {
    Image image(kSize, kSize);
    for (int y = 0; y < kSize; ++y) {
      for (int x = 0; x < kSize; ++x) image.at(x, y) = kBackground;
    }
    const int top = kSize - kBottom - picture.colours.height();
    for (int y = 0; y < picture.colours.height(); ++y) {
      for (int x = 0; x < picture.colours.width(); ++x) {
        const Rgb& colour = picture.colours.at(x, y);
        const auto mix = [&](int part, int behind) {
          return (part * picture.alphaAt(x, y) + behind * (255 - picture.alphaAt(x, y)) + 127) /
                 255;
        };
        image.at(kLeft + x, top + y) = {mix(colour.r, kBackground.r), mix(colour.g, kBackground.g),
                                        mix(colour.b, kBackground.b)};
      }
    }
    return image;
  }

  void expectShown(const AlphaImage& picture, int tolerance = 0) {
    long width = -1;
    long height = -1;
    EXPECT_EQ(sprite_->get_largeur(&width), S_OK);
    EXPECT_EQ(sprite_->get_hauteur(&height), S_OK);
    EXPECT_EQ(width, picture.colours.width());
    EXPECT_EQ(height, picture.colours.height());
    const Image image = drawn();
    const Image wanted = expected(picture);
    for (int y = 0; y < kSize; ++y) {
      for (int x = 0; x < kSize; ++x) {
        ASSERT_LE(difference(image.at(x, y), wanted.at(x, y)), tolerance)
            << x << ", " << y << " from the top: " << image.at(x, y) << " instead of "
            << wanted.at(x, y);
      }
    }
  }
  void expectNothingShown() {
    long width = -1;
    long height = -1;
    EXPECT_EQ(sprite_->get_largeur(&width), S_OK);
    EXPECT_EQ(sprite_->get_hauteur(&height), S_OK);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
    EXPECT_EQ(drawn().count(kBackground), kSize * kSize);
  }

  GlCanvas canvas_{kSize, kSize};
  ComPtr<IZYNGLBitmap> sprite_ = createObject<IZYNGLBitmap>(kSpriteProgId);
};

const Image kQuarters = makeQuarters(kWidth, kHeight);

TEST_F(SpritePictureTest, ABitmapStandsUpright) {
  show(pictureOfBitmap24(kQuarters));
  expectShown(AlphaImage(kQuarters));
}

TEST_F(SpritePictureTest, ABitmapWithAlphaKeepsIt) {
  AlphaImage picture(kQuarters);
  for (int x = 0; x < kWidth; ++x) {
    for (int y = 0; y < kHeight; ++y) picture.alphaAt(x, y) = x * 12;
  }
  show(pictureOfBitmap32(picture));
  expectShown(picture, 1);
}

TEST_F(SpritePictureTest, ABitmapWithoutAnyAlphaIsOpaque) {
  show(pictureOfBitmap32(AlphaImage(kQuarters, 0)));
  expectShown(AlphaImage(kQuarters));
}

TEST_F(SpritePictureTest, AnIconKeepsItsAlpha) {
  AlphaImage picture(makeQuarters(16, 16));
  for (int i = 0; i < 16; ++i) {
    picture.alphaAt(i, i) = 16 * i;
    picture.alphaAt(0, i) = 0;
  }
  show(pictureOfIcon(picture));
  expectShown(picture, 2);
}

TEST_F(SpritePictureTest, AnIconLeavesOutWhatItsMaskSays) {
  AlphaImage picture(makeQuarters(16, 16));
  for (int i = 0; i < 16; ++i) {
    picture.alphaAt(i, i) = 0;
    picture.alphaAt(i, 3) = 0;
  }
  show(pictureOfMaskedIcon(picture));
  expectShown(picture);
}

TEST_F(SpritePictureTest, AMetafileIsDrawn) {
  show(pictureOfMetafile(kWidth, kHeight));
  expectShown(AlphaImage(kQuarters));
}

TEST_F(SpritePictureTest, AnEnhancedMetafileIsDrawn) {
  show(pictureOfEnhancedMetafile(kWidth, kHeight));
  expectShown(AlphaImage(kQuarters));
}

TEST_F(SpritePictureTest, WhatAMetafileLeavesUnpaintedIsTransparent) {
  AlphaImage upperHalf(kQuarters);
  for (int x = 0; x < kWidth; ++x) {
    for (int y = kHeight / 2; y < kHeight; ++y) upperHalf.alphaAt(x, y) = 0;
  }
  show(pictureOfMetafile(kWidth, kHeight, false));
  expectShown(upperHalf);
  show(pictureOfEnhancedMetafile(kWidth, kHeight, false));
  expectShown(upperHalf);
}

TEST_F(SpritePictureTest, FilesAreShown) {
  show(loadPicture(bmpFile(kQuarters)));
  expectShown(AlphaImage(kQuarters));
  AlphaImage icon(makeQuarters(16, 16));
  icon.alphaAt(3, 2) = 0;
  show(loadPicture(iconFile(icon)));
  expectShown(icon);
  show(loadPicture(metafileFile(kWidth, kHeight)));
  expectShown(AlphaImage(kQuarters));
}

constexpr Rgb kMagenta = {255, 0, 255};

/// Quarters with magenta at the given places of the upper left corner.
AlphaImage quartersWithKey(int opacity = 255) {
  AlphaImage picture(kQuarters, opacity);
  picture.colours.at(0, 0) = kMagenta;
  picture.colours.at(3, 1) = kMagenta;
  picture.colours.at(4, 4) = {254, 0, 255};
  return picture;
}

/// As the key leaves them.
AlphaImage quartersKeyed() {
  AlphaImage picture = quartersWithKey();
  picture.alphaAt(0, 0) = 0;
  picture.alphaAt(3, 1) = 0;
  return picture;
}

TEST_F(SpritePictureTest, TheKeyColourAloneIsTransparent) {
  show(pictureOfBitmap24(quartersWithKey().colours));
  expectShown(quartersWithKey());
  EXPECT_EQ(sprite_->setTransparentColor(255, 0, 255), S_OK);
  expectShown(quartersWithKey());
  EXPECT_EQ(sprite_->put_Transparent(VARIANT_TRUE), S_OK);
  expectShown(quartersKeyed());
  EXPECT_EQ(sprite_->put_Transparent(VARIANT_FALSE), S_OK);
  expectShown(quartersWithKey());
}

TEST_F(SpritePictureTest, OnlyTheLowBytesOfTheKeyCount) {
  EXPECT_EQ(sprite_->put_Transparent(VARIANT_TRUE), S_OK);
  show(pictureOfBitmap24(quartersWithKey().colours));
  for (const std::array<long, 3>& key : {std::array<long, 3>{256 + 255, 0, 255},
                                         {255, 0x7FFFFF00, 255},
                                         {-1, -256, -1},
                                         {255, LONG_MIN, 255}}) {
    EXPECT_EQ(sprite_->setTransparentColor(1, 2, 3), S_OK);
    expectShown(quartersWithKey());
    EXPECT_EQ(sprite_->setTransparentColor(key[0], key[1], key[2]), S_OK);
    expectShown(quartersKeyed());
  }
}

TEST_F(SpritePictureTest, TheKeyTakesThePlaceOfThePicturesOwnAlpha) {
  AlphaImage picture = quartersWithKey();
  picture.alphaAt(7, 7) = 40;
  show(pictureOfBitmap32(picture));
  expectShown(picture, 1);
  EXPECT_EQ(sprite_->setTransparentColor(255, 0, 255), S_OK);
  EXPECT_EQ(sprite_->put_Transparent(VARIANT_TRUE), S_OK);
  expectShown(quartersKeyed());
}

TEST_F(SpritePictureTest, TransparencyShowsOnlyWhereTheContextBlends) {
  AlphaImage picture = quartersWithKey(0);
  picture.alphaAt(2, 2) = 1;
  show(pictureOfBitmap32(picture));
  glDisable(GL_BLEND);
  expectShown(quartersWithKey());
}

TEST_F(SpritePictureTest, AnotherPictureTakesThePlaceOfTheFirst) {
  show(pictureOfBitmap24(kQuarters));
  const AlphaImage other(makeQuarters(6, 8));
  show(pictureOfBitmap24(other.colours));
  expectShown(other);
  show(nullptr);
  expectNothingShown();
}

TEST_F(SpritePictureTest, ACopyShowsTheSame) {
  show(pictureOfBitmap24(quartersWithKey().colours));
  sprite_->setTransparentColor(255, 0, 255);
  sprite_->put_Transparent(VARIANT_TRUE);
  ComPtr<IDispatch> copy;
  ASSERT_EQ(sprite_->Copie(&copy), S_OK);
  show(nullptr);
  sprite_->setPosition(0, 0, 0);
  sprite_ = queryFor<IZYNGLBitmap>(copy.Get());
  expectShown(quartersKeyed());
  // What it copied is its own: key and picture are still there.
  sprite_->setTransparentColor(1, 2, 3);
  expectShown(quartersWithKey());
}

TEST_F(SpritePictureTest, EmptyPicturesShowNothing) {
  PICTDESC none = {};
  none.cbSizeofstruct = sizeof none;
  none.picType = PICTYPE_NONE;
  ComPtr<IPictureDisp> empty;
  ASSERT_EQ(OleCreatePictureIndirect(&none, IID_IPictureDisp, TRUE,
                                     reinterpret_cast<void**>(empty.GetAddressOf())),
            S_OK);
  show(pictureOfBitmap24(kQuarters));
  show(empty);
  expectNothingShown();
}

/// A picture of another component that paints itself in one colour.
ComPtr<ForeignPicture> makeForeignPicture() {
  auto picture = makeForeign<ForeignPicture>();
  picture->width = himetricOf(kWidth);
  picture->height = himetricOf(kHeight);
  picture->onRender = [](HDC dc, const RECT& target) {
    const HBRUSH brush = CreateSolidBrush(RGB(255, 0, 0));
    FillRect(dc, &target, brush);
    DeleteObject(brush);
    return S_OK;
  };
  return picture;
}

const AlphaImage& redImage() {
  static const AlphaImage image = [] {
    Image red(kWidth, kHeight);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) red.at(x, y) = kRed;
    }
    return AlphaImage(red);
  }();
  return image;
}

TEST_F(SpritePictureTest, PicturesOfOtherComponentsAreShown) {
  const auto picture = makeForeignPicture();
  show(picture->dispatch());
  expectShown(redImage());
  for (const int type : {PICTYPE_UNINITIALIZED, PICTYPE_NONE, PICTYPE_METAFILE, PICTYPE_ICON}) {
    picture->type = static_cast<SHORT>(type);
    show(picture->dispatch());
    expectShown(redImage());
  }
}

// Metafiles alone have none: not even a picture that does not tell what it is loses its own.
TEST_F(SpritePictureTest, APictureOfAnotherComponentKeepsItsAlphaUnlessItIsAMetafile) {
  constexpr int kAlpha = 128;
  const auto picture = makeForeignPicture();
  picture->onRender = [](HDC dc, const RECT&) {
    DIBSECTION section = {};
    GetObjectW(GetCurrentObject(dc, OBJ_BITMAP), sizeof section, &section);
    std::fill_n(static_cast<DWORD*>(section.dsBm.bmBits), kWidth * kHeight,
                kAlpha << 24 | 0xFF0000);
    return S_OK;
  };
  AlphaImage translucent = redImage();
  std::fill(translucent.alpha.begin(), translucent.alpha.end(), kAlpha);
  for (const HRESULT answer : {S_OK, E_NOTIMPL, E_FAIL}) {
    picture->typeAnswer = answer;
    show(picture->dispatch());
    expectShown(translucent, 1);
  }
  picture->typeAnswer = S_OK;
  for (const int metafile : {PICTYPE_METAFILE, PICTYPE_ENHMETAFILE}) {
    picture->type = static_cast<SHORT>(metafile);
    show(picture->dispatch());
    expectShown(redImage());
  }
}

TEST_F(SpritePictureTest, APictureIsRenderedIntoATopDownBitmapOf32Bits) {
  const auto picture = makeForeignPicture();
  picture->onRender = [](HDC dc, const RECT& target) {
    EXPECT_EQ(target.left, 0);
    EXPECT_EQ(target.top, 0);
    EXPECT_EQ(target.right, kWidth);
    EXPECT_EQ(target.bottom, kHeight);
    DIBSECTION section = {};
    EXPECT_EQ(GetObjectW(GetCurrentObject(dc, OBJ_BITMAP), sizeof section, &section),
              static_cast<int>(sizeof section));
    EXPECT_EQ(section.dsBm.bmWidth, kWidth);
    EXPECT_EQ(section.dsBm.bmHeight, kHeight);
    EXPECT_EQ(section.dsBm.bmBitsPixel, 32);
    // Its first row is the uppermost one.
    SetPixel(dc, 0, 0, RGB(1, 2, 3));
    GdiFlush();
    EXPECT_EQ(*static_cast<const DWORD*>(section.dsBm.bmBits) & 0xFFFFFF, 0x010203U);
    return S_OK;
  };
  show(picture->dispatch());
  EXPECT_GT(picture->rendered, 0);
}

TEST_F(SpritePictureTest, APictureIsConvertedOnlyWhenItOrItsTransparencyChanges) {
  const auto picture = makeForeignPicture();
  show(picture->dispatch());
  const int rendered = picture->rendered;
  EXPECT_GT(rendered, 0);
  drawn();
  sprite_->setPosition(kLeft, kBottom, 0);
  sprite_->setOrigine(1, 2);
  ComPtr<IDispatch> copy;
  sprite_->Copie(&copy);
  EXPECT_EQ(picture->rendered, rendered);
  sprite_->setTransparentColor(1, 2, 3);
  EXPECT_EQ(picture->rendered, 2 * rendered);
  sprite_->put_Transparent(VARIANT_FALSE);
  EXPECT_EQ(picture->rendered, 3 * rendered);
}

TEST_F(SpritePictureTest, ObjectsThatAreNoPictureAreHeldAndShowNothing) {
  const auto picture = makeForeignPicture();
  for (const HRESULT answer : {E_NOINTERFACE, E_FAIL, S_OK}) {
    picture->refuse(IID_IPicture, answer);
    show(pictureOfBitmap24(kQuarters));
    show(picture->dispatch());
    expectNothingShown();
    ComPtr<IDispatch> held;
    EXPECT_EQ(sprite_->get_Picture(&held), S_OK);
    EXPECT_EQ(held.Get(), picture->dispatch());
  }
  EXPECT_EQ(picture->rendered, 0);
}

TEST_F(SpritePictureTest, PicturesWithoutAUsableSizeShowNothing) {
  constexpr std::array<LONG, 2> kSizes[] = {
      {0, 0},        {0, 500},         {500, 0},        {-500, 500},          {500, -500},
      {1, 1},        {LONG_MAX, 500},  {500, LONG_MAX}, {LONG_MAX, LONG_MAX}, {LONG_MIN, 500},
      {500000, 500}, {420000, 420000},
  };
  const auto picture = makeForeignPicture();
  for (const auto& [width, height] : kSizes) {
    picture->width = width;
    picture->height = height;
    show(pictureOfBitmap24(kQuarters));
    show(picture->dispatch());
    expectNothingShown();
  }
  EXPECT_EQ(picture->rendered, 0);
}

TEST_F(SpritePictureTest, AFailingPictureShowsNothing) {
  const auto picture = makeForeignPicture();
  picture->sizeAnswer = E_FAIL;
  show(pictureOfBitmap24(kQuarters));
  show(picture->dispatch());
  expectNothingShown();
  picture->sizeAnswer = S_OK;
  picture->onRender = [](HDC, const RECT&) { return E_FAIL; };
  show(picture->dispatch());
  expectNothingShown();
}

TEST_F(SpritePictureTest, LargePicturesAreShownInPart) {
  const Image large = makeQuarters(3000, 2000);
  show(pictureOfBitmap24(large));
  sprite_->setOrigine(1500, 1000);
  const Image image = drawn();
  // The four quarters meet at the position; rows from the top.
  EXPECT_EQ(image.at(kLeft - 1, kSize - kBottom - 1), kRed);
  EXPECT_EQ(image.at(kLeft, kSize - kBottom - 1), kGreen);
  EXPECT_EQ(image.at(kLeft - 1, kSize - kBottom), kBlue);
  EXPECT_EQ(image.at(kLeft, kSize - kBottom), kYellow);
}

/// What a picture does to the sprite that is rendering it.
TEST_F(SpritePictureTest, APictureMayTakeItselfAway) {
  const auto picture = makeForeignPicture();
  picture->onRender = [this](HDC, const RECT&) {
    show(nullptr);
    return S_OK;
  };
  show(picture->dispatch());
  expectNothingShown();
  EXPECT_EQ(referencesOf(picture->dispatch()), 1U);
}

TEST_F(SpritePictureTest, APictureMayPutAnotherInItsPlace) {
  const auto picture = makeForeignPicture();
  const auto other = pictureOfBitmap24(kQuarters);
  picture->onRender = [&](HDC, const RECT&) {
    show(other);
    return S_OK;
  };
  show(picture->dispatch());
  expectShown(AlphaImage(kQuarters));
}

TEST_F(SpritePictureTest, APictureMayChangeTheKey) {
  const auto picture = makeForeignPicture();
  const auto paint = picture->onRender;
  picture->onRender = [&, first = true](HDC dc, const RECT& target) mutable {
    if (std::exchange(first, false)) {
      sprite_->setTransparentColor(255, 0, 0);
      sprite_->put_Transparent(VARIANT_TRUE);
    }
    return paint(dc, target);
  };
  show(picture->dispatch());
  AlphaImage transparent = redImage();
  transparent.alpha.assign(transparent.alpha.size(), 0);
  expectShown(transparent);
}

TEST_F(SpritePictureTest, APictureThatChangesTheSpriteEachTimeComesToAnEnd) {
  const auto picture = makeForeignPicture();
  picture->onRender = [this](HDC, const RECT&) {
    sprite_->setTransparentColor(1, 2, 3);
    return S_OK;
  };
  show(picture->dispatch());
  expectNothingShown();
}

TEST_F(SpritePictureTest, APictureMayDrawAndReleaseTheSprite) {
  const auto picture = makeForeignPicture();
  const auto paint = picture->onRender;
  picture->onRender = [&](HDC dc, const RECT& target) {
    if (sprite_) {
      EXPECT_EQ(queryFor<IGLDraw>(sprite_.Get())->Draw3D(0), S_OK);
    }
    sprite_.Reset();
    return paint(dc, target);
  };
  IZYNGLBitmap* const sprite = sprite_.Get();
  EXPECT_EQ(sprite->putref_Picture(picture->dispatch()), S_OK);
  EXPECT_EQ(referencesOf(picture->dispatch()), 1U);
}

TEST_F(SpritePictureTest, APictureIsHeldUntilAnotherComes) {
  const auto picture = makeForeignPicture();
  show(picture->dispatch());
  EXPECT_EQ(referencesOf(picture->dispatch()), 2U);
  show(picture->dispatch());
  EXPECT_EQ(referencesOf(picture->dispatch()), 2U);
  show(nullptr);
  EXPECT_EQ(referencesOf(picture->dispatch()), 1U);
  show(picture->dispatch());
  sprite_.Reset();
  EXPECT_EQ(referencesOf(picture->dispatch()), 1U);
}

}  // namespace
}  // namespace zyn::test
