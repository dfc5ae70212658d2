// The files that the 3D bitmap context writes: BMP byte by byte, the others decoded, and paths that
// cannot be written.
#include <cmath>

#include "support/ImageDecoder_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

class ExportTest : public HostTest {
 protected:
  /// A few plain colours: what every format can hold exactly or nearly.
  static void fill(OffscreenScene& scene) {
    scene.addAll(makeRectangle(0, 4, 0, 3, 0, kRed));
    scene.addAll(makeRectangle(1, 3, 1, 2, 1, kGreen));
    scene.add(makeFlatTriangle({0, 0, 2}, {1, 0, 2}, {0, 1, 2}, kBlue).Get());
    scene->ViewParams(nullptr, 0.2, nullptr);
  }
  static void addGradient(OffscreenScene& scene) {
    scene->setGradientColor(255, 120, 0);
    scene->put_GradientBackground(VARIANT_TRUE);
  }
  std::filesystem::path target(const wchar_t* name) const { return folder_.file(name); }
  DecodedImage decoded(const wchar_t* name) const { return decodeImageFile(target(name)); }

  TempFolder folder_;
};

// --- BMP, byte by byte ---------------------------------------------------------------------------

struct Size {
  int width;
  int height;
  std::uint32_t rowBytes;
};

class BmpTest : public ExportTest, public testing::WithParamInterface<Size> {};

TEST_P(BmpTest, HeadersAndLength) {
  const auto [width, height, rowBytes] = GetParam();
  OffscreenScene scene(width, height);
  const Bytes bytes = scene.renderBytes();
  const std::uint32_t pixels = rowBytes * static_cast<std::uint32_t>(height);
  ASSERT_EQ(bytes.size(), 54 + pixels);
  const BmpFile file = parseBmp(bytes);
  EXPECT_EQ(file.type[0], 'B');
  EXPECT_EQ(file.type[1], 'M');
  EXPECT_EQ(file.size, 54 + pixels);
  EXPECT_EQ(file.reserved1, 0);
  EXPECT_EQ(file.reserved2, 0);
  EXPECT_EQ(file.offBits, 54u);
  EXPECT_EQ(file.headerSize, 40u);
  EXPECT_EQ(file.width, width);
  EXPECT_EQ(file.height, height);
  EXPECT_EQ(file.planes, 1);
  EXPECT_EQ(file.bitCount, 24);
  EXPECT_EQ(file.compression, 0u);
  EXPECT_EQ(file.sizeImage, pixels);
  EXPECT_EQ(file.xPelsPerMeter, 0);
  EXPECT_EQ(file.yPelsPerMeter, 0);
  EXPECT_EQ(file.clrUsed, 0u);
  EXPECT_EQ(file.clrImportant, 0u);
  // Blue, green, red; the first row in the file is the lowest.
  EXPECT_EQ(bytes[54], kBackground.b);
  EXPECT_EQ(bytes[55], kBackground.g);
  EXPECT_EQ(bytes[56], kBackground.r);
}

INSTANTIATE_TEST_SUITE_P(Sizes, BmpTest,
                         testing::Values(Size{100, 10, 300}, Size{101, 10, 304}, Size{102, 3, 308},
                                         Size{103, 3, 312}, Size{1, 1, 4}, Size{641, 480, 1924},
                                         Size{2, 500, 8}));

TEST_F(ExportTest, BmpRowsRunUpwards) {
  OffscreenScene scene(10, 10);
  scene.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  scene.addAll(makeRectangle(0, 1, 1, 2, 0, kGreen));
  scene.addAll(makeRectangle(1, 2, 0, 2, 0, kBlue));
  const Bytes bytes = scene.renderBytes();
  EXPECT_EQ(bytes[54 + 2], 255) << "lower left: red";
  EXPECT_EQ(bytes[54 + 9 * 32 + 1], 255) << "upper left: green";
  EXPECT_EQ(bytes[54 + 9 * 3], 255) << "lower right: blue";
}

