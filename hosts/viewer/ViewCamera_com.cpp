#include "viewer/ViewCamera_com.h"

#include <comutil.h>
#include <wrl/client.h>

#include <cmath>
#include <fstream>
#include <stdexcept>
#include <string>

#include "common/ClassObject_com.h"
#include "common/InputFile.h"
#include "common/Utf8_win.h"

namespace zyn::viewer {

using host::checkTold;
using host::Vector;
using Microsoft::WRL::ComPtr;

namespace {

/// The camera of the view; null while it has none.
ComPtr<IZYNCamera> cameraOf(IZYNVue3D2& view) {
  ComPtr<IDispatch> object;
  checkTold(view.get_Camera(&object), L"Camera");
  ComPtr<IZYNCamera> camera;
  object.As(&camera);
  return camera;
}

}  // namespace

void saveCamera(IZYNVue3D2& view, const std::filesystem::path& file) {
  const ComPtr<IZYNCamera> camera = cameraOf(view);
  if (!camera) {
    throw std::runtime_error("the view has no camera to save");
  }
  _bstr_t text;
  checkTold(camera->get_Texte(text.GetAddress()), L"Texte");
  std::ofstream stream(file, std::ios::binary);
  stream << host::toUtf8({text, text.length()}) << '\n';
  if (!stream.flush()) {
    throw std::runtime_error(host::utf8Name(file) + ": cannot be written");
  }
}

void restoreCamera(IZYNVue3D2& view, const std::filesystem::path& file) {
  try {
    std::string text = host::readInputFile(file, "a camera");
    text.erase(text.find_last_not_of("\r\n") + 1);
    const auto camera = host::ClassObject(L"ZYNVue.ZYNCamera").create<IZYNCamera>();
    checkTold(camera->put_Texte(_bstr_t(host::toWide(text).c_str())), L"Texte");
    checkTold(view.putref_Camera(camera.Get()), L"Camera");
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(host::utf8Name(file) + ": " + error.what());
  }
}

void lookIsometrically(IZYNVue3D2& view, const host::Bounds& box, double margin) {
  const Vector eye = host::normalised({1, -1, 1}, {});
  const Vector right = host::normalised(cross({0, 0, 1}, eye), {});
  const Vector up = cross(eye, right);
  const Vector centre = box.centre();
  const Vector size = box.extents();
  const double diagonal = length(size) > 0 ? length(size) : 1.0;
  const auto extentAlong = [&](const Vector& direction) {
    const double extent = std::fabs(direction.x) * size.x + std::fabs(direction.y) * size.y +
                          std::fabs(direction.z) * size.z;
    return (extent > 0 ? extent : diagonal) * (1 + margin);
  };
  ComPtr<IZYNCamera> camera = cameraOf(view);
  if (!camera) {
    camera = host::ClassObject(L"ZYNVue.ZYNCamera").create<IZYNCamera>();
  }
  const Vector from = centre + eye * diagonal;
  checkTold(camera->setCible(centre.x, centre.y, centre.z), L"setCible");
  checkTold(camera->setOeil(from.x, from.y, from.z), L"setOeil");
  checkTold(camera->setHaut(up.x, up.y, up.z), L"setHaut");
  checkTold(camera->put_Largeur(extentAlong(right)), L"Largeur");
  checkTold(camera->put_Hauteur(extentAlong(up)), L"Hauteur");
  LONG duration = 0;
  checkTold(view.get_DureeAnimation(&duration), L"DureeAnimation");
  checkTold(view.AllerA(camera.Get(), duration), L"AllerA");
}

void togglePerspective(IZYNVue3D2& view) {
  if (const ComPtr<IZYNCamera> camera = cameraOf(view)) {
    const VARIANT_BOOL on = isPerspective(view) ? VARIANT_FALSE : VARIANT_TRUE;
    checkTold(camera->put_Perspective(on), L"Perspective");
    checkTold(view.putref_Camera(camera.Get()), L"Camera");
  }
}

bool isPerspective(IZYNVue3D2& view) {
  VARIANT_BOOL on = VARIANT_FALSE;
  if (const ComPtr<IZYNCamera> camera = cameraOf(view)) {
    checkTold(camera->get_Perspective(&on), L"Perspective");
  }
  return on != VARIANT_FALSE;
}

double heightSeen(IZYNVue3D2& view) {
  double height = 0;
  if (const ComPtr<IZYNCamera> camera = cameraOf(view)) {
    checkTold(camera->get_Hauteur(&height), L"Hauteur");
  }
  return height;
}

}  // namespace zyn::viewer
