#pragma once

#include <ocidl.h>
#include <windows.h>
#include <wrl/client.h>

#include "platform/WinHandles_win.h"

namespace zyn {

/// A picture object that owns `bitmap` from now on; null when it cannot be made.
Microsoft::WRL::ComPtr<IPictureDisp> makePicture(UniqueBitmap bitmap);

}  // namespace zyn
