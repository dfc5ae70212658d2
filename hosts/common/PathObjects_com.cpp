#include "common/PathObjects_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/ComFailure_com.h"
#include "common/FileKind.h"
#include "common/InputFile.h"
#include "common/NumberArray_com.h"
#include "common/ToolSizes.h"

namespace zyn::host {

PathObjects::PathObjects(const std::filesystem::path& file, const LoadProgress& progress)
    : path_(ClassObject(L"ZYNVue.ZYNGLTrajet").create<IZYNGLTrajet>()),
      tool_(ClassObject(L"ZYNVue.ZYNOutil").create<IZYNOutil>()),
      speeds_(ClassObject(L"ZYNVue.ZYNEchelleCouleurs").create<IZYNEchelleCouleurs>()) {
  checkTold(path_->put_CodesInconnus(isPrinterProgram(utf8Name(file)) ? 1 : 0), L"CodesInconnus");
  const ProgressListener listener(path_.Get(), progress);
  const HRESULT result = path_->ChargerGCode(_bstr_t(file.c_str()));
  listener.rethrow();
  checkTold(result, L"ChargerGCode");
  _variant_t value;
  checkTold(path_->get_Boite(&value), L"Boite");
  const std::vector<double> box = numbersOf(value);
  if (box.size() == 6) {
    bounds_ = {{box[0], box[2], box[4]}, {box[1], box[3], box[5]}};
  }
  checkTold(speeds_->put_Titre(_bstr_t(L"mm/min")), L"Titre");
  checkTold(path_->putref_EchelleCouleurs(speeds_.Get()), L"EchelleCouleurs");
  setLook(look_);
}

void PathObjects::setLook(const PathLook& look) {
  look_ = look;
  if (look_.diameter == 0) {
    look_.diameter = usualDiameter(length(bounds_.extents()));
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
  checkTold(path_->put_EpaisseurTrait(look_.width), L"EpaisseurTrait");
  checkTold(path_->put_RapidesVisibles(look_.rapids ? VARIANT_TRUE : VARIANT_FALSE),
            L"RapidesVisibles");
}

}  // namespace zyn::host
