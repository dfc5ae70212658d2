// What reaches GDI+: beside this program lies a gdiplus.dll that records it.
#include <sstream>
#include <vector>

#include "support/HostSession_win.h"
#include "support/ImageDecoder_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

/// One call of GdipSaveImageToStream, or of the function that loads a file, with the file's size.
struct Call {
  std::string fileName;
  std::string encoderOrFunction;
  std::string parametersOrSize;
  std::string watchedSize;  ///< of the watched file while the picture is saved
};

class GdiPlusCallsTest : public HostTest {
 protected:
  GdiPlusCallsTest() {
    // The library loads the system's GDI+ and nothing else, unless there is one loaded already.
    if (!LoadLibraryW(L"gdiplus.dll")) throw std::runtime_error("no gdiplus.dll");
    SetEnvironmentVariableW(L"ZYN_GDIPLUS_RECORD", record_.c_str());
    LONG result = 0;
    require(context_->CreateContext(64, 64, &result), "CreateContext");
  }
  ~GdiPlusCallsTest() override { SetEnvironmentVariableW(L"ZYN_GDIPLUS_RECORD", nullptr); }

  std::filesystem::path target(const wchar_t* name) const { return folder_.file(name); }

  /// The calls that named this file.
  std::vector<Call> callsWith(const std::filesystem::path& target) const {
    std::vector<Call> found;
    std::ifstream in(record_);
    for (std::string line; std::getline(in, line);) {
      std::istringstream fields(line);
      Call saved;
      std::getline(fields, saved.fileName, '\t');
      std::getline(fields, saved.encoderOrFunction, '\t');
      std::getline(fields, saved.parametersOrSize, '\t');
      std::getline(fields, saved.watchedSize);
      if (saved.fileName == target.string()) found.push_back(saved);
    }
    return found;
  }

  TempFolder folder_;
  std::filesystem::path record_ = folder_.file(L"record.txt");
  ComPtr<IZYN3DGLBitmapContext> context_ =
      createObject<IZYN3DGLBitmapContext>(L"ZYNVue.ZYN3dGLBitmapContext.1");
};

class JpegQualityTest : public GdiPlusCallsTest, public testing::WithParamInterface<int> {};

TEST_P(JpegQualityTest, ReachesTheEncoderAsItIs) {
  const auto file = target(L"picture.jpg");
  ASSERT_EQ(context_->CreateJPG(nullptr, bstr(file), GetParam()), S_OK);
  const std::vector<Call> saved = callsWith(file);
  ASSERT_EQ(saved.size(), 1U);
  EXPECT_EQ(saved[0].encoderOrFunction, "{557CF401-1A04-11D3-9A73-0000F81EF32E}");
  EXPECT_EQ(saved[0].parametersOrSize,
            "count=1 guid={1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB} type=4 values=1 value=" +
                std::to_string(GetParam()));
  EXPECT_TRUE(std::filesystem::exists(file));
}

INSTANTIATE_TEST_SUITE_P(Qualities, JpegQualityTest,
                         testing::Values(-1, 0, 10, 100, 150, 2147483647));

TEST_F(GdiPlusCallsTest, PngHasNoParameters) {
  const auto png = target(L"picture.png");
  ASSERT_EQ(context_->CreatePNG(nullptr, bstr(png)), S_OK);
  ASSERT_EQ(callsWith(png).size(), 1U);
  EXPECT_EQ(callsWith(png)[0].encoderOrFunction, "{557CF406-1A04-11D3-9A73-0000F81EF32E}");
  EXPECT_EQ(callsWith(png)[0].parametersOrSize, "none");
}

// GDI+ wants a GIF's pixels in its own colours all at once.
TEST_F(GdiPlusCallsTest, GifIsWrittenWithoutIt) {
  const auto gif = target(L"picture.gif");
  ASSERT_EQ(context_->CreateGIF(nullptr, bstr(gif)), S_OK);
  EXPECT_TRUE(callsWith(gif).empty());
  EXPECT_EQ(decodeImageFile(gif).format, L"gif");
}

// A graph is saved while its temporary bitmap file is there, whole.
TEST_F(GdiPlusCallsTest, GraphsAreSavedBesideTheirTemporaryFile) {
  auto graph = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
  LONG result = 0;
  require(graph->CreateContexte(100, 10, &result), "CreateContexte");
  const auto png = target(L"picture.png");
  const auto jpeg = target(L"picture.jpg");
  const auto spare = target(L"spare.bmp");
  SetEnvironmentVariableW(L"ZYN_GDIPLUS_WATCH", spare.c_str());
  ASSERT_EQ(graph->CreatePNG(bstr(spare), bstr(png)), S_OK);
  ASSERT_EQ(graph->CreateJPG(bstr(spare), bstr(jpeg), 35), S_OK);
  SetEnvironmentVariableW(L"ZYN_GDIPLUS_WATCH", nullptr);
  for (const auto& file : {png, jpeg}) {
    ASSERT_EQ(callsWith(file).size(), 1U) << file;
    EXPECT_EQ(callsWith(file)[0].watchedSize, "3054") << file;
  }
  EXPECT_EQ(callsWith(png)[0].parametersOrSize, "none");
  EXPECT_EQ(callsWith(jpeg)[0].parametersOrSize,
            "count=1 guid={1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB} type=4 values=1 value=35");
  EXPECT_FALSE(exists(spare));
}

// Where that cannot be written, a JPEG shows what lies there instead.
TEST_F(GdiPlusCallsTest, AJpegTakesTheTemporaryFileThatItFinds) {
  auto graph = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
  LONG result = 0;
  require(graph->CreateContexte(100, 10, &result), "CreateContexte");
  const auto spare = target(L"spare.bmp");
  const auto jpeg = target(L"picture.jpg");
  require(context_->CreateBitmap(bstr(spare)), "CreateBitmap");
  SetFileAttributesW(spare.c_str(), FILE_ATTRIBUTE_READONLY);
  ASSERT_EQ(graph->CreateJPG(bstr(spare), bstr(jpeg), 35), S_OK);
  SetFileAttributesW(spare.c_str(), FILE_ATTRIBUTE_NORMAL);
  ASSERT_EQ(callsWith(spare).size(), 1U);
  EXPECT_EQ(callsWith(spare)[0].encoderOrFunction, "GdipLoadImageFromFile");
  EXPECT_EQ(callsWith(jpeg).size(), 1U);
  EXPECT_TRUE(exists(jpeg));
}

}  // namespace
}  // namespace zyn::test
