#include "common/PathObjects_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/ComFailure_com.h"
#include "common/InputFile.h"
#include "common/NumberArray_com.h"
#include "common/ToolSizes.h"

namespace zyn::host {

namespace {

/// The colour of what is done: seen on parts of every usual colour, and beside those of what is to
/// do.
constexpr Vector kDone = {0.1, 0.55, 0.3};

// Parts of a tool as multiples of its diameter.
constexpr double kFlutes = 3;
constexpr double kShank = 5;
constexpr double kHolderDiameter = 2.5;
constexpr double kHolder = 2;

/// What is wrong without the name of the file: "line 2, column 5: what".
std::string placeAndCause(const std::string& told) {
  const std::size_t place = told.find(", line ");
  return place == told.npos ? told : told.substr(place + 2);
}

}  // namespace

PathObjects::PathObjects(const std::filesystem::path& file, const LoadProgress& progress)
    : path_(ClassObject(L"ZYNVue.ZYNGLTrajet").create<IZYNGLTrajet>()),
      tool_(ClassObject(L"ZYNVue.ZYNOutil").create<IZYNOutil>()),
      speeds_(ClassObject(L"ZYNVue.ZYNEchelleCouleurs").create<IZYNEchelleCouleurs>()) {
  load(file, progress);
  if (segmentCount() == 0) {
    throw ComFailure(utf8Name(file) + ": the program moves nothing");
  }
  findFirstPlace();
  _variant_t value;
  checkTold(path_->get_Boite(&value), L"Boite");
  const std::vector<double> box = numbersOf(value);
  if (box.size() == 6) {
    bounds_ = {{box[0], box[2], box[4]}, {box[1], box[3], box[5]}};
  }
  checkTold(speeds_->put_Titre(_bstr_t(L"mm/min")), L"Titre");
  checkTold(path_->putref_EchelleCouleurs(speeds_.Get()), L"EchelleCouleurs");
  checkTold(path_->setCouleurFait(kDone.x, kDone.y, kDone.z, 1), L"setCouleurFait");
  setLook(look_);
}

LONG PathObjects::segmentCount() const {
  LONG count = 0;
  checkTold(path_->get_NbSegments(&count), L"NbSegments");
  return count;
}

/// Strictly, which tells the first code that is not known, and if there is one without such codes.
void PathObjects::load(const std::filesystem::path& file, const LoadProgress& progress) {
  const ProgressListener listener(path_.Get(), progress);
  const auto read = [&](LONG unknownCodes) {
    checkTold(path_->put_CodesInconnus(unknownCodes), L"CodesInconnus");
    const HRESULT result = path_->ChargerGCode(_bstr_t(file.c_str()));
    listener.rethrow();
    return result;
  };
  constexpr LONG kRefuse = 0;
  constexpr LONG kSkip = 1;
  const HRESULT result = read(kRefuse);
  if (result != E_FAIL) {
    checkTold(result, L"ChargerGCode");
    return;
  }
  try {
    checkTold(result, L"ChargerGCode");
  } catch (const ComFailure& first) {
    skipped_.first = placeAndCause(first.what());
  }
  checkTold(read(kSkip), L"ChargerGCode");
  checkTold(path_->get_NbCodesIgnores(&skipped_.count), L"NbCodesIgnores");
}

void PathObjects::findFirstPlace() {
  _variant_t types;
  checkTold(path_->getTypes(&types), L"getTypes");
  constexpr std::int32_t kRapid = 0;
  const std::vector<std::int32_t> all = integersOf(types);
  if (!all.empty() && all.front() == kRapid) {
    checkTold(path_->put_PositionSegment(1), L"PositionSegment");
    checkTold(path_->get_PositionTemps(&firstPlace_), L"PositionTemps");
    checkTold(path_->put_PositionTemps(0), L"PositionTemps");
  }
}

void PathObjects::setLook(const PathLook& look) {
  look_ = look;
  if (look_.diameter == 0) {
    look_.diameter = usualDiameter(length(bounds_.extents()));
  }
  const double diameter = look_.diameter;
  checkTold(tool_->put_Diametre(diameter), L"Diametre");
  checkTold(tool_->put_RayonCoin(look_.ballNose ? diameter / 2 : 0), L"RayonCoin");
  checkTold(tool_->put_LongueurCoupe(kFlutes * diameter), L"LongueurCoupe");
  checkTold(tool_->put_Longueur(kShank * diameter), L"Longueur");
  checkTold(tool_->put_DiametrePorte(kHolderDiameter * diameter), L"DiametrePorte");
  checkTold(tool_->put_LongueurPorte(kHolder * diameter), L"LongueurPorte");
  checkTold(path_->put_ModeCouleur(look_.colour), L"ModeCouleur");
  checkTold(path_->put_EpaisseurTrait(look_.width), L"EpaisseurTrait");
  checkTold(path_->put_RapidesVisibles(look_.rapids ? VARIANT_TRUE : VARIANT_FALSE),
            L"RapidesVisibles");
  showTool();
}

void PathObjects::showTool() {
  double time = 0;
  checkTold(path_->get_PositionTemps(&time), L"PositionTemps");
  const bool shows = look_.tool && time > 0 && time >= firstPlace_;
  if (shows != showsTool_) {
    checkTold(path_->putref_Outil(shows ? tool_.Get() : nullptr), L"Outil");
    showsTool_ = shows;
  }
}

Bounds PathObjects::toolAt(const Vector& tip) const {
  const double radius = kHolderDiameter * look_.diameter / 2;
  return {tip - Vector{radius, radius, 0},
          tip + Vector{radius, radius, (kShank + kHolder) * look_.diameter}};
}

std::optional<Bounds> PathObjects::toolBounds() const {
  _variant_t value;
  checkTold(path_->getPosition(&value), L"getPosition");
  const std::vector<double> place = numbersOf(value);
  return showsTool_ && place.size() == 3 ? std::optional(toolAt({place[0], place[1], place[2]}))
                                         : std::nullopt;
}

Bounds PathObjects::reachOfTool() const {
  return around(toolAt(bounds_.minimum), toolAt(bounds_.maximum));
}

}  // namespace zyn::host
