#include "vector/PdfWriter.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <string>

#include "vector/Pictures.h"
#include "vector/TrueTypeSubset.h"

namespace zyn {
namespace {

using test::lineThrough;
using test::pictureOf;
using test::textOf;

using Bytes = std::vector<std::uint8_t>;

std::uint32_t number(const Bytes& bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value = value << 8 | bytes.at(at + i);
  }
  return value;
}

/// The tables of a font file, each where its directory says, with the sum that it says.
std::map<std::string, Bytes> tablesOf(const Bytes& file) {
  std::map<std::string, Bytes> tables;
  const std::size_t count = number(file, 4, 2);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = 12 + 16 * i;
    const auto at = static_cast<std::ptrdiff_t>(number(file, entry + 8, 4));
    const auto size = static_cast<std::ptrdiff_t>(number(file, entry + 12, 4));
    EXPECT_LE(static_cast<std::size_t>(at + size), file.size());
    tables[std::string(file.begin() + static_cast<std::ptrdiff_t>(entry),
                       file.begin() + static_cast<std::ptrdiff_t>(entry) + 4)] =
        Bytes(file.begin() + at, file.begin() + at + size);
  }
  return tables;
}

/// A font that is installed wherever pictures are tested.
const std::map<std::string, Bytes>& liberation() {
  static const std::map<std::string, Bytes> tables = [] {
    std::ifstream file("/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf",
                       std::ios::binary);
    return tablesOf(Bytes(std::istreambuf_iterator<char>(file), {}));
  }();
  return tables;
}

Bytes tableOf(std::string_view name) {
  const auto found = liberation().find(std::string(name));
  return found != liberation().end() ? found->second : Bytes();
}

/// By its place in the character map of format 4 of the font.
std::uint16_t glyphOf(std::uint32_t character) {
  const Bytes map = tableOf("cmap");
  for (std::size_t i = 0; i < number(map, 2, 2); ++i) {
    const std::size_t at = number(map, 4 + 8 * i + 4, 4);
    if (number(map, at, 2) != 4) {
      continue;
    }
    const std::size_t segments = number(map, at + 6, 2);
    for (std::size_t k = 0; k < segments; k += 2) {
      const std::uint32_t last = number(map, at + 14 + k, 2);
      const std::uint32_t first = number(map, at + 16 + segments + k, 2);
      const std::uint32_t delta = number(map, at + 16 + 2 * segments + k, 2);
      const std::size_t range = at + 16 + 3 * segments + k;
      const std::uint32_t offset = number(map, range, 2);
      if (character < first || character > last) {
        continue;
      }
      return static_cast<std::uint16_t>(
          offset == 0 ? character + delta
                      : number(map, range + offset + 2 * (character - first), 2));
    }
  }
  return 0;
}

TEST(TrueTypeSubsetTest, HoldsGlyphsAndTheirParts) {
  ASSERT_FALSE(liberation().empty());
  auto subset = TrueTypeSubset::make(tableOf);
  ASSERT_TRUE(subset);
  const std::uint16_t a = subset->add(glyphOf('a'));
  const std::uint16_t accented = subset->add(glyphOf(0xE4));
  EXPECT_EQ(a, 1);
  EXPECT_EQ(accented, 2);
  EXPECT_EQ(subset->add(glyphOf('a')), 1);
  EXPECT_NEAR(subset->advance(a), 0.556, 0.001);
  const Bytes file = subset->file();
  EXPECT_LT(file.size(), 20'000U);
  const auto tables = tablesOf(file);
  const std::uint32_t count = number(tables.at("maxp"), 4, 2);
  EXPECT_GE(count, 4U) << "the accent is a glyph of its own";
  EXPECT_EQ(tables.at("hmtx").size(), 4 * count);
  EXPECT_EQ(tables.at("loca").size(), 4 * (count + 1));
  EXPECT_EQ(number(tables.at("loca"), 4 * count, 4), tables.at("glyf").size());
  // Of the accented one the parts have their new numbers, the letter is one of them.
  const std::size_t outline = number(tables.at("loca"), 4 * accented, 4);
  EXPECT_EQ(number(tables.at("glyf"), outline, 2), 0xFFFFU);
  EXPECT_EQ(number(tables.at("glyf"), outline + 12, 2), a);
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < file.size(); i += 4) {
    sum += number(file, i, 4);
  }
  EXPECT_EQ(sum, 0xB1B0AFBAU);
}

TEST(TrueTypeSubsetTest, BrokenFontsAreNone) {
  EXPECT_FALSE(TrueTypeSubset::make([](std::string_view) { return Bytes(); }));
  EXPECT_FALSE(TrueTypeSubset::make(
      [](std::string_view name) { return name == "glyf" ? Bytes() : tableOf(name); }));
}

