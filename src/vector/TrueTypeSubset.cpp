#include "vector/TrueTypeSubset.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace zyn {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Tables that are read, in the order of their names, in which files have them.
constexpr std::string_view kNeeded[] = {"glyf", "head", "hhea", "hmtx", "loca", "maxp"};
constexpr std::string_view kHinting[] = {"cvt ", "fpgm", "prep"};

/// Numbers as font files have them; 0 beyond the end.
std::uint32_t readNumber(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value = value << 8 | (at + i < bytes.size() ? bytes[at + i] : 0U);
  }
  return value;
}
std::uint16_t read16(std::span<const std::uint8_t> bytes, std::size_t at) {
  return static_cast<std::uint16_t>(readNumber(bytes, at, 2));
}
std::int16_t readSigned(std::span<const std::uint8_t> bytes, std::size_t at) {
  return static_cast<std::int16_t>(read16(bytes, at));
}

void append(Bytes& bytes, std::uint32_t value, int size) {
  for (int i = size - 1; i >= 0; --i) {
    bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  }
}
void write(Bytes& bytes, std::size_t at, std::uint32_t value, int size) {
  Bytes number;
  append(number, value, size);
  std::ranges::copy(number, bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

std::uint32_t sumOf(const Bytes& bytes) {
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < bytes.size(); i += 4) {
    sum += readNumber(bytes, i, 4);
  }
  return sum;
}

/// Calls `each(place)` for the number of each glyph that an outline is made of.
template <class Each>
void forEachComponent(const Bytes& outline, const Each& each) {
  constexpr std::uint16_t kWords = 0x1, kScale = 0x8, kMore = 0x20, kTwoScales = 0x40,
                          kMatrix = 0x80;
  if (outline.size() < 10 || readSigned(outline, 0) >= 0) {
    return;
  }
  std::uint16_t flags = kMore;
  for (std::size_t at = 10; (flags & kMore) != 0 && at + 4 <= outline.size();) {
    flags = read16(outline, at);
    each(at + 2);
    at += (flags & kWords) != 0 ? 8 : 6;
    at += (flags & kScale) != 0 ? 2 : 0;
    at += (flags & kTwoScales) != 0 ? 4 : 0;
    at += (flags & kMatrix) != 0 ? 8 : 0;
  }
}

/// A file of tables.
Bytes fontFile(const std::map<std::string_view, Bytes>& tables) {
  Bytes file;
  append(file, 0x00010000, 4);
  const auto count = static_cast<std::uint32_t>(tables.size());
  std::uint32_t power = 1;
  std::uint32_t exponent = 0;
  for (; 2 * power <= count; power *= 2) {
    ++exponent;
  }
  append(file, count, 2);
  append(file, 16 * power, 2);
  append(file, exponent, 2);
  append(file, 16 * (count - power), 2);
  std::size_t place = file.size() + 16 * tables.size();
  std::size_t head = 0;
  for (const auto& [name, table] : tables) {
    head = name == "head" ? place : head;
    file.insert(file.end(), name.begin(), name.end());
    append(file, sumOf(table), 4);
    append(file, static_cast<std::uint32_t>(place), 4);
    append(file, static_cast<std::uint32_t>(table.size()), 4);
    place += (table.size() + 3) / 4 * 4;
  }
  for (const auto& [name, table] : tables) {
    file.insert(file.end(), table.begin(), table.end());
    file.resize((file.size() + 3) / 4 * 4);
  }
  write(file, head + 8, 0xB1B0AFBA - sumOf(file), 4);
  return file;
}

}  // namespace

std::optional<TrueTypeSubset> TrueTypeSubset::make(const ReadFontTable& read) {
  TrueTypeSubset font;
  for (const std::string_view name : kNeeded) {
    font.tables_[name] = read(name);
  }
  for (const std::string_view name : kHinting) {
    if (Bytes table = read(name); !table.empty()) {
      font.tables_[name] = std::move(table);
    }
  }
  const Bytes& head = font.tables_["head"];
  const Bytes& lines = font.tables_["hhea"];
  font.em_ = read16(head, 18);
  font.hasLongOffsets_ = read16(head, 50) != 0;
  font.ascent_ = readSigned(lines, 4);
  font.descent_ = readSigned(lines, 6);
  font.metricsCount_ = read16(lines, 34);
  font.count_ = read16(font.tables_["maxp"], 4);
  const bool isWhole = head.size() >= 54 && lines.size() >= 36 &&
                       font.tables_["maxp"].size() >= 6 && font.em_ >= 16 && font.count_ > 0 &&
                       font.metricsCount_ > 0 && !font.tables_["glyf"].empty();
  if (!isWhole) {
    return std::nullopt;
  }
  font.add(0);
  return font;
}

