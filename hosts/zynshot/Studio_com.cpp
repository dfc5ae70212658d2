#include "zynshot/Studio_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/MeshObjects_com.h"
#include "common/NumberArray_com.h"
#include "zynshot/AnnotationObjects_com.h"
#include "zynshot/Dimensions.h"

namespace zyn::shot {

using host::check;
using host::checkPicture;
using host::ClassObject;
using host::numberArray;

Studio::Studio(Scene& scene)
    : scene_(scene),
      context_(ClassObject(L"ZYNVue.ZYN3dGLBitmapContext").create<IZYN3DGLBitmapContext>()),
      box_(host::makeBox(scene.bounds())) {
  check(context_->get_DPIResolution(&screenDpi_), L"DPIResolution");
}

void Studio::take(const PictureOptions& picture) {
  prepare(picture.surface);
  light(picture);
  aim(picture);
  scene_.paint(picture.appearance);
  scene_.show(*context_.Get(), picture);
  annotate(picture);
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

void Studio::aim(const PictureOptions& picture) {
  _variant_t frame = numberArray(frameOf(picture.view));
  check(context_->ViewParams(box_.Get(), surplusOf(picture), &frame), L"ViewParams");
  check(context_->put_DPIResolution(picture.dpi.value_or(screenDpi_)), L"DPIResolution");
}

void Studio::annotate(const PictureOptions& picture) {
  const Frame frame(scene_.bounds(), picture.view, picture.surface.width, picture.surface.height,
                    surplusOf(picture));
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
  const _bstr_t file(picture.file.c_str());
  switch (picture.format) {
    case PictureFormat::kBmp:
      checkPicture(context_->CreateBitmap(file), L"CreateBitmap");
      break;
    case PictureFormat::kJpeg:
      checkPicture(context_->CreateJPG(nullptr, file, picture.quality), L"CreateJPG");
      break;
    case PictureFormat::kGif:
      checkPicture(context_->CreateGIF(nullptr, file), L"CreateGIF");
      break;
    case PictureFormat::kPng:
      checkPicture(context_->CreatePNG(nullptr, file), L"CreatePNG");
      break;
  }
}

}  // namespace zyn::shot