TEST(TrueTypeSubsetTest, BrokenTablesAreReadWithinTheirEnds) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    auto subset = TrueTypeSubset::make([&](std::string_view name) {
      Bytes table = tableOf(name);
      if (round % 3 == 0 && !table.empty()) {
        table.resize(random() % table.size());
      }
      for (int i = 0; i < 8 && !table.empty(); ++i) {
        table[random() % std::min<std::size_t>(table.size(), 4096)] =
            static_cast<std::uint8_t>(random());
      }
      return table;
    });
    for (int i = 0; subset && i < 5; ++i) {
      subset->add(static_cast<std::uint16_t>(random()));
      EXPECT_GE(subset->file().size(), 100U);
    }
  }
}

/// A file, of which the objects are where its table says.
class PdfDocument {
 public:
  explicit PdfDocument(const VectorPicture& picture)
      : PdfDocument(writePdf(picture, [](const FontFace& face, std::string_view name) {
          return face.family == L"Missing" ? Bytes() : tableOf(name);
        })) {}

  explicit PdfDocument(const Bytes& bytes) : file_(bytes.begin(), bytes.end()) {
    const std::size_t at = std::stoul(file_.substr(file_.rfind("startxref") + 10));
    EXPECT_EQ(file_.substr(at, 7), "xref\n0 ");
    const std::size_t count = std::stoul(file_.substr(at + 7));
    std::size_t entry = file_.find("\n", at + 7) + 1;
    for (std::size_t i = 1; i < count; ++i) {
      const std::size_t place = std::stoul(file_.substr(entry + 20 * i, 10));
      const std::string start = std::to_string(i) + " 0 obj\n";
      EXPECT_EQ(file_.substr(place, start.size()), start);
      objects_.push_back(file_.substr(place, file_.find("endobj", place) - place));
    }
  }

  const std::string& file() const { return file_; }

  /// The first object that holds a text.
  std::string object(const std::string& text) const {
    for (const std::string& each : objects_) {
      if (each.find(text) != std::string::npos) {
        return each;
      }
    }
    return {};
  }
  /// What the object has of that number that another object refers to after `name`.
  std::string referred(const std::string& name) const {
    const std::size_t at = file_.find(name + ' ');
    if (at == std::string::npos) {
      return {};
    }
    return inflated(objects_.at(std::stoul(file_.substr(at + name.size())) - 1));
  }
  std::string content() const { return referred("/Contents"); }

 private:
  static std::string inflated(const std::string& object) {
    const std::size_t start = object.find("stream\n") + 7;
    std::string result(1 << 22, '\0');
    uLongf size = result.size();
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(object.data() + start));
    stream.avail_in = static_cast<uInt>(object.size() - start);
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(size);
    EXPECT_EQ(inflateInit(&stream), Z_OK);
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    result.resize(stream.total_out);
    inflateEnd(&stream);
    return result;
  }

  std::string file_;
  std::vector<std::string> objects_;
};

TEST(PdfWriterTest, APixelIsAUnit) {
  const PdfDocument document(VectorPicture{{}, 640, 480.5});
  EXPECT_NE(document.object("/Type /Page ").find("/MediaBox [0 0 640 480.5]"), std::string::npos);
  EXPECT_EQ(document.file().substr(0, 9), "%PDF-1.4\n");
}

TEST(PdfWriterTest, LinesAndAreas) {
  DrawnLines lines;
  lines.stroke.colour = {1, 0.5, 0, 0.25};
  lines.stroke.width = 1.5;
  lines.stroke.dashes = {4, 2};
  lines.lines = lineThrough({{11, 22}, {33.25, 24}});
  const PdfDocument document(
      pictureOf({lines, DrawnBoxes{{0, 0, 1, 1}, {{10, 20, 30, 40}}}}, PixelBox{5, 100, 10, 90}));
  EXPECT_EQ(document.content(),
            "q\n5 10 95 80 re W n\n"
            "q 1 0.5 0 RG /G1 gs 1.5 w 1 j [4 2 ] 0 d 11 22 m 33.25 24 l\nS\nQ\n"
            "q 0 0 1 rg 10 30 m 20 30 l\n20 40 l\n10 40 l\nh f\nQ\n"
            "Q\n");
  EXPECT_NE(document.object("/ExtGState").find("/G1 << /ca 0.25 /CA 0.25 >>"), std::string::npos);
}

