// Exporter, QualiteJPEG, FondTransparent, Copier and Imprimer of both views and both bitmap
// contexts: decoded files against frames, names and places that cannot be written, older files, the
// clipboard.
#include <cmath>
#include <cstring>
#include <future>
#include <map>
#include <thread>

#include "support/Drawer_win.h"
#include "support/FailingImport_win.h"
#include "support/ImageDecoder_win.h"
#include "support/Paper_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;

class ExporterTest : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  ExporterTest() {
    addRectangle(0, kWidth, 0, kHeight / 2.0, 0, kRed);
    addRectangle(20, 60, 20, 100, 1, kGreen, 0.5);
    const auto label = makeText(L"label");
    require(label->setPosition(90, 70, 2, 1), "setPosition");
    require(label->setColor(1, 1, 0, 1), "setColor");
    drawer_->add(label.Get());
    drawer_->lookAtPlane();
  }

  void addRectangle(double xMin, double xMax, double yMin, double yMax, double z, const Rgb& colour,
                    double alpha = 1) {
    for (const auto& each : makeRectangle(xMin, xMax, yMin, yMax, z, colour, alpha)) {
      drawer_->add(each.Get());
    }
  }

  CallResult exportTo(const std::filesystem::path& file) {
    return drawer_->call(L"Exporter", {bstr(file)});
  }

  DecodedImage exported(const std::wstring& name) {
    const auto file = folder_.file(name);
    const CallResult result = exportTo(file);
    EXPECT_EQ(result.code(), S_OK) << std::filesystem::path(result.description);
    return decodeImageFile(file);
  }

  void expectRefused(const CallResult& result, HRESULT code, const std::wstring& text) const {
    EXPECT_EQ(result.code(), code);
    EXPECT_NE(result.description.find(text), std::wstring::npos)
        << std::filesystem::path(result.description);
    EXPECT_TRUE(folder_.empty());
  }

  TempFolder folder_;
  std::unique_ptr<Drawer> drawer_ = GetParam().make(kWidth, kHeight);
};

TEST_P(ExporterTest, FilesHoldTheFrame) {
  const Image frame = drawer_->frame();
  ASSERT_EQ(frame.width(), kWidth);
  EXPECT_GT(frame.count(kYellow), 20) << "the label is in the picture";
  const std::map<std::wstring, std::wstring> lossless = {
      {L"a.bmp", L"bmp"}, {L"a.png", L"png"}, {L"a.TIF", L"tiff"}, {L"a.tiff", L"tiff"}};
  for (const auto& [name, format] : lossless) {
    const DecodedImage file = exported(name);
    EXPECT_EQ(file.format, format);
    EXPECT_EQ(file.image, frame) << std::filesystem::path(name);
    EXPECT_EQ(file.alpha.at(2, 2).r, 255);
  }
  for (const wchar_t* const name : {L"a.jpg", L"b.JPEG"}) {
    const DecodedImage file = exported(name);
    EXPECT_EQ(file.format, L"jpeg");
    EXPECT_LT(meanDifference(file.image, frame), 6);
  }
  const DecodedImage gif = exported(L"a.Gif");
  EXPECT_EQ(gif.format, L"gif");
  EXPECT_LT(meanDifference(gif.image, frame), 2);
}

TEST_P(ExporterTest, RefusesOtherExtensions) {
  for (const wchar_t* const name : {L"a.svg", L"a.pdf", L"a.emf", L"a", L"a.", L"a.pngx", L"png"}) {
    expectRefused(exportTo(folder_.file(name)), E_INVALIDARG, L"Fichier: ");
  }
  expectRefused(drawer_->call(L"Exporter", {L""}), E_INVALIDARG, L"Fichier: ");
}

