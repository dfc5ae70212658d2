// The sprite as a host sees it: its members by vtable and by name, its boxes, its COM identity, and
// how it draws into an OpenGL context of the host's own.
#include <array>
#include <climits>
#include <tuple>

#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"
#include "support/LateBinding_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 20;
constexpr int kHeight = 12;

class SpriteTest : public HostTest {
 protected:
  Vec position() const {
    Vec at{-1, -2, -3};
    EXPECT_EQ(sprite_->getPosition(&at.x, &at.y, &at.z), S_OK);
    return at;
  }
  ComPtr<IDispatch> heldPicture() const {
    ComPtr<IDispatch> picture;
    EXPECT_EQ(sprite_->get_Picture(&picture), S_OK);
    return picture;
  }
  std::array<long, 2> size() const {
    std::array<long, 2> pixels{-1, -1};
    EXPECT_EQ(sprite_->get_largeur(&pixels[0]), S_OK);
    EXPECT_EQ(sprite_->get_hauteur(&pixels[1]), S_OK);
    return pixels;
  }

  ComPtr<IZYNGLBitmap> sprite_ = createObject<IZYNGLBitmap>(kSpriteProgId);
};

using Size = std::array<long, 2>;

void expectVector(const Vec& actual, const Vec& expected) {
  EXPECT_EQ(actual.x, expected.x);
  EXPECT_EQ(actual.y, expected.y);
  EXPECT_EQ(actual.z, expected.z);
}

TEST_F(SpriteTest, IsBornEmptyAtTheOrigin) {
  expectVector(position(), {0, 0, 0});
  EXPECT_EQ(heldPicture().Get(), nullptr);
  EXPECT_EQ(size(), (Size{0, 0}));
  VARIANT_BOOL transparent = VARIANT_TRUE;
  EXPECT_EQ(sprite_->get_Transparent(&transparent), S_OK);
  EXPECT_EQ(transparent, VARIANT_FALSE);
  long priority = -1;
  EXPECT_EQ(sprite_->get_Priorite(&priority), S_OK);
  EXPECT_EQ(priority, 0);
}

TEST_F(SpriteTest, KeepsItsPosition) {
  EXPECT_EQ(sprite_->setPosition(1.5, -2.25, 1e300), S_OK);
  expectVector(position(), {1.5, -2.25, 1e300});
}

TEST_F(SpriteTest, KeepsAnyPriority) {
  for (const long value : {0L, 1L, 19L, 20L, -5L, LONG_MAX, LONG_MIN}) {
    long priority = 7;
    EXPECT_EQ(sprite_->put_Priorite(value), S_OK);
    EXPECT_EQ(sprite_->get_Priorite(&priority), S_OK);
    EXPECT_EQ(priority, value);
  }
}

TEST_F(SpriteTest, IsTransparentForTrueOnly) {
  for (const VARIANT_BOOL value : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_TRUE, VARIANT_FALSE}) {
    VARIANT_BOOL transparent = 7;
    EXPECT_EQ(sprite_->put_Transparent(value), S_OK);
    EXPECT_EQ(sprite_->get_Transparent(&transparent), S_OK);
    EXPECT_EQ(transparent, value == VARIANT_TRUE ? VARIANT_TRUE : VARIANT_FALSE);
  }
}

TEST_F(SpriteTest, GivesItsPictureAndItsSize) {
  const auto picture = pictureOfBitmap24(makeQuarters(kWidth, kHeight));
  EXPECT_EQ(sprite_->putref_Picture(picture.Get()), S_OK);
  EXPECT_EQ(heldPicture().Get(), picture.Get());
  EXPECT_EQ(size(), (Size{kWidth, kHeight}));
  EXPECT_EQ(sprite_->putref_Picture(nullptr), S_OK);
  EXPECT_EQ(heldPicture().Get(), nullptr);
  EXPECT_EQ(size(), (Size{0, 0}));
}

TEST_F(SpriteTest, ItsSizeIsThatOfThePictureInPixels) {
  for (const int side : {1, 2, 3, 7, 16, 100, 101, 333}) {
    sprite_->putref_Picture(pictureOfBitmap24(makeQuarters(side, side + 5)).Get());
    EXPECT_EQ(size(), (Size{side, side + 5}));
  }
}

