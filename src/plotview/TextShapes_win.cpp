#include "plotview/TextShapes_win.h"

#include "core/Utf8.h"
#include "objects/text/TextShaper_win.h"

namespace zyn {

std::shared_ptr<const ShapedText> TextShapes::shaped(std::string_view utf8, const FontFace& face) {
  const Key key(utf8, face.family, face.bold, face.italic);
  if (const auto found = kept_.find(key); found != kept_.end()) {
    return found->second;
  }
  bool isWhole = true;
  auto made = shapeText(wideOf(utf8), face, isWhole);
  if (kept_.size() >= kMost) {
    kept_.clear();
  }
  if (isWhole) {
    kept_.emplace(key, made);
  }
  return made;
}

}  // namespace zyn
