#include "objects/text/FontFamilies_win.h"

#include <array>
#include <new>
#include <set>

#include "objects/text/GdiFont_win.h"
#include "objects/text/TextClusters.h"

namespace zyn {

namespace {

constexpr std::size_t kMostAnswers = 10000;

/// Well-made fonts of many scripts, before all others, in which anything may be found.
constexpr std::array kPreferred = {L"Arial",
                                   L"Segoe UI",
                                   L"Segoe UI Symbol",
                                   L"Segoe UI Emoji",
                                   L"Tahoma",
                                   L"Cambria Math",
                                   L"Yu Gothic",
                                   L"Meiryo",
                                   L"Microsoft YaHei",
                                   L"Malgun Gothic",
                                   L"Microsoft JhengHei",
                                   L"Nirmala UI",
                                   L"Leelawadee UI",
                                   L"Ebrima",
                                   L"Gadugi",
                                   L"DejaVu Sans",
                                   L"Noto Sans"};

/// What the system lists.
struct Installed {
  std::set<std::wstring> names;
  bool isOutOfMemory = false;
};

int CALLBACK takeFamily(const LOGFONTW* font, const TEXTMETRICW* metrics, DWORD kind,
                        LPARAM taken) noexcept {
  const auto* const measures = reinterpret_cast<const NEWTEXTMETRICW*>(metrics);
  const bool hasOutlines = (kind & TRUETYPE_FONTTYPE) != 0 ||
                           (measures->ntmFlags & (NTM_PS_OPENTYPE | NTM_TT_OPENTYPE)) != 0;
  const bool isVertical = font->lfFaceName[0] == L'@';
  if (!hasOutlines || isVertical) {
    return TRUE;
  }
  auto& installed = *reinterpret_cast<Installed*>(taken);
  try {
    installed.names.insert(font->lfFaceName);
  } catch (const std::bad_alloc&) {
    installed.isOutOfMemory = true;
  }
  return TRUE;
}

}  // namespace

bool canDraw(const CharacterRanges& characters, std::wstring_view cluster) {
  for (std::size_t i = 0; i < cluster.size();) {
    const TextCharacter character = characterAt(cluster, i);
    if (!isFormatting(character.code) && !characters.contain(character.code)) {
      return false;
    }
    i += character.length;
  }
  return true;
}

bool canBegin(const CharacterRanges& characters, std::wstring_view cluster) {
  return characters.contain(characterAt(cluster, 0).code);
}

std::optional<std::wstring> FontFamilies::familyFor(HDC dc, std::wstring_view cluster,
                                                    bool& isWhole) {
  std::wstring key(cluster);
  if (const auto known = answers_.find(key); known != answers_.end()) {
    return known->second;
  }
  if (families_.empty()) {
    findInstalled(dc);
  }
  bool isKnown = !families_.empty();
  auto found = search(dc, cluster, isKnown);
  if (!isKnown) {
    isWhole = false;
    return found;
  }
  if (answers_.size() >= kMostAnswers) {
    answers_.clear();
  }
  answers_.emplace(std::move(key), found);
  return found;
}

void FontFamilies::findInstalled(HDC dc) {
  LOGFONTW any = {};
  any.lfCharSet = DEFAULT_CHARSET;
  Installed installed;
  EnumFontFamiliesExW(dc, &any, takeFamily, reinterpret_cast<LPARAM>(&installed), 0);
  if (installed.isOutOfMemory) {
    throw std::bad_alloc();
  }
  std::vector<Family> families;
  families.reserve(installed.names.size());
  for (const wchar_t* preferred : kPreferred) {
    if (installed.names.erase(preferred) != 0) {
      families.push_back({preferred});
    }
  }
  for (const std::wstring& name : installed.names) {
    families.push_back({name});
  }
  families_ = std::move(families);
}

bool FontFamilies::readCharacters(HDC dc, Family& family) {
  if (family.characters) {
    return true;
  }
  const UniqueFont font = makeFont({family.name, false, false});
  if (!font) {
    return false;
  }
  const SelectedFont selected(dc, font.get());
  bool isWhole = true;
  CharacterRanges characters = charactersOf(dc, isWhole);
  if (isWhole) {
    family.characters = std::move(characters);
  }
  return isWhole;
}

std::optional<std::wstring> FontFamilies::search(HDC dc, std::wstring_view cluster, bool& isWhole) {
  for (const auto suits : {canDraw, canBegin}) {
    for (Family& family : families_) {
      if (!readCharacters(dc, family)) {
        isWhole = false;
      } else if (suits(*family.characters, cluster)) {
        return family.name;
      }
    }
  }
  return std::nullopt;
}

}  // namespace zyn
