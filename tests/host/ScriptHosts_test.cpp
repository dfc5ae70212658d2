#include <cmath>
#include <cstdio>

#include "support/ImageDecoder_win.h"
#include "support/Program_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

/// A cone around z, its tip upwards.
std::string cone() {
  std::string text = "solid cone\r\n";
  constexpr int kSides = 24;
  const auto vertex = [](int side) {
    const double angle = 2 * 3.14159265358979 * side / kSides;
    char line[80];
    std::snprintf(line, sizeof line, "vertex %.5f %.5e 0\r\n", std::cos(angle), std::sin(angle));
    return std::string(line);
  };
  for (int i = 0; i < kSides; ++i) {
    text += "\tfacet normal 0 0 0\r\nouter loop\r\n" + vertex(i) + vertex(i + 1) +
            "  vertex   0 0 +2\r\nendloop\r\nendfacet\r\n\r\n";
  }
  return text + "endsolid cone\r\n";
}

class ScriptHostsTest : public HostTest {
 protected:
  static std::filesystem::path hosts() {
    // The folder of the sources is named as the build machine names it.
    return std::filesystem::path("Z:" ZYN_SOURCE_FOLDER) / "hosts";
  }

  /// Runs a script of hosts/scripts on a file in the folder, its pictures going to "out" there.
  std::string play(const std::wstring& script, const std::wstring& file) {
    return runProgram(L"cscript.exe //nologo \"" + (hosts() / "scripts" / script).wstring() +
                      L"\" \"" + folder_.file(file).wstring() + L"\" \"" +
                      folder_.file(L"out").wstring() + L'"')
        .output;
  }

  Image picture(const std::wstring& name, const std::wstring& format) {
    const DecodedImage decoded = decodeImageFile(folder_.file(L"out") / name);
    EXPECT_EQ(decoded.format, format) << name;
    EXPECT_EQ(decoded.image.width(), 800);
    EXPECT_EQ(decoded.image.height(), 600);
    return decoded.image;
  }

  TempFolder folder_;
};

/// How many pixels of a row differ from its first one.
int widthAt(const Image& image, int y) {
  int width = 0;
  for (int x = 0; x < image.width(); ++x) {
    width += difference(image.at(x, y), image.at(0, y)) > 8 ? 1 : 0;
  }
  return width;
}

TEST_F(ScriptHostsTest, galleryRendersAllViewsInAllFormats) {
  writeFile(folder_.file(L"cone.stl"), cone());
  const std::string output = play(L"gallery.vbs", L"cone.stl");
  ASSERT_NE(output.find("done: 10 pictures"), std::string::npos) << output;
  for (const wchar_t* name : {L"xz+.png", L"xz-.png"}) {
    const Image side = picture(name, L"png");
    EXPECT_GT(widthAt(side, 500), 3 * widthAt(side, 150)) << "the tip is not upwards";
    EXPECT_GT(widthAt(side, 150), 0);
    EXPECT_GT(side.at(250, 450).r, side.at(550, 450).r + 30) << "the light is not on the left";
  }
  EXPECT_GT(widthAt(picture(L"xy+.png", L"png"), 300), 400);
  EXPECT_GT(widthAt(picture(L"yz+.jpg", L"jpeg"), 500), 100);
  EXPECT_GT(widthAt(picture(L"yz-.gif", L"gif"), 500), 100);
  EXPECT_GT(widthAt(picture(L"turning.bmp", L"bmp"), 300), 100);
  EXPECT_GT(widthAt(picture(L"translucent.png", L"png"), 300), 400);

  const Image annotated = picture(L"annotated.png", L"png");
  EXPECT_GT(widthAt(annotated, 40), 40) << "no title";
  const Image logo = decodeImageFile(folder_.file(L"out") / L"logo.bmp").image;
  for (int y = 0; y < logo.height(); ++y) {
    for (int x = 0; x < logo.width(); ++x) {
      ASSERT_EQ(annotated.at(800 - 24 - logo.width() + x, 600 - 24 - logo.height() + y),
                logo.at(x, y))
          << "the logo, " << x << ", " << y;
    }
  }
}

TEST_F(ScriptHostsTest, heightsColoursFromBlueToRed) {
  writeFile(folder_.file(L"cone.stl"), cone());
  const std::string output = play(L"heights.js", L"cone.stl");
  ASSERT_NE(output.find("done: 4 pictures"), std::string::npos) << output;
  for (const auto& [name, format] :
       {std::pair{L"heights.png", L"png"}, std::pair{L"heights.jpg", L"jpeg"},
        std::pair{L"heights.gif", L"gif"}, std::pair{L"heights.bmp", L"bmp"}}) {
    EXPECT_GT(widthAt(picture(name, format), 300), 100);
  }
}

