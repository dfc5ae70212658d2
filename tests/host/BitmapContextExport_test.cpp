// The files that the bitmap contexts write: BMP byte by byte, the others decoded, and paths that
// cannot be written.
#include <cmath>

#include "support/ImageDecoder_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

class ExportTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  using Scene = std::unique_ptr<OffscreenContext>;

  static Scene makeScene(int width, int height) { return GetParam().make(width, height); }
  /// A few plain colours: what every format can hold exactly or nearly.
  static void fill(const Scene& scene) {
    scene->addAll(makeRectangle(-1, 5, -1, 4, 0, kRed, 0.0));  // seen by none: a margin
    scene->addAll(makeRectangle(0, 4, 0, 3, 0, kRed));
    scene->addAll(makeRectangle(1, 3, 1, 2, 1, kGreen));
    scene->add(makeFlatTriangle({0, 0, 2}, {1, 0, 2}, {0, 1, 2}, kBlue).Get());
  }
  /// Far more colours than a palette holds.
  static void addManyColours(const Scene& scene) {
    for (int i = 0; i < 17; ++i) {
      for (int j = 0; j < 17; ++j) {
        const double x = -1 + 0.35 * i;
        const double y = 3 + 0.06 * j;
        scene->addAll(makeRectangle(x, x + 0.35, y, y + 0.06, 0, {15 * i, 15 * j, 7 * (i + j)}));
      }
    }
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

class BmpTest : public HostTest,
                public testing::WithParamInterface<std::tuple<OffscreenClass, Size>> {};

TEST_P(BmpTest, HeadersAndLength) {
  const auto& [offscreen, size] = GetParam();
  const auto [width, height, rowBytes] = size;
  const auto scene = offscreen.make(width, height);
  const Bytes bytes = scene->renderBytes();
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
                         testing::Combine(testing::ValuesIn(offscreenClasses()),
                                          testing::Values(Size{100, 10, 300}, Size{101, 10, 304},
                                                          Size{102, 3, 308}, Size{103, 3, 312},
                                                          Size{1, 1, 4}, Size{641, 480, 1924},
                                                          Size{2, 500, 8})));

TEST_P(ExportTest, BmpRowsRunUpwards) {
  const Scene scene = makeScene(10, 10);
  scene->addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  scene->addAll(makeRectangle(0, 1, 1, 2, 0, kGreen));
  scene->addAll(makeRectangle(1, 2, 0, 2, 0, kBlue));
  const Bytes bytes = scene->renderBytes();
  EXPECT_EQ(bytes[54 + 2], 255) << "lower left: red";
  EXPECT_EQ(bytes[54 + 9 * 32 + 1], 255) << "upper left: green";
  EXPECT_EQ(bytes[54 + 9 * 3], 255) << "lower right: blue";
}

TEST_P(ExportTest, ResolutionIsNotWrittenIntoTheFile) {
  const Scene scene = makeScene(20, 20);
  scene->put_DPIResolution(300);
  const BmpFile file = parseBmp(scene->renderBytes());
  EXPECT_EQ(file.xPelsPerMeter, 0);
  EXPECT_EQ(file.yPelsPerMeter, 0);
}

TEST_P(ExportTest, ShorterFileReplacesALongerOne) {
  const auto path = target(L"a.bmp");
  writeFile(path, std::string(100000, 'x'));
  const Scene scene = makeScene(10, 10);
  EXPECT_EQ(scene->CreateBitmap(bstr(path)), S_OK);
  EXPECT_EQ(readFile(path), scene->renderBytes());
}

// --- the compressed formats ----------------------------------------------------------------------

TEST_P(ExportTest, PngHasExactlyThePixelsOfTheBmp) {
  for (int width : {97, 100, 101}) {
    const Scene scene = makeScene(width, 64);
    fill(scene);
    addManyColours(scene);
    EXPECT_EQ(scene->exportPng(target(L"a.png")), S_OK);
    const DecodedImage png = decoded(L"a.png");
    EXPECT_EQ(png.format, L"png");
    EXPECT_EQ(png.image, scene->render()) << width;
  }
}

// Dots per inch are whole in JPEG files, a whole number of dots per metre in PNG files.
TEST_P(ExportTest, FilesOfExporterTellTheResolution) {
  const auto scene = makeScene(60, 40);
  const auto expectTold = [&](const wchar_t* name, double resolution, double tolerance) {
    scene->put_DPIResolution(resolution);
    ASSERT_EQ(callMethod(scene->dispatch(), L"Exporter", {bstr(target(name))}).code(), S_OK);
    EXPECT_NEAR(decoded(name).dotsPerInch, resolution, tolerance) << std::filesystem::path(name);
  };
  for (const double resolution : {72.0, 96.0, 150.4, 300.0, 2400.0}) {
    expectTold(L"a.png", resolution, 0.013);
    expectTold(L"a.jpg", resolution, 0.5);
    expectTold(L"a.tif", resolution, 0.013);
  }
  putProperty(scene->dispatch(), L"FondTransparent", true);
  expectTold(L"a.png", 300, 0.013);
  expectTold(L"a.png", 600, 0.013);
}

TEST_P(ExportTest, ResolutionsThatNoFileHoldsAreHeld) {
  const auto scene = makeScene(60, 40);
  for (const wchar_t* const name : {L"a.png", L"a.jpg", L"a.tif"}) {
    for (const auto& [resolution, told] : {std::pair{1e-9, 1.0}, std::pair{1e9, 65535.0}}) {
      scene->put_DPIResolution(resolution);
      ASSERT_EQ(callMethod(scene->dispatch(), L"Exporter", {bstr(target(name))}).code(), S_OK);
      EXPECT_NEAR(decoded(name).dotsPerInch, told, 0.02) << std::filesystem::path(name);
    }
  }
}

TEST_P(ExportTest, FilesOfTheOlderMembersDoNotTellIt) {
  const auto scene = makeScene(60, 40);
  fill(scene);
  const auto png = target(L"a.png");
  const auto jpg = target(L"a.jpg");
  const auto written = [&] {
    scene->exportPng(png);
    scene->exportJpg(jpg, 80);
    return std::pair{readFile(png), readFile(jpg)};
  };
  const auto before = written();
  scene->put_DPIResolution(300);
  EXPECT_EQ(written(), before);
}

TEST_P(ExportTest, GifOfFewColoursIsExact) {
  const Scene scene = makeScene(101, 64);
  fill(scene);
  EXPECT_EQ(scene->exportGif(target(L"a.gif")), S_OK);
  const DecodedImage gif = decoded(L"a.gif");
  EXPECT_EQ(gif.format, L"gif");
  EXPECT_EQ(gif.image, scene->render());
}

TEST_P(ExportTest, GifOfManyColoursIsClose) {
  const Scene scene = makeScene(120, 200);
  fill(scene);
  addManyColours(scene);
  EXPECT_EQ(scene->exportGif(target(L"a.gif")), S_OK);
  const Image gif = decoded(L"a.gif").image;
  const Image exact = scene->render();
  EXPECT_LT(meanDifference(gif, exact), 4.0);
  EXPECT_GT(exact.count(kRed), 100);
  EXPECT_LE(difference(gif.at(60, 130), exact.at(60, 130)), 40);
}

TEST_P(ExportTest, JpegIsClose) {
  const Scene scene = makeScene(101, 64);
  fill(scene);
  EXPECT_EQ(scene->exportJpg(target(L"a.jpg"), 100), S_OK);
  const DecodedImage jpeg = decoded(L"a.jpg");
  EXPECT_EQ(jpeg.format, L"jpeg");
  const Image exact = scene->render();
  EXPECT_LT(meanDifference(jpeg.image, exact), 6.0);
  EXPECT_LE(difference(jpeg.image.at(3, 3), kBackground), 8);
  EXPECT_LE(difference(jpeg.image.at(50, 32), kGreen), 8);
}

TEST_P(ExportTest, JpegQualityCounts) {
  const Scene scene = makeScene(200, 150);
  fill(scene);
  addManyColours(scene);
  const auto size = [&](int quality) {
    EXPECT_EQ(scene->exportJpg(target(L"a.jpg"), quality), S_OK);
    return readFile(target(L"a.jpg")).size();
  };
  const size_t least = size(10);
  const size_t middle = size(60);
  const size_t best = size(100);
  EXPECT_GT(best, 2 * least);
  EXPECT_GT(best, middle);
  EXPECT_GT(middle, least);
  EXPECT_LT(meanDifference(decoded(L"a.jpg").image, scene->render()), 3.0);
}

TEST_P(ExportTest, JpegQualityOutOfRangeDoesNoHarm) {
  const Scene scene = makeScene(50, 40);
  fill(scene);
  const Image before = scene->render();
  for (int quality : {150, 101, -5, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(scene->exportJpg(target(L"a.jpg"), quality), S_OK) << quality;
  }
  EXPECT_EQ(scene->render(), before);
  EXPECT_EQ(scene->exportJpg(target(L"b.jpg"), 90), S_OK);
  EXPECT_EQ(decoded(L"b.jpg").format, L"jpeg");
}

TEST_P(ExportTest, FormatIsTheMembersAndNotTheNames) {
  const Scene scene = makeScene(20, 20);
  EXPECT_EQ(scene->exportPng(target(L"a.jpg")), S_OK);
  EXPECT_EQ(decoded(L"a.jpg").format, L"png");
  EXPECT_EQ(scene->exportGif(target(L"no extension")), S_OK);
  EXPECT_EQ(decoded(L"no extension").format, L"gif");
}

TEST_P(ExportTest, SmallestPictureInEveryFormat) {
  const Scene scene = makeScene(1, 1);
  scene->exportPng(target(L"a.png"));
  scene->exportGif(target(L"a.gif"));
  scene->exportJpg(target(L"a.jpg"), 100);
  EXPECT_EQ(decoded(L"a.png").image.at(0, 0), kBackground);
  EXPECT_EQ(decoded(L"a.gif").image.at(0, 0), kBackground);
  EXPECT_LE(difference(decoded(L"a.jpg").image.at(0, 0), kBackground), 6);
}

TEST_P(ExportTest, EachFormatGivesTheSameFileTwice) {
  const Scene scene = makeScene(60, 45);
  fill(scene);
  addManyColours(scene);
  const auto twice = [&](const char* format, auto&& write) {
    write(target(L"first"));
    write(target(L"second"));
    EXPECT_EQ(readFile(target(L"first")), readFile(target(L"second"))) << format;
  };
  twice("BMP", [&](const auto& file) { scene->CreateBitmap(bstr(file)); });
  twice("PNG", [&](const auto& file) { scene->exportPng(file); });
  twice("GIF", [&](const auto& file) { scene->exportGif(file); });
  twice("JPEG", [&](const auto& file) { scene->exportJpg(file, 80); });
}

TEST_P(ExportTest, ExportsWorkByName) {
  const Scene scene = makeScene(20, 20);
  const _variant_t spare = bstr(target(L"spare"));
  const auto name = [&](const wchar_t* file) { return _variant_t(bstr(target(file))); };
  EXPECT_EQ(callMethod(scene->dispatch(), L"CreateBitmap", {name(L"a.bmp")}).code(), S_OK);
  EXPECT_EQ(callMethod(scene->dispatch(), L"CreatePNG", {spare, name(L"a.png")}).code(), S_OK);
  EXPECT_EQ(callMethod(scene->dispatch(), L"CreateGIF", {spare, name(L"a.gif")}).code(), S_OK);
  EXPECT_EQ(callMethod(scene->dispatch(), L"CreateJPG", {spare, name(L"a.jpg"), 75L}).code(), S_OK);
  EXPECT_EQ(decoded(L"a.bmp").format, L"bmp");
  EXPECT_EQ(decoded(L"a.png").format, L"png");
  EXPECT_EQ(decoded(L"a.gif").format, L"gif");
  EXPECT_EQ(decoded(L"a.jpg").format, L"jpeg");
}

// --- names that cannot be written ----------------------------------------------------------------

class BadPathTest : public ExportTest {
 protected:
  /// Exports under a name that cannot be written, by way of that name and of a good one.
  void exportAllTo(BSTR name) {
    _bstr_t good = bstr(scene_->spare());
    EXPECT_EQ(scene_->CreateBitmap(name), S_OK);
    for (BSTR temporary : {name, good.GetBSTR()}) {
      EXPECT_EQ(scene_->CreatePNG(temporary, name), S_OK);
      EXPECT_EQ(scene_->CreateGIF(temporary, name), S_OK);
      EXPECT_EQ(scene_->CreateJPG(temporary, name, 50), S_OK);
    }
    EXPECT_FALSE(std::filesystem::exists(scene_->spare()));
  }
  Scene scene_ = makeScene(20, 20);
};

TEST_P(BadPathTest, MissingFolder) {
  exportAllTo(bstr(folder_.path() / L"missing" / L"a.bmp"));
  EXPECT_TRUE(folder_.empty());
}

TEST_P(BadPathTest, NullAndEmptyNames) {
  exportAllTo(nullptr);
  exportAllTo(_bstr_t(L""));
  EXPECT_TRUE(folder_.empty());
}

TEST_P(BadPathTest, FolderInPlaceOfAFile) {
  const auto inTheWay = target(L"folder");
  std::filesystem::create_directory(inTheWay);
  exportAllTo(bstr(inTheWay));
  EXPECT_TRUE(std::filesystem::is_directory(inTheWay));
  EXPECT_TRUE(std::filesystem::is_empty(inTheWay));
}

TEST_P(BadPathTest, ImpossibleName) {
  exportAllTo(bstr(folder_.path() / L"what?.bmp"));
  EXPECT_TRUE(folder_.empty());
}

TEST_P(BadPathTest, VeryLongName) {
  exportAllTo(bstr(folder_.path() / std::wstring(5000, L'x')));
  EXPECT_TRUE(folder_.empty());
}

TEST_P(BadPathTest, FileThatSomebodyHolds) {
  const auto path = target(L"held.bmp");
  writeFile(path, "mine");
  HANDLE holder = CreateFileW(path.wstring().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  exportAllTo(bstr(path));
  CloseHandle(holder);
  EXPECT_EQ(readFile(path), (Bytes{'m', 'i', 'n', 'e'}));
}

TEST_P(BadPathTest, LaterExportsAreWhole) {
  exportAllTo(bstr(folder_.path() / L"missing" / L"a.bmp"));
  EXPECT_EQ(scene_->render().count(kBackground), 20 * 20);
}

TEST_P(ExportTest, NamesMayHoldAnyLetters) {
  const Scene scene = makeScene(20, 20);
  const auto path = target(L"caf\u00e9 \u4f60\u597d.png");
  EXPECT_EQ(scene->exportPng(path), S_OK);
  EXPECT_EQ(decodeImageFile(path).image.count(kBackground), 20 * 20);
}

// --- without a surface ---------------------------------------------------------------------------

TEST_P(ExportTest, NothingIsWrittenBeforeCreateContext) {
  const auto context = GetParam().makeBare();
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

INSTANTIATE_TEST_SUITE_P(Both, ExportTest, testing::ValuesIn(offscreenClasses()), nameOf);
INSTANTIATE_TEST_SUITE_P(Both, BadPathTest, testing::ValuesIn(offscreenClasses()), nameOf);

}  // namespace
}  // namespace zyn::test
