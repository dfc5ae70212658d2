#pragma once

#include <wrl/client.h>

#include <vector>

#include "ZYNVUE.h"
#include "common/Vector.h"
#include "zynshot/Frame.h"
#include "zynshot/PictureOptions.h"

namespace zyn::shot {

/// What a picture of a model within `bounds`, which shows `frame`, is annotated with, as scene
/// objects that go on top of the model. `pixelScale`: pixels of the picture for a pixel of a
/// screen. Throws std::runtime_error for a logo that cannot be read.
std::vector<Microsoft::WRL::ComPtr<IDispatch>> makeAnnotations(const PictureOptions& picture,
                                                               const host::Bounds& bounds,
                                                               const Frame& frame,
                                                               double pixelScale);

}  // namespace zyn::shot
