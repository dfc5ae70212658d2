#include "zynshot/CommandLine.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <utility>

#include "common/FileKind.h"
#include "zynshot/OptionValue.h"
#include "zynshot/Suggestion.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

using Apply = void (*)(PictureOptions& picture, std::string_view value);

/// An option of one picture; `value` is empty for a switch.
struct PictureOption {
  std::string_view name;
  std::string_view value;
  std::string_view help;
  Apply apply;
};

/// Largest side that all four formats can state.
constexpr int kMostPixels = 65535;

constexpr int kMostFrames = 100'000;

std::filesystem::path pathOf(std::string_view utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

std::string utf8Of(const std::filesystem::path& file) {
  const std::u8string text = file.u8string();
  return {text.begin(), text.end()};
}

void setSize(PictureOptions& picture, std::string_view value) {
  const std::vector<std::string_view> sides = split(value, 'x');
  if (sides.size() != 2) {
    throw UsageError('"' + std::string(value) + "\" is not WIDTHxHEIGHT");
  }
  picture.surface.width = parseInteger(sides[0], 1, kMostPixels);
  picture.surface.height = parseInteger(sides[1], 1, kMostPixels);
}

void setColour(PictureOptions& picture, std::string_view value) {
  const auto [colour, alpha] = parseColourAndAlpha(value);
  picture.appearance.colour = colour;
  picture.appearance.alpha = alpha.value_or(picture.appearance.alpha);
}

int parseStyle(std::string_view value) {
  constexpr std::string_view kStyles[] = {"shaded", "edges", "shaded-edges", "hidden-line",
                                          "points"};
  const auto* const found = std::find(std::begin(kStyles), std::end(kStyles), value);
  if (found == std::end(kStyles)) {
    throw UsageError('"' + std::string(value) +
                     "\" is not a style: shaded edges shaded-edges hidden-line points");
  }
  return static_cast<int>(found - std::begin(kStyles));
}

/// "COLOUR" or "COLOUR,WIDTH".
void setEdges(PictureOptions& picture, std::string_view value) {
  const std::vector<std::string_view> parts = split(value);
  const bool hasWidth = parts.size() == 2 || parts.size() == 4;
  if (hasWidth) {
    picture.strokes.width = parseNumber(parts.back(), 0.1, 100);
    value.remove_suffix(parts.back().size() + 1);
  }
  picture.strokes.colour = parseColour(value);
}

const std::array<PictureOption, 26> kPictureOptions = {{
    {"--view", "VIEW",
     "xy+ xy- xz+ xz- yz+ yz- (the plane shown and the\n"
     "side of the eye), turning (from +y, +x up), iso\n"
     "(default; +z up), iso-y (+y up)",
     [](PictureOptions& p, std::string_view v) { p.view = parseView(v); }},
    {"--size", "WIDTHxHEIGHT", "pixels (default 1200x900)", setSize},
    {"--background", "COLOUR", "default white",
     [](PictureOptions& p, std::string_view v) { p.surface.background = parseColour(v); }},
    {"--gradient", "COLOUR", "fade the background to this colour upwards",
     [](PictureOptions& p, std::string_view v) { p.gradient = parseColour(v); }},
    {"--color", "COLOUR[,ALPHA]",
     "of the model, in place of the colours that the file\n"
     "has; ALPHA as for --transparent",
     setColour},
    {"--transparent", "ALPHA", "how opaque the model is: 0 (invisible) to 1",
     [](PictureOptions& p, std::string_view v) { p.appearance.alpha = parseNumber(v, 0, 1); }},
    {"--material", "MATERIAL",
     "matte, plastic, metal, or factors from 0 to 1:\n"
     "AMBIENT,DIFFUSE,SPECULAR,SHININESS[,EMISSIVE]",
     [](PictureOptions& p, std::string_view v) { p.appearance.material = parseMaterial(v); }},
    {"--outline", "", "draw the edges of the triangles only",
     [](PictureOptions& p, std::string_view) { p.outline = true; }},
    {"--style", "STYLE",
     "shaded (default) edges shaded-edges hidden-line\n"
     "points",
     [](PictureOptions& p, std::string_view v) { p.strokes.style = parseStyle(v); }},
    {"--edges", "COLOUR[,WIDTH]",
     "of edges (default black,1 pixel); points have the\n"
     "colours of the model, and the WIDTH for their size",
     setEdges},
    {"--perspective", "DEGREES", "see so much from bottom to top, 1 to 170",
     [](PictureOptions& p, std::string_view v) { p.perspective = parseNumber(v, 1, 170); }},
    {"--camera", "TEXT",
     "look with this camera, a line of text that the viewer\n"
     "saves; --view, --surplus, --perspective do not count",
     [](PictureOptions& p, std::string_view v) { p.camera = v; }},
    {"--light1", "AZ,EL[,COLOUR]",
     "where the main light comes from, in degrees from the\n"
     "viewer: AZ to the right, EL upwards; or off (default\n"
     "-30,30)",
     [](PictureOptions& p, std::string_view v) { parseLight(v, p.light1); }},
    {"--light2", "AZ,EL[,COLOUR]", "a second, weaker light (default 60,0,#8f8f8f)",
     [](PictureOptions& p, std::string_view v) { parseLight(v, p.light2); }},
    {"--ambient", "LEVEL[,COLOUR]", "light from everywhere, 0 to 1 (default 0.4)",
     [](PictureOptions& p, std::string_view v) { p.ambient = parseAmbient(v); }},
    {"--dimensions", "", "draw the box of the model and its sizes",
     [](PictureOptions& p, std::string_view) { p.annotations.dimensions = true; }},
    {"--unit", "TEXT",
     "write this behind the sizes (default: mm where there\n"
     "is a program)",
     [](PictureOptions& p, std::string_view v) { p.annotations.unit = v; }},
    {"--title", "TEXT", "write this in the upper left corner",
     [](PictureOptions& p, std::string_view v) { p.annotations.title = v; }},
    {"--logo", "FILE",
     "show this picture (BMP, GIF, JPEG, icon or metafile)\n"
     "in the lower right corner, in its own size",
     [](PictureOptions& p, std::string_view v) { p.annotations.logo = pathOf(v); }},
    {"--position", "PLACE",
     "of the tool on the path of the program: 40% (of the\n"
     "time), 12.5s, 300mm or line:65",
     [](PictureOptions& p, std::string_view v) { p.path.place = parsePathPlace(v); }},
    {"--path-colours", "BY",
     "type, speed (with a colour bar), or progress (where\n"
     "there is a --position; default: by type)",
     [](PictureOptions& p, std::string_view v) { p.path.colours = parsePathColours(v); }},
    {"--no-rapids", "", "leave out rapid moves",
     [](PictureOptions& p, std::string_view) { p.path.rapids = false; }},
    {"--tool", "DIAMETER[,ball|flat]", "of the tool, in mm (default: a usual one, flat)",
     [](PictureOptions& p, std::string_view v) { parseTool(v, p.path); }},
    {"--surplus", "FRACTION", "margin around the model (default 0.1)",
     [](PictureOptions& p, std::string_view v) { p.surplus = parseNumber(v, 0, 100); }},
    {"--dpi", "NUMBER",
     "resolution of a print: lines and texts keep their\n"
     "size on paper (default: as on the screen)",
     [](PictureOptions& p, std::string_view v) { p.dpi = parseNumber(v, 1, 10000); }},
    {"--quality", "0..100", "of JPEG pictures (default 90)",
     [](PictureOptions& p, std::string_view v) { p.quality = parseInteger(v, 0, 100); }},
}};

const PictureOption* findPictureOption(std::string_view name) {
  const auto* const found = std::find_if(kPictureOptions.begin(), kPictureOptions.end(),
                                         [name](const PictureOption& o) { return o.name == name; });
  return found == kPictureOptions.end() ? nullptr : found;
}

std::vector<std::string_view> optionNames() {
  std::vector<std::string_view> names = {"--output",   "--frames", "--smooth",
                                         "--progress", "--help",   "--version"};
  for (const PictureOption& option : kPictureOptions) {
    names.push_back(option.name);
  }
  return names;
}

void demandPictureName(const std::string& file) {
  constexpr std::string_view kExtensions[] = {"png", "jpg", "jpeg", "gif", "bmp", "tif", "tiff"};
  const std::size_t dot = file.find_last_of("./\\");
  std::string extension = dot == file.npos || file[dot] != '.' ? "" : file.substr(dot + 1);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (std::find(std::begin(kExtensions), std::end(kExtensions), extension) ==
      std::end(kExtensions)) {
    throw UsageError("-o " + file +
                     ": the name must end in .png, .jpg, .jpeg, .gif, .bmp, .tif or .tiff");
  }
}

class Parser {
 public:
  explicit Parser(std::span<const std::string> arguments) : rest_(arguments) {}

  Request parse() {
    while (!rest_.empty() && request_.action == Action::kRender) {
      const std::string argument = take();
      if (argument.size() > 1 && argument.starts_with('-')) {
        option(argument);
      } else {
        model(argument);
      }
    }
    if (request_.action == Action::kRender) {
      demandEnough();
    }
    if (!request_.program.empty()) {
      stateMillimetres();
    }
    if (frames_ > 0) {
      makeFrames();
    }
    return std::move(request_);
  }

 private:
  std::string take() {
    std::string first = rest_.front();
    rest_ = rest_.subspan(1);
    return first;
  }

  void model(const std::string& file) {
    const bool isProgram = host::kindOf(file) == host::FileKind::kProgram;
    std::filesystem::path& target = isProgram ? request_.program : request_.model;
    if (!target.empty()) {
      throw UsageError(std::string(isProgram ? "one program" : "one model") + " at a time: \"" +
                       file + "\" is one too many");
    }
    target = pathOf(file);
  }

  void option(const std::string& argument) {
    const std::size_t equals = argument.starts_with("--") ? argument.find('=') : argument.npos;
    const std::string name = argument.substr(0, equals);
    if (equals != argument.npos) {
      attached_ = argument.substr(equals + 1);
    }
    if (!commonOption(name) && !pictureOption(name)) {
      throw UsageError("unknown option " + name + suggestionFor(name, optionNames()));
    }
    if (attached_) {
      throw UsageError(name + " takes no value");
    }
  }

  /// The value of the option just read: behind its "=", or the next argument.
  std::string value(const std::string& name) {
    if (attached_) {
      return *std::exchange(attached_, std::nullopt);
    }
    if (rest_.empty()) {
      throw UsageError(name + " needs a value");
    }
    return take();
  }

  bool commonOption(const std::string& name) {
    if (name == "-o" || name == "--output") {
      const std::string file = value(name);
      PictureOptions picture = forAll_;
      demandPictureName(file);
      picture.file = pathOf(file);
      request_.pictures.push_back(std::move(picture));
    } else if (name == "--frames") {
      const std::string count = value(name);
      frames_ = named(name, [&] { return parseInteger(count, 2, kMostFrames); });
    } else if (name == "--smooth") {
      const std::string angle = value(name);
      request_.smoothAngle = named(name, [&] { return parseNumber(angle, 0, 180); });
    } else if (name == "--progress") {
      request_.progress = true;
    } else if (name == "--help" || name == "-h") {
      request_.action = Action::kHelp;
    } else if (name == "--version") {
      request_.action = Action::kVersion;
    } else {
      return false;
    }
    return true;
  }

  bool pictureOption(const std::string& name) {
    const PictureOption* const found =
        findPictureOption(name == "--path-colors" ? "--path-colours" : name);
    if (found == nullptr) {
      return false;
    }
    const std::string text = found->value.empty() ? std::string() : value(name);
    PictureOptions& target = request_.pictures.empty() ? forAll_ : request_.pictures.back();
    named(name, [&] { found->apply(target, text); });
    return true;
  }

  /// Runs `body` and puts the option's name before its complaint.
  template <typename Body>
  auto named(const std::string& name, Body body) -> decltype(body()) {
    try {
      return body();
    } catch (const UsageError& error) {
      throw UsageError(name + ": " + error.what());
    }
  }

  void demandEnough() const {
    if (request_.model.empty() && request_.program.empty()) {
      throw UsageError("no model given");
    }
    if (request_.pictures.empty()) {
      throw UsageError("no picture asked for: -o FILE");
    }
    if (frames_ > 0 && request_.program.empty()) {
      throw UsageError("--frames: no program given");
    }
    for (const PictureOptions& picture : request_.pictures) {
      if (picture.path.place && request_.program.empty()) {
        throw UsageError("--position: no program given");
      }
      if (picture.path.place && frames_ > 0) {
        throw UsageError("--frames goes from the begin to the end: not with --position");
      }
    }
  }

  /// The unit of programs, where there is no other one.
  void stateMillimetres() {
    for (PictureOptions& picture : request_.pictures) {
      picture.annotations.unit = picture.annotations.unit.value_or("mm");
    }
  }

  /// In the place of each picture those of its frames, from the begin of the path to its end.
  void makeFrames() {
    std::vector<PictureOptions> frames;
    for (const PictureOptions& picture : request_.pictures) {
      const std::string file = utf8Of(picture.file);
      for (int number = 1; number <= frames_; ++number) {
        PictureOptions frame = picture;
        frame.file = pathOf(frameName(file, number, frames_));
        frame.path.isFrame = true;
        frame.path.place = {PathPlace::Unit::kShare, (number - 1.0) / (frames_ - 1)};
        frames.push_back(std::move(frame));
      }
    }
    request_.pictures = std::move(frames);
  }

  std::span<const std::string> rest_;
  std::optional<std::string> attached_;
  PictureOptions forAll_;
  int frames_ = 0;  ///< of each picture; 0: it is one
  Request request_;
};

void describe(std::string& text, const std::string& option, std::string_view help) {
  constexpr std::size_t kColumn = 26;
  std::string left = "  " + option;
  for (const std::string_view line : split(help, '\n')) {
    left.resize(std::max(kColumn, left.size() + 1), ' ');
    text += left + std::string(line) + '\n';
    left.clear();
  }
}

/// Words in lines that fit a terminal.
std::string paragraph(std::string words) {
  constexpr std::size_t kWidth = 76;
  std::string text;
  while (words.size() > kWidth) {
    const std::size_t space = words.rfind(' ', kWidth);
    text += "  " + words.substr(0, space) + '\n';
    words.erase(0, space + 1);
  }
  return text + "  " + words + '\n';
}

}  // namespace

