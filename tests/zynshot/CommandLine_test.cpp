#include "zynshot/CommandLine.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "zynshot/UsageError.h"

namespace zyn::shot {
namespace {

/// Parses arguments written with blanks between them.
Request parse(const std::string& line) {
  std::istringstream stream(line);
  const std::vector<std::string> arguments{std::istream_iterator<std::string>(stream), {}};
  return parseCommandLine(arguments);
}

PictureOptions picture(const std::string& options) {
  return parse("part.stl -o part.png " + options).pictures.at(0);
}

std::string complaint(const std::string& line) {
  try {
    parse(line);
  } catch (const UsageError& error) {
    return error.what();
  }
  return {};
}

TEST(CommandLine, takesModelAndPictureInAnyOrder) {
  for (const char* line :
       {"part.stl -o part.png", "-o part.png part.stl", "--output=part.png part.stl"}) {
    const Request request = parse(line);
    EXPECT_EQ(request.action, Action::kRender);
    EXPECT_EQ(request.model, "part.stl");
    ASSERT_EQ(request.pictures.size(), 1u);
    EXPECT_EQ(request.pictures[0].file, "part.png");
    EXPECT_FALSE(request.smoothAngle);
    EXPECT_FALSE(request.progress);
  }
}

TEST(CommandLine, takesNamesOfPicturesOnly) {
  for (const char* file :
       {"a.png", "a.b/c.JPG", "a.jpeg", "a.Gif", "C:\\a\\b.bmp", "a.tif", "a.TIFF"}) {
    EXPECT_EQ(parse(std::string("m -o ") + file).pictures.at(0).file, file);
  }
  for (const char* file : {"a.webp", "png", "a.png/b", "a.png\\b", "a.", "a"}) {
    EXPECT_EQ(complaint(std::string("m -o ") + file),
              std::string("-o ") + file +
                  ": the name must end in .png, .jpg, .jpeg, .gif, .bmp, .tif or .tiff");
  }
}

TEST(CommandLine, takesStylesAndEdges) {
  EXPECT_EQ(picture("").strokes, Strokes());
  EXPECT_EQ(picture("--style shaded-edges").strokes.style, 2);
  EXPECT_EQ(picture("--style points").strokes.style, 4);
  EXPECT_EQ(picture("--edges red").strokes, (Strokes{0, {1, 0, 0}, 1}));
  EXPECT_EQ(picture("--edges red,2.5").strokes, (Strokes{0, {1, 0, 0}, 2.5}));
  EXPECT_EQ(picture("--edges 0,0,1").strokes, (Strokes{0, {0, 0, 1}, 1}));
  EXPECT_EQ(picture("--edges 0,0,1,3").strokes, (Strokes{0, {0, 0, 1}, 3}));
  EXPECT_NE(complaint("m -o a.png --style bold").find("is not a style"), std::string::npos);
  EXPECT_NE(complaint("m -o a.png --edges red,0"), "");
}

TEST(CommandLine, takesACameraOrPerspective) {
  EXPECT_FALSE(picture("").perspective);
  EXPECT_EQ(picture("--perspective 45").perspective, 45);
  EXPECT_NE(complaint("m -o a.png --perspective 180"), "");
  EXPECT_EQ(picture("--camera Oeil=0").camera, "Oeil=0");
}

TEST(CommandLine, readsEveryPictureOption) {
  const PictureOptions p = picture(
      "--view xz+ --size 1600x1200 --background #0080ff --gradient 255,0,0 --color navy,0.25 "
      "--material 0.1,0.2,0.3,0.4,0.5 --outline --light1 -30,45 --light2 60,-10,red "
      "--ambient 0.5,0,1,0 --surplus 0.2 --dpi 300 --quality 55 --dimensions --title Part "
      "--logo a/b.ico --unit mm");
  EXPECT_EQ(p.view, parseView("xz+"));
  EXPECT_EQ(p.surface.width, 1600);
  EXPECT_EQ(p.surface.height, 1200);
  EXPECT_EQ(p.surface.background, (Colour{0, 128 / 255.0, 1}));
  EXPECT_EQ(p.gradient, (Colour{1, 0, 0}));
  EXPECT_EQ(p.appearance.colour, (Colour{0, 0, 128 / 255.0}));
  EXPECT_EQ(p.appearance.alpha, 0.25);
  EXPECT_EQ(p.appearance.material, (Material{0.1, 0.2, 0.3, 0.4, 0.5}));
  EXPECT_TRUE(p.outline);
  EXPECT_TRUE(p.light1.on);
  EXPECT_EQ(p.light1.azimuth, -30);
  EXPECT_EQ(p.light1.elevation, 45);
  EXPECT_TRUE(p.light2.on);
  EXPECT_EQ(p.light2.elevation, -10);
  EXPECT_EQ(p.light2.colour, (Colour{1, 0, 0}));
  EXPECT_EQ(p.ambient.intensity, 0.5);
  EXPECT_EQ(p.ambient.colour, (Colour{0, 1, 0}));
  EXPECT_EQ(p.surplus, 0.2);
  EXPECT_EQ(p.dpi, 300);
  EXPECT_EQ(p.quality, 55);
  EXPECT_EQ(p.annotations, (Annotations{true, "Part", "a/b.ico", "mm"}));
}

TEST(CommandLine, readsTheOptionsOfTheWholeRun) {
  const Request request = parse("m --smooth 30 -o a.png --progress");
  EXPECT_EQ(request.smoothAngle, 30);
  EXPECT_TRUE(request.progress);
}

TEST(CommandLine, givesOptionsBeforeTheFirstPictureToAll) {
  const Request request =
      parse("m --color red --view xy+ -o a.png --outline -o b.png --view xy- --transparent=0.5");
  ASSERT_EQ(request.pictures.size(), 2u);
  EXPECT_EQ(request.pictures[0].appearance.colour, (Colour{1, 0, 0}));
  EXPECT_EQ(request.pictures[1].appearance.colour, (Colour{1, 0, 0}));
  EXPECT_TRUE(request.pictures[0].outline);
  EXPECT_FALSE(request.pictures[1].outline);
  EXPECT_EQ(request.pictures[0].view, parseView("xy+"));
  EXPECT_EQ(request.pictures[1].view, parseView("xy-"));
  EXPECT_EQ(request.pictures[0].appearance.alpha, 1.0);
  EXPECT_EQ(request.pictures[1].appearance.alpha, 0.5);
}

TEST(CommandLine, keepsTransparencyWhenAColourFollows) {
  EXPECT_EQ(picture("--transparent 0.5 --color red").appearance.alpha, 0.5);
  EXPECT_EQ(picture("--transparent 0.5 --color red,0.7").appearance.alpha, 0.7);
}

TEST(CommandLine, switchesLightsOff) {
  EXPECT_FALSE(picture("--light1 off").light1.on);
  EXPECT_TRUE(picture("").light2.on);
  EXPECT_FALSE(picture("--light2 off").light2.on);
}

TEST(CommandLine, stopsAtHelpAndVersionWhateverFollows) {
  EXPECT_EQ(parse("--help --nonsense").action, Action::kHelp);
  EXPECT_EQ(parse("part.stl -h").action, Action::kHelp);
  EXPECT_EQ(parse("--version").action, Action::kVersion);
}

TEST(CommandLine, aProgramStandsBesideAModelOrAlone) {
  for (const char* const line : {"part.stl part.nc -o a.png", "part.nc -o a.png part.stl"}) {
    EXPECT_EQ(parse(line).model, "part.stl");
    EXPECT_EQ(parse(line).program, "part.nc");
  }
  EXPECT_TRUE(parse("part.GCODE -o a.png").model.empty());
  EXPECT_EQ(complaint("a.nc b.ngc -o a.png"), "one program at a time: \"b.ngc\" is one too many");
  const PathOptions path =
      parse("a.nc --position 40% --path-colours speed --no-rapids --tool 6,ball -o a.png")
          .pictures.front()
          .path;
  EXPECT_EQ(path.place->value, 0.4);
  EXPECT_EQ(path.colours, 1);
  EXPECT_FALSE(path.rapids);
  EXPECT_TRUE(path.isBall);
  EXPECT_EQ(picture("").path, PathOptions());
  EXPECT_EQ(picture("--path-colors progress").path.colours, 2);
}

TEST(CommandLine, framesGoFromTheBeginOfAPathToItsEnd) {
  const Request request = parse("part.nc --view xy+ -o a.png -o b.jpg --frames 3 --view xz-");
  ASSERT_EQ(request.pictures.size(), 6u);
  for (std::size_t i = 0; i < 6; ++i) {
    const PictureOptions& frame = request.pictures[i];
    const std::string number = std::to_string(i % 3 + 1);
    EXPECT_EQ(frame.file, i < 3 ? "a-00" + number + ".png" : "b-00" + number + ".jpg");
    EXPECT_EQ(frame.path.place->value, 0.5 * static_cast<double>(i % 3));
    EXPECT_EQ(frame.view, parseView(i < 3 ? "xy+" : "xz-"));
  }
  EXPECT_EQ(complaint("part.stl --frames 3 -o a.png"), "--frames: no program given");
  EXPECT_NE(complaint("part.nc --frames 1 -o a.png"), "");
  EXPECT_EQ(complaint("part.nc --frames 3 --position 40% -o a.png"),
            "--frames goes from the begin to the end: not with --position");
  EXPECT_EQ(complaint("part.stl --position 40% -o a.png"), "--position: no program given");
}

TEST(CommandLine, sizesOfProgramsAreMillimetres) {
  const auto unit = [](const std::string& line) {
    return parse(line).pictures.front().annotations.unit;
  };
  EXPECT_EQ(unit("part.nc -o a.png"), "mm");
  EXPECT_EQ(unit("part.stl part.nc -o a.png"), "mm");
  EXPECT_EQ(unit("part.nc --unit in -o a.png"), "in");
  EXPECT_EQ(unit("part.nc --unit= -o a.png"), "");
  EXPECT_EQ(unit("part.stl -o a.png"), std::nullopt);
  EXPECT_EQ(unit("part.stl --unit cm -o a.png"), "cm");
}

TEST(CommandLine, saysWhatIsWrong) {
  EXPECT_EQ(complaint(""), "no model given");
  EXPECT_EQ(complaint("-o a.png"), "no model given");
  EXPECT_EQ(complaint("m"), "no picture asked for: -o FILE");
  EXPECT_EQ(complaint("m n -o a.png"), "one model at a time: \"n\" is one too many");
  EXPECT_EQ(complaint("m --colour red"), "unknown option --colour, did you mean --color?");
  EXPECT_EQ(complaint("m --outptu=a.png"), "unknown option --outptu, did you mean --output?");
  EXPECT_EQ(complaint("m --dimension"), "unknown option --dimension, did you mean --dimensions?");
  EXPECT_EQ(complaint("m --smoothness 30"), "unknown option --smoothness");
  EXPECT_EQ(complaint("m -x"), "unknown option -x");
  EXPECT_EQ(complaint("m -o"), "-o needs a value");
  EXPECT_EQ(complaint("m --smooth"), "--smooth needs a value");
  EXPECT_EQ(complaint("m --outline=yes -o a.png"), "--outline takes no value");
  EXPECT_EQ(complaint("m --progress=1 -o a.png"), "--progress takes no value");
  EXPECT_EQ(complaint("m --size 800"), "--size: \"800\" is not WIDTHxHEIGHT");
  EXPECT_EQ(complaint("m --size 800x0"), "--size: \"0\" is not a whole number from 1 to 65535");
  EXPECT_EQ(complaint("m --size 8e2x600"), "--size: \"8e2\" is not a whole number from 1 to 65535");
  EXPECT_EQ(complaint("m --transparent 2"), "--transparent: \"2\" is not a number from 0 to 1");
  EXPECT_EQ(complaint("m --surplus nan"), "--surplus: \"nan\" is not a number from 0 to 100");
  EXPECT_EQ(complaint("m --quality 101"), "--quality: \"101\" is not a whole number from 0 to 100");
  EXPECT_EQ(complaint("m --light1 30"), "--light1: \"30\" is not AZIMUTH,ELEVATION");
  EXPECT_EQ(complaint("m --light1 0,91"), "--light1: \"91\" is not a number from -90 to 90");
  EXPECT_EQ(complaint("m --material wood"),
            "--material: \"wood\" is not matte, plastic, metal or "
            "AMBIENT,DIFFUSE,SPECULAR,SHININESS");
  EXPECT_EQ(complaint("m --view up"),
            "--view: \"up\" is not a view: xy+ xy- xz+ xz- yz+ yz- turning iso iso-y");
}

TEST(CommandLine, helpNamesEveryOptionAndFitsATerminal) {
  const std::string help = helpText();
  for (const char* option :
       {"--view",     "--size",    "--background", "--gradient", "--color",   "--transparent",
        "--material", "--outline", "--light1",     "--light2",   "--ambient", "--dimensions",
        "--title",    "--unit",    "--logo",       "--surplus",  "--dpi",     "--quality",
        "--output",   "--smooth",  "--progress",   "--help",     "--version", ".spf"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LT(line.size(), 80u) << line;
  }
}

}  // namespace
}  // namespace zyn::shot
