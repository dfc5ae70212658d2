#pragma once

#include <functional>
#include <vector>

#include "glcontext/Tile.h"

namespace zyn {

/// What `draw` shows of a part of the picture, as FeedbackShapes reads it, with corners in pixels
/// of the viewport. `draw` is called in OpenGL's feedback mode, once, or again for each larger
/// buffer; otherwise as runPickPass. A context that is not in render mode shows nothing.
std::vector<float> runFeedbackPass(const PicturePart& part,
                                   const std::function<void(const PicturePart&)>& draw);

/// The same with depths and colours of the corners, as readFeedback reads it.
std::vector<float> runColouredFeedbackPass(const std::function<void()>& draw);

}  // namespace zyn
