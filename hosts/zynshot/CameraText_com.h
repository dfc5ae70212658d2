#pragma once

#include <wrl/client.h>

#include <string>

#include "ZYNVUE.h"

namespace zyn::shot {

/// The camera of a line of text, UTF-8. Throws UsageError for a text that is none.
Microsoft::WRL::ComPtr<IZYNCamera> cameraOfText(const std::string& text);

/// Has a context look with such a camera. Throws UsageError for one that sees nothing.
void lookWith(IZYN3DGLBitmapContext2& context, IZYNCamera& camera);

}  // namespace zyn::shot