std::uint16_t TrueTypeSubset::add(std::uint16_t glyph) {
  if (glyph >= count_) {
    return 0;
  }
  const auto [place, isNew] = numbers_.emplace(glyph, static_cast<std::uint16_t>(glyphs_.size()));
  if (isNew) {
    glyphs_.push_back(glyph);
  }
  return place->second;
}

double TrueTypeSubset::advance(std::uint16_t number) const {
  return read16(metricsOf(glyphs_[number]), 0) / em_;
}

std::vector<double> TrueTypeSubset::box() const {
  std::vector<double> box;
  for (const std::size_t at : {36U, 38U, 40U, 42U}) {
    box.push_back(readSigned(tables_.at("head"), at) / em_);
  }
  return box;
}

TrueTypeSubset::Bytes TrueTypeSubset::outlineOf(std::uint16_t glyph) const {
  const Bytes& all = tables_.at("glyf");
  const Bytes& places = tables_.at("loca");
  const auto placeOf = [&](std::size_t index) {
    return hasLongOffsets_ ? std::size_t{readNumber(places, 4 * index, 4)}
                           : std::size_t{2} * read16(places, 2 * index);
  };
  const std::size_t first = placeOf(glyph);
  const std::size_t end = placeOf(glyph + std::size_t{1});
  if (glyph >= count_ || first >= end || end > all.size()) {
    return {};
  }
  return {all.begin() + static_cast<std::ptrdiff_t>(first),
          all.begin() + static_cast<std::ptrdiff_t>(end)};
}

TrueTypeSubset::Bytes TrueTypeSubset::metricsOf(std::uint16_t glyph) const {
  const Bytes& all = tables_.at("hmtx");
  const std::size_t own = std::min<std::size_t>(glyph, metricsCount_ - 1U);
  const std::size_t side =
      glyph < metricsCount_ ? 4 * own + 2 : 4 * std::size_t{metricsCount_} + 2 * (glyph - own - 1);
  Bytes metrics;
  append(metrics, read16(all, 4 * own), 2);
  append(metrics, read16(all, side), 2);
  return metrics;
}

std::vector<std::uint8_t> TrueTypeSubset::file() const {
  TrueTypeSubset whole = *this;
  Bytes outlines;
  Bytes places;
  Bytes metrics;
  append(places, 0, 4);
  std::size_t left = tables_.at("glyf").size();  // outlines that overlap could take any room
  for (std::size_t i = 0; i < whole.glyphs_.size(); ++i) {  // which grow
    Bytes outline = outlineOf(whole.glyphs_[i]);
    if (outline.size() > left) {
      outline.clear();
    }
    left -= outline.size();
    forEachComponent(
        outline, [&](std::size_t at) { write(outline, at, whole.add(read16(outline, at)), 2); });
    outlines.insert(outlines.end(), outline.begin(), outline.end());
    outlines.resize((outlines.size() + 3) / 4 * 4);
    append(places, static_cast<std::uint32_t>(outlines.size()), 4);
    const Bytes own = metricsOf(whole.glyphs_[i]);
    metrics.insert(metrics.end(), own.begin(), own.end());
  }
  const auto count = static_cast<std::uint16_t>(whole.glyphs_.size());
  auto& tables = whole.tables_;
  write(tables["head"], 8, 0, 4);
  write(tables["head"], 50, 1, 2);
  write(tables["hhea"], 34, count, 2);
  write(tables["maxp"], 4, count, 2);
  tables["glyf"] = std::move(outlines);
  tables["loca"] = std::move(places);
  tables["hmtx"] = std::move(metrics);
  return fontFile(tables);
}

}  // namespace zyn
