#include "viewer/Path_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/ComFailure_com.h"
#include "common/InputFile.h"
#include "common/NumberArray_com.h"
#include "viewer/FileKind.h"
#include "viewer/ToolSizes.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;
using host::ClassObject;

namespace {

constexpr int kShaded = 0;

VARIANT_BOOL switchOf(bool on) { return on ? VARIANT_TRUE : VARIANT_FALSE; }

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
    : file_(std::move(file)),
      path_(ClassObject(L"ZYNVue.ZYNGLTrajet").create<IZYNGLTrajet>()),
      tool_(ClassObject(L"ZYNVue.ZYNOutil").create<IZYNOutil>()),
      speeds_(ClassObject(L"ZYNVue.ZYNEchelleCouleurs").create<IZYNEchelleCouleurs>()) {
  checkTold(path_->put_CodesInconnus(isPrinterProgram(host::utf8Name(file_)) ? 1 : 0),
            L"CodesInconnus");
  const host::ProgressListener listener(path_.Get(), progress);
  const HRESULT result = path_->ChargerGCode(_bstr_t(file_.c_str()));
  listener.rethrow();
  checkTold(result, L"ChargerGCode");
  lines_ = ProgramLines(host::readInputFile(file_, "a program"));
  readSegments();
  checkTold(path_->put_NomSelection(kName), L"NomSelection");
  checkTold(speeds_->put_Titre(_bstr_t(L"mm/min")), L"Titre");
  checkTold(path_->putref_EchelleCouleurs(speeds_.Get()), L"EchelleCouleurs");
  setLook(look_);
}

void Path::readSegments() {
  IZYNGLTrajet& path = *path_.Get();
  const std::vector<double> box = arrayOf(path, &IZYNGLTrajet::get_Boite, host::numbersOf);
  if (box.size() == 6) {
    bounds_ = {{box[0], box[2], box[4]}, {box[1], box[3], box[5]}};
  }
  duration_ = valueOf(path, &IZYNGLTrajet::get_Duree);
  length_ = valueOf(path, &IZYNGLTrajet::get_Longueur);
  types_ = arrayOf(path, &IZYNGLTrajet::getTypes, host::integersOf);
  lineNumbers_ = arrayOf(path, &IZYNGLTrajet::getLignes, host::integersOf);
  speedsSet_ = arrayOf(path, &IZYNGLTrajet::getVitesses, host::numbersOf);
}

long Path::skippedCount() const { return valueOf(*path_.Get(), &IZYNGLTrajet::get_NbCodesIgnores); }

void Path::addTo(IZYNVue3D& view) const {
  check(view.Add(path_.Get(), kShaded), L"Add");
  check(view.AddSelection(path_.Get()), L"AddSelection");
  if (look_.colour == PathLook::kBySpeed) {
    check(view.Add(speeds_.Get(), kShaded), L"Add");
  }
}

void Path::setLook(const PathLook& look) {
  look_ = look;
  if (look_.diameter == 0) {
    look_.diameter = usualDiameter(host::length(bounds_.extents()));
  }
  const double diameter = look_.diameter;
  checkTold(tool_->put_Diametre(diameter), L"Diametre");
  checkTold(tool_->put_RayonCoin(look_.ballNose ? diameter / 2 : 0), L"RayonCoin");
  checkTold(tool_->put_LongueurCoupe(3 * diameter), L"LongueurCoupe");
  checkTold(tool_->put_Longueur(5 * diameter), L"Longueur");
  checkTold(tool_->put_DiametrePorte(2.5 * diameter), L"DiametrePorte");
  checkTold(tool_->put_LongueurPorte(2 * diameter), L"LongueurPorte");
  checkTold(path_->putref_Outil(look_.tool ? tool_.Get() : nullptr), L"Outil");
  checkTold(path_->put_ModeCouleur(look_.colour), L"ModeCouleur");
  checkTold(path_->put_RapidesVisibles(switchOf(look_.rapids)), L"RapidesVisibles");
}

double Path::time() const { return valueOf(*path_.Get(), &IZYNGLTrajet::get_PositionTemps); }

void Path::setTime(double seconds) const {
  checkTold(path_->put_PositionTemps(seconds), L"PositionTemps");
}

long Path::line() const { return valueOf(*path_.Get(), &IZYNGLTrajet::get_PositionLigne); }

void Path::setLine(long line) const { checkTold(path_->put_PositionLigne(line), L"PositionLigne"); }

void Path::setSegment(long segment) const {
  checkTold(path_->put_PositionSegment(segment), L"PositionSegment");
}

void Path::stepBack() const {
  const double before = time();
  setLine(line());
  if (time() < before) {
    return;
  }
  const long segment = valueOf(*path_.Get(), &IZYNGLTrajet::get_PositionSegment);
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
    return valueOf(*path_.Get(), &IZYNGLTrajet::get_VitesseRapide);
  }
  return speedsSet_[number] > 0 ? speedsSet_[number]
                                : valueOf(*path_.Get(), &IZYNGLTrajet::get_VitesseAvance);
}

PathPlace Path::place() const {
  IZYNGLTrajet& path = *path_.Get();
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
