// What reaches the encoder of GDI+: beside this program lies a gdiplus.dll that records it.
#include <sstream>
#include <vector>

#include "support/HostSession_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

/// One call of GdipSaveImageToFile.
struct Saved {
  std::string fileName;
  std::string encoder;
  std::string parameters;
};

class JpegQualityTest : public HostTest {
 protected:
  JpegQualityTest() {
    SetEnvironmentVariableW(L"ZYN_GDIPLUS_RECORD", record_.c_str());
    LONG result = 0;
    require(context_->CreateContext(64, 64, &result), "CreateContext");
  }
  ~JpegQualityTest() override { SetEnvironmentVariableW(L"ZYN_GDIPLUS_RECORD", nullptr); }

  std::filesystem::path target(const wchar_t* name) const { return folder_.file(name); }

  /// The calls that named this file as their target.
  std::vector<Saved> savedTo(const std::filesystem::path& target) const {
    std::vector<Saved> found;
    std::ifstream in(record_);
    for (std::string line; std::getline(in, line);) {
      std::istringstream fields(line);
      Saved saved;
      std::getline(fields, saved.fileName, '\t');
      std::getline(fields, saved.encoder, '\t');
      std::getline(fields, saved.parameters);
      if (saved.fileName == target.string()) found.push_back(saved);
    }
    return found;
  }

  TempFolder folder_;
  std::filesystem::path record_ = folder_.file(L"record.txt");
  ComPtr<IZYN3DGLBitmapContext> context_ =
      createObject<IZYN3DGLBitmapContext>(L"ZYNVue.ZYN3dGLBitmapContext.1");
};

class JpegQualityValueTest : public JpegQualityTest, public testing::WithParamInterface<int> {};

TEST_P(JpegQualityValueTest, ReachesTheEncoderAsItIs) {
  const auto file = target(L"picture.jpg");
  ASSERT_EQ(context_->CreateJPG(nullptr, bstr(file), GetParam()), S_OK);
  const std::vector<Saved> saved = savedTo(file);
  ASSERT_EQ(saved.size(), 1U);
  EXPECT_EQ(saved[0].encoder, "{557CF401-1A04-11D3-9A73-0000F81EF32E}");
  EXPECT_EQ(saved[0].parameters,
            "count=1 guid={1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB} type=4 values=1 value=" +
                std::to_string(GetParam()));
  EXPECT_TRUE(std::filesystem::exists(file));
}

INSTANTIATE_TEST_SUITE_P(Qualities, JpegQualityValueTest,
                         testing::Values(-1, 0, 10, 100, 150, 2147483647));

TEST_F(JpegQualityTest, OtherFormatsHaveNoParameters) {
  const auto png = target(L"picture.png");
  const auto gif = target(L"picture.gif");
  ASSERT_EQ(context_->CreatePNG(nullptr, bstr(png)), S_OK);
  ASSERT_EQ(context_->CreateGIF(nullptr, bstr(gif)), S_OK);
  ASSERT_EQ(savedTo(png).size(), 1U);
  EXPECT_EQ(savedTo(png)[0].encoder, "{557CF406-1A04-11D3-9A73-0000F81EF32E}");
  EXPECT_EQ(savedTo(png)[0].parameters, "none");
  ASSERT_EQ(savedTo(gif).size(), 1U);
  EXPECT_EQ(savedTo(gif)[0].encoder, "{557CF402-1A04-11D3-9A73-0000F81EF32E}");
  EXPECT_EQ(savedTo(gif)[0].parameters, "none");
}

}  // namespace
}  // namespace zyn::test
