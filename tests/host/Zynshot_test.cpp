#include <algorithm>

#include "support/ImageDecoder_win.h"
#include "support/Pictures_win.h"
#include "support/Program_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

/// A right triangle facing +z whose right angle lies at the origin, its legs along +x and +y.
const char* const kCorner =
    "solid corner\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 4 0 0\nvertex 0 3 0\n"
    "endloop\nendfacet\nendsolid corner\n";

class ZynshotTest : public HostTest {
 protected:
  ZynshotTest() { writeFile(folder_.file(L"corner.stl"), kCorner); }

  /// Runs zynshot with each {word} of `arguments` replaced by the path of that file in the folder.
  ProgramResult zynshot(std::wstring arguments) {
    for (size_t at = arguments.find(L'{'); at != arguments.npos; at = arguments.find(L'{')) {
      const size_t end = arguments.find(L'}', at);
      const std::wstring file = folder_.file(arguments.substr(at + 1, end - at - 1)).wstring();
      arguments.replace(at, end + 1 - at, L'"' + file + L'"');
    }
    wchar_t own[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const auto program = std::filesystem::path(own).replace_filename(L"zynshot.exe");
    return runProgram(L'"' + program.wstring() + L"\" " + arguments);
  }

  Image picture(const std::wstring& arguments) {
    const ProgramResult result = zynshot(L"{corner.stl} -o {a.bmp} --size 160x120 " + arguments);
    EXPECT_EQ(result.exitCode, 0u) << result.error;
    return decodeImageFile(folder_.file(L"a.bmp")).image;
  }

  /// Expects one line on standard error with `complaint` in it, and nothing new in the folder.
  void expectRefused(const std::wstring& arguments, const std::string& complaint,
                     unsigned long exitCode) {
    const auto filesBefore = countFiles();
    const ProgramResult result = zynshot(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << result.error;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    EXPECT_NE(result.error.find(complaint), std::string::npos) << result.error;
    EXPECT_EQ(countFiles(), filesBefore);
  }

  std::ptrdiff_t countFiles() const {
    return std::distance(std::filesystem::directory_iterator(folder_.path()),
                         std::filesystem::directory_iterator());
  }

  TempFolder folder_;
};

bool isWhite(const Rgb& colour) { return difference(colour, {255, 255, 255}) < 3; }

/// Whether nothing reaches the edges of a picture.
bool hasWhiteEdge(const Image& image) {
  bool all = true;
  for (int x = 0; x < image.width(); ++x) {
    all = all && isWhite(image.at(x, 0)) && isWhite(image.at(x, image.height() - 1));
  }
  for (int y = 0; y < image.height(); ++y) {
    all = all && isWhite(image.at(0, y)) && isWhite(image.at(image.width() - 1, y));
  }
  return all;
}

TEST_F(ZynshotTest, showsTheModelUprightAndRightHanded) {
  const Image front = picture(L"--view xy+");
  EXPECT_FALSE(isWhite(front.at(30, 100)));
  EXPECT_TRUE(isWhite(front.at(130, 20)));
  EXPECT_TRUE(isWhite(front.at(5, 60)));

  const Image turned = picture(L"--view turning --surplus 3");
  EXPECT_EQ(turned.count(turned.at(0, 0)), 160 * 120) << "a flat model seen from its edge";
}

TEST_F(ZynshotTest, lightsWhatFacesTheLight) {
  const auto brightness = [this](const std::wstring& light) {
    const Rgb colour =
        picture(L"--view xy+ --color white --material matte --ambient 0.1 --light1 " + light)
            .at(50, 80);
    return colour.r;
  };
  const int along = brightness(L"0,0");
  const int slanting = brightness(L"60,0");
  const int off = brightness(L"off");
  EXPECT_GT(along, slanting + 50);
  EXPECT_GT(slanting, off + 50);
}

TEST_F(ZynshotTest, blendsATranslucentModelWithTheBackground) {
  const std::wstring plain =
      L"--view xy+ --color red --background blue --light1 off --ambient 1 --material matte";
  const Rgb opaque = picture(plain).at(50, 80);
  const Rgb half = picture(plain + L" --transparent 0.5").at(50, 80);
  EXPECT_LE(difference(opaque, {255, 0, 0}), 3);
  EXPECT_LE(difference(half, {128, 0, 128}), 4);
}

TEST_F(ZynshotTest, drawsEdgesInTheirColour) {
  const Image lines = picture(L"--view xy+ --style hidden-line --edges red,3");
  EXPECT_GT(lines.count({255, 0, 0}), 300);
  EXPECT_TRUE(isWhite(lines.at(50, 80)));
  const Image both = picture(L"--view xy+ --style shaded-edges --edges red,3");
  EXPECT_GT(both.count({255, 0, 0}), 300);
  EXPECT_FALSE(isWhite(both.at(50, 80)));
}

TEST_F(ZynshotTest, pointsHaveTheColoursOfTheModelAndTheWidthOfEdges) {
  const std::wstring options =
      L"--view xy+ --style points --color blue --light1 off --ambient 1 "
      L"--material matte --edges red,";
  const Image small = picture(options + L"1");
  const Image large = picture(options + L"6");
  EXPECT_EQ(large.count({255, 0, 0}), 0);
  EXPECT_GT(large.count({0, 0, 255}), 3 * small.count({0, 0, 255}));
  const std::string help = zynshot(L"--help").output;
  EXPECT_EQ(help.find("of edges and points"), help.npos);
}

TEST_F(ZynshotTest, looksWithACameraThatIsGivenAsText) {
  const Image fitted = picture(L"--view xy+");
  const Image given = picture(
      L"--camera \"Oeil=2 1.5 5 Cible=2 1.5 0 Haut=0 1 0 Largeur=4.4 Hauteur=3.3 Perspective=0 "
      L"AngleOuverture=30 Profondeur=4\"");
  for (int y = 0; y < fitted.height(); ++y) {
    for (int x = 0; x < fitted.width(); ++x) {
      ASSERT_EQ(given.at(x, y), fitted.at(x, y)) << x << ", " << y;
    }
  }
  for (const wchar_t* const wrong :
       {L"rubbish", L"Oeil=2", L"\"\"",
        L"\"Oeil=0 0 5 Cible=0 0 0 Haut=0 0 1 Largeur=4 Hauteur=3 Perspective=0 AngleOuverture=30 "
        L"Profondeur=4\""}) {
    expectRefused(std::wstring(L"{corner.stl} -o {b.png} --camera ") + wrong,
                  "zynshot: --camera: ", 2);
  }
}

TEST_F(ZynshotTest, perspectiveMakesSmallerWhatIsFartherAway) {
  // Two equal squares beside each other, the right one nearer to the eye.
  writeFile(folder_.file(L"two.obj"),
            "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 2 0 2\nv 3 0 2\nv 3 1 2\nv 2 1 2\n"
            "f 1 2 3 4\nf 5 6 7 8\n");
  const auto widths = [this](const std::wstring& options) {
    const ProgramResult result =
        zynshot(L"{two.obj} -o {two.bmp} --size 200x100 --view xy+ " + options);
    EXPECT_EQ(result.exitCode, 0u) << result.error;
    const Image image = decodeImageFile(folder_.file(L"two.bmp")).image;
    std::pair<int, int> found;
    for (int x = 0; x < 200; ++x) {
      (x < 100 ? found.first : found.second) += isWhite(image.at(x, 50)) ? 0 : 1;
    }
    return found;
  };
  const auto [flatFar, flatNear] = widths(L"");
  EXPECT_NEAR(flatFar, flatNear, 1);
  const auto [left, right] = widths(L"--perspective 60");
  EXPECT_GT(right, left * 5 / 4);
}

TEST_F(ZynshotTest, keepsTheColoursOfTheFileUnlessOthersAreAskedFor) {
  writeFile(folder_.file(L"red.ply"),
            "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
            "property float z\nproperty uchar red\nproperty uchar green\nproperty uchar blue\n"
            "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
            "0 0 0 255 0 0\n4 0 0 255 0 0\n0 3 0 255 0 0\n3 0 1 2\n");
  const auto colour = [this](const std::wstring& options) {
    const ProgramResult result =
        zynshot(L"{red.ply} -o {red.bmp} --size 160x120 --view xy+ " + options);
    EXPECT_EQ(result.exitCode, 0u) << result.error;
    return decodeImageFile(folder_.file(L"red.bmp")).image.at(50, 80);
  };
  const Rgb own = colour(L"");
  EXPECT_GT(own.r, own.b + 60);
  const Rgb blue = colour(L"--color blue");
  EXPECT_GT(blue.b, blue.r + 60);
  const Rgb faint = colour(L"--transparent 0.5");
  EXPECT_GT(faint.r, faint.b + 30);
  EXPECT_GT(faint.b, own.b + 30);
}

void writeLogo(const std::filesystem::path& file) {
  const auto bytes = bmpFile(makeQuarters(20, 12));
  writeFile(file, std::string(bytes.begin(), bytes.end()));
}

TEST_F(ZynshotTest, showsALogoInTheLowerRightCorner) {
  writeLogo(folder_.file(L"logo.bmp"));
  const Image image = picture(L"--view yz+ --logo {logo.bmp}");
  const Image quarters = makeQuarters(20, 12);
  for (int y = 0; y < quarters.height(); ++y) {
    for (int x = 0; x < quarters.width(); ++x) {
      ASSERT_EQ(image.at(160 - 28 - 20 + x, 120 - 28 - 12 + y), quarters.at(x, y))
          << x << ", " << y;
    }
  }
  EXPECT_EQ(image.count({255, 255, 0}), 20 * 12 / 4);
}

/// Dark blue, as texts are on a bright background.
bool isInk(const Rgb& colour) { return colour.r < 60 && colour.g < 80 && colour.b < 120; }

/// The smallest rectangle around all ink.
PixelBox inkIn(const Image& image) {
  PixelBox box{image.width(), image.height(), -1, -1};
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (!isInk(image.at(x, y))) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
             std::max(box.bottom, y)};
    }
  }
  return box;
}

