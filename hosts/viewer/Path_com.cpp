#include "viewer/Path_com.h"

#include <comutil.h>

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
  types_ = arrayOf(path, &IZYNGLTrajet::getTypes, host::integersOf);
  lineNumbers_ = arrayOf(path, &IZYNGLTrajet::getLignes, host::integersOf);
  speedsSet_ = arrayOf(path, &IZYNGLTrajet::getVitesses, host::numbersOf);
}

long Path::skippedCount() const {
  return valueOf(objects_.path(), &IZYNGLTrajet::get_NbCodesIgnores);
}

void Path::addTo(IZYNVue3D& view) const {
  check(view.Add(&objects_.path(), kShaded), L"Add");
  check(view.AddSelection(&objects_.path()), L"AddSelection");
  if (IZYNEchelleCouleurs* const scale = objects_.scale()) {
    check(view.Add(scale, kShaded), L"Add");
  }
}

double Path::time() const { return valueOf(objects_.path(), &IZYNGLTrajet::get_PositionTemps); }

void Path::setTime(double seconds) const {
  checkTold(objects_.path().put_PositionTemps(seconds), L"PositionTemps");
}

long Path::line() const { return valueOf(objects_.path(), &IZYNGLTrajet::get_PositionLigne); }

void Path::setLine(long line) const {
  checkTold(objects_.path().put_PositionLigne(line), L"PositionLigne");
}

void Path::setSegment(long segment) const {
  checkTold(objects_.path().put_PositionSegment(segment), L"PositionSegment");
}

void Path::stepBack() const {
  const double before = time();
  setLine(line());
  if (time() < before) {
    return;
  }
  const long segment = valueOf(objects_.path(), &IZYNGLTrajet::get_PositionSegment);
  if (segment > 0) {
    setLine(lineOf(segment - 1));
  }
}

long Path::lineOf(std::int32_t segment) const {
  const auto number = static_cast<std::size_t>(segment);
  return segment >= 0 && number < lineNumbers_.size() ? lineNumbers_[number] : 0;
}

double Path::speedOf(long segment) const {
  constexpr std::int32_t kRapid = 0;
  const auto number = static_cast<std::size_t>(segment);
  if (types_[number] == kRapid) {
    return valueOf(objects_.path(), &IZYNGLTrajet::get_VitesseRapide);
  }
  return speedsSet_[number] > 0 ? speedsSet_[number]
                                : valueOf(objects_.path(), &IZYNGLTrajet::get_VitesseAvance);
}

PathPlace Path::place() const {
  IZYNGLTrajet& path = objects_.path();
  PathPlace place = {.line = line(),
                     .time = time(),
                     .duration = duration_,
                     .travelled = valueOf(path, &IZYNGLTrajet::get_Position),
                     .length = length_};
  const std::vector<double> point = arrayOf(path, &IZYNGLTrajet::getPosition, host::numbersOf);
  if (point.size() == 3) {
    place.point = {point[0], point[1], point[2]};
  }
  if (const long segment = valueOf(path, &IZYNGLTrajet::get_PositionSegment);
      segment < segmentCount()) {
    place.type = types_[static_cast<std::size_t>(segment)];
    place.speed = speedOf(segment);
  }
  return place;
}

}  // namespace zyn::viewer
