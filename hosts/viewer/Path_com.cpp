#include "viewer/Path_com.h"

#include <comutil.h>

#include <algorithm>

#include "common/ComFailure_com.h"
#include "common/InputFile.h"
#include "common/NumberArray_com.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;

namespace {

constexpr int kShaded = 0;

/// What a getter of the path answers.
template <typename Value>
Value valueOf(IZYNGLTrajet& path, HRESULT (STDMETHODCALLTYPE IZYNGLTrajet::*get)(Value*)) {
  Value value = {};
  checkTold((path.*get)(&value), L"the path");
  return value;
}

template <typename Numbers>
auto arrayOf(IZYNGLTrajet& path, HRESULT (STDMETHODCALLTYPE IZYNGLTrajet::*get)(VARIANT*),
             Numbers numbers) {
  _variant_t value;
  checkTold((path.*get)(&value), L"the path");
  return numbers(value);
}

}  // namespace

Path::Path(std::filesystem::path file, const host::LoadProgress& progress)
    : file_(std::move(file)), objects_(file_, progress) {
  lines_ = ProgramLines(host::readInputFile(file_, "a program"));
  readSegments();
  checkTold(objects_.path().put_NomSelection(kName), L"NomSelection");
}

void Path::readSegments() {
  IZYNGLTrajet& path = objects_.path();
  duration_ = valueOf(path, &IZYNGLTrajet::get_Duree);
  length_ = valueOf(path, &IZYNGLTrajet::get_Longueur);
  points_ = arrayOf(path, &IZYNGLTrajet::getPoints, host::numbersOf);
  types_ = arrayOf(path, &IZYNGLTrajet::getTypes, host::integersOf);
  lineNumbers_ = arrayOf(path, &IZYNGLTrajet::getLignes, host::integersOf);
  speedsSet_ = arrayOf(path, &IZYNGLTrajet::getVitesses, host::numbersOf);
}

void Path::addTo(IZYNVue3D& view) const {
  check(view.Add(&objects_.path(), kShaded), L"Add");
  check(view.AddSelection(&objects_.path()), L"AddSelection");
  if (IZYNEchelleCouleurs* const scale = objects_.scale()) {
    check(view.Add(scale, kShaded), L"Add");
  }
}

double Path::time() const { return valueOf(objects_.path(), &IZYNGLTrajet::get_PositionTemps); }

void Path::setTime(double seconds) {
  checkTold(objects_.path().put_PositionTemps(seconds), L"PositionTemps");
  objects_.showTool();
}

/// Where a segment begins, and the one before it ends; behind the last one the end of the path.
void Path::setStart(long segment) {
  checkTold(objects_.path().put_PositionSegment(segment), L"PositionSegment");
  objects_.showTool();
}

long Path::segmentThere() const {
  return valueOf(objects_.path(), &IZYNGLTrajet::get_PositionSegment);
}

/// Where two segments meet, the former.
long Path::segmentThatLedThere() const {
  IZYNGLTrajet& path = objects_.path();
  const long segment = segmentThere();
  const double now = time();
  if (segment == 0 || now >= duration_) {
    return segment;
  }
  checkTold(path.put_PositionSegment(segment), L"PositionSegment");
  const double start = time();
  checkTold(path.put_PositionTemps(now), L"PositionTemps");
  return now > start ? segment : segment - 1;
}

long Path::firstOfLine(long segment) const {
  while (segment > 0 && lineOf(segment - 1) == lineOf(segment)) {
    --segment;
  }
  return segment;
}

long Path::lastOfLine(long segment) const {
  while (segment + 1 < segmentCount() && lineOf(segment + 1) == lineOf(segment)) {
    ++segment;
  }
  return segment;
}

void Path::setLine(long line) {
  long found = segmentCount();
  for (long segment = 0; segment < segmentCount(); ++segment) {
    if (lineOf(segment) >= line && (found == segmentCount() || lineOf(segment) < lineOf(found))) {
      found = segment;
    }
  }
  setStart(found == segmentCount() ? found : lastOfLine(found) + 1);
}

void Path::setSegment(long segment, double part) {
  IZYNGLTrajet& path = objects_.path();
  setStart(segment + 1);
  const double end = valueOf(path, &IZYNGLTrajet::get_Position);
  if (part < 1) {
    setStart(segment);
    const double start = valueOf(path, &IZYNGLTrajet::get_Position);
    checkTold(path.put_Position(start + part * (end - start)), L"Position");
    objects_.showTool();
  }
}

void Path::goToFirstCut() {
  constexpr std::int32_t kRapid = 0;
  const auto cut = std::ranges::find_if(types_, [](std::int32_t type) { return type != kRapid; });
  setStart(cut == types_.end() ? 0 : static_cast<long>(cut - types_.begin()));
}

void Path::stepForward() {
  if (segmentCount() > 0 && time() < duration_) {
    setStart(lastOfLine(segmentThere()) + 1);
  }
}

void Path::stepBack() {
  if (segmentCount() > 0) {
    setStart(firstOfLine(segmentThatLedThere()));
  }
}

std::vector<host::Vector> Path::endsOf(std::int32_t segment) const {
  if (segment < 0 || segment >= segmentCount()) {
    return {};
  }
  const double* const begin = points_.data() + 3 * static_cast<std::size_t>(segment);
  return {{begin[0], begin[1], begin[2]}, {begin[3], begin[4], begin[5]}};
}

std::span<const double> Path::pointsOfLine(long segment) const {
  if (segment < 0 || segment >= segmentCount()) {
    return {};
  }
  const long first = firstOfLine(segment);
  const long points = lastOfLine(segment) - first + 2;
  return std::span(points_).subspan(3 * static_cast<std::size_t>(first),
                                    3 * static_cast<std::size_t>(points));
}

long Path::lineOf(long segment) const {
  const auto number = static_cast<std::size_t>(segment);
  return segment >= 0 && number < lineNumbers_.size() ? lineNumbers_[number] : 0;
}

/// 0 where the program does not tell it.
double Path::speedOf(long segment) const {
  constexpr std::int32_t kRapid = 0;
  const auto number = static_cast<std::size_t>(segment);
  return types_[number] == kRapid ? 0 : speedsSet_[number];
}

PathPlace Path::place() const {
  IZYNGLTrajet& path = objects_.path();
  PathPlace place = {.time = time(),
                     .duration = duration_,
                     .travelled = valueOf(path, &IZYNGLTrajet::get_Position),
                     .length = length_};
  const std::vector<double> point = arrayOf(path, &IZYNGLTrajet::getPosition, host::numbersOf);
  if (point.size() == 3) {
    place.point = {point[0], point[1], point[2]};
  }
  if (segmentCount() > 0) {
    const long segment = segmentThatLedThere();
    place.line = lineOf(segment);
    place.type = types_[static_cast<std::size_t>(segment)];
    place.speed = speedOf(segment);
  }
  return place;
}

}  // namespace zyn::viewer
