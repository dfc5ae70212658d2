#include "zynshot/Studio_com.h"

#include <comutil.h>

#include <algorithm>

#include "ZYNMODELEGEOM.h"
#include "common/ClassObject_com.h"
#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "zynshot/AnnotationObjects_com.h"
#include "zynshot/CameraText_com.h"
#include "zynshot/Dimensions.h"

namespace zyn::shot {

using host::check;
using host::checkPicture;
using host::checkTold;
using host::ClassObject;
using host::numberArray;

namespace {

Microsoft::WRL::ComPtr<IDispatch> makeBox(const host::Bounds& bounds) {
  const auto box = ClassObject(L"ZYNModeleGeom.Box3D").create<IZYNBox3D>();
  const auto& [least, most] = bounds;
  check(box->put_XMin(least.x), L"XMin");
  check(box->put_XMax(most.x), L"XMax");
  check(box->put_YMin(least.y), L"YMin");
  check(box->put_YMax(most.y), L"YMax");
  check(box->put_ZMin(least.z), L"ZMin");
  check(box->put_ZMax(most.z), L"ZMax");
  return box;
}

host::Vector vectorOf(IZYNCamera& camera, HRESULT (STDMETHODCALLTYPE IZYNCamera::*get)(VARIANT*)) {
  _variant_t value;
  checkTold((camera.*get)(&value), L"a vector of the camera");
  const std::vector<double> numbers = host::numbersOf(value);
  return numbers.size() == 3 ? host::Vector{numbers[0], numbers[1], numbers[2]} : host::Vector();
}

}  // namespace

Studio::Studio(Scene& scene)
    : scene_(scene),
      context_(ClassObject(L"ZYNVue.ZYN3dGLBitmapContext").create<IZYN3DGLBitmapContext2>()) {
  check(context_->get_DPIResolution(&screenDpi_), L"DPIResolution");
}

void Studio::take(const PictureOptions& picture) {
  prepare(picture.surface);
  light(picture);
  scene_.prepare(picture.path);
  const Frame frame = aim(picture, scene_.shownBounds(picture.path));
  scene_.show(*context_.Get(), picture);
  annotate(picture, frame);
  write(picture);
}

void Studio::prepare(const Surface& surface) {
  if (prepared_ == surface) {
    return;
  }
  // Background and smoothing are read when the surface is made.
  const auto& [r, g, b] = surface.background;
  check(context_->put_BackColor(numberArray(std::array{r, g, b, 1.0})), L"BackColor");
  check(context_->put_LineAntialiasing(VARIANT_TRUE), L"LineAntialiasing");
  check(context_->put_MultiSampleAntialiasing(VARIANT_TRUE), L"MultiSampleAntialiasing");
  LONG created = 0;
  checkPicture(context_->CreateContext(surface.width, surface.height, &created), L"CreateContext");
  prepared_ = surface;
}

void Studio::light(const PictureOptions& picture) {
  check(context_->put_AmbientLightProperty(numberArray(lightValues(picture.ambient))),
        L"AmbientLightProperty");
  check(context_->put_DirectionLight1Property(numberArray(lightValues(picture.light1))),
        L"DirectionLight1Property");
  check(context_->put_DirectionLight2Property(numberArray(lightValues(picture.light2))),
        L"DirectionLight2Property");
  const VARIANT_BOOL faded = picture.gradient ? VARIANT_TRUE : VARIANT_FALSE;
  check(context_->put_GradientBackground(faded), L"GradientBackground");
  if (const auto& top = picture.gradient) {
    check(context_->setGradientColor(static_cast<float>(top->r), static_cast<float>(top->g),
                                     static_cast<float>(top->b)),
          L"setGradientColor");
  }
}

Frame Studio::aim(const PictureOptions& picture, const host::Bounds& shown) {
  _variant_t view = numberArray(viewNumbers(picture.view));
  check(context_->ViewParams(makeBox(shown).Get(), surplusOf(picture), &view), L"ViewParams");
  check(context_->put_DPIResolution(picture.dpi.value_or(screenDpi_)), L"DPIResolution");
  if (picture.camera) {
    return aimByText(picture);
  }
  const Surface& surface = picture.surface;
  const Frame frame(shown, picture.view, surface.width, surface.height, surplusOf(picture));
  if (!picture.perspective) {
    return frame;
  }
  const Frame deep = frame.inPerspective(shown, *picture.perspective);
  look(deep, picture);
  return deep;
}

void Studio::look(const Frame& frame, const PictureOptions& picture) {
  const auto camera = ClassObject(L"ZYNVue.ZYNCamera").create<IZYNCamera>();
  const host::Vector& target = frame.centre();
  const host::Vector eye = target - picture.view.direction;
  const host::Vector& up = picture.view.up;
  checkTold(camera->setCible(target.x, target.y, target.z), L"setCible");
  checkTold(camera->setOeil(eye.x, eye.y, eye.z), L"setOeil");
  checkTold(camera->setHaut(up.x, up.y, up.z), L"setHaut");
  checkTold(camera->put_Largeur(frame.pixel() * picture.surface.width), L"Largeur");
  checkTold(camera->put_Hauteur(frame.pixel() * picture.surface.height), L"Hauteur");
  checkTold(camera->put_Perspective(VARIANT_TRUE), L"Perspective");
  checkTold(camera->put_AngleOuverture(*picture.perspective), L"AngleOuverture");
  checkTold(context_->putref_Camera(camera.Get()), L"Camera");
}

Frame Studio::aimByText(const PictureOptions& picture) {
  const auto camera = cameraOfText(*picture.camera);
  lookWith(*context_.Get(), *camera.Get());
  const host::Vector target = vectorOf(*camera.Get(), &IZYNCamera::getCible);
  const host::Vector sight = target - vectorOf(*camera.Get(), &IZYNCamera::getOeil);
  const View view = viewAlong(sight, vectorOf(*camera.Get(), &IZYNCamera::getHaut));
  double width = 0;
  double height = 0;
  checkTold(camera->get_Largeur(&width), L"Largeur");
  checkTold(camera->get_Hauteur(&height), L"Hauteur");
  const Surface& surface = picture.surface;
  return {target, view, surface.width, surface.height,
          std::max(width / surface.width, height / surface.height)};
}

void Studio::annotate(const PictureOptions& picture, const Frame& frame) {
  for (const auto& object :
       makeAnnotations(picture, scene_.bounds(), frame, pixelScaleOf(picture))) {
    check(context_->Add(object.Get(), 0), L"Add");
  }
}

double Studio::pixelScaleOf(const PictureOptions& picture) const {
  return picture.dpi.value_or(screenDpi_) / screenDpi_;
}

double Studio::surplusOf(const PictureOptions& picture) const {
  const Surface& surface = picture.surface;
  const bool takesRoom = picture.annotations.dimensions;
  return picture.surplus +
         (takesRoom ? roomForDimensions(surface.width, surface.height, pixelScaleOf(picture))
                    : 0.0);
}

void Studio::write(const PictureOptions& picture) {
  checkTold(context_->put_QualiteJPEG(picture.quality), L"QualiteJPEG");
  checkTold(context_->Exporter(_bstr_t(picture.file.c_str())), L"Exporter");
}

}  // namespace zyn::shot