Request parseCommandLine(std::span<const std::string> arguments) {
  return Parser(arguments).parse();
}

std::string helpText() {
  std::string text =
      "zynshot: pictures of a 3D model (STL, OBJ, PLY, OFF or 3MF), of the path of a\n"
      "program for a mill or a printer (G-code), or of both\n"
      "\n"
      "usage: zynshot MODEL [PROGRAM] [OPTIONS] -o PICTURE [OPTIONS] [-o PICTURE\n"
      "       [OPTIONS]]...\n"
      "\n"
      "The model is loaded once, whatever the number of pictures. Options before the\n"
      "first -o hold for all pictures, those behind an -o for that picture only.\n"
      "\n"
      "of a picture:\n";
  for (const PictureOption& option : kPictureOptions) {
    describe(text, std::string(option.name) + ' ' + std::string(option.value), option.help);
  }
  text += "\nof the whole run:\n";
  describe(text, "-o, --output FILE", "picture to write: .png .jpg .jpeg .gif .bmp .tif");
  describe(text, "--frames NUMBER",
           "so many pictures of each, numbered, while the tool\n"
           "moves from the begin of the path to its end");
  describe(text, "--smooth DEGREES", "round off edges that bend less than this");
  describe(text, "--progress", "show progress even when stderr is no terminal");
  describe(text, "--help, --version", "show this text, or the version, and stop");
  text += "\nPROGRAM: its name ends in one of\n" + paragraph(host::programEndings());
  text += "\nCOLOUR: #rgb, #rrggbb, r,g,b (all up to 1, or else up to 255), or one of\n" +
          paragraph(colourNames()) +
          "\n"
          "examples:\n"
          "  zynshot part.stl -o part.png\n"
          "  zynshot part.stl --gradient skyblue -o a.png --view xy+ -o b.jpg --view xz-\n"
          "  zynshot part.obj --size 3508x2480 --dpi 300 --smooth 30 -o print.png\n"
          "  zynshot part.stl part.nc --position 40% -o milling.png\n"
          "\n"
          "exit code: 0 all pictures written, 1 something failed, 2 wrong usage\n";
  return text;
}

}  // namespace zyn::shot
