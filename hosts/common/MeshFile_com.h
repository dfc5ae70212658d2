#pragma once

#include <wrl/client.h>

#include <filesystem>

#include "ZYNVUE.h"
#include "common/LoadProgress_com.h"

namespace zyn::host {

/// A mesh object with the model of a file. Throws ComFailure: "file: line 17: what".
Microsoft::WRL::ComPtr<IZYNGLMaillage> loadMesh(const std::filesystem::path& file,
                                                const LoadProgress& progress);

}  // namespace zyn::host
