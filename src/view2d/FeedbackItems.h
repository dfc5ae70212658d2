#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "plot/Drawing.h"

namespace zyn {

/// Appends what OpenGL's feedback mode wrote of drawn lines and polygons, with corners of
/// GL_3D_COLOR, to what a drawing shows; in their order, lines `width` pixels wide. For each number
/// passed through, `marked` is called, which may append more. Pictures, of which only the place is
/// written, are left out.
void readFeedback(std::span<const float> buffer, double width,
                  const std::function<void(std::size_t number)>& marked,
                  std::vector<DrawnItem>& items);

}  // namespace zyn
