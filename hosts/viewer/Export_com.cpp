#include "viewer/Export_com.h"

#include <array>

#include "common/MeshObjects_com.h"
#include "common/NumberArray_com.h"
#include "common/OutputFile.h"
#include "viewer/PictureWriter_com.h"
#include "viewer/ViewCommands_com.h"

namespace zyn::viewer {

using host::check;

namespace {

/// Copies a property of the view that the context has under the same name.
template <typename Value>
void copy(IZYNVue3D& view, HRESULT (STDMETHODCALLTYPE IZYNVue3D::*get)(Value*),
          IZYN3DGLBitmapContext& context, auto put, const wchar_t* name) {
  std::conditional_t<std::is_same_v<Value, VARIANT>, _variant_t, Value> value{};
  check((view.*get)(&value), name);
  check((context.*put)(value), name);
}

void makeSurface(IZYNVue3D& view, IZYN3DGLBitmapContext& context, SIZE size) {
  using View = IZYNVue3D;
  using Context = IZYN3DGLBitmapContext;
  copy(view, &View::get_LineAntialiasing, context, &Context::put_LineAntialiasing,
       L"LineAntialiasing");
  copy(view, &View::get_PointAntialiasing, context, &Context::put_PointAntialiasing,
       L"PointAntialiasing");
  copy(view, &View::get_MultiSampleAntialiasing, context, &Context::put_MultiSampleAntialiasing,
       L"MultiSampleAntialiasing");
  check(context.put_BackColor(host::numberArray(std::array{1.0, 1.0, 1.0, 1.0})), L"BackColor");
  LONG created = 0;
  host::checkPicture(context.CreateContext(size.cx, size.cy, &created), L"CreateContext");
}

void copyLook(IZYNVue3D& view, IZYN3DGLBitmapContext& context) {
  using View = IZYNVue3D;
  using Context = IZYN3DGLBitmapContext;
  copy(view, &View::get_AmbientLightProperty, context, &Context::put_AmbientLightProperty,
       L"AmbientLightProperty");
  copy(view, &View::get_DirectionLight1Property, context, &Context::put_DirectionLight1Property,
       L"DirectionLight1Property");
  copy(view, &View::get_DirectionLight2Property, context, &Context::put_DirectionLight2Property,
       L"DirectionLight2Property");
  copy(view, &View::get_GradientBackground, context, &Context::put_GradientBackground,
       L"GradientBackground");
  const auto& [r, g, b] = kGradientTop;
  check(context.setGradientColor(r, g, b), L"setGradientColor");
}

}  // namespace

void exportPicture(IZYNVue3D& view, const Model& model, bool outline, SIZE size,
                   const std::filesystem::path& file, PictureFormat format) {
  host::probeOutputFile(file);
  const auto context =
      host::ClassObject(L"ZYNVue.ZYN3dGLBitmapContext").create<IZYN3DGLBitmapContext>();
  makeSurface(view, *context.Get(), size);
  copyLook(view, *context.Get());
  _variant_t frame;
  check(view.XFormView(&frame), L"XFormView");
  check(context->ViewParams(host::makeBox(model.bounds()).Get(), kMargin, &frame), L"ViewParams");
  model.addTo(*context.Get(), outline);
  writePicture(*context.Get(), file, format);
}

}  // namespace zyn::viewer
