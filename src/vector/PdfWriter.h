#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "objects/text/FontFace.h"
#include "vector/VectorPicture.h"

namespace zyn {

/// Reads a table of the font for a face; empty where there is none.
using ReadFaceTable =
    std::function<std::vector<std::uint8_t>(const FontFace& face, std::string_view name)>;

/// A PDF file (1.4) of one page with a picture. Texts are texts: the glyphs that they use are
/// embedded, with what they stand for. What is in a font without TrueType outlines is drawn as
/// areas that stand for the text.
std::vector<std::uint8_t> writePdf(const VectorPicture& picture, const ReadFaceTable& read);

}  // namespace zyn