TEST_P(ExporterTest, TellsWhyAFileCannotBeWritten) {
  const CallResult result = exportTo(folder_.file(L"missing") / L"a.png");
  expectRefused(result, HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), L"a.png");
  std::filesystem::create_directory(folder_.file(L"folder.bmp"));
  const CallResult onFolder = exportTo(folder_.file(L"folder.bmp"));
  EXPECT_TRUE(FAILED(onFolder.code()));
  EXPECT_NE(onFolder.description.find(L"folder.bmp"), std::wstring::npos);
}

TEST_P(ExporterTest, AnOlderFileIsReplacedOrStaysWhole) {
  const auto file = folder_.file(L"older.png");
  writeFile(file, "older");
  {
    const HANDLE held = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    const CallResult result = exportTo(file);
    EXPECT_TRUE(FAILED(result.code()));
    EXPECT_NE(result.description.find(L"older.png"), std::wstring::npos);
    CloseHandle(held);
  }
  EXPECT_EQ(readFile(file), (Bytes{'o', 'l', 'd', 'e', 'r'}));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
  ASSERT_EQ(exportTo(file).code(), S_OK);
  EXPECT_EQ(decodeImageFile(file).image, drawer_->frame());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
}

// Any of the writes, up to the last.
TEST_P(ExporterTest, AFullDiskLeavesTheOlderFile) {
  const HMODULE library = GetModuleHandleW(L"ZYNVue.dll");
  for (const wchar_t* name : {L"a.bmp", L"a.jpg", L"a.gif", L"a.png", L"a.tif"}) {
    const auto file = folder_.file(name);
    std::uint32_t writes = 0;
    {
      const FailingImport counter(library, "WriteFile", {}, FailingCalls::kAll);
      ASSERT_EQ(exportTo(file).code(), S_OK) << file;
      writes = counter.calls().made;
    }
    writeFile(file, "older");
    for (const std::uint32_t first : {1U, 2U, writes / 2, writes}) {
      const FailingImport full(library, "WriteFile", {0, ERROR_DISK_FULL}, first);
      const CallResult result = exportTo(file);
      EXPECT_EQ(result.code(), HRESULT_FROM_WIN32(ERROR_DISK_FULL)) << file << ", " << first;
      EXPECT_NE(result.description.find(name), std::wstring::npos);
      EXPECT_EQ(readFile(file), (Bytes{'o', 'l', 'd', 'e', 'r'})) << file;
    }
    std::filesystem::remove(file);
    EXPECT_TRUE(folder_.empty());
  }
}

TEST_P(ExporterTest, QualityDecidesTheSizeOfJpegFiles) {
  EXPECT_EQ(static_cast<long>(drawer_->get(L"QualiteJPEG").value), 90);
  std::uintmax_t before = 0;
  for (const long quality : {0L, 50L, 100L}) {
    ASSERT_EQ(drawer_->put(L"QualiteJPEG", quality).code(), S_OK);
    const auto file = folder_.file(L"quality.jpg");
    ASSERT_EQ(exportTo(file).code(), S_OK);
    EXPECT_GT(std::filesystem::file_size(file), before) << quality;
    before = std::filesystem::file_size(file);
  }
  for (const long quality : {-1L, 101L}) {
    const CallResult refused = drawer_->put(L"QualiteJPEG", quality);
    EXPECT_EQ(refused.code(), E_INVALIDARG);
    EXPECT_EQ(refused.description.substr(0, 13), L"QualiteJPEG: ");
    EXPECT_EQ(static_cast<long>(drawer_->get(L"QualiteJPEG").value), 100);
  }
}

