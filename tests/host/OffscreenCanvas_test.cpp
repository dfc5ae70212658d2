// Pictures where OpenGL does not draw on bitmaps, or not on as large ones as are asked for: they
// are the same pictures.
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "support/CameraView_win.h"
#include "support/FailingImport_win.h"
#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/ImageDecoder_win.h"
#include "support/Meshes.h"
#include "support/MessageCatcher_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

constexpr DWORD kError = 1450;

HMODULE library() { return GetModuleHandleW(L"ZYNVue.dll"); }

/// What the patched functions know: bitmaps that are longer than this on one side, windows of which
/// OpenGL does not keep what lies beyond this, and the largest viewport.
constexpr int kAny = 1 << 30;
int largestBitmap = kAny;
int largestFrame = kAny;
int largestViewport = kAny;

/// Whether the device context is one of a bitmap that OpenGL is not to draw on.
bool isRefused(HDC dc) {
  BITMAP bitmap = {};
  return GetObjectType(dc) == OBJ_MEMDC &&
         GetObjectW(GetCurrentObject(dc, OBJ_BITMAP), sizeof bitmap, &bitmap) != 0 &&
         std::max(bitmap.bmWidth, bitmap.bmHeight) > largestBitmap;
}

template <class Answer>
Answer refuse() {
  SetLastError(kError);
  return Answer{};
}

int WINAPI chooseFormat(HDC dc, const PIXELFORMATDESCRIPTOR* wanted) {
  return isRefused(dc) ? refuse<int>() : ChoosePixelFormat(dc, wanted);
}
int WINAPI describeFormat(HDC dc, int format, UINT size, PIXELFORMATDESCRIPTOR* description) {
  return isRefused(dc) ? refuse<int>() : DescribePixelFormat(dc, format, size, description);
}
BOOL WINAPI setFormat(HDC dc, int format, const PIXELFORMATDESCRIPTOR* wanted) {
  return isRefused(dc) ? refuse<BOOL>() : SetPixelFormat(dc, format, wanted);
}
HGLRC WINAPI createContext(HDC dc) {
  return isRefused(dc) ? refuse<HGLRC>() : wglCreateContext(dc);
}
BOOL WINAPI makeCurrent(HDC dc, HGLRC context) {
  return isRefused(dc) && context ? refuse<BOOL>() : wglMakeCurrent(dc, context);
}

void WINAPI readPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                       void* pixels) {
  if (x + width <= largestFrame && y + height <= largestFrame) {
    glReadPixels(x, y, width, height, format, type, pixels);
  }
}

void WINAPI getIntegers(GLenum name, GLint* values) {
  glGetIntegerv(name, values);
  if (name == GL_MAX_VIEWPORT_DIMS) {
    values[0] = std::min(values[0], largestViewport);
    values[1] = std::min(values[1], largestViewport);
  }
}

/// What of OpenGL fails on a bitmap, with the functions that are asked for it.
struct Lack {
  const char* name;
  std::vector<std::pair<const char*, const void*>> functions;
};

template <class Function>
const void* address(Function* function) {
  return reinterpret_cast<const void*>(function);
}

const Lack kLacks[] = {{"PixelFormats",
                        {{"ChoosePixelFormat", address(&chooseFormat)},
                         {"DescribePixelFormat", address(&describeFormat)},
                         {"SetPixelFormat", address(&setFormat)}}},
                       {"SetPixelFormat", {{"SetPixelFormat", address(&setFormat)}}},
                       {"Contexts", {{"wglCreateContext", address(&createContext)}}},
                       {"CurrentContexts", {{"wglMakeCurrent", address(&makeCurrent)}}}};

/// Takes OpenGL on bitmaps away for a scope, or on those beyond a size.
class WithoutBitmaps {
 public:
  explicit WithoutBitmaps(const Lack& lack, int largest = 0) {
    largestBitmap = largest;
    for (const auto& [function, replacement] : lack.functions) {
      patches_.push_back(std::make_unique<ImportPatch>(library(), function, replacement));
    }
  }
  ~WithoutBitmaps() { largestBitmap = kAny; }
  WithoutBitmaps(const WithoutBitmaps&) = delete;
  WithoutBitmaps& operator=(const WithoutBitmaps&) = delete;

 private:
  std::vector<std::unique_ptr<ImportPatch>> patches_;
};

/// Another function in place of an imported one, and a limit that it knows, for a scope.
class Limit {
 public:
  Limit(int& limit, int value, const char* function, const void* replacement)
      : limit_(limit), patch_(library(), function, replacement) {
    limit_ = value;
  }
  ~Limit() { limit_ = kAny; }
  Limit(const Limit&) = delete;
  Limit& operator=(const Limit&) = delete;

