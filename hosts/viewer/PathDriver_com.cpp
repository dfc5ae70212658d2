#include "viewer/PathDriver_com.h"

#include "common/ComFailure_com.h"
#include "common/ToolSizes.h"
#include "viewer/PathReadout.h"

namespace zyn::viewer {

using host::check;

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kTick = 30;  // milliseconds

using enum Command;

}  // namespace

PathDriver::PathDriver(PaneOwner& owner, IZYNVue3D2& view) : owner_(owner), view_(view) {}

PathDriver::~PathDriver() { close(); }

void PathDriver::close() {
  stop();
  owner_.program().show(nullptr);
  owner_.status().show(StatusBar::kPath, "");
  path_.reset();
}

void PathDriver::show(std::unique_ptr<Path> path) {
  stop();
  path->setLook(look_);
  if (path_ && path_->file() == path->file()) {
    path->setTime(path_->time());
  } else {
    path->goToFirstCut();
  }
  owner_.program().show(&path->lines());
  path_ = std::move(path);
  owner_.pathBar().showFactor(player_.factor());
  owner_.status().show(StatusBar::kMessage, programText(path_->lines().lineCount(),
                                                        path_->segmentCount(), path_->skipped()));
  placeChanged();
}

PathDriver::Done PathDriver::carryOut(Command command) {
  if (command < kPathFirst || command > kToolSmaller) {
    return Done::kNothing;
  }
  if (!path_ || carryOutMotion(command)) {
    return Done::kEverything;
  }
  return changeLook(command) ? Done::kSceneIsToChange : Done::kEverything;
}

bool PathDriver::carryOutMotion(Command command) {
  switch (command) {
    case kPathPlay:
      playOrStop();
      return true;
    case kPathFaster:
      player_.faster();
      owner_.pathBar().showFactor(player_.factor());
      return true;
    case kPathSlower:
      player_.slower();
      owner_.pathBar().showFactor(player_.factor());
      return true;
    case kPathFirst:
      path_->setTime(0);
      break;
    case kPathBack:
      path_->stepBack();
      break;
    case kPathForward:
      path_->stepForward();
      break;
    case kPathLast:
      path_->setTime(path_->duration());
      break;
    default:
      return false;
  }
  stop();
  placeChanged();
  return true;
}

bool PathDriver::changeLook(Command command) {
  PathLook look = path_->look();
  switch (command) {
    case kColourByType:
      look.colour = PathLook::kByType;
      break;
    case kColourBySpeed:
      look.colour = PathLook::kBySpeed;
      break;
    case kColourByProgress:
      look.colour = PathLook::kByProgress;
      break;
    case kRapids:
      look.rapids = !look.rapids;
      break;
    case kTool:
      look.tool = !look.tool;
      break;
    case kBallNose:
      look.ballNose = !look.ballNose;
      break;
    case kToolLarger:
      look.diameter = host::largerDiameter(look.diameter);
      break;
    case kToolSmaller:
      look.diameter = host::smallerDiameter(look.diameter);
      break;
    default:
      return false;
  }
  if (look.diameter != path_->look().diameter) {
    look_.diameter = look.diameter;
    owner_.status().show(StatusBar::kMessage, toolText(look.diameter));
  }
  path_->setLook(look);
  look.diameter = look_.diameter;  // what nobody has chosen is to suit the next path
  look_ = look;
  return true;
}

bool PathDriver::isOn(Command command) const {
  switch (command) {
    case kPathPlay:
      return player_.isPlaying();
    case kColourByType:
      return look_.colour == PathLook::kByType;
    case kColourBySpeed:
      return look_.colour == PathLook::kBySpeed;
    case kColourByProgress:
      return look_.colour == PathLook::kByProgress;
    case kRapids:
      return look_.rapids;
    case kTool:
      return look_.tool;
    case kBallNose:
      return look_.ballNose;
    default:
      return false;
  }
}

void PathDriver::playOrStop() {
  if (player_.isPlaying()) {
    stop();
    return;
  }
  path_->setTime(player_.start(path_->time(), path_->duration()));
  lastTick_ = Clock::now();
  SetTimer(owner_.window(), kTimer, kTick, nullptr);
  placeChanged();
}

void PathDriver::stop() {
  player_.stop();
  KillTimer(owner_.window(), kTimer);
}

void PathDriver::ticked() {
  if (!path_ || !player_.isPlaying()) {
    return;
  }
  const Clock::time_point now = Clock::now();
  const double seconds = std::chrono::duration<double>(now - lastTick_).count();
  lastTick_ = now;
  path_->setTime(player_.advance(path_->time(), seconds, path_->duration()));
  if (!player_.isPlaying()) {
    stop();
  }
  placeChanged();
}

void PathDriver::slideTo(double part) {
  if (path_) {
    path_->setTime(part * path_->duration());
    placeChanged();
  }
}

/// The list stays where the person has put it, on a line without motion too.
void PathDriver::goToLine(long line) {
  if (path_) {
    stop();
    path_->setLine(line);
    placeChanged(Follow::kAllButLines);
  }
}

void PathDriver::goToSegment(std::int32_t segment, double part) {
  if (path_) {
    stop();
    path_->setSegment(segment, part);
    placeChanged();
  }
}

void PathDriver::placeChanged(Follow follow) {
  const PathPlace place = path_->place();
  owner_.pathBar().showPart(place.duration > 0 ? place.time / place.duration : 0);
  owner_.status().show(StatusBar::kPath, placeText(place));
  if (follow == Follow::kAll) {
    owner_.program().selectLine(place.line);
  }
  check(view_.Repaint(), L"Repaint");
}

std::string PathDriver::segmentText(std::int32_t segment) const {
  if (!path_) {
    return {};
  }
  const long line = path_->lineOf(segment);
  return lineText(line, path_->lines().line(static_cast<std::size_t>(line)));
}

}  // namespace zyn::viewer