TEST_P(ExporterTest, FondTransparentMakesTheBackgroundOfPngFilesTransparent) {
  const Image frame = drawer_->frame();
  ASSERT_EQ(drawer_->put(L"FondTransparent", 1L).code(), S_OK);
  EXPECT_TRUE(static_cast<bool>(drawer_->get(L"FondTransparent").value));
  const DecodedImage file = exported(L"a.png");
  const int background = frame.count(kBackground);
  ASSERT_GT(background, 1000);
  EXPECT_EQ(file.alpha.count({0, 0, 0}), background);
  EXPECT_EQ(exported(L"a.bmp").image, frame) << "of PNG files only";
  // Shown on the background it is the frame: smoothed edges and translucent things too.
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const double alpha = file.alpha.at(x, y).r / 255.0;
      const Rgb colour = file.image.at(x, y);
      const auto on = [&](int own, int behind) {
        return static_cast<int>(std::lround(alpha * own + (1 - alpha) * behind));
      };
      const Rgb shown = {on(colour.r, kBackground.r), on(colour.g, kBackground.g),
                         on(colour.b, kBackground.b)};
      EXPECT_LE(difference(shown, frame.at(x, y)), 3) << x << ", " << y;
      EXPECT_TRUE(alpha == 1 || frame.at(x, y) != kRed);
    }
  }
  EXPECT_EQ(drawer_->frame(), frame) << "the scene is as it was";
}

TEST_P(ExporterTest, WhatIsTranslucentOverNothingHasItsOpacity) {
  ASSERT_EQ(drawer_->put(L"FondTransparent", true).code(), S_OK);
  const DecodedImage file = exported(L"a.png");
  int found = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const Rgb colour = file.image.at(x, y);
      const int alpha = file.alpha.at(x, y).r;
      if (std::abs(alpha - 128) <= 2 && difference(colour, kGreen) <= 3) ++found;
    }
  }
  EXPECT_GT(found, 500);
}

/// The pixels of a bitmap on the clipboard; empty where there is none.
Image onClipboard() {
  if (!OpenClipboard(nullptr)) return {};
  const auto* const header =
      static_cast<const BITMAPINFOHEADER*>(GlobalLock(GetClipboardData(CF_DIB)));
  Image image;
  if (header && header->biBitCount == 24 && header->biSize == sizeof(BITMAPINFOHEADER)) {
    image = Image(header->biWidth, header->biHeight);
    const auto* row = reinterpret_cast<const BYTE*>(header + 1);
    for (int y = image.height() - 1; y >= 0; --y, row += (3 * image.width() + 3) / 4 * 4) {
      for (int x = 0; x < image.width(); ++x) {
        image.at(x, y) = {row[3 * x + 2], row[3 * x + 1], row[3 * x]};
      }
    }
  }
  CloseClipboard();
  return image;
}

/// The file in the format "PNG"; empty where there is none.
std::string pngOnClipboard() {
  const UINT format = RegisterClipboardFormatW(L"PNG");
  if (!IsClipboardFormatAvailable(format) || !OpenClipboard(nullptr)) return {};
  const HANDLE memory = GetClipboardData(format);
  const auto* const bytes = static_cast<const char*>(GlobalLock(memory));
  std::string file(bytes, GlobalSize(memory));
  CloseClipboard();
  return file;
}

TEST_P(ExporterTest, CopierPutsThePictureOnTheClipboard) {
  const Image frame = drawer_->frame();
  ASSERT_EQ(drawer_->call(L"Copier").code(), S_OK);
  EXPECT_EQ(onClipboard(), frame);
  EXPECT_TRUE(pngOnClipboard().empty());
  ASSERT_EQ(drawer_->put(L"FondTransparent", true).code(), S_OK);
  ASSERT_EQ(drawer_->call(L"Copier").code(), S_OK);
  EXPECT_EQ(onClipboard(), frame);
  const auto copy = folder_.file(L"copy.png");
  writeFile(copy, pngOnClipboard());
  const DecodedImage copied = decodeImageFile(copy);
  const DecodedImage file = exported(L"a.png");
  EXPECT_EQ(copied.image, file.image);
  EXPECT_EQ(copied.alpha, file.alpha);
}