TEST_F(ZynshotTest, writesATitleInTheUpperLeftCorner) {
  const PixelBox ink = inkIn(picture(L"--view yz+ --size 400x300 --title \"H \x00C9t\x00E9\""));
  EXPECT_NEAR(ink.left, 28 + 2, 3);
  EXPECT_GE(ink.top, 28 - 2);
  EXPECT_LE(ink.bottom, 28 + 40);
  EXPECT_GT(ink.right, ink.left + 60);
}

TEST_F(ZynshotTest, dimensionsSpanTheModel) {
  const Image image =
      picture(L"--view xy+ --size 400x300 --dimensions --color red --material matte --ambient 1");
  PixelBox model{400, 300, -1, -1};
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 400; ++x) {
      const Rgb& colour = image.at(x, y);
      if (colour.r < 150 || colour.b > 60) continue;
      model = {std::min(model.left, x), std::min(model.top, y), std::max(model.right, x),
               std::max(model.bottom, y)};
    }
  }
  // 44 pixels below it and to its right there are lines of its length.
  int below = 0;
  for (int x = model.left; x <= model.right; ++x) {
    below += isInk(image.at(x, model.bottom + 44)) || isInk(image.at(x, model.bottom + 45));
  }
  EXPECT_NEAR(below, model.right - model.left + 1, 3);
  int beside = 0;
  for (int y = model.top; y <= model.bottom; ++y) {
    beside += isInk(image.at(model.right + 44, y)) || isInk(image.at(model.right + 45, y));
  }
  EXPECT_NEAR(beside, model.bottom - model.top + 1, 3);
}