TEST_F(SpriteTest, WithoutAPlaceForAValueItSaysSo) {
  double number = 0;
  EXPECT_EQ(sprite_->get_Picture(nullptr), E_POINTER);
  EXPECT_EQ(sprite_->get_Transparent(nullptr), E_POINTER);
  EXPECT_EQ(sprite_->get_Priorite(nullptr), E_POINTER);
  EXPECT_EQ(sprite_->get_largeur(nullptr), E_POINTER);
  EXPECT_EQ(sprite_->get_hauteur(nullptr), E_POINTER);
  EXPECT_EQ(sprite_->Copie(nullptr), E_POINTER);
  EXPECT_EQ(sprite_->getPosition(nullptr, &number, &number), E_POINTER);
  EXPECT_EQ(sprite_->getPosition(&number, nullptr, &number), E_POINTER);
  EXPECT_EQ(sprite_->getPosition(&number, &number, nullptr), E_POINTER);
  const auto drawable = queryFor<IGLDraw>(sprite_.Get());
  EXPECT_EQ(drawable->GetBox2D(nullptr), E_POINTER);
  EXPECT_EQ(drawable->GetBox3D(nullptr), E_POINTER);
}

TEST_F(SpriteTest, ItsBoxIsItsPosition) {
  sprite_->putref_Picture(pictureOfBitmap24(makeQuarters(kWidth, kHeight)).Get());
  sprite_->setPosition(1.5, -2.5, 3.5);
  const auto drawable = queryFor<IGLDraw>(sprite_.Get());
  ComPtr<IDispatch> object;
  ASSERT_EQ(drawable->GetBox3D(&object), S_OK);
  const auto box = queryFor<IZYNBox3D>(object.Get());
  std::array<double, 6> sides{};
  box->get_XMin(&sides[0]);
  box->get_XMax(&sides[1]);
  box->get_YMin(&sides[2]);
  box->get_YMax(&sides[3]);
  box->get_ZMin(&sides[4]);
  box->get_ZMax(&sides[5]);
  EXPECT_EQ(sides, (std::array<double, 6>{1.5, 1.5, -2.5, -2.5, 3.5, 3.5}));

  ComPtr<IDispatch> flat;
  ASSERT_EQ(drawable->GetBox2D(&flat), S_OK);
  const auto flatBox = queryFor<IZYNBox2D>(flat.Get());
  std::array<double, 4> edges{};
  flatBox->get_XMin(&edges[0]);
  flatBox->get_XMax(&edges[1]);
  flatBox->get_YMin(&edges[2]);
  flatBox->get_YMax(&edges[3]);
  EXPECT_EQ(edges, (std::array<double, 4>{1.5, 1.5, -2.5, -2.5}));
}

TEST_F(SpriteTest, ItHasNoParameter) {
  double value = 5;
  EXPECT_EQ(queryFor<IGLDraw>(sprite_.Get())->GetParam(nullptr, &value), S_OK);
  EXPECT_EQ(value, -1.0);
}

TEST_F(SpriteTest, ACopyHasItsOwnSettings) {
  const auto picture = pictureOfBitmap24(makeQuarters(kWidth, kHeight));
  sprite_->putref_Picture(picture.Get());
  sprite_->setPosition(1, 2, 3);
  sprite_->put_Priorite(42);
  sprite_->put_Transparent(VARIANT_TRUE);
  ComPtr<IDispatch> made;
  ASSERT_EQ(sprite_->Copie(&made), S_OK);
  sprite_->putref_Picture(nullptr);
  sprite_->setPosition(7, 8, 9);
  sprite_->put_Priorite(1);
  sprite_->put_Transparent(VARIANT_FALSE);
  EXPECT_NE(queryFor<IUnknown>(made.Get()).Get(), queryFor<IUnknown>(sprite_.Get()).Get());

  sprite_ = queryFor<IZYNGLBitmap>(made.Get());
  made.Reset();
  EXPECT_EQ(heldPicture().Get(), picture.Get());
  EXPECT_EQ(size(), (Size{kWidth, kHeight}));
  expectVector(position(), {1, 2, 3});
  long priority = 0;
  sprite_->get_Priorite(&priority);
  EXPECT_EQ(priority, 42);
  VARIANT_BOOL transparent = VARIANT_FALSE;
  sprite_->get_Transparent(&transparent);
  EXPECT_EQ(transparent, VARIANT_TRUE);
}

