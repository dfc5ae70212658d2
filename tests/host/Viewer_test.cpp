#include <algorithm>

#include "support/ImageDecoder_win.h"
#include "support/Program_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

/// A right triangle facing +z whose right angle lies at the origin, its legs along +x and +y.
const char* const kCorner =
    "solid corner\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 4 0 0\nvertex 0 3 0\n"
    "endloop\nendfacet\nendsolid corner\n";

/// The viewer, run to its end in a folder of its own, in which it leaves its pictures.
class ViewerTest : public HostTest {
 protected:
  ViewerTest() : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder_.path());
    writeFile(folder_.file(L"corner.stl"), kCorner);
  }
  ~ViewerTest() { std::filesystem::current_path(before_); }

  static ProgramResult viewer(const std::wstring& arguments) {
    wchar_t own[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const auto program = std::filesystem::path(own).replace_filename(L"viewer.exe");
    return runProgram(L'"' + program.wstring() + L"\" --batch " + arguments);
  }

  static void expectRefused(const std::wstring& arguments, const std::string& complaint) {
    const ProgramResult result = viewer(arguments);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_TRUE(result.error.starts_with("viewer: ")) << result.error;
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    EXPECT_NE(result.error.find(complaint), std::string::npos) << result.error;
  }

  TempFolder folder_;

 private:
  std::filesystem::path before_;
};

bool isWhite(const Rgb& colour) { return difference(colour, {255, 255, 255}) < 3; }

TEST_F(ViewerTest, exportsWhatTheViewLooksAt) {
  std::wstring upsideDown;
  for (int i = 0; i < 12; ++i) {
    upsideDown += L"roll-left,";
  }
  const ProgramResult result =
      viewer(L"corner.stl --size 320x240 --script gradient,xy+,export-bmp,export-png,export-jpg," +
             upsideDown + L"export-gif,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  EXPECT_EQ(result.error, "");
  const std::pair<const wchar_t*, const wchar_t*> kFront[] = {
      {L"corner.bmp", L"bmp"}, {L"corner.png", L"png"}, {L"corner.jpg", L"jpeg"}};
  for (const auto& [name, format] : kFront) {
    const DecodedImage picture = decodeImageFile(folder_.file(name));
    EXPECT_EQ(picture.format, format);
    EXPECT_EQ(picture.image.width(), 320);
    EXPECT_EQ(picture.image.height(), 240);
    EXPECT_FALSE(isWhite(picture.image.at(90, 190)));
    EXPECT_TRUE(isWhite(picture.image.at(250, 50)));
  }
  const DecodedImage turned = decodeImageFile(folder_.file(L"corner.gif"));
  EXPECT_EQ(turned.format, L"gif");
  EXPECT_FALSE(isWhite(turned.image.at(230, 50)));
  EXPECT_TRUE(isWhite(turned.image.at(70, 190)));
}

TEST_F(ViewerTest, carriesOutEveryCommandThatAsksNothing) {
  const ProgramResult result = viewer(
      L"corner.stl --size 200x150 --script xy+,xy-,xz+,xz-,yz+,yz-,turning,default,zoom-all,undo,"
      L"zoom-in,zoom-out,turn-left,turn-right,turn-up,turn-down,roll-left,roll-right,rotate,pan,"
      L"zoom,select,window,select-through,clear-selection,inverse-wheel,gradient,trihedron,"
      L"outline,smooth-lines,smooth-points,multisampling,lights,light-studio,light-head,"
      L"light-side,light-two-sides,light-ambient,draw-lights,reload,export-png,exit");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(decodeImageFile(folder_.file(L"corner.png")).image.width(), 200);
}

TEST_F(ViewerTest, startsAndEndsWithoutAModel) {
  const ProgramResult result = viewer(L"--script zoom-all,undo,xy+,reload,outline,exit");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error, "");
}

TEST_F(ViewerTest, saysWhatIsWrong) {
  writeFile(folder_.file(L"letter.txt"), "Dear all,\n");
  writeFile(folder_.file(L"broken.stl"), "solid x\nfacet normal 0 0 1\nouter loop\nvertex 0 0\n");
  expectRefused(L"nowhere.stl", "nowhere.stl");
  expectRefused(L"letter.txt", "letter.txt");
  expectRefused(L"broken.stl", "broken.stl: line 4");
  expectRefused(L"--script export-png", "there is no model");
  expectRefused(L"--script dance", "\"dance\" is not a command");
}

}  // namespace
}  // namespace zyn::test