TEST_F(ExportTest, ResolutionIsNotWrittenIntoTheFile) {
  OffscreenScene scene(20, 20);
  scene->put_DPIResolution(300);
  const BmpFile file = parseBmp(scene.renderBytes());
  EXPECT_EQ(file.xPelsPerMeter, 0);
  EXPECT_EQ(file.yPelsPerMeter, 0);
}

TEST_F(ExportTest, ShorterFileReplacesALongerOne) {
  const auto path = target(L"a.bmp");
  writeFile(path, std::string(100000, 'x'));
  OffscreenScene scene(10, 10);
  EXPECT_EQ(scene->CreateBitmap(bstr(path)), S_OK);
  EXPECT_EQ(readFile(path), scene.renderBytes());
}

// --- the compressed formats ----------------------------------------------------------------------

TEST_F(ExportTest, PngHasExactlyThePixelsOfTheBmp) {
  for (int width : {97, 100, 101}) {
    OffscreenScene scene(width, 64);
    fill(scene);
    addGradient(scene);
    EXPECT_EQ(scene->CreatePNG(nullptr, bstr(target(L"a.png"))), S_OK);
    const DecodedImage png = decoded(L"a.png");
    EXPECT_EQ(png.format, L"png");
    EXPECT_EQ(png.image, scene.render()) << width;
  }
}

TEST_F(ExportTest, GifOfFewColoursIsExact) {
  OffscreenScene scene(101, 64);
  fill(scene);
  EXPECT_EQ(scene->CreateGIF(nullptr, bstr(target(L"a.gif"))), S_OK);
  const DecodedImage gif = decoded(L"a.gif");
  EXPECT_EQ(gif.format, L"gif");
  EXPECT_EQ(gif.image, scene.render());
}

TEST_F(ExportTest, GifOfManyColoursIsClose) {
  OffscreenScene scene(120, 200);
  fill(scene);
  addGradient(scene);
  auto smooth = makeTriangle({0, 0, 3}, {4, 0, 3}, {4, 3, 3});
  smooth->setMaterial(0.2, 0.9, 0.7, 1, 0, 1, 0, 0, 0);
  smooth->setNormale(0, 0.8, 0, 0.6);
  smooth->setNormale(1, 0, 0.9, 0.4);
  scene.add(smooth.Get());
  EXPECT_EQ(scene->CreateGIF(nullptr, bstr(target(L"a.gif"))), S_OK);
  const Image gif = decoded(L"a.gif").image;
  const Image exact = scene.render();
  EXPECT_LT(meanDifference(gif, exact), 4.0);
  EXPECT_GT(exact.count(kRed), 100);
  EXPECT_LE(difference(gif.at(60, 130), exact.at(60, 130)), 40);
}

TEST_F(ExportTest, JpegIsClose) {
  OffscreenScene scene(101, 64);
  fill(scene);
  EXPECT_EQ(scene->CreateJPG(nullptr, bstr(target(L"a.jpg")), 100), S_OK);
  const DecodedImage jpeg = decoded(L"a.jpg");
  EXPECT_EQ(jpeg.format, L"jpeg");
  const Image exact = scene.render();
  EXPECT_LT(meanDifference(jpeg.image, exact), 6.0);
  EXPECT_LE(difference(jpeg.image.at(3, 3), kBackground), 8);
  EXPECT_LE(difference(jpeg.image.at(50, 32), kGreen), 8);
}

TEST_F(ExportTest, JpegQualityCounts) {
  OffscreenScene scene(200, 150);
  fill(scene);
  addGradient(scene);
  const auto size = [&](int quality) {
    EXPECT_EQ(scene->CreateJPG(nullptr, bstr(target(L"a.jpg")), quality), S_OK);
    return readFile(target(L"a.jpg")).size();
  };
  const size_t least = size(10);
  const size_t middle = size(60);
  const size_t best = size(100);
  EXPECT_GT(best, 2 * least);
  EXPECT_GT(best, middle);
  EXPECT_GT(middle, least);
  EXPECT_LT(meanDifference(decoded(L"a.jpg").image, scene.render()), 3.0);
}

