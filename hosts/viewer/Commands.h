#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zyn::viewer {

/// Everything that a person can ask for by menu, key or script; the values are menu identifiers.
enum class Command : std::uint16_t {
  kOpen = 100,
  kReload,
  kExportPng,
  kExportJpeg,
  kExportGif,
  kExportBmp,
  kExportTiff,
  kExportSvg,
  kExportPdf,
  kExportEmf,
  kCopy,
  kPrint,
  kSaveCamera,
  kRestoreCamera,
  kCloseProgram,
  kExit,
  kViewXYp,
  kViewXYm,
  kViewXZp,
  kViewXZm,
  kViewYZp,
  kViewYZm,
  kViewTurning,
  kViewIsometric,
  kZoomAll,
  kUndoView,
  kRedoView,
  kPerspective,
  kZoomIn,
  kZoomOut,
  kTurnLeft,
  kTurnRight,
  kTurnUp,
  kTurnDown,
  kRollLeft,
  kRollRight,
  kStyleShaded,
  kStyleEdges,
  kStyleShadedEdges,
  kStyleHiddenLine,
  kStylePoints,
  kHideSelection,
  kShowAll,
  kModeRotate,
  kModePan,
  kModeZoom,
  kModeSelect,
  kModeWindow,
  kModeZoomWindow,
  kRotateFreely,
  kRotateTurntable,
  kRotateTrackball,
  kRotateAboutPoint,
  kSelectThrough,
  kClearSelection,
  kInverseWheel,
  kGradient,
  kTrihedron,
  kOutline,
  kLineAntialiasing,
  kPointAntialiasing,
  kMultisampling,
  kLights,
  kAmbientDialog,
  kLightStudio,
  kLightHead,
  kLightSide,
  kLightTwoSides,
  kLightAmbient,
  kDrawLights,
  kPathFirst,
  kPathBack,
  kPathPlay,
  kPathForward,
  kPathLast,
  kPathFaster,
  kPathSlower,
  kColourByType,
  kColourBySpeed,
  kColourByProgress,
  kRapids,
  kTool,
  kBallNose,
  kToolLarger,
  kToolSmaller,
  kModeNearest,
  kModeRectangle,
  kLogX,
  kLogY,
  kGrid,
  kLegend,
  kCursors,
  kCrosshair,
  kDark,
  kNextTrace,
  kPreviousTrace,
  kHelp,
  kAbout,
  kRecent,  ///< the file that was opened last; those behind it, the ones before
};

/// What the window shows: each has commands of its own.
enum class PaneKind : std::uint8_t { kModel = 1, kGraph = 2 };

/// A key with its modifiers; `code` as Windows numbers virtual keys, 0 for no key.
struct Key {
  int code = 0;
  bool control = false;
  bool shift = false;

  bool operator==(const Key&) const = default;
};

/// Virtual keys other than digits and capital letters, which are their own codes.
enum KeyCode : int {
  kKeyBackspace = 0x08,
  kKeyEscape = 0x1B,
  kKeySpace = 0x20,
  kKeyEnd = 0x23,
  kKeyHome = 0x24,
  kKeyLeft = 0x25,
  kKeyUp = 0x26,
  kKeyRight = 0x27,
  kKeyDown = 0x28,
  kKeyPadPlus = 0x6B,
  kKeyPadMinus = 0x6D,
  kKeyF1 = 0x70,
  kKeyF5 = 0x74,
  kKeyPlus = 0xBB,
  kKeyMinus = 0xBD,
};

struct CommandEntry {
  Command command;
  std::string_view name;   ///< in scripts
  std::uint8_t panes;      ///< sum of the PaneKinds that it is for
  std::string_view menu;   ///< "&File|&Export": menu and submenu, with the letters that open them
  std::string_view label;  ///< with the letter that chooses it
  Key key = {};
  bool behindLine = false;  ///< a line separates it from the entry before

  bool isFor(PaneKind pane) const { return (panes & static_cast<std::uint8_t>(pane)) != 0; }
};

/// All commands in the order of the menus.
std::span<const CommandEntry> commandTable();

/// The command of a script's word.
std::optional<Command> commandNamed(std::string_view name);

/// "Ctrl+Shift+O", as menus show it; empty for no key.
std::string keyText(const Key& key);

/// A key and those that mean the same: on many keyboards + is typed with Shift, and the number pad
/// has + and - of its own.
std::vector<Key> keysAs(const Key& key);

/// What the mouse or a key does.
struct HelpRow {
  std::string key;
  std::string what;

  bool operator==(const HelpRow&) const = default;
};

/// A row for each command of the pane that has a key; commands of submenus say of which: "Style:
/// Points".
std::vector<HelpRow> keyHelp(PaneKind pane);

}  // namespace zyn::viewer