TEST_F(ZynshotTest, refusesLogosItCannotUse) {
  writeFile(folder_.file(L"letter.bmp"), "Dear reader,\n");
  expectRefused(L"{corner.stl} --logo {none.bmp} -o {a.png}", "none.bmp: no such file", 1);
  expectRefused(L"{corner.stl} --logo {letter.bmp} -o {a.png}",
                "letter.bmp: this is no picture that the system can load", 1);
}

TEST_F(ZynshotTest, writesEveryFormatInOneRunEachWithItsOwnOptions) {
  const ProgramResult result = zynshot(
      L"{corner.stl} --size 90x60 --gradient navy -o {a.png} -o {a.jpeg} --size 40x40 -o {a.gif} "
      L"-o {a.bmp} --view xz+");
  ASSERT_EQ(result.exitCode, 0u) << result.error;
  EXPECT_EQ(result.output + result.error, "");
  for (const auto& [name, format, width] :
       {std::tuple{L"a.png", L"png", 90}, std::tuple{L"a.jpeg", L"jpeg", 40},
        std::tuple{L"a.gif", L"gif", 90}, std::tuple{L"a.bmp", L"bmp", 90}}) {
    const DecodedImage decoded = decodeImageFile(folder_.file(name));
    EXPECT_EQ(decoded.format, format);
    EXPECT_EQ(decoded.image.width(), width);
    const Rgb top = decoded.image.at(1, 1);
    EXPECT_GT(top.b, top.r + 60) << "the gradient's colour is missing in " << name;
  }
  EXPECT_EQ(countFiles(), 5);
}