DrawnText shapedText(const std::wstring& text, const std::wstring& family = L"Arial") {
  DrawnText drawn = textOf(std::string(text.begin(), text.end()));
  ShapedText shaped;
  shaped.fonts = {FontFace{family, false, false}};
  double pen = 0;
  auto subset = TrueTypeSubset::make(tableOf);
  for (const wchar_t letter : text) {
    const std::uint16_t glyph = glyphOf(static_cast<std::uint32_t>(letter));
    shaped.fontGlyphs.push_back({0, glyph, {pen, 0}, std::wstring(1, letter)});
    pen += subset->advance(subset->add(glyph));
  }
  shaped.width = pen;
  drawn.shaped = std::make_shared<const ShapedText>(std::move(shaped));
  return drawn;
}

TEST(PdfWriterTest, TextsAreGlyphsWithWhatTheyStandFor) {
  DrawnText text = shapedText(L"abba c");
  text.emHeight = 10;
  const PdfDocument document(pictureOf({text}));
  EXPECT_NE(
      document.content().find("BT /F1 10 Tf 1 0 0 1 20 30 Tm [<000100020002000100030004>] TJ ET"),
      std::string::npos)
      << document.content();
  EXPECT_NE(document.referred("/ToUnicode")
                .find("4 beginbfchar\n<0001> <0061>\n<0002> <0062>\n"
                      "<0003> <0020>\n<0004> <0063>\nendbfchar"),
            std::string::npos);
  EXPECT_NE(document.object("/CIDFontType2").find("/W [0 [365 556 556 278 500 ]]"),
            std::string::npos)
      << document.object("/CIDFontType2");
  const std::string program = document.referred("/FontFile2");
  EXPECT_EQ(number(tablesOf(Bytes(program.begin(), program.end())).at("maxp"), 4, 2), 5U);
  EXPECT_EQ(document.content().find("ActualText"), std::string::npos);
}

TEST(PdfWriterTest, UprightTextsAreTurned) {
  DrawnText text = shapedText(L"a");
  text.isUpright = true;
  EXPECT_NE(PdfDocument(pictureOf({text})).content().find("0 1 -1 0 20 30 Tm"), std::string::npos);
}

TEST(PdfWriterTest, WhatGlyphsDoNotTellIsSaid) {
  DrawnText text = shapedText(L"ab");
  text.text =
      "\xC3\xA9"
      "b";
  EXPECT_NE(PdfDocument(pictureOf({text})).content().find("/ActualText <FEFF00E90062>"),
            std::string::npos);
}

/// Glyphs are in the order in which they are seen; readers turn Hebrew round by themselves.
TEST(PdfWriterTest, TextFromRightToLeftIsToldByItsGlyphs) {
  DrawnText text = shapedText(L"\x05DD\x05D5");
  text.text = "\xD7\x95\xD7\x9D";
  const PdfDocument document(pictureOf({text}));
  EXPECT_EQ(document.content().find("ActualText"), std::string::npos);
  EXPECT_NE(document.referred("/ToUnicode").find("<05DD>"), std::string::npos);
}

TEST(PdfWriterTest, FontsThatCannotBeEmbeddedAreOutlines) {
  DrawnText text = shapedText(L"a", L"Missing");
  auto shaped = *text.shaped;
  const auto shape = std::make_shared<const GlyphShape>(
      GlyphShape{.contours = {{{0, 0}, {0.5, 0}, {0.5, 1}}}, .filled = {}});
  shaped.glyphs = {{shape, {0, 0}}};
  text.shaped = std::make_shared<const ShapedText>(std::move(shaped));
  text.emHeight = 10;
  const std::string content = PdfDocument(pictureOf({text})).content();
  EXPECT_NE(content.find("/ActualText <FEFF0061>"), std::string::npos);
  EXPECT_NE(content.find("20 30 m 25 30 l\n25 40 l\nh f"), std::string::npos) << content;
}

TEST(PdfWriterTest, PicturesHaveTheirAlphaBesides) {
  const auto image =
      std::make_shared<const PixelImage>(PixelImage{1, 2, {1, 2, 3, 255, 4, 5, 6, 128}});
  const PdfDocument document(pictureOf({DrawnImage{image, {10, 60, 20, 90}, true}}));
  EXPECT_NE(document.content().find("q 50 0 0 70 10 20 cm /I2 Do Q"), std::string::npos);
  EXPECT_NE(document.object("/DeviceRGB /SMask").find("/Width 1 /Height 2"), std::string::npos);
  EXPECT_NE(document.object("/DeviceRGB").find("/Interpolate true"), std::string::npos);
  EXPECT_EQ(document.referred("/I2"), std::string("\x04\x05\x06\x01\x02\x03"));
  EXPECT_EQ(document.referred("/SMask"), std::string("\x80\xFF"));
}

}  // namespace
}  // namespace zyn
