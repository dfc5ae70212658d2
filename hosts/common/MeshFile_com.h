#pragma once

#include <wrl/client.h>

#include <filesystem>
#include <functional>

#include "ZYNVUE.h"

namespace zyn::host {

/// Told how far the loading is, 0 to 1. What it throws ends the loading.
using LoadProgress = std::function<void(double part)>;

/// A mesh object with the model of a file. Throws ComFailure: "file: line 17: what".
Microsoft::WRL::ComPtr<IZYNGLMaillage> loadMesh(const std::filesystem::path& file,
                                                const LoadProgress& progress);

}  // namespace zyn::host