TEST_P(ExporterTest, CopierTellsThatAnotherHoldsTheClipboard) {
  std::promise<bool> isHeld;
  std::promise<void> isOver;
  std::thread other([&] {
    isHeld.set_value(OpenClipboard(nullptr) != FALSE);
    isOver.get_future().wait();
    CloseClipboard();
  });
  const bool held = isHeld.get_future().get();
  const CallResult result = drawer_->call(L"Copier");
  isOver.set_value();
  other.join();
  ASSERT_TRUE(held);
  EXPECT_EQ(result.code(), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
  EXPECT_FALSE(result.description.empty());
  EXPECT_EQ(drawer_->call(L"Copier").code(), S_OK);
}

TEST_P(ExporterTest, ImprimerDrawsIntoADeviceContext) {
  const Image frame = drawer_->frame();
  Paper paper(kWidth + 30, kHeight + 20);
  // Whatever its mapping mode, which stays.
  SetMapMode(paper.dc(), MM_ANISOTROPIC);
  SetWindowExtEx(paper.dc(), 7, 5, nullptr);
  SetViewportOrgEx(paper.dc(), 11, 13, nullptr);
  const long width = kWidth;
  const long height = kHeight;
  for (const _variant_t& handle : {handleOf(paper.dc()), _variant_t(HandleToLong(paper.dc())),
                                   _variant_t(static_cast<double>(HandleToLong(paper.dc())))}) {
    PatBlt(paper.dc(), -100, -100, 1000, 1000, WHITENESS);
    ASSERT_EQ(drawer_->call(L"Imprimer", {handle, 20L, 10L, width, height}).code(), S_OK);
    const Image& printed = paper.picture();
    int wrong = 0;
    for (int y = 0; y < printed.height(); ++y) {
      for (int x = 0; x < kWidth + 30; ++x) {
        const bool isInside = x >= 20 && x < 20 + kWidth && y >= 10 && y < 10 + kHeight;
        const Rgb expected = isInside ? frame.at(x - 20, y - 10) : kWhite;
        wrong += difference(printed.at(x, y), expected) > 1 ? 1 : 0;
      }
    }
    EXPECT_EQ(wrong, 0);
  }
  EXPECT_EQ(GetMapMode(paper.dc()), MM_ANISOTROPIC);
  POINT origin = {};
  GetViewportOrgEx(paper.dc(), &origin);
  EXPECT_EQ(origin.x, 11);
}

TEST_P(ExporterTest, ImprimerTakesDeviceContextsAndRectanglesOnly) {
  Paper paper(20, 20);
  const Image before = paper.picture();
  for (const _variant_t& handle :
       {_variant_t(0L), _variant_t(-1L), _variant_t(static_cast<LONGLONG>(0x7FFF'FFFF'0000)),
        _variant_t(L"12"), _variant_t(1.5), _variant_t(),
        _variant_t(static_cast<LONGLONG>(HandleToLong(GetStockObject(BLACK_BRUSH))))}) {
    const CallResult result = drawer_->call(L"Imprimer", {handle, 0L, 0L, 20L, 20L});
    EXPECT_EQ(result.code(), E_INVALIDARG);
    EXPECT_EQ(result.description.substr(0, 5), L"hDC: ");
  }
  for (const auto& [l, h, name] :
       {std::tuple(0L, 20L, L"l: "), {20L, 0L, L"h: "}, {-5L, 20L, L"l: "}}) {
    const CallResult result = drawer_->call(L"Imprimer", {handleOf(paper.dc()), 0L, 0L, l, h});
    EXPECT_EQ(result.code(), E_INVALIDARG);
    EXPECT_EQ(result.description.substr(0, 3), name);
  }
  EXPECT_EQ(paper.picture(), before);
}

TEST_P(ExporterTest, IsRefusedWhileTheSceneIsDrawn) {
  const auto object = makeForeign<ForeignObject>();
  HRESULT answer = S_OK;
  std::wstring description;
  const auto draw = [&](int) {
    const CallResult result = exportTo(folder_.file(L"a.png"));
    answer = result.code();
    description = result.description;
    return S_OK;
  };
  object->onDraw3D = draw;
  object->onDraw2D = draw;
  drawer_->add(object->dispatch());
  drawer_->frame();
  EXPECT_EQ(answer, E_UNEXPECTED);
  EXPECT_FALSE(description.empty());
  EXPECT_TRUE(folder_.empty());
  answer = S_OK;
  EXPECT_EQ(exportTo(folder_.file(L"b.png")).code(), S_OK);
  EXPECT_EQ(answer, E_UNEXPECTED);
  EXPECT_FALSE(exists(folder_.file(L"a.png")));
}

TEST_P(ExporterTest, FailuresOfWhatIsDrawnArePassedOn) {
  const auto object = makeForeign<ForeignObject>();
  object->onDraw3D = [](int) { return E_ACCESSDENIED; };
  object->onDraw2D = object->onDraw3D;
  drawer_->add(object->dispatch());
  EXPECT_EQ(exportTo(folder_.file(L"a.png")).code(), E_ACCESSDENIED);
  EXPECT_EQ(drawer_->call(L"Copier").code(), E_ACCESSDENIED);
  EXPECT_TRUE(folder_.empty());
}

INSTANTIATE_TEST_SUITE_P(All, ExporterTest, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

void expectNoPicture(IDispatch* object, const std::wstring& why) {
  const TempFolder folder;
  for (const auto& [name, arguments] : std::map<const wchar_t*, std::vector<_variant_t>>{
           {L"Exporter", {bstr(folder.file(L"a.png"))}}, {L"Copier", {}}}) {
    const CallResult result = callMethod(object, name, arguments);
    EXPECT_EQ(result.code(), E_UNEXPECTED);
    EXPECT_FALSE(result.description.empty());
    EXPECT_NE(result.description.find(why), std::wstring::npos)
        << std::filesystem::path(result.description);
  }
  EXPECT_TRUE(folder.empty());
}

class ExporterOfNothing : public HostTest, public testing::WithParamInterface<DrawerClass> {};

TEST_P(ExporterOfNothing, IsUnexpected) {
  expectNoPicture(createObject<IDispatch>(GetParam().progId).Get(), L"");
}

INSTANTIATE_TEST_SUITE_P(All, ExporterOfNothing, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

class ExporterOfContext : public HostTest, public testing::WithParamInterface<OffscreenClass> {};

TEST_P(ExporterOfContext, IsUnexpectedWhereThereCanBeNoPicture) {
  const auto context = GetParam().make(8, 8);
  for (const auto& [width, height] : {std::pair(0, 0), {-8, 8}, {8, 0}, {2000000000, 2000000000}}) {
    context->resize(width, height);
    expectNoPicture(context->dispatch(),
                    std::to_wstring(width) + L" x " + std::to_wstring(height) + L" pixels");
  }
  context->resize(8, 8);
  EXPECT_EQ(callMethod(context->dispatch(), L"Copier", {}).code(), S_OK);
}

INSTANTIATE_TEST_SUITE_P(All, ExporterOfContext, testing::ValuesIn(offscreenClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

class ExporterOfView : public ExporterTest {};

TEST_P(ExporterOfView, WorksWithoutAWindowAgainAfterItCameBack) {
  drawer_->view()->deactivate();
  EXPECT_EQ(exportTo(folder_.file(L"a.png")).code(), E_UNEXPECTED);
  drawer_->view()->activate();
  EXPECT_EQ(exported(L"a.png").image, drawer_->frame());
}

TEST_P(ExporterOfView, HasTheSizeOfTheWindow) {
  drawer_->view()->resize({90, 70});
  const Image image = exported(L"a.png").image;
  EXPECT_EQ(image.width(), 90);
  EXPECT_EQ(image.height(), 70);
  EXPECT_EQ(image, drawer_->frame());
}

INSTANTIATE_TEST_SUITE_P(All, ExporterOfView, testing::ValuesIn(viewClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
