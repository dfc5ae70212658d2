#pragma once

#include <ocidl.h>
#include <wrl/client.h>

#include <filesystem>

namespace zyn::shot {

/// The picture object that the system makes of a file (BMP, GIF, JPEG, icon, metafile). Throws
/// std::runtime_error with one line when it cannot.
Microsoft::WRL::ComPtr<IPictureDisp> loadPicture(const std::filesystem::path& file);

}  // namespace zyn::shot