TEST_F(SpriteTest, AnswersByName) {
  IDispatch* const sprite = sprite_.Get();
  const auto picture = pictureOfBitmap24(makeQuarters(kWidth, kHeight));
  // Scripts put objects by value as well as by reference.
  EXPECT_EQ(putReference(sprite, L"Picture", _variant_t(picture.Get())).code(), S_OK);
  EXPECT_EQ(getProperty(sprite, L"Picture").value.pdispVal, picture.Get());
  EXPECT_EQ(static_cast<long>(getProperty(sprite, L"largeur").value), kWidth);
  EXPECT_EQ(static_cast<long>(getProperty(sprite, L"hauteur").value), kHeight);
  EXPECT_EQ(callMethod(sprite, L"setPosition", {1.0, 2.0, 3.0}).code(), S_OK);
  EXPECT_EQ(callMethod(sprite, L"setOrigine", {1.0, 2.0}).code(), S_OK);
  EXPECT_EQ(callMethod(sprite, L"setTransparentColor", {511L, 0L, 255L}).code(), S_OK);
  EXPECT_EQ(putProperty(sprite, L"Transparent", true).code(), S_OK);
  EXPECT_TRUE(static_cast<bool>(getProperty(sprite, L"Transparent").value));
  EXPECT_EQ(putProperty(sprite, L"Priorite", 3L).code(), S_OK);
  EXPECT_EQ(static_cast<long>(getProperty(sprite, L"Priorite").value), 3);
  const CallResult copy = callMethod(sprite, L"Copie");
  ASSERT_EQ(copy.code(), S_OK);
  Vec at;
  EXPECT_EQ(callMethod(copy.value.pdispVal, L"getPosition",
                       {outArgument(at.x), outArgument(at.y), outArgument(at.z)})
                .code(),
            S_OK);
  expectVector(at, {1, 2, 3});
}

TEST_F(SpriteTest, BothInterfacesAreOfOneObject) {
  const auto drawable = queryFor<IGLDraw>(sprite_.Get());
  EXPECT_EQ(queryFor<IUnknown>(drawable.Get()).Get(), queryFor<IUnknown>(sprite_.Get()).Get());
  EXPECT_EQ(queryFor<IZYNGLBitmap>(drawable.Get()).Get(), sprite_.Get());
}

TEST_F(SpriteTest, WithoutAContextItDrawsNothing) {
  sprite_->putref_Picture(pictureOfBitmap24(makeQuarters(kWidth, kHeight)).Get());
  const auto drawable = queryFor<IGLDraw>(sprite_.Get());
  for (const int mode : {0, 1, -1, -2}) {
    EXPECT_EQ(drawable->Draw3D(mode), S_OK);
    EXPECT_EQ(drawable->Draw2D(mode), S_OK);
  }
}

constexpr int kSize = 64;

class SpriteDrawingTest : public SpriteTest {
 protected:
  SpriteDrawingTest() {
    glViewport(0, 0, kSize, kSize);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kSize, 0, kSize, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    sprite_->putref_Picture(pictureOfBitmap24(makeQuarters(kWidth, kHeight)).Get());
    sprite_->setPosition(10.25, 30.25, 0);
  }

  void draw3D(int mode = 0) { EXPECT_EQ(drawable_->Draw3D(mode), S_OK); }
  void draw2D(int mode = 0) { EXPECT_EQ(drawable_->Draw2D(mode), S_OK); }
  Image drawn3D(int mode = 0) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw3D(mode);
    return canvas_.read();
  }
  Image drawn2D(int mode = 0) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw2D(mode);
    return canvas_.read();
  }

  /// The quarters with their lower left corner at a pixel, counted from the lower left, on black.
  static Image expected(int left, int bottom) {
    const Image quarters = makeQuarters(kWidth, kHeight);
    Image image(kSize, kSize);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const int column = left + x;
        const int row = kSize - bottom - kHeight + y;
        if (column >= 0 && column < kSize && row >= 0 && row < kSize) {
          image.at(column, row) = quarters.at(x, y);
        }
      }
    }
    return image;
  }

  GlCanvas canvas_{kSize, kSize};
  ComPtr<IGLDraw> drawable_ = queryFor<IGLDraw>(sprite_.Get());
};

TEST_F(SpriteDrawingTest, ItsOriginLiesAtItsPosition) {
  EXPECT_EQ(drawn3D(), expected(10, 30));
  sprite_->setOrigine(0, 0);
  EXPECT_EQ(drawn2D(), expected(10, 30));
  sprite_->setOrigine(kWidth, kHeight);
  EXPECT_EQ(drawn3D(), expected(10 - kWidth, 30 - kHeight));
  sprite_->setOrigine(-3, 4.5);
  EXPECT_EQ(drawn2D(), expected(13, 26));
}

TEST_F(SpriteDrawingTest, EveryModeDrawsTheSame) {
  for (const int mode : {0, 1, -1, -2, 7}) EXPECT_EQ(drawn3D(mode), expected(10, 30)) << mode;
  for (const int mode : {0, 1, -2, 7}) EXPECT_EQ(drawn2D(mode), expected(10, 30)) << mode;
}

TEST_F(SpriteDrawingTest, ItIsSeenAsFarAsItReachesIntoTheView) {
  for (const int x : {-25, -20, -19, -1, 0, 45, 63, 64, 70}) {
    for (const int y : {-13, -12, -11, -1, 0, 55, 63, 64, 70}) {
      sprite_->setPosition(x + 0.25, y + 0.25, 0);
      ASSERT_EQ(drawn3D(), expected(x, y)) << x << ", " << y;
      ASSERT_EQ(drawn2D(), expected(x, y)) << x << ", " << y;
    }
  }
}

