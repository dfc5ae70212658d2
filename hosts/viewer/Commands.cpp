#include "viewer/Commands.h"

#include <algorithm>

namespace zyn::viewer {

namespace {

constexpr std::string_view kFile = "&File";
constexpr std::string_view kExport = "&File|&Export";
constexpr std::string_view kRecentFiles = "&File|Rece&nt files";
constexpr std::string_view kView = "&View";
constexpr std::string_view kStyle = "&View|St&yle";
constexpr std::string_view kMouse = "&Mouse";
constexpr std::string_view kRotation = "&Mouse|R&otation";
constexpr std::string_view kPath = "&Path";
constexpr std::string_view kColours = "&Path|&Colours";
constexpr std::string_view kLook = "&Look";
constexpr std::string_view kPresets = "&Look|Light pr&esets";
constexpr std::string_view kHelpMenu = "&Help";

constexpr Key control(int code) { return {.code = code, .control = true}; }
constexpr Key controlShift(int code) { return {.code = code, .control = true, .shift = true}; }
constexpr Key shift(int code) { return {.code = code, .shift = true}; }

using enum Command;

constexpr std::uint8_t kModel = static_cast<std::uint8_t>(PaneKind::kModel);
constexpr std::uint8_t kGraph = static_cast<std::uint8_t>(PaneKind::kGraph);
constexpr std::uint8_t kAny = kModel | kGraph;

constexpr CommandEntry kTable[] = {
    {kOpen, "open", kAny, kFile, "&Open...", control('O')},
    {kRecent, "recent", kAny, kRecentFiles, "None"},
    {kReload, "reload", kAny, kFile, "&Reload", {kKeyF5}},
    {kCloseProgram, "close-program", kModel, kFile, "C&lose program", control('W')},
    {kExportPng, "export-png", kAny, kExport, "&PNG...", control('E')},
    {kExportJpeg, "export-jpg", kAny, kExport, "&JPEG..."},
    {kExportGif, "export-gif", kAny, kExport, "&GIF..."},
    {kExportBmp, "export-bmp", kAny, kExport, "&BMP..."},
    {kExportTiff, "export-tif", kAny, kExport, "&TIFF..."},
    {kExportSvg, "export-svg", kGraph, kExport, "&SVG...", controlShift('E'), true},
    {kExportPdf, "export-pdf", kGraph, kExport, "P&DF..."},
    {kExportEmf, "export-emf", kGraph, kExport, "&EMF..."},
    {kCopy, "copy", kAny, kFile, "&Copy picture", control('C')},
    {kPrint, "print", kAny, kFile, "&Print preview...", control('P')},
    {kSaveCamera, "save-camera", kModel, kFile, "&Save camera...", control('S'), true},
    {kRestoreCamera, "restore-camera", kModel, kFile, "Restore ca&mera...", control('R')},
    {kExit, "exit", kAny, kFile, "E&xit", control('Q'), true},

    {kViewXYp, "xy+", kModel, kView, "XY from +&Z (top)", {'1'}},
    {kViewXYm, "xy-", kModel, kView, "XY from -Z (bottom)", {'2'}},
    {kViewXZp, "xz+", kModel, kView, "XZ from +&Y (back)", {'3'}},
    {kViewXZm, "xz-", kModel, kView, "XZ from -Y (front)", {'4'}},
    {kViewYZp, "yz+", kModel, kView, "YZ from +&X (right)", {'5'}},
    {kViewYZm, "yz-", kModel, kView, "YZ from -X (left)", {'6'}},
    {kViewTurning, "turning", kModel, kView, "&Turning", {'7'}},
    {kViewIsometric, "isometric", kModel, kView, "Iso&metric", {kKeyHome}},
    {kZoomAll, "zoom-all", kAny, kView, "Zoom &all", {'F'}, true},
    {kUndoView, "undo", kAny, kView, "&Undo view", {kKeyBackspace}},
    {kRedoView, "redo", kModel, kView, "Redo view", shift(kKeyBackspace)},
    {kPerspective, "perspective", kModel, kView, "Perspecti&ve", {'V'}, true},
    {kZoomIn, "zoom-in", kAny, kView, "Zoom &in", {kKeyPlus}, true},
    {kZoomOut, "zoom-out", kAny, kView, "Zoom &out", {kKeyMinus}},
    {kTurnLeft, "turn-left", kModel, kView, "Turn &left", {kKeyLeft}, true},
    {kTurnRight, "turn-right", kModel, kView, "Turn &right", {kKeyRight}},
    {kTurnUp, "turn-up", kModel, kView, "Turn u&p", {kKeyUp}},
    {kTurnDown, "turn-down", kModel, kView, "Turn do&wn", {kKeyDown}},
    {kRollLeft, "roll-left", kModel, kView, "Roll left", shift(kKeyLeft)},
    {kRollRight, "roll-right", kModel, kView, "Roll right", shift(kKeyRight)},

    {kStyleShaded, "style-shaded", kModel, kStyle, "&Shaded", control('1')},
    {kStyleEdges, "style-edges", kModel, kStyle, "All &edges", control('2')},
    {kStyleShadedEdges, "style-shaded-edges", kModel, kStyle, "Shaded &with edges", control('3')},
    {kStyleHiddenLine, "style-hidden-line", kModel, kStyle, "&Hidden line", control('4')},
    {kStylePoints, "style-points", kModel, kStyle, "&Points", control('5')},
    {kHideSelection, "hide", kModel, kView, "&Hide selection", {'H'}, true},
    {kShowAll, "show-all", kModel, kView, "&Show all parts", shift('H')},

    {kModeRotate, "rotate", kModel, kMouse, "&Rotate", {'R'}},
    {kModeNearest, "nearest", kGraph, kMouse, "&Nearest point", {'N'}},
    {kModePan, "pan", kAny, kMouse, "&Pan", {'P'}},
    {kModeZoom, "zoom", kModel, kMouse, "&Zoom", {'Z'}},
    {kModeRectangle, "rectangle", kGraph, kMouse, "&Zoom to rectangle once", {'Z'}},
    {kModeSelect, "select", kModel, kMouse, "&Select", {'S'}},
    {kModeWindow, "window", kModel, kMouse, "Select by &window once", {'W'}},
    {kModeZoomWindow, "zoom-window", kModel, kMouse, "Zoom to r&ectangle once", {'X'}},
    {kRotateFreely, "rotate-freely", kModel, kRotation, "As the &screen lies"},
    {kRotateTurntable, "rotate-turntable", kModel, kRotation, "As on a &turntable"},
    {kRotateTrackball, "rotate-trackball", kModel, kRotation, "As a &ball"},
    {kRotateAboutPoint,
     "rotate-about-point",
     kModel,
     kRotation,
     "About the &point under the mouse",
     {},
     true},
    {kSelectThrough, "select-through", kModel, kMouse, "Select what lies behind, &too", {}, true},
    {kClearSelection, "clear-selection", kAny, kMouse, "&Clear selection", {kKeyEscape}},
    {kInverseWheel, "inverse-wheel", kAny, kMouse, "&Inverse wheel", {}, true},

    {kPathPlay, "play", kModel, kPath, "&Play", {kKeySpace}},
    {kPathFaster, "faster", kModel, kPath, "Play fa&ster", control(kKeyUp)},
    {kPathSlower, "slower", kModel, kPath, "Play slo&wer", control(kKeyDown)},
    {kPathFirst, "path-begin", kModel, kPath, "To the &begin", control(kKeyHome), true},
    {kPathBack, "line-back", kModel, kPath, "To the line b&efore", control(kKeyLeft)},
    {kPathForward, "line-forward", kModel, kPath, "To the &next line", control(kKeyRight)},
    {kPathLast, "path-end", kModel, kPath, "To the en&d", control(kKeyEnd)},
    {kColourByType, "colour-type", kModel, kColours, "By &type", {'8'}},
    {kColourBySpeed, "colour-speed", kModel, kColours, "By &speed", {'9'}},
    {kColourByProgress, "colour-progress", kModel, kColours, "&Done and to do", {'0'}},
    {kRapids, "rapids", kModel, kPath, "&Rapids", {'A'}},
    {kTool, "tool", kModel, kPath, "&Tool", {'B'}, true},
    {kBallNose, "ball-nose", kModel, kPath, "Tool with a ball n&ose", shift('B')},
    {kToolLarger, "tool-larger", kModel, kPath, "&Larger tool", control(kKeyPlus)},
    {kToolSmaller, "tool-smaller", kModel, kPath, "S&maller tool", control(kKeyMinus)},

    {kGradient, "gradient", kModel, kLook, "&Gradient background", {'G'}},
    {kTrihedron, "trihedron", kModel, kLook, "&Trihedron", {'T'}},
    {kOutline, "outline", kModel, kLook, "&Outline", {'O'}},
    {kLogX, "log-x", kGraph, kLook, "Logarithmic &x", {'X'}},
    {kLogY, "log-y", kGraph, kLook, "Logarithmic &y", {'Y'}},
    {kGrid, "grid", kGraph, kLook, "&Grid", {'G'}, true},
    {kLegend, "legend", kGraph, kLook, "L&egend", {'L'}},
    {kCursors, "cursors", kGraph, kLook, "Two c&ursors", {'U'}},
    {kCrosshair, "crosshair", kGraph, kLook, "&Crosshair", {'C'}},
    {kDark, "dark", kGraph, kLook, "&Dark", {'D'}},
    {kNextTrace, "next-trace", kGraph, kLook, "&Next trace", {'T'}, true},
    {kPreviousTrace, "previous-trace", kGraph, kLook, "Pre&vious trace", shift('T')},
    {kLineAntialiasing, "smooth-lines", kAny, kLook, "Smooth &lines", {}, true},
    {kPointAntialiasing, "smooth-points", kModel, kLook, "Smooth &points"},
    {kMultisampling, "multisampling", kAny, kLook, "&Multisampling", {'M'}},
    {kLights, "lights", kModel, kLook, "L&ights...", {'L'}, true},
    {kLightStudio, "light-studio", kModel, kPresets, "&Studio"},
    {kLightHead, "light-head", kModel, kPresets, "&Head light"},
    {kLightSide, "light-side", kModel, kPresets, "S&ide"},
    {kLightTwoSides, "light-two-sides", kModel, kPresets, "&Two sides"},
    {kLightAmbient, "light-ambient", kModel, kPresets, "&Ambient only"},
    {kDrawLights, "draw-lights", kModel, kLook, "&Draw lights", {'D'}},
    {kAmbientDialog, "ambient-dialog", kModel, kLook, "&Ambient light dialog of the view..."},

    {kHelp, "help", kAny, kHelpMenu, "&Mouse and keys", {kKeyF1}},
    {kAbout, "about", kAny, kHelpMenu, "&About...", {}, true},
};

std::string codeText(int code) {
  switch (code) {
    case kKeyBackspace:
      return "Backspace";
    case kKeyEscape:
      return "Esc";
    case kKeySpace:
      return "Space";
    case kKeyEnd:
      return "End";
    case kKeyHome:
      return "Home";
    case kKeyLeft:
      return "Left";
    case kKeyUp:
      return "Up";
    case kKeyRight:
      return "Right";
    case kKeyDown:
      return "Down";
    case kKeyF1:
      return "F1";
    case kKeyF5:
      return "F5";
    case kKeyPadPlus:
      return "number pad +";
    case kKeyPadMinus:
      return "number pad -";
    case kKeyPlus:
      return "+";
    case kKeyMinus:
      return "-";
    default:
      return std::string(1, static_cast<char>(code));
  }
}

/// A label as it is read: without the mark of its letter and the dots of a question to come.
std::string plain(std::string_view label) {
  std::string text(label);
  std::erase(text, '&');
  std::erase(text, '.');
  return text;
}

}  // namespace

std::span<const CommandEntry> commandTable() { return kTable; }

std::optional<Command> commandNamed(std::string_view name) {
  const auto* const entry = std::ranges::find(kTable, name, &CommandEntry::name);
  return entry == std::end(kTable) ? std::nullopt : std::optional(entry->command);
}

std::string keyText(const Key& key) {
  if (key.code == 0) {
    return {};
  }
  return (key.control ? "Ctrl+" : "") + std::string(key.shift ? "Shift+" : "") + codeText(key.code);
}

std::vector<Key> keysAs(const Key& key) {
  std::vector<Key> keys = {key};
  if (key.code == kKeyPlus || key.code == kKeyMinus) {
    keys.push_back(key);
    keys.back().code = key.code == kKeyPlus ? kKeyPadPlus : kKeyPadMinus;
  }
  if (key.code == kKeyPlus) {
    keys.push_back(key);
    keys.back().shift = true;
  }
  return keys;
}

std::vector<HelpRow> keyHelp(PaneKind pane) {
  std::vector<HelpRow> rows;
  for (const CommandEntry& entry : kTable) {
    if (entry.key.code != 0 && entry.isFor(pane)) {
      const std::size_t bar = entry.menu.find('|');
      rows.push_back({keyText(entry.key),
                      (bar == entry.menu.npos ? "" : plain(entry.menu.substr(bar + 1)) + ": ") +
                          plain(entry.label)});
    }
  }
  return rows;
}

}  // namespace zyn::viewer
