#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "viewer/Commands.h"
#include "viewer/Pane_com.h"
#include "viewer/PathPlayer.h"
#include "viewer/Path_com.h"

namespace zyn::viewer {

/// Leads the tool along a path: by commands, slider, lines, picks and a clock; whatever leads, all
/// others follow.
class PathDriver {
 public:
  PathDriver(PaneOwner& owner, IZYNVue3D2& view);
  ~PathDriver();
  PathDriver(const PathDriver&) = delete;
  PathDriver& operator=(const PathDriver&) = delete;

  /// Takes a path in the place of another, with its look, and its place when it is the same file.
  void show(std::unique_ptr<Path> path);

  void close();

  /// The path that is shown; null for none.
  const Path* path() const { return path_.get(); }

  enum class Done : std::uint8_t { kNothing, kEverything, kSceneIsToChange };
  /// Carries out a command of paths.
  Done carryOut(Command command);
  bool isOn(Command command) const;

  void slideTo(double part);
  void goToLine(long line);
  /// To a part of a segment, 0 to 1.
  void goToSegment(std::int32_t segment, double part);
  void ticked();

  /// "line 12: G1 X3": what is told of a segment under the mouse.
  std::string segmentText(std::int32_t segment) const;

 private:
  using Clock = std::chrono::steady_clock;

  bool carryOutMotion(Command command);
  bool changeLook(Command command);
  void playOrStop();
  void stop();
  enum class Follow : std::uint8_t { kAll, kAllButLines };
  void placeChanged(Follow follow = Follow::kAll);

  PaneOwner& owner_;
  IZYNVue3D2& view_;
  std::unique_ptr<Path> path_;
  PathLook look_;
  PathPlayer player_;
  Clock::time_point lastTick_;
};

}  // namespace zyn::viewer