TEST_F(ZynshotTest, refusesModelsItCannotUse) {
  writeFile(folder_.file(L"cut.stl"), std::string(kCorner).substr(0, 70));
  writeFile(folder_.file(L"cut_binary.stl"), std::string(80, '\0') + std::string("\1\0\0\0xyz", 7));
  writeFile(folder_.file(L"bad.obj"), "v 0 0 0\nf 1 2 3\n");
  writeFile(folder_.file(L"letter.stl"), "Dear reader,\n");
  expectRefused(L"{none.stl} -o {a.png}", "none.stl\" was not read: ", 1);
  expectRefused(L"{cut.stl} -o {a.png}", "cut.stl: line 6: ", 1);
  expectRefused(L"{cut_binary.stl} -o {a.png}", "cut_binary.stl: byte 80: ", 1);
  expectRefused(L"{bad.obj} -o {a.png}", "bad.obj: line 2: vertex 2 does not exist", 1);
  expectRefused(L"{letter.stl} -o {a.png}",
                "letter.stl: not a model in STL, OBJ, PLY, OFF or 3MF format", 1);
}

TEST_F(ZynshotTest, showsThePathOfAProgramWithTheToolAtAPlace) {
  writeFile(folder_.file(L"square.nc"), "G21 F600\nG1 X8 Y0 Z0\nX8 Y6\nX0 Y6\nX0 Y0\nG0 Z3\n");
  const auto shoot = [&](const std::wstring& arguments) {
    const ProgramResult result =
        zynshot(L"{square.nc} --view xy+ --size 160x120 -o {p.bmp} " + arguments);
    EXPECT_EQ(result.exitCode, 0u) << result.error;
    return decodeImageFile(folder_.file(L"p.bmp")).image;
  };
  const auto inked = [](const Image& image, int x0, int y0, int x1, int y1) {
    int count = 0;
    for (int y = y0; y < y1; ++y) {
      for (int x = x0; x < x1; ++x) {
        count += isWhite(image.at(x, y)) ? 0 : 1;
      }
    }
    return count;
  };
  const Image plain = shoot(L"");
  EXPECT_GT(inked(plain, 0, 0, 160, 120), 300);
  EXPECT_EQ(inked(plain, 40, 30, 120, 90), 0);
  const Image atCorner = shoot(L"--position line:3 --tool 2 --path-colours type");
  EXPECT_GT(inked(atCorner, 120, 80, 160, 120), inked(plain, 120, 80, 160, 120) + 50);
  const Image inEnd = shoot(L"--position 100% --tool 2 --path-colours type");
  EXPECT_GT(inked(inEnd, 0, 80, 40, 120), inked(plain, 0, 80, 40, 120) + 50);
  EXPECT_NE(shoot(L"--path-colours speed"), plain);
  const Image both = [&] {
    EXPECT_EQ(zynshot(L"{square.nc} {corner.stl} --view xy+ --size 160x120 -o {p.bmp}").error, "");
    return decodeImageFile(folder_.file(L"p.bmp")).image;
  }();
  EXPECT_GT(inked(both, 0, 60, 70, 120), 1000);
}

