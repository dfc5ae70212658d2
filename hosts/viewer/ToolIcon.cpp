#include "viewer/ToolIcon.h"

#include <algorithm>
#include <string>

#include "viewer/Icon.h"

namespace zyn::viewer {

namespace {

using enum Command;

struct Drawing {
  Command command;
  std::string_view words;
};

constexpr std::string_view kCubeEdges =
    " line M 10 2 L 17 6 L 17 14 L 10 18 L 3 14 L 3 6 Z M 3 6 L 10 10 L 17 6 M 10 10 L 10 18";

constexpr std::string_view kRectangle =
    "line M 2 5 L 2 2 L 5 2 M 8 2 L 11 2 M 14 2 L 17 2 L 17 5 M 2 8 L 2 11 M 2 14 L 2 17 L 5 17 "
    "accent A 12 12 4 0 360 M 15 15 L 18.5 18.5";

constexpr Drawing kDrawings[] = {
    {kOpen,
     "middle M 2 16.5 L 2 4 L 8 4 L 10 6.5 L 18 6.5 L 18 16.5 Z line M 2 16.5 L 2 4 L 8 4 L 10 6.5 "
     "L 18 6.5 L 18 16.5 Z"},
    {kExportPng,
     "pale M 2 3.5 L 18 3.5 L 18 16.5 L 2 16.5 Z deep M 2.5 16 L 7.5 9 L 11.5 14 L 14 11.5 L 17.5 "
     "16 Z line M 2 3.5 L 18 3.5 L 18 16.5 L 2 16.5 Z accent A 13.5 7.2 1.3 0 360"},
    {kModeRotate, "accent A 10 10 7 -60 200 M 13.6 0.8 L 13.3 4.3 L 16.8 4.8 line A 10 10 2 0 360"},
    {kModePan,
     "line M 10 2 L 10 18 M 2 10 L 18 10 accent M 7.5 4.5 L 10 2 L 12.5 4.5 M 7.5 15.5 L 10 18 L "
     "12.5 15.5 M 4.5 7.5 L 2 10 L 4.5 12.5 M 15.5 7.5 L 18 10 L 15.5 12.5"},
    {kModeZoom,
     "line A 8.5 8.5 5.8 0 360 M 12.8 12.8 L 17.8 17.8 accent M 8.5 5.8 L 8.5 11.2 M 5.8 8.5 L "
     "11.2 "
     "8.5"},
    {kModeSelect,
     "middle M 5 2.5 L 5 15.2 L 8.3 12.2 L 10.6 17.4 L 12.7 16.4 L 10.4 11.4 L 14.8 11.2 Z line M "
     "5 "
     "2.5 L 5 15.2 L 8.3 12.2 L 10.6 17.4 L 12.7 16.4 L 10.4 11.4 L 14.8 11.2 Z"},
    {kModeWindow,
     "line M 2 5 L 2 2 L 5 2 M 8 2 L 11 2 M 14 2 L 17 2 L 17 5 M 2 8 L 2 11 M 2 14 L 2 17 L 5 17 "
     "accent M 9 8 L 9 17 L 11.5 15 L 13 18.5 L 14.8 17.6 L 13.3 14.3 L 16.3 14 Z"},
    {kZoomAll,
     "middle M 6.5 6.5 L 13.5 6.5 L 13.5 13.5 L 6.5 13.5 Z line M 2 6 L 2 2 L 6 2 M 14 2 L 18 2 L "
     "18 6 M 18 14 L 18 18 L 14 18 M 6 18 L 2 18 L 2 14 accent M 6.5 6.5 L 13.5 6.5 L 13.5 13.5 L "
     "6.5 13.5 Z"},
    {kUndoView,
     "accent M 7 3.5 L 3 7.5 L 7 11.5 line M 3 7.5 L 12 7.5 A 12 11.75 4.25 -90 90 M 12 16 L 7 16"},
    {kViewXYp,
     "pale M 3 6 L 10 10 L 17 6 L 17 14 L 10 18 L 3 14 Z deep M 10 2 L 17 6 L 10 10 L 3 6 Z"},
    {kViewXZm,
     "pale M 10 2 L 17 6 L 17 14 L 10 18 L 10 10 L 3 6 Z deep M 3 6 L 10 10 L 10 18 L 3 14 Z"},
    {kViewYZp,
     "pale M 10 2 L 17 6 L 10 10 L 10 18 L 3 14 L 3 6 Z deep M 17 6 L 17 14 L 10 18 L 10 10 Z"},
    {kViewIsometric,
     "pale M 10 2 L 17 6 L 10 10 L 3 6 Z middle M 3 6 L 10 10 L 10 18 L 3 14 Z deep M 17 6 L 17 14 "
     "L 10 18 L 10 10 Z"},
    {kRedoView,
     "accent M 13 3.5 L 17 7.5 L 13 11.5 line M 17 7.5 L 8 7.5 M 8 7.5 A 8 11.75 4.25 90 270 M 8 "
     "16 L 13 16"},
    {kPerspective,
     "middle M 2 16 L 18 16 L 13.5 5 L 6.5 5 Z line M 2 16 L 18 16 L 13.5 5 L 6.5 5 Z M 3.6 12 L "
     "16.4 12 M 5.3 "
     "8 L 14.7 8 M 10 5 L 10 16"},
    {kCopy,
     "white M 7 2.5 L 17 2.5 L 17 13 L 7 13 Z line M 7 2.5 L 17 2.5 L 17 13 L 7 13 Z middle M 3 7 "
     "L 13 "
     "7 L 13 17.5 L 3 17.5 Z line M 3 7 L 13 7 L 13 17.5 L 3 17.5 Z"},
    {kModeZoomWindow, kRectangle},
    {kStyleShaded,
     "pale M 10 2 L 17 6 L 10 10 L 3 6 Z middle M 3 6 L 10 10 L 10 18 L 3 14 Z deep M 17 6 L 17 14 "
     "L "
     "10 18 L 10 10 Z"},
    {kStyleEdges, "accent M 10 10 L 10 2 M 10 10 L 3 14 M 10 10 L 17 14"},
    {kStyleShadedEdges,
     "pale M 10 2 L 17 6 L 10 10 L 3 6 Z middle M 3 6 L 10 10 L 10 18 L 3 14 Z deep M 17 6 L 17 14 "
     "L "
     "10 18 L 10 10 Z accent M 6.5 4 L 13.5 8 L 13.5 16"},
    {kStyleHiddenLine, "white M 10 2 L 17 6 L 17 14 L 10 18 L 3 14 L 3 6 Z"},
    {kStylePoints,
     "accent A 10 2.5 0.6 0 360 A 16.5 6 0.6 0 360 A 16.5 14 0.6 0 360 A 10 17.5 0.6 0 360 A 3.5 "
     "14 0.6 "
     "0 360 A 3.5 6 0.6 0 360 A 10 10 0.6 0 360"},
    {kModeNearest, "line M 2 15 L 6 11 L 10 12.5 L 14 6 L 18 8 accent A 14 6 2.6 0 360"},
    {kModeRectangle, kRectangle},
    {kLogX,
     "line M 2 2 L 2 18 L 18 18 accent M 5.5 18 L 5.5 3 M 11 18 L 11 3 M 14.3 18 L 14.3 3 M 16.8 "
     "18 L 16.8 3"},
    {kLogY,
     "line M 2 2 L 2 18 L 18 18 accent M 2 14.5 L 17 14.5 M 2 9 L 17 9 M 2 5.7 L 17 5.7 M 2 3.2 L "
     "17 3.2"},
    {kLegend,
     "line M 2 4 L 18 4 L 18 16 L 2 16 Z M 10 8 L 15.5 8 M 10 12.5 L 15.5 12.5 accent M 4.5 8 L 8 "
     "8 M 4.5 12.5 L 8 12.5"},
    {kCursors,
     "accent M 6.5 2 L 6.5 18 M 13.5 2 L 13.5 18 line M 2 13 L 6.5 11 L 10 6 L 13.5 8 L 18 4"},
    {kDark, "deep A 10 10 8 90 270 L 10 18 Z line A 10 10 8 0 360"},
    {kPrint,
     "white M 5.5 2 L 14.5 2 L 14.5 8 L 5.5 8 Z middle M 2 8 L 18 8 L 18 15 L 2 15 Z line M 5.5 8 "
     "L 5.5 2 L 14.5 2 L 14.5 8 M 2 8 L 18 8 L 18 15 L 2 15 Z white M 5.5 12 L 14.5 12 L 14.5 18 "
     "L 5.5 18 Z line M 5.5 12 L 14.5 12 L 14.5 18 L 5.5 18 Z"},
    {kGrid,
     "accent M 2 7 L 18 7 M 2 13 L 18 13 M 7 2 L 7 18 M 13 2 L 13 18 line M 2 2 L 18 2 L 18 18 L 2 "
     "18 Z"},
    {kPathFirst, "deep M 16 3 L 6.5 10 L 16 17 Z line M 4 3 L 4 17"},
    {kPathBack, "deep M 14 4 L 6 10 L 14 16 Z"},
    {kPathPlay, "accent A 10 10 8 0 360 M 8 6 L 14 10 L 8 14 Z"},
    {kPathForward, "deep M 6 4 L 14 10 L 6 16 Z"},
    {kPathLast, "deep M 4 3 L 13.5 10 L 4 17 Z line M 16 3 L 16 17"},
    {kPathSlower, "line M 4 10 L 16 10"},
    {kPathFaster, "line M 4 10 L 16 10 M 10 4 L 10 16"},
    {kCrosshair, "line M 10 2 L 10 18 M 2 10 L 18 10 accent A 10 10 4.5 0 360"},
};

/// Commands that end what they have begun show so while they are on.
constexpr Drawing kDrawingsWhileOn[] = {
    {kPathPlay, "accent A 10 10 8 0 360 M 7.5 6.5 L 7.5 13.5 M 12.5 6.5 L 12.5 13.5"},
};

/// Whether a cube's edges lie over what is drawn for the command.
bool isCube(Command command) {
  constexpr Command kCubes[] = {kViewXYp,    kViewXZm,          kViewYZp,        kViewIsometric,
                                kStyleEdges, kStyleShadedEdges, kStyleHiddenLine};
  return std::ranges::find(kCubes, command) != std::end(kCubes);
}

constexpr Command kNoTool = {};

/// The entries of those that are for the pane, and null for a gap between them.
std::vector<const CommandEntry*> entriesOf(std::span<const Command> commands, PaneKind pane) {
  std::vector<const CommandEntry*> tools;
  for (const Command command : commands) {
    const auto entry = std::ranges::find(commandTable(), command, &CommandEntry::command);
    if (entry == commandTable().end()) {
      if (!tools.empty() && tools.back() != nullptr) {
        tools.push_back(nullptr);
      }
    } else if (entry->isFor(pane)) {
      tools.push_back(&*entry);
    }
  }
  return tools;
}

}  // namespace

std::vector<const CommandEntry*> toolsOf(PaneKind pane) {
  constexpr Command kTools[] = {kOpen,
                                kExportPng,
                                kCopy,
                                kPrint,
                                kNoTool,
                                kModeRotate,
                                kModeNearest,
                                kModePan,
                                kModeZoom,
                                kModeRectangle,
                                kModeSelect,
                                kModeWindow,
                                kModeZoomWindow,
                                kNoTool,
                                kZoomAll,
                                kUndoView,
                                kRedoView,
                                kNoTool,
                                kViewXYp,
                                kViewXZm,
                                kViewYZp,
                                kViewIsometric,
                                kPerspective,
                                kNoTool,
                                kStyleShaded,
                                kStyleEdges,
                                kStyleShadedEdges,
                                kStyleHiddenLine,
                                kStylePoints,
                                kLogX,
                                kLogY,
                                kGrid,
                                kLegend,
                                kCursors,
                                kCrosshair,
                                kDark};
  return entriesOf(kTools, pane);
}

std::vector<const CommandEntry*> pathTools() {
  constexpr Command kTools[] = {kPathFirst, kPathBack,   kPathPlay,  kPathForward,
                                kPathLast,  kPathSlower, kPathFaster};
  return entriesOf(kTools, PaneKind::kModel);
}

std::vector<std::uint32_t> drawToolIcon(Command command, int side) {
  const auto* const drawing = std::ranges::find(kDrawings, command, &Drawing::command);
  std::string words(drawing == std::end(kDrawings) ? "" : drawing->words);
  if (isCube(command)) {
    words += kCubeEdges;
  }
  return drawIcon(words, side);
}

bool hasToolIconWhileOn(Command command) {
  return std::ranges::find(kDrawingsWhileOn, command, &Drawing::command) !=
         std::end(kDrawingsWhileOn);
}

std::vector<std::uint32_t> drawToolIconWhileOn(Command command, int side) {
  return drawIcon(std::ranges::find(kDrawingsWhileOn, command, &Drawing::command)->words, side);
}

}  // namespace zyn::viewer
