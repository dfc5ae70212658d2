#pragma once

#include <string>

namespace zyn {

/// A font as a host names it. The first one is that of all text that nobody has chosen one for.
struct FontFace {
  std::wstring family = L"Arial";
  bool bold = true;
  bool italic = false;

  bool operator==(const FontFace&) const = default;
};

}  // namespace zyn