TEST_F(SpriteDrawingTest, ItIsNotSeenOutsideTheVisibleDepth) {
  for (const double z : {-101.0, 101.0}) {
    sprite_->setPosition(10, 30, z);
    EXPECT_EQ(drawn3D().count(kBlack), kSize * kSize);
    EXPECT_EQ(drawn2D(), expected(10, 30));
  }
}

TEST_F(SpriteDrawingTest, ASelectionPassIn2DDrawsItsRectangle) {
  draw2D();
  // Drawn in the current colour, where the picture was.
  glColor3f(1, 0, 0);
  const PixelBox box = boxOf(drawn2D(-1), kRed);
  EXPECT_EQ(box.left, 10);
  EXPECT_EQ(box.right, 10 + kWidth - 1);
  EXPECT_EQ(box.bottom, kSize - 1 - 30);
  EXPECT_EQ(box.top, kSize - 30 - kHeight);
}

TEST_F(SpriteDrawingTest, TheRectangleKeepsTheSizeThatWasSeen) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, 2 * kSize, 0, 2 * kSize, -100, 100);
  draw2D();  // two units a pixel
  glLoadIdentity();
  glOrtho(0, kSize, 0, kSize, -100, 100);
  glColor3f(1, 0, 0);
  sprite_->setOrigine(5, 6);
  const PixelBox box = boxOf(drawn2D(-1), kRed);
  EXPECT_EQ(box.left, 0);
  EXPECT_EQ(box.right, 10 + 2 * (kWidth - 5) - 1);
  EXPECT_EQ(box.top, kSize - 30 - 2 * (kHeight - 6));
}

TEST_F(SpriteDrawingTest, ItPushesNoNames) {
  draw2D();
  GLuint buffer[32] = {};
  glSelectBuffer(32, buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(77);
  draw2D(-1);
  EXPECT_EQ(glRenderMode(GL_RENDER), 1);
  EXPECT_EQ(buffer[0], 1U);
  EXPECT_EQ(buffer[3], 77U);
}

TEST_F(SpriteDrawingTest, In3DItLiesOverEverything) {
  glEnable(GL_DEPTH_TEST);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glBegin(GL_QUADS);
  for (const auto& [x, y] : {std::array{0, 0}, {kSize, 0}, {kSize, kSize}, {0, kSize}}) {
    glVertex3d(x, y, 99);
  }
  glEnd();
  draw3D();
  const Image image = canvas_.read();
  EXPECT_EQ(image.count(kRed), kWidth * kHeight / 4);
  EXPECT_EQ(image.count(kWhite), kSize * kSize - kWidth * kHeight);
}

TEST_F(SpriteDrawingTest, ThousandsAreDrawn) {
  for (int i = 0; i < 5000; ++i) {
    sprite_->setPosition(i % 100 - 20.0, i % 90 - 20.0, 0);
    draw3D();
    draw2D();
    draw2D(-1);
  }
  EXPECT_EQ(drawn3D(), expected(79, 49));
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

/// lighting, depth test and blending, odd ways with pixels
using Surroundings = std::tuple<bool, bool, bool>;

class SpriteStateTest : public SpriteDrawingTest,
                        public testing::WithParamInterface<Surroundings> {};

void enable(GLenum capability, bool on) { on ? glEnable(capability) : glDisable(capability); }

TEST_P(SpriteStateTest, DrawingLeavesTheStateAsItWas) {
  const auto [lighting, tests, pixels] = GetParam();
  enable(GL_LIGHTING, lighting);
  enable(GL_DEPTH_TEST, tests);
  enable(GL_BLEND, tests);
  if (pixels) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 123);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 5);
    glPixelTransferf(GL_GREEN_SCALE, 0.5F);
    glPixelZoom(-2, 3);
    glMatrixMode(GL_TEXTURE);
  }
  glColor4f(0.25F, 0.5F, 0.75F, 1);
  glRasterPos2d(3, 4);
  for (const Vec& at : {Vec{10, 30, 0}, Vec{-5, 30, 0}, Vec{70, 70, 0}, Vec{10, 30, 200}}) {
    sprite_->setPosition(at.x, at.y, at.z);
    for (const int mode : {0, -1}) {
      const GlState before = readGlState();
      draw3D(mode);
      EXPECT_EQ(differences(before, readGlState()), kNone) << "3D, mode " << mode;
      draw2D(mode);
      EXPECT_EQ(differences(before, readGlState()), kNone) << "2D, mode " << mode;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, SpriteStateTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool()));

}  // namespace
}  // namespace zyn::test