 private:
  int& limit_;
  ImportPatch patch_;
};

/// Of everything that is drawn, in the square from (left, 0) to (left + 4, 4).
std::vector<ComPtr<IDispatch>> makeObjects(double left) {
  std::vector<ComPtr<IDispatch>> objects;
  for (const auto& triangle : makeCuboid({left + 0.3, left + 1.9, 0.3, 1.7, 0, 1}, kGreen)) {
    objects.emplace_back(triangle);
  }
  objects.emplace_back(
      makeFlatTriangle({left, 0, 1.2}, {left + 4, 0.5, 1.2}, {left + 2, 3.5, 1.2}, kRed, 0.4));
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i <= 200; ++i) {
    x.push_back(left + i / 50.0);
    y.push_back(2 + 1.8 * std::sin(i / 9.0));
  }
  trace->setPoints(doubleArray(x), doubleArray(y));
  trace->setColor(0.9, 0.8, 0.1, 1);
  trace->put_Epaisseur(3);
  objects.emplace_back(trace);
  const auto label = makeText(L"Sample 12.5");
  label->setPosition(left + 2.2, 2.9, 1.5, 9);
  objects.emplace_back(label);
  const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
  sprite->putref_Picture(pictureOfBitmap24(makeQuarters(24, 24)).Get());
  sprite->setPosition(left + 3.4, 1.1, 1.5);
  objects.emplace_back(sprite);
  return objects;
}

class OffscreenCanvasTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  OffscreenCanvasTest() {
    if (auto* const scene = dynamic_cast<OffscreenScene*>(context_.get())) {
      const _variant_t frame = doubleArray(frameOf({normalised({-1, 0.6, -2}), {0, 1, 0}}));
      (*scene)->ViewParams(nullptr, 0.1, const_cast<_variant_t*>(&frame));
      (*scene)->put_GradientBackground(VARIANT_TRUE);
      (*scene)->setGradientColor(0.6F, 0.7F, 0.9F);
    } else {
      show(4);
    }
    context_->addAll(makeObjects(0));
    // In lines.
    context_->add(makeFlatTriangle({0.2, 2.2, 1}, {1.2, 2.4, 1}, {0.7, 3.8, 1}, kBlue).Get(), 1);
    seer_->onDraw3D = seer_->onDraw2D = [this](int) {
      GLint viewport[4] = {};
      glGetIntegerv(GL_VIEWPORT, viewport);
      largestTile_ =
          std::max({largestTile_, static_cast<int>(viewport[2]), static_cast<int>(viewport[3])});
      ++tiles_;
      drawsInWindow_ = GetObjectType(wglGetCurrentDC()) != OBJ_MEMDC;
      return S_OK;
    };
    context_->add(seer_->dispatch());
  }

  void show(double width) {
    if (auto* const graph = dynamic_cast<OffscreenGraph*>(context_.get())) {
      graph->show(0, width, 0, 4);
    }
  }

  /// Makes the scene eight times as wide, for pictures with seams.
  void widen() {
    for (int i = 1; i < 8; ++i) context_->addAll(makeObjects(4 * i));
    show(32);
    if (auto* const scene = dynamic_cast<OffscreenScene*>(context_.get())) {
      scene->look({{0, 0, -1}, {0, 1, 0}}, 0);
    }
  }

  /// The picture of a new surface.
  Image drawn(int width, int height) {
    largestTile_ = tiles_ = 0;
    context_->resize(width, height);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    const Image image = context_->render();
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    return image;
  }

  /// That only edges differ: one of so many pixels, by more than one level of 255.
  static void expectSame(const Image& picture, const Image& wanted, int oneOf) {
    ASSERT_EQ(picture.width(), wanted.width());
    ASSERT_EQ(picture.height(), wanted.height());
    int different = 0;
    for (int y = 0; y < wanted.height(); ++y) {
      for (int x = 0; x < wanted.width(); ++x) {
        different += difference(picture.at(x, y), wanted.at(x, y)) > 1 ? 1 : 0;
      }
    }
    EXPECT_LE(different, wanted.width() * wanted.height() / oneOf);
    EXPECT_LT(wanted.count(wanted.at(0, 0)), wanted.width() * wanted.height() * 9 / 10);
  }

  const bool drawsOnBitmaps_ = GlCanvas(8, 8).isBitmap();
  std::unique_ptr<OffscreenContext> context_ = GetParam().make(8, 8);
  ComPtr<ForeignObject> seer_ = makeForeign<ForeignObject>();
  int largestTile_ = 0;
  int tiles_ = 0;
  bool drawsInWindow_ = false;
};

