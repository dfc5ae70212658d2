#include "vector/SvgWriter.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <pugixml.hpp>
#include <sstream>

#include "vector/NumberText.h"
#include "vector/Pictures.h"
#include "vector/PngEncoder.h"
#include "vector/XmlText.h"

namespace zyn {
namespace {

using test::lineThrough;
using test::pictureOf;
using test::textOf;

/// The file, read by another.
class SvgDocument {
 public:
  explicit SvgDocument(const VectorPicture& picture) : SvgDocument(writeSvg(picture)) {}
  explicit SvgDocument(const std::string& file) {
    const pugi::xml_parse_result result = document_.load_buffer(file.data(), file.size());
    EXPECT_TRUE(result) << result.description() << "\n" << file;
  }

  pugi::xml_node root() const { return document_.child("svg"); }
  pugi::xml_node layer() const { return root().child("g"); }
  pugi::xml_node item(const char* name) const { return layer().child(name); }

 private:
  pugi::xml_document document_;
};

std::string attributeOf(const pugi::xml_node& node, const char* name) {
  return node.attribute(name).value();
}

TEST(SvgWriterTest, APixelIsAUnit) {
  const SvgDocument document(VectorPicture{{}, 640, 480.5});
  EXPECT_EQ(attributeOf(document.root(), "width"), "640");
  EXPECT_EQ(attributeOf(document.root(), "height"), "480.5");
  EXPECT_EQ(attributeOf(document.root(), "viewBox"), "0 0 640 480.5");
}

TEST(SvgWriterTest, LinesAreStroked) {
  DrawnLines lines;
  lines.stroke.colour = {1, 0.5, 0, 0.25};
  lines.stroke.width = 1.5;
  lines.stroke.dashes = {4, 2.5};
  lines.lines = {{{1, 2}, {3, 4}, {5.25, 6}, {7, 8}}, {0, 2}};
  const SvgDocument document(pictureOf({lines}));
  const pugi::xml_node path = document.item("path");
  EXPECT_EQ(attributeOf(path, "d"), "M1 98 3 96M5.25 94 7 92");
  EXPECT_EQ(attributeOf(path, "fill"), "none");
  EXPECT_EQ(attributeOf(path, "stroke"), "#ff8000");
  EXPECT_EQ(attributeOf(path, "stroke-opacity"), "0.25");
  EXPECT_EQ(attributeOf(path, "stroke-width"), "1.5");
  EXPECT_EQ(attributeOf(path, "stroke-dasharray"), "4 2.5");
}

TEST(SvgWriterTest, APointOnItsOwnIsADisc) {
  DrawnLines lines;
  lines.stroke.width = 3;
  lines.lines = lineThrough({{10, 20}});
  const SvgDocument document(pictureOf({lines}));
  const pugi::xml_node path = document.item("path");
  EXPECT_EQ(attributeOf(path, "d"), "M10 80h0");
  EXPECT_EQ(attributeOf(path, "stroke-linecap"), "round");
  EXPECT_EQ(attributeOf(path, "stroke-width"), "3");
}

TEST(SvgWriterTest, AreasReachTheirBase) {
  const SvgDocument document(
      pictureOf({DrawnArea{{0, 0, 1, 0.5}, lineThrough({{10, 50}, {20, 60}, {30, 55}}), 40}}));
  const pugi::xml_node path = document.item("path");
  EXPECT_EQ(attributeOf(path, "d"), "M10 60 10 50 20 40 30 45 30 60Z");
  EXPECT_EQ(attributeOf(path, "fill"), "#0000ff");
  EXPECT_EQ(attributeOf(path, "fill-opacity"), "0.5");
}

TEST(SvgWriterTest, LayersAreClipped) {
  const SvgDocument document(
      pictureOf({DrawnBoxes{{}, {{0, 10, 0, 10}, {20, 30, 0, 10}}}}, PixelBox{5, 150, 10, 90}));
  const pugi::xml_node clip = document.root().child("clipPath");
  EXPECT_EQ(attributeOf(document.layer(), "clip-path"), "url(#" + attributeOf(clip, "id") + ")");
  EXPECT_EQ(attributeOf(clip.child("rect"), "y"), "10");
  EXPECT_EQ(attributeOf(clip.child("rect"), "height"), "80");
  EXPECT_EQ(attributeOf(document.item("path"), "d"),
            "M0 100 10 100 10 90 0 90ZM20 100 30 100 30 90 20 90Z");
}

TEST(SvgWriterTest, MarkersAreAsLargeAsTheirSize) {
  const auto shown = [](MarkerShape shape) {
    return attributeOf(
        SvgDocument(pictureOf({DrawnMarkers{.shape = shape, .size = 8, .middles = {{50, 50}}}}))
            .item("path"),
        "d");
  };
  EXPECT_EQ(shown(MarkerShape::kCircle), "M50 50h0");
  EXPECT_EQ(shown(MarkerShape::kSquare), "M46 54 54 54 54 46 46 46Z");
  EXPECT_EQ(shown(MarkerShape::kTriangle), "M46 54 54 54 50 46Z");
  EXPECT_EQ(shown(MarkerShape::kDiamond), "M50 54 54 50 50 46 46 50Z");
  EXPECT_EQ(shown(MarkerShape::kCross), "M46 54 54 46M46 46 54 54");
  EXPECT_EQ(shown(MarkerShape::kPlus), "M46 50 54 50M50 54 50 46");
  EXPECT_EQ(shown(MarkerShape::kNone), "");
}

TEST(SvgWriterTest, TextsAreTexts) {
  DrawnText text = textOf("L < 5 & \"µ\" Ø  °");
  text.face = {L"Arial", true, true};
  text.emHeight = 12.5;
  text.isUpright = true;
  text.colour = {1, 0, 0, 1};
  const SvgDocument document(pictureOf({text}));
  const pugi::xml_node node = document.item("text");
  EXPECT_EQ(node.text().get(), std::string("L < 5 & \"µ\" Ø  °"));
  EXPECT_EQ(attributeOf(node, "font-family"), "'Arial', sans-serif");
  EXPECT_EQ(attributeOf(node, "font-weight"), "bold");
  EXPECT_EQ(attributeOf(node, "font-style"), "italic");
  EXPECT_EQ(attributeOf(node, "font-size"), "12.5");
  EXPECT_EQ(attributeOf(node, "x"), "20");
  EXPECT_EQ(attributeOf(node, "y"), "70");
  EXPECT_EQ(attributeOf(node, "transform"), "rotate(-90 20 70)");
  EXPECT_EQ(attributeOf(node, "fill"), "#ff0000");
}

TEST(SvgWriterTest, WhatXmlDoesNotTakeIsReplaced) {
  EXPECT_EQ(xmlText("a\x01"
                    "b"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(xmlText("\xC3"), "\xEF\xBF\xBD") << "broken off";
  EXPECT_EQ(xmlText("\xC0\xAF"), "\xEF\xBF\xBD\xEF\xBF\xBD") << "longer than needed";
  EXPECT_EQ(xmlText("\xED\xA0\x80").find("\xED\xA0"), std::string::npos) << "half a pair";
  EXPECT_EQ(xmlText("\xEF\xBF\xBF"), "\xEF\xBF\xBD");
  EXPECT_EQ(xmlText("\xF0\x9F\x98\x80 \xE4\xB8\xAD"), "\xF0\x9F\x98\x80 \xE4\xB8\xAD");
  DrawnText text = textOf("x\x02<");
  text.face.family = L"It's <\"a\"> \\font";
  const SvgDocument document(pictureOf({text}));
  const pugi::xml_node node = document.item("text");
  EXPECT_EQ(attributeOf(node, "font-family"), "'Its <\"a\"> font', sans-serif");
}

TEST(SvgWriterTest, NumbersArePlain) {
  const auto text = [](double value, int decimals) {
    std::string result;
    appendNumber(result, value, decimals);
    return result;
  };
  EXPECT_EQ(text(1.005, 2), "1") << "of which 1.005 is a little below";
  EXPECT_EQ(text(-0.001, 2), "0");
  EXPECT_EQ(text(-0.25, 2), "-0.25");
  EXPECT_EQ(text(100, 0), "100");
  EXPECT_EQ(text(1e12, 2), "1000000000000");
  EXPECT_EQ(text(std::numeric_limits<double>::max(), 2), "0");
}

TEST(SvgWriterTest, NothingLiesFarAway) {
  constexpr double kHuge = 1e300;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  DrawnLines lines;
  lines.lines = lineThrough(
      {{-kHuge, 50}, {kHuge, 50}, {nan, 3}, {100, 50}, {100, kHuge}, {0, -1e6}, {200, -1e6}});
  const DrawnArea area{{}, lineThrough({{-kHuge, 20}, {100, kHuge}, {kHuge, 20}}), -kHuge};
  const SvgDocument document(pictureOf({lines, area}));
  int found = 0;
  for (const pugi::xml_node path : document.layer().children("path")) {
    std::string places = attributeOf(path, "d");
    for (char& each : places) {
      each = each == 'M' || each == 'Z' ? ' ' : each;
    }
    std::istringstream numbers(places);
    for (double number = 0; numbers >> number; ++found) {
      EXPECT_LE(std::fabs(number), 5000);
    }
    EXPECT_TRUE(numbers.eof());
  }
  EXPECT_GE(found, 16);
}

TEST(SvgWriterTest, AFileOfManyPointsIsSmall) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 1'000'000; ++i) {
    x.push_back(i);
    y.push_back(std::sin(i * 12.9898) * 43758.5453 -
                std::floor(std::sin(i * 12.9898) * 43758.5453));
  }
  const auto trace = std::make_shared<test::TracePoints>(std::move(x), std::move(y));
  const WindowMapping mapping{{1600 / 1e6, 0, 0, 0}, {0, 1000, 0, 100}, {}};
  const VectorPicture picture{{{{}, {test::traceOf(trace, mapping)}}}, 1600, 1200};
  const std::string file = writeSvg(picture);
  EXPECT_LT(file.size(), 2'000'000U);
  EXPECT_GT(file.size(), 100'000U);
}

std::vector<std::uint8_t> inflated(std::span<const std::uint8_t> bytes, std::size_t size) {
  std::vector<std::uint8_t> result(size);
  z_stream stream = {};
  stream.next_in = const_cast<Bytef*>(bytes.data());
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = result.data();
  stream.avail_out = static_cast<uInt>(size);
  EXPECT_EQ(inflateInit(&stream), Z_OK);
  EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
  EXPECT_EQ(stream.avail_out, 0U);
  inflateEnd(&stream);
  return result;
}

TEST(PngEncoderTest, HoldsThePicture) {
  const PixelImage image{2, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};
  const std::vector<std::uint8_t> file = encodePng(image);
  EXPECT_EQ(std::string(file.begin() + 1, file.begin() + 4), "PNG");
  EXPECT_EQ(std::string(file.begin() + 12, file.begin() + 16), "IHDR");
  EXPECT_EQ(crc32(0, file.data() + 12, 17),
            file[29] << 24U | file[30] << 16U | file[31] << 8U | file[32]);
  EXPECT_EQ(std::string(file.begin() + 37, file.begin() + 41), "IDAT");
  const std::size_t length = std::size_t{file[35]} << 8U | file[36];
  EXPECT_EQ(
      inflated(std::span(file).subspan(41, length), 18),
      (std::vector<std::uint8_t>{0, 9, 10, 11, 12, 13, 14, 15, 16, 0, 1, 2, 3, 4, 5, 6, 7, 8}))
      << "from the top";
}

TEST(SvgWriterTest, PicturesAreStretchedPng) {
  const auto image = std::make_shared<const PixelImage>(PixelImage{1, 1, {255, 0, 0, 255}});
  const SvgDocument document(pictureOf({DrawnImage{image, {10, 60, 20, 90}, false}}));
  const pugi::xml_node node = document.item("image");
  EXPECT_EQ(attributeOf(node, "x"), "10");
  EXPECT_EQ(attributeOf(node, "y"), "10");
  EXPECT_EQ(attributeOf(node, "width"), "50");
  EXPECT_EQ(attributeOf(node, "height"), "70");
  EXPECT_EQ(attributeOf(node, "preserveAspectRatio"), "none");
  EXPECT_EQ(attributeOf(node, "xlink:href").substr(0, 32), "data:image/png;base64,iVBORw0KGg");
}

}  // namespace
}  // namespace zyn
