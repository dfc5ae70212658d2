#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>

#include "objects/text/FontFace.h"
#include "objects/text/ShapedText.h"

namespace zyn {

/// Lines of text laid out in fonts, kept: a graph shows the same texts again and again.
class TextShapes {
 public:
  std::shared_ptr<const ShapedText> shaped(std::string_view utf8, const FontFace& face);

 private:
  /// As many are kept until all are let go.
  static constexpr std::size_t kMost = 1000;

  using Key = std::tuple<std::string, std::wstring, bool, bool>;
  std::map<Key, std::shared_ptr<const ShapedText>> kept_;
};

}  // namespace zyn
