#pragma once

#include <string>

#include "vector/VectorPicture.h"

namespace zyn {

/// An SVG file (1.1, UTF-8) with a picture: texts are texts in the fonts that they were laid out
/// in, heat maps are pictures.
std::string writeSvg(const VectorPicture& picture);

}  // namespace zyn