constexpr int kEdges = 1000;

TEST_P(OffscreenCanvasTest, AHiddenWindowGivesTheSamePicture) {
  const Image wanted = drawn(300, 240);
  EXPECT_EQ(drawsInWindow_, !drawsOnBitmaps_);
  for (const Lack& lack : kLacks) {
    const WithoutBitmaps without(lack);
    const MessageCatcher messages(library());
    const Image picture = drawn(300, 240);
    EXPECT_TRUE(drawsInWindow_) << lack.name;
    EXPECT_TRUE(messages.texts().empty()) << lack.name;
    expectSame(picture, wanted, kEdges);
    EXPECT_EQ(context_->render().at(150, 120), picture.at(150, 120)) << "drawn again";
  }
  EXPECT_EQ(drawn(300, 240).at(150, 120), wanted.at(150, 120));
  EXPECT_EQ(drawsInWindow_, !drawsOnBitmaps_);
}

TEST_P(OffscreenCanvasTest, SoDoAllExports) {
  drawn(300, 240);
  const auto file = context_->folder().file(L"picture");
  const auto exportAll = [&] {
    std::vector<Image> images;
    for (const auto& write : std::initializer_list<std::function<HRESULT()>>{
             [&] { return context_->CreateBitmap(bstr(file)); },
             [&] { return context_->exportPng(file); }, [&] { return context_->exportGif(file); },
             [&] { return context_->exportJpg(file, 100); }}) {
      EXPECT_EQ(write(), S_OK);
      images.push_back(decodeImageFile(file).image);
      std::filesystem::remove(file);
    }
    ComPtr<IPictureDisp> picture;
    EXPECT_EQ(context_->GetPictureDisp(&picture), S_OK);
    images.push_back(pixelsOf(bitmapOf(picture.Get())));
    return images;
  };
  const std::vector<Image> wanted = exportAll();
  const WithoutBitmaps without(kLacks[0]);
  drawn(300, 240);
  const std::vector<Image> pictures = exportAll();
  ASSERT_EQ(pictures.size(), wanted.size());
  for (const std::size_t lossless : {0U, 1U, 4U}) {
    expectSame(pictures[lossless], wanted[lossless], kEdges);
    EXPECT_EQ(meanDifference(pictures[lossless], pictures[0]), 0);
  }
  // A few pixels decide about colours of their own.
  for (const std::size_t lossy : {2U, 3U}) {
    EXPECT_LT(meanDifference(pictures[lossy], wanted[lossy]), 0.5);
  }
}

TEST_P(OffscreenCanvasTest, APictureLargerThanAWindow) {
  widen();
  const Image wanted = drawn(2200, 240);
  EXPECT_EQ(tiles_, drawsOnBitmaps_ ? 1 : 2);
  const WithoutBitmaps without(kLacks[0]);
  const Image picture = drawn(2200, 240);
  EXPECT_EQ(tiles_, 2);
  EXPECT_LE(largestTile_, 2048);
  expectSame(picture, wanted, kEdges);
}

// As where a driver gives up the pixels that the screen would not show.
TEST_P(OffscreenCanvasTest, AWindowThatDoesNotKeepAllItsPixelsIsMadeSmaller) {
  widen();
  const Image wanted = drawn(1300, 240);
  const WithoutBitmaps without(kLacks[0]);
  const Limit kept(largestFrame, 1200, "glReadPixels", address(&readPixels));
  const Image picture = drawn(1300, 240);
  EXPECT_TRUE(drawsInWindow_);
  EXPECT_EQ(tiles_, 2);
  EXPECT_LE(largestTile_, 1024);
  expectSame(picture, wanted, kEdges);
}

// As where they are made of pixel buffers, whose limits are not those of viewports.
TEST_P(OffscreenCanvasTest, BitmapsThatAreTooLargeForOpenGlAreMadeSmaller) {
  if (!drawsOnBitmaps_) GTEST_SKIP() << "OpenGL does not draw on bitmaps here";
  widen();
  const Image wanted = drawn(1300, 240);
  EXPECT_EQ(tiles_, 1);
  for (const Lack& lack : kLacks) {
    const WithoutBitmaps largeOnes(lack, 1200);
    const Image picture = drawn(1300, 240);
    EXPECT_FALSE(drawsInWindow_) << lack.name;
    EXPECT_EQ(tiles_, 2) << lack.name;
    EXPECT_LE(largestTile_, 1024) << lack.name;
    expectSame(picture, wanted, kEdges);
  }
}