TEST_F(ZynshotTest, writesFramesOfThePathAndSaysWhatIsWrongInAProgram) {
  writeFile(folder_.file(L"line.nc"), "F600\nG1 X8\n");
  EXPECT_EQ(zynshot(L"{line.nc} --size 60x40 --frames 3 -o {f.png}").exitCode, 0u);
  for (const wchar_t* const name : {L"f-001.png", L"f-002.png", L"f-003.png"}) {
    EXPECT_TRUE(std::filesystem::exists(folder_.file(name)));
  }
  EXPECT_EQ(zynshot(L"{line.nc} --size 60x40 --frames 3 --tool 4 --path-colours type -o {t.bmp}")
                .exitCode,
            0u);
  const auto frame = [&](const wchar_t* name) { return decodeImageFile(folder_.file(name)).image; };
  for (const wchar_t* const name : {L"t-002.bmp", L"t-003.bmp"}) {
    EXPECT_TRUE(hasWhiteEdge(frame(name))) << "the tool is within the picture";
    EXPECT_GT(meanDifference(frame(name), frame(L"t-001.bmp")), 1) << "there is no tool yet";
  }
  writeFile(folder_.file(L"wrong.nc"), "F600\nG1 X[1+\n");
  expectRefused(L"{wrong.nc} -o {a.png}", "wrong.nc, line 2, column ", 1);
  expectRefused(L"{none.nc} -o {a.png}", "none.nc\" was not read: ", 1);
  writeFile(folder_.file(L"empty.nc"), "%\n");
  expectRefused(L"{empty.nc} -o {a.png}", "empty.nc: the program moves nothing", 1);
  expectRefused(L"{line.nc} --position line:99999 -o {a.png}", "the last line with motion is 2", 1);
  expectRefused(L"{line.nc} --frames 3 --position 10% -o {a.png}", "not with --position", 2);
  expectRefused(L"{corner.stl} --position 12s -o {a.png}", "--position: no program given", 2);
}

TEST_F(ZynshotTest, warnsOfCodesThatItSkips) {
  writeFile(folder_.file(L"mill.min"), "M10\nG1 X8 F600\n");
  const ProgramResult result =
      zynshot(L"{mill.min} --tool 1,flat --position 50% --path-colors type -o {m.png}");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_NE(result.error.find("mill.min: 1 code skipped (first: line 1, column 1: "),
            std::string::npos)
      << result.error;
  EXPECT_TRUE(std::filesystem::exists(folder_.file(L"m.png")));
}

TEST_F(ZynshotTest, refusesPicturesItCannotWrite) {
  expectRefused(L"{corner.stl} -o {no/such/folder.png}", "there is no such folder", 1);
  expectRefused(L"{corner.stl} -o {a.webp}", "must end in .png", 2);
  expectRefused(L"{corner.stl} -o {a.png} --size 65535x65535 -o {nowhere/b.png}", "no such folder",
                1);
}

TEST_F(ZynshotTest, tellsTheCauseThatTheContextGives) {
  writeFile(folder_.file(L"kept.png"), "older");
  SetFileAttributesW(folder_.file(L"kept.png").c_str(), FILE_ATTRIBUTE_READONLY);
  expectRefused(L"{corner.stl} -o {kept.png}", "kept.png\" was not written: ", 1);
  SetFileAttributesW(folder_.file(L"kept.png").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(std::filesystem::file_size(folder_.file(L"kept.png")), 5u);
}

TEST_F(ZynshotTest, refusesCommandLinesThatMakeNoSense) {
  expectRefused(L"", "no model given", 2);
  expectRefused(L"{corner.stl} --colour red -o {a.png}", "unknown option --colour", 2);
  expectRefused(L"{corner.stl} --view top -o {a.png}", "is not a view", 2);
}

TEST_F(ZynshotTest, explainsItself) {
  const ProgramResult help = zynshot(L"--help");
  EXPECT_EQ(help.exitCode, 0u);
  EXPECT_NE(help.output.find("usage: zynshot MODEL"), std::string::npos);
  EXPECT_EQ(help.error, "");
  EXPECT_EQ(zynshot(L"--version").output, "zynshot 1.0.0\n");
}

TEST_F(ZynshotTest, showsProgressWhenAsked) {
  std::string text = "solid\n";
  for (int i = 0; i < 200; ++i)
    text += std::string(kCorner).substr(13, std::string(kCorner).find("endsolid") - 13);
  writeFile(folder_.file(L"many.stl"), text + "endsolid\n");
  const ProgramResult result = zynshot(L"{many.stl} -o {a.png} --progress");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error,
            "reading 0%\nreading 10%\nreading 20%\nreading 30%\nreading 40%\nreading 50%\n"
            "reading 60%\nreading 70%\nreading 80%\nreading 90%\nrendering 0%\n");
}

TEST_F(ZynshotTest, takesNamesBeyondTheCodePage) {
  std::filesystem::copy_file(folder_.file(L"corner.stl"), folder_.file(L"\x4E09\x89D2 \x00E9.stl"));
  EXPECT_EQ(zynshot(L"{\x4E09\x89D2 \x00E9.stl} -o {\x5716.png}").exitCode, 0u);
  EXPECT_TRUE(std::filesystem::exists(folder_.file(L"\x5716.png")));
}

}  // namespace
}  // namespace zyn::test
