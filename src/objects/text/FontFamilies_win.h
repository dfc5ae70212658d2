#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "objects/text/CharacterRanges.h"

namespace zyn {

/// The fonts with outlines that are installed, and which of them has a glyph for what.
class FontFamilies {
 public:
  /// A family that has all characters of a cluster (see TextClusters.h) or, where none does, the
  /// first one. None where no font has that. Clears `isWhole` where the system refuses to tell.
  std::optional<std::wstring> familyFor(HDC dc, std::wstring_view cluster, bool& isWhole);

 private:
  struct Family {
    std::wstring name;
    std::optional<CharacterRanges> characters{};  ///< read when they are first needed
  };

  void findInstalled(HDC dc);
  static bool readCharacters(HDC dc, Family& family);
  std::optional<std::wstring> search(HDC dc, std::wstring_view cluster, bool& isWhole);

  std::vector<Family> families_;
  std::unordered_map<std::wstring, std::optional<std::wstring>> answers_;
};

/// Whether a font with these characters can draw a cluster, or at least the first one of it.
bool canDraw(const CharacterRanges& characters, std::wstring_view cluster);
bool canBegin(const CharacterRanges& characters, std::wstring_view cluster);

}  // namespace zyn