TEST_F(ScriptHostsTest, graphsShowTheTable) {
  std::filesystem::copy_file(hosts() / "data" / "sea_surface_temperature.csv",
                             folder_.file(L"table.csv"));
  const std::string output = play(L"graphs.js", L"table.csv");
  ASSERT_NE(output.find("done: 4 pictures"), std::string::npos) << output;
  const Rgb warm = {214, 48, 38};
  for (const wchar_t* name : {L"seasons", L"anomalies"}) {
    const Image onScreen =
        decodeImageFile(folder_.file(L"out") / (name + std::wstring(L".png"))).image;
    const Image print =
        decodeImageFile(folder_.file(L"out") / (name + std::wstring(L"-print.png"))).image;
    ASSERT_EQ(onScreen.width(), 1600);
    ASSERT_EQ(onScreen.height(), 1000);
    ASSERT_EQ(print.width(), 3200);
    ASSERT_EQ(print.height(), 2000);
    EXPECT_GT(onScreen.count(warm), 3000) << "curves, bars and names";
    EXPECT_GT(print.count(warm), 3 * onScreen.count(warm)) << "as large on paper as on screen";
  }
}

TEST_F(ScriptHostsTest, toolPathIsShownBySpeedsAndByProgress) {
  const auto data = hosts() / "data";
  std::filesystem::create_directories(folder_.file(L"out"));
  const std::string output =
      runProgram(L"cscript.exe //nologo \"" + (hosts() / "scripts/toolpath.vbs").wstring() +
                 L"\" \"" + (data / "part.obj").wstring() + L"\" \"" +
                 (data / "paths/part_finish.nc").wstring() + L"\" \"" +
                 folder_.file(L"out").wstring() + L'"')
          .output;
  EXPECT_NE(output.find("line 6, 0"), std::string::npos) << output;
  EXPECT_NE(output.find("line 2553, "), std::string::npos) << output;
  ASSERT_NE(output.find("done: 4093 segments, "), std::string::npos) << output;
  const Image speeds = decodeImageFile(folder_.file(L"out") / L"speeds.png").image;
  const Image progress = decodeImageFile(folder_.file(L"out") / L"progress.png").image;
  const auto isYellow = [](const Rgb& c) { return c.r > c.b + 100 && c.g > c.b + 100; };
  const auto isGreen = [](const Rgb& c) { return c.g > c.r + 60 && c.g > c.b + 30; };
  const auto isBlue = [](const Rgb& c) { return c.b > c.r + 100 && c.b > c.g + 60; };
  int fast = 0;
  int done = 0;
  int toDo = 0;
  for (int y = 0; y < progress.height(); ++y) {
    for (int x = 0; x < progress.width(); ++x) {
      fast += isYellow(speeds.at(x, y)) ? 1 : 0;
      done += isGreen(progress.at(x, y)) ? 1 : 0;
      toDo += isBlue(progress.at(x, y)) ? 1 : 0;
    }
  }
  EXPECT_GT(fast, 5000);
  EXPECT_GT(done, 3000);
  EXPECT_GT(toDo, 1000);
}

TEST_F(ScriptHostsTest, partIsColouredByItsHeightWithoutItsBase) {
  std::filesystem::create_directories(folder_.file(L"out"));
  std::filesystem::copy_file(hosts() / "data" / "part.obj", folder_.file(L"part.obj"));
  const std::string output = play(L"part.vbs", L"part.obj");
  ASSERT_NE(output.find("done: 44 faces"), std::string::npos) << output;
  const Image part = picture(L"part.png", L"png");
  // Low is violet and high is yellow, in the part and in the bar.
  const auto isYellow = [](const Rgb& c) { return c.r > c.b + 80 && c.g > c.b + 80; };
  const auto isViolet = [](const Rgb& c) { return c.b > c.g + 20 && c.r > c.g + 20; };
  int yellow = 0;
  int violet = 0;
  for (int y = 0; y < part.height(); ++y) {
    for (int x = 200; x < 600; ++x) {
      yellow += isYellow(part.at(x, y)) ? 1 : 0;
      violet += isViolet(part.at(x, y)) ? 1 : 0;
    }
  }
  EXPECT_GT(yellow, 2000) << "the top of the step";
  EXPECT_EQ(violet, 0) << "the base is hidden, and nothing else is as low";
  std::ifstream file(folder_.file(L"out") / "part.camera");
  std::string line;
  std::getline(file, line);
  EXPECT_TRUE(line.starts_with("Oeil=60 -110 90 Cible=0 0 22 ")) << line;
}

TEST_F(ScriptHostsTest, allNameTheReasonWhenTheyFail) {
  writeFile(folder_.file(L"cut short"), cone().substr(0, 200) + "\r\n1950,20,21,22\r\n");
  for (const wchar_t* script : {L"gallery.vbs", L"heights.js", L"graphs.js"}) {
    const std::string none = play(script, L"missing file");
    EXPECT_NE(none.find("missing file: no such file"), std::string::npos) << none;
    const std::string cut = play(script, L"cut short");
    EXPECT_NE(cut.find("cut short"), std::string::npos) << cut;
    EXPECT_EQ((none + cut).find("done:"), std::string::npos);
  }
}

}  // namespace
}  // namespace zyn::test
