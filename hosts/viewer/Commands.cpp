#include "viewer/Commands.h"

#include <algorithm>

namespace zyn::viewer {

namespace {

constexpr std::string_view kFile = "&File";
constexpr std::string_view kExport = "&File|&Export";
constexpr std::string_view kView = "&View";
constexpr std::string_view kMouse = "&Mouse";
constexpr std::string_view kLook = "&Look";
constexpr std::string_view kPresets = "&Look|Light pr&esets";
constexpr std::string_view kHelpMenu = "&Help";

constexpr Key control(int code) { return {.code = code, .control = true}; }
constexpr Key shift(int code) { return {.code = code, .shift = true}; }

using enum Command;

constexpr CommandEntry kTable[] = {
    {kOpen, "open", kFile, "&Open...", control('O')},
    {kReload, "reload", kFile, "&Reload", {kKeyF5}},
    {kExportPng, "export-png", kExport, "&PNG...", control('E')},
    {kExportJpeg, "export-jpg", kExport, "&JPEG..."},
    {kExportGif, "export-gif", kExport, "&GIF..."},
    {kExportBmp, "export-bmp", kExport, "&BMP..."},
    {kExit, "exit", kFile, "E&xit", control('Q'), true},

    {kViewXYp, "xy+", kView, "XY from +&Z (top)", {'1'}},
    {kViewXYm, "xy-", kView, "XY from -Z (bottom)", {'2'}},
    {kViewXZp, "xz+", kView, "XZ from +&Y (back)", {'3'}},
    {kViewXZm, "xz-", kView, "XZ from -Y (front)", {'4'}},
    {kViewYZp, "yz+", kView, "YZ from +&X (right)", {'5'}},
    {kViewYZm, "yz-", kView, "YZ from -X (left)", {'6'}},
    {kViewTurning, "turning", kView, "&Turning", {'7'}},
    {kViewDefault, "default", kView, "&Default", {kKeyHome}},
    {kZoomAll, "zoom-all", kView, "Zoom &all", {'F'}, true},
    {kUndoView, "undo", kView, "&Undo view", {kKeyBackspace}},
    {kZoomIn, "zoom-in", kView, "Zoom &in", {kKeyPlus}, true},
    {kZoomOut, "zoom-out", kView, "Zoom &out", {kKeyMinus}},
    {kTurnLeft, "turn-left", kView, "Turn &left", {kKeyLeft}, true},
    {kTurnRight, "turn-right", kView, "Turn &right", {kKeyRight}},
    {kTurnUp, "turn-up", kView, "Turn u&p", {kKeyUp}},
    {kTurnDown, "turn-down", kView, "Turn do&wn", {kKeyDown}},
    {kRollLeft, "roll-left", kView, "Roll left", shift(kKeyLeft)},
    {kRollRight, "roll-right", kView, "Roll right", shift(kKeyRight)},

    {kModeRotate, "rotate", kMouse, "&Rotate", {'R'}},
    {kModePan, "pan", kMouse, "&Pan", {'P'}},
    {kModeZoom, "zoom", kMouse, "&Zoom", {'Z'}},
    {kModeSelect, "select", kMouse, "&Select", {'S'}},
    {kModeWindow, "window", kMouse, "Select by &window once", {'W'}},
    {kSelectThrough, "select-through", kMouse, "Select what lies behind, &too", {}, true},
    {kClearSelection, "clear-selection", kMouse, "&Clear selection", {kKeyEscape}},
    {kInverseWheel, "inverse-wheel", kMouse, "&Inverse wheel", {}, true},

    {kGradient, "gradient", kLook, "&Gradient background", {'G'}},
    {kTrihedron, "trihedron", kLook, "&Trihedron", {'T'}},
    {kOutline, "outline", kLook, "&Outline", {'O'}},
    {kLineAntialiasing, "smooth-lines", kLook, "Smooth &lines", {}, true},
    {kPointAntialiasing, "smooth-points", kLook, "Smooth &points"},
    {kMultisampling, "multisampling", kLook, "&Multisampling", {'M'}},
    {kLights, "lights", kLook, "L&ights...", {'L'}, true},
    {kLightStudio, "light-studio", kPresets, "&Studio"},
    {kLightHead, "light-head", kPresets, "&Head light"},
    {kLightSide, "light-side", kPresets, "S&ide"},
    {kLightTwoSides, "light-two-sides", kPresets, "&Two sides"},
    {kLightAmbient, "light-ambient", kPresets, "&Ambient only"},
    {kDrawLights, "draw-lights", kLook, "&Draw lights", {'D'}},
    {kAmbientDialog, "ambient-dialog", kLook, "&Ambient light dialog of the view..."},

    {kHelp, "help", kHelpMenu, "&Mouse and keys", {kKeyF1}},
};

std::string codeText(int code) {
  switch (code) {
    case kKeyBackspace:
      return "Backspace";
    case kKeyEscape:
      return "Esc";
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
    case kKeyPlus:
      return "+";
    case kKeyMinus:
      return "-";
    default:
      return std::string(1, static_cast<char>(code));
  }
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

std::string keyHelp() {
  std::string text;
  for (const CommandEntry& entry : kTable) {
    if (entry.key.code != 0) {
      std::string label(entry.label);
      std::erase(label, '&');
      text += keyText(entry.key) + '\t' + label + '\n';
    }
  }
  return text;
}

}  // namespace zyn::viewer