TEST_F(ExportTest, JpegQualityOutOfRangeDoesNoHarm) {
  OffscreenScene scene(50, 40);
  fill(scene);
  const Image before = scene.render();
  for (int quality : {150, 101, -5, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(scene->CreateJPG(nullptr, bstr(target(L"a.jpg")), quality), S_OK) << quality;
  }
  EXPECT_EQ(scene.render(), before);
  EXPECT_EQ(scene->CreateJPG(nullptr, bstr(target(L"b.jpg")), 90), S_OK);
  EXPECT_EQ(decoded(L"b.jpg").format, L"jpeg");
}

TEST_F(ExportTest, FormatIsTheMembersAndNotTheNames) {
  OffscreenScene scene(20, 20);
  EXPECT_EQ(scene->CreatePNG(nullptr, bstr(target(L"a.jpg"))), S_OK);
  EXPECT_EQ(decoded(L"a.jpg").format, L"png");
  EXPECT_EQ(scene->CreateGIF(nullptr, bstr(target(L"no extension"))), S_OK);
  EXPECT_EQ(decoded(L"no extension").format, L"gif");
}

TEST_F(ExportTest, SmallestPictureInEveryFormat) {
  OffscreenScene scene(1, 1);
  scene->CreatePNG(nullptr, bstr(target(L"a.png")));
  scene->CreateGIF(nullptr, bstr(target(L"a.gif")));
  scene->CreateJPG(nullptr, bstr(target(L"a.jpg")), 100);
  EXPECT_EQ(decoded(L"a.png").image.at(0, 0), kBackground);
  EXPECT_EQ(decoded(L"a.gif").image.at(0, 0), kBackground);
  EXPECT_LE(difference(decoded(L"a.jpg").image.at(0, 0), kBackground), 6);
}

TEST_F(ExportTest, EachFormatGivesTheSameFileTwice) {
  OffscreenScene scene(60, 45);
  fill(scene);
  addGradient(scene);
  const auto twice = [&](const char* format, auto&& write) {
    write(bstr(target(L"first")));
    write(bstr(target(L"second")));
    EXPECT_EQ(readFile(target(L"first")), readFile(target(L"second"))) << format;
  };
  twice("BMP", [&](BSTR name) { scene->CreateBitmap(name); });
  twice("PNG", [&](BSTR name) { scene->CreatePNG(nullptr, name); });
  twice("GIF", [&](BSTR name) { scene->CreateGIF(nullptr, name); });
  twice("JPEG", [&](BSTR name) { scene->CreateJPG(nullptr, name, 80); });
}

TEST_F(ExportTest, ExportsWorkByName) {
  OffscreenScene scene(20, 20);
  const _variant_t none = L"";
  const auto name = [&](const wchar_t* file) { return _variant_t(bstr(target(file))); };
  EXPECT_EQ(callMethod(scene.get(), L"CreateBitmap", {name(L"a.bmp")}).code(), S_OK);
  EXPECT_EQ(callMethod(scene.get(), L"CreatePNG", {none, name(L"a.png")}).code(), S_OK);
  EXPECT_EQ(callMethod(scene.get(), L"CreateGIF", {none, name(L"a.gif")}).code(), S_OK);
  EXPECT_EQ(callMethod(scene.get(), L"CreateJPG", {none, name(L"a.jpg"), 75L}).code(), S_OK);
  EXPECT_EQ(decoded(L"a.bmp").format, L"bmp");
  EXPECT_EQ(decoded(L"a.png").format, L"png");
  EXPECT_EQ(decoded(L"a.gif").format, L"gif");
  EXPECT_EQ(decoded(L"a.jpg").format, L"jpeg");
}

// --- the temporary name --------------------------------------------------------------------------

TEST_F(ExportTest, TemporaryFileIsNeitherMadeNorTouched) {
  OffscreenScene scene(20, 20);
  for (bool exists : {false, true}) {
    const auto spare = target(L"spare");
    if (exists) writeFile(spare, "mine");
    scene->CreatePNG(bstr(spare), bstr(target(L"a.png")));
    scene->CreateGIF(bstr(spare), bstr(target(L"a.gif")));
    scene->CreateJPG(bstr(spare), bstr(target(L"a.jpg")), 90);
    EXPECT_EQ(std::filesystem::exists(spare), exists);
    EXPECT_EQ(decoded(L"a.png").format, L"png");
    if (!exists) continue;
    EXPECT_EQ(readFile(spare), (Bytes{'m', 'i', 'n', 'e'}));
  }
}

// --- names that cannot be written ----------------------------------------------------------------

class BadPathTest : public ExportTest {
 protected:
  void exportAllTo(BSTR name) {
    EXPECT_EQ(scene_->CreateBitmap(name), S_OK);
    EXPECT_EQ(scene_->CreatePNG(name, name), S_OK);
    EXPECT_EQ(scene_->CreateGIF(name, name), S_OK);
    EXPECT_EQ(scene_->CreateJPG(name, name, 50), S_OK);
  }
  OffscreenScene scene_{20, 20};
};

TEST_F(BadPathTest, MissingFolder) {
  exportAllTo(bstr(folder_.path() / L"missing" / L"a.bmp"));
  EXPECT_TRUE(folder_.empty());
}

TEST_F(BadPathTest, NullAndEmptyNames) {
  exportAllTo(nullptr);
  exportAllTo(_bstr_t(L""));
  EXPECT_EQ(scene_->CreatePNG(nullptr, nullptr), S_OK);
  EXPECT_TRUE(folder_.empty());
}

TEST_F(BadPathTest, FolderInPlaceOfAFile) {
  const auto inTheWay = target(L"folder");
  std::filesystem::create_directory(inTheWay);
  exportAllTo(bstr(inTheWay));
  EXPECT_TRUE(std::filesystem::is_directory(inTheWay));
  EXPECT_TRUE(std::filesystem::is_empty(inTheWay));
}

TEST_F(BadPathTest, ImpossibleName) {
  exportAllTo(bstr(folder_.path() / L"what?.bmp"));
  EXPECT_TRUE(folder_.empty());
}

TEST_F(BadPathTest, VeryLongName) {
  exportAllTo(bstr(folder_.path() / std::wstring(5000, L'x')));
  EXPECT_TRUE(folder_.empty());
}

TEST_F(BadPathTest, FileThatSomebodyHolds) {
  const auto path = target(L"held.bmp");
  writeFile(path, "mine");
  HANDLE holder = CreateFileW(path.wstring().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  exportAllTo(bstr(path));
  CloseHandle(holder);
  EXPECT_EQ(readFile(path), (Bytes{'m', 'i', 'n', 'e'}));
}

TEST_F(BadPathTest, LaterExportsAreWhole) {
  exportAllTo(bstr(folder_.path() / L"missing" / L"a.bmp"));
  EXPECT_EQ(scene_.render().count(kBackground), 20 * 20);
}

TEST_F(ExportTest, NamesMayHoldAnyLetters) {
  OffscreenScene scene(20, 20);
  const auto path = target(L"caf\u00e9 \u4f60\u597d.png");
  EXPECT_EQ(scene->CreatePNG(nullptr, bstr(path)), S_OK);
  EXPECT_EQ(decodeImageFile(path).image.count(kBackground), 20 * 20);
}

// --- without a surface ---------------------------------------------------------------------------

TEST_F(ExportTest, NothingIsWrittenBeforeCreateContext) {
  auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  context->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed).Get(), 0);
  const _bstr_t name = bstr(target(L"a"));
  EXPECT_EQ(context->CreateBitmap(name), S_OK);
  EXPECT_EQ(context->CreatePNG(name, name), S_OK);
  EXPECT_EQ(context->CreateGIF(name, name), S_OK);
  EXPECT_EQ(context->CreateJPG(name, name, 50), S_OK);
  ComPtr<IPictureDisp> picture;
  EXPECT_EQ(context->GetPictureDisp(&picture), S_OK);
  EXPECT_TRUE(folder_.empty());
}

}  // namespace
}  // namespace zyn::test
