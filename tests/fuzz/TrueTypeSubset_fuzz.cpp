#include "vector/TrueTypeSubset.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Tables = std::map<std::string, Bytes, std::less<>>;

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// Takes bytes off the front, as many as there are.
std::span<const std::uint8_t> take(std::span<const std::uint8_t>& from, std::size_t count) {
  const auto taken = from.first(std::min(count, from.size()));
  from = from.subspan(taken.size());
  return taken;
}

std::size_t numberIn(std::span<const std::uint8_t> bytes) {
  std::size_t number = 0;
  for (const std::uint8_t byte : bytes) {
    number = number << 8 | byte;
  }
  return number;
}
std::size_t numberAt(const Bytes& bytes, std::size_t at, std::size_t size) {
  require(at + size <= bytes.size());
  return numberIn(std::span(bytes).subspan(at, size));
}

/// The tables of a font file, which lie in it.
Tables tablesOf(const Bytes& file) {
  Tables tables;
  for (std::size_t i = 0; i < numberAt(file, 4, 2); ++i) {
    const std::size_t entry = 12 + 16 * i;
    const std::size_t at = numberAt(file, entry + 8, 4);
    const std::size_t size = numberAt(file, entry + 12, 4);
    require(at % 4 == 0 && at + size <= file.size());
    const auto begin = file.begin();
    tables[std::string(begin + static_cast<std::ptrdiff_t>(entry),
                       begin + static_cast<std::ptrdiff_t>(entry) + 4)] =
        Bytes(begin + static_cast<std::ptrdiff_t>(at),
              begin + static_cast<std::ptrdiff_t>(at + size));
  }
  return tables;
}

/// Readers of the font find every glyph, with its outline and its metrics.
void checkFile(const Bytes& file, std::size_t given, std::size_t added) {
  const Tables tables = tablesOf(file);
  const std::size_t count = numberAt(tables.at("maxp"), 4, 2);
  require(count >= added);
  require(numberAt(tables.at("hhea"), 34, 2) == count);
  require(tables.at("hmtx").size() == 4 * count);
  require(tables.at("loca").size() == 4 * (count + 1));
  std::size_t last = 0;
  for (std::size_t i = 0; i <= count; ++i) {
    const std::size_t place = numberAt(tables.at("loca"), 4 * i, 4);
    require(place >= last);
    last = place;
  }
  require(last == tables.at("glyf").size());
  // No more than what was there, rounded up, a directory, and what each glyph needs.
  require(file.size() <= given + 12 + (16 + 3) * tables.size() + (4 + 4 + 3) * (count + 1));
}

}  // namespace

/// For each table its size in two bytes and what it holds; then the glyphs of the subset, two bytes
/// each.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::span rest(data, size);
  Tables tables;
  for (const char* const name :
       {"head", "hhea", "maxp", "hmtx", "loca", "glyf", "cvt ", "fpgm", "prep"}) {
    const auto bytes = take(rest, numberIn(take(rest, 2)));
    tables[name] = Bytes(bytes.begin(), bytes.end());
  }
  auto font =
      zyn::TrueTypeSubset::make([&](std::string_view name) { return tables.find(name)->second; });
  if (!font) {
    return 0;
  }
  while (rest.size() >= 2) {
    const auto glyph = static_cast<std::uint16_t>(numberIn(take(rest, 2)));
    const std::uint16_t number = font->add(glyph);
    require(number < font->size() && font->add(glyph) == number);
    require(font->advance(number) >= 0 && font->advance(number) <= 4096);
  }
  require(font->box().size() == 4);
  require(std::isfinite(font->ascent()) && std::isfinite(font->descent()));
  checkFile(font->file(), size, font->size());
  return 0;
}