TEST_P(OffscreenCanvasTest, NoTileIsLargerThanAViewport) {
  const Image wanted = drawn(600, 420);
  EXPECT_EQ(tiles_, 1);
  const Limit viewport(largestViewport, 256, "glGetIntegerv", address(&getIntegers));
  const Image onBitmap = drawn(600, 420);
  EXPECT_EQ(largestTile_, 256);
  EXPECT_EQ(tiles_, 5 * 4);
  expectSame(onBitmap, wanted, kEdges);
  const WithoutBitmaps without(kLacks[0]);
  const Image inWindow = drawn(600, 420);
  EXPECT_TRUE(drawsInWindow_);
  EXPECT_EQ(largestTile_, 256);
  expectSame(inWindow, wanted, kEdges);
}

/// A dimension, a mesh with its edges and a group, besides the rest: what places itself by the
/// screen is to be in the same place whatever the tile.
TEST_P(OffscreenCanvasTest, TilesFitTogetherWithPerspective) {
  ComPtr<IZYN3DGLBitmapContext2> scene;
  context_->dispatch()->QueryInterface(IID_PPV_ARGS(&scene));
  if (!scene) GTEST_SKIP() << "there is none in the plane";
  widen();
  const auto dimension = createObject<IZYNGLCote>(kCoteProgId);
  require(dimension->put_Texte(_bstr_t(L"29.0")), "Texte");
  require(dimension->put_TypeCotation(3), "TypeCotation");
  require(dimension->put_DecalageCotation(4), "DecalageCotation");
  require(dimension->setPointsCotation(1, 3, 2, 30, 3.8, 2), "setPointsCotation");
  const auto measured = makeForeign<ForeignObject>();
  measured->onDraw3D = [&](int) { return dimension->Draw(); };
  const Mesh block = steppedBlock();
  const auto group = createObject<IZYNGroupe>(kGroupProgId);
  for (const long style : {2, 3}) {
    const auto mesh = createObject<IZYNGLMaillage>(kMeshProgId);
    require(mesh->setSommets(doubleArray(block.points)), "setSommets");
    require(mesh->setPolygones(doubleArray({6, 6, 4, 4, 4, 4, 4, 4}),
                               doubleArray({block.corners.begin(), block.corners.end()})),
            "setPolygones");
    require(mesh->put_StyleRendu(style), "StyleRendu");
    const auto place = createObject<IZYNGroupe>(kGroupProgId);
    require(place->Add(mesh.Get(), 0), "Add");
    require(place->put_Transformation(doubleArray({3, 0, 0, 0, 0, 1.5, 0, 0, 0, 0, 3, 0,
                                                   6.0 * static_cast<double>(style), 0.5, 1, 1})),
            "Transformation");
    require(group->Add(place.Get(), 0), "Add");
  }
  context_->add(group.Get());
  context_->add(measured->dispatch());
  for (const wchar_t* const text :
       {L"Oeil=16 2 30 Cible=16 2 0 Haut=0 1 0 Largeur=34 Hauteur=24 Perspective=1 "
        L"AngleOuverture=60 Profondeur=60",
        L"Oeil=-8 -6 12 Cible=14 2 0 Haut=0 0 1 Largeur=20 Hauteur=14 Perspective=1 "
        L"AngleOuverture=110 Profondeur=60"}) {
    require(scene->put_Camera(makeCamera(text).Get()), "Camera");
    const Image wanted = drawn(600, 420);
    EXPECT_EQ(tiles_, 1);
    const Limit viewport(largestViewport, 256, "glGetIntegerv", address(&getIntegers));
    const Image tiled = drawn(600, 420);
    EXPECT_EQ(tiles_, 5 * 4);
    expectSame(tiled, wanted, kEdges);
  }
}

TEST_P(OffscreenCanvasTest, WhatDrawsMayLeaveReadingInDisorder) {
  const Image wanted = drawn(300, 240);
  const auto careless = makeForeign<ForeignObject>();
  careless->onDraw3D = careless->onDraw2D = [](int) {
    for (const GLenum layout : std::initializer_list<GLenum>{
             GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS, GL_PACK_SWAP_BYTES}) {
      glPixelStorei(layout, 1);
    }
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelTransferf(GL_RED_SCALE, 0);
    glPixelTransferf(GL_GREEN_BIAS, 1);
    glReadBuffer(GL_FRONT);
    return S_OK;
  };
  context_->add(careless->dispatch());
  const Image onBitmap = drawn(300, 240);
  expectSame(onBitmap, wanted, kEdges);
  const WithoutBitmaps without(kLacks[0]);
  for (int i = 0; i < 2; ++i)
    expectSame(i == 0 ? drawn(300, 240) : context_->render(), wanted, kEdges);
}

