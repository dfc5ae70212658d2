#include "zynshot/CameraText_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/Utf8_win.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

/// What a member says of its argument is said of the option.
void checkOption(HRESULT result, const wchar_t* member) {
  try {
    host::checkTold(result, member);
  } catch (const host::ComFailure& failure) {
    const std::string cause = failure.what();
    const std::string argument = host::toUtf8(member) + ": ";
    throw UsageError("--camera: " +
                     (cause.starts_with(argument) ? cause.substr(argument.size()) : cause));
  }
}

}  // namespace

Microsoft::WRL::ComPtr<IZYNCamera> cameraOfText(const std::string& text) {
  const auto camera = host::ClassObject(L"ZYNVue.ZYNCamera").create<IZYNCamera>();
  checkOption(camera->put_Texte(_bstr_t(host::toWide(text).c_str())), L"Texte");
  return camera;
}

void lookWith(IZYN3DGLBitmapContext2& context, IZYNCamera& camera) {
  checkOption(context.putref_Camera(&camera), L"Camera");
}

}  // namespace zyn::shot