/// The library's hidden windows of this thread.
std::vector<HWND> hiddenWindows() {
  std::vector<HWND> found;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM list) -> BOOL {
        wchar_t name[20] = L"";
        GetClassNameW(window, name, static_cast<int>(std::size(name)));
        if (std::wstring(name) == L"Static") {
          reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

TEST_P(OffscreenCanvasTest, TheWindowIsNeverSeenAndGoesWithTheSurface) {
  EXPECT_EQ(hiddenWindows().empty(), drawsOnBitmaps_);
  const WithoutBitmaps without(kLacks[0]);
  for (const int width : {300, 200}) {
    drawn(width, 100);
    ASSERT_EQ(hiddenWindows().size(), 1U);
    EXPECT_FALSE(IsWindowVisible(hiddenWindows()[0]));
  }
  context_->release();
  EXPECT_TRUE(hiddenWindows().empty());
}

// As a program does that closes all windows of a thread.
TEST_P(OffscreenCanvasTest, AWindowThatIsDestroyedIsMadeAgain) {
  const Image wanted = drawn(300, 240);
  const WithoutBitmaps without(kLacks[0]);
  for (const bool wasDrawn : {false, true}) {
    context_->resize(300, 240);
    if (wasDrawn) context_->render();
    ASSERT_EQ(hiddenWindows().size(), 1U);
    SendMessageW(hiddenWindows()[0], WM_CLOSE, 0, 0);
    ASSERT_TRUE(hiddenWindows().empty());
    tiles_ = 0;
    expectSame(context_->render(), wanted, kEdges);
    EXPECT_EQ(tiles_, 1);
    EXPECT_EQ(hiddenWindows().size(), 1U);
  }
}

// The answers of bitmaps, where windows do not serve either.
TEST_P(OffscreenCanvasTest, WithoutBothThereIsNoPicture) {
  const std::pair<const Lack*, std::vector<std::wstring>> cases[] = {
      {&kLacks[0], {}},
      {&kLacks[1], {}},
      {&kLacks[2], {L"wglCreateContext failed: GetLastError returned 1450\n"}},
      {&kLacks[3], {L"wglMakeCurrent failed: GetLastError returned 1450\n"}}};
  const auto file = context_->folder().file(L"none.bmp");
  for (const auto& [lack, shown] : cases) {
    const auto texts = drawsOnBitmaps_ ? shown : std::vector<std::wstring>{};
    const WithoutBitmaps without(*lack);
    for (const char* function : {"CreateWindowExW", "GetDCEx"}) {
      const FailingImport windows(library(), function, {0, kError});
      const MessageCatcher messages(library());
      context_->resize(30, 20);
      EXPECT_EQ(messages.texts(), texts) << lack->name;
      EXPECT_EQ(context_->CreateBitmap(bstr(file)), S_OK);
      EXPECT_FALSE(exists(file));
    }
    const Limit kept(largestFrame, 0, "glReadPixels", address(&readPixels));
    const MessageCatcher messages(library());
    context_->resize(30, 20);
    EXPECT_EQ(messages.texts(), texts) << lack->name;
    EXPECT_EQ(context_->CreateBitmap(bstr(file)), S_OK);
    EXPECT_FALSE(exists(file));
  }
  EXPECT_EQ(drawn(30, 20).width(), 30);
}

INSTANTIATE_TEST_SUITE_P(Both, OffscreenCanvasTest, testing::ValuesIn(offscreenClasses()), nameOf);

// A view's picture for its container is drawn in the same way.
TEST(OffscreenCanvasOfViews, ViewsDrawTheirPicturesAllTheSame) {
  const Apartment apartment;
  View3DHost view({120, 80});
  view->Add(makeFlatTriangle({0, 0, 0}, {3, 0, 0}, {0, 2, 0}, kRed).Get(), 0);
  view->initView(0);
  view->VueXYp(0.1);
  const Image wanted = view.picture({120, 80});
  EXPECT_GT(wanted.count(kRed), 0);
  const WithoutBitmaps without(kLacks[0]);
  EXPECT_LT(meanDifference(view.picture({120, 80}), wanted), 0.1);
}

}  // namespace
}  // namespace zyn::test
