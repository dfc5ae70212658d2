#include "vector/Metafile_win.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "objects/text/TextShaper_win.h"
#include "vector/Pictures.h"

namespace zyn {
namespace {

using test::lineThrough;
using test::pictureOf;
using test::textOf;

constexpr int kWidth = 200;
constexpr int kHeight = 100;

/// A metafile as GDI plays it back, `scale` times as large, on white.
class Playback {
 public:
  explicit Playback(const VectorPicture& picture, int scale = 1)
      : width_(kWidth * scale), height_(kHeight * scale), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width_, height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    bytes_ = static_cast<const BYTE*>(bits);
    previous_ = SelectObject(dc_.get(), bitmap_.get());
    PatBlt(dc_.get(), 0, 0, width_, height_, WHITENESS);
    const RECT place = {0, 0, width_, height_};
    EXPECT_TRUE(PlayEnhMetaFile(dc_.get(), makeMetafile(picture).get(), &place));
    GdiFlush();
  }
  ~Playback() { SelectObject(dc_.get(), previous_); }
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;

  /// Red, green, blue as one number; places count as those of drawings do.
  unsigned at(int x, int y) const {
    const BYTE* const pixel = bytes_ + 4 * (y * width_ + x);
    return static_cast<unsigned>(pixel[2] << 16 | pixel[1] << 8 | pixel[0]);
  }

  /// Pixels that are not white, in a box.
  int inked(int left, int right, int bottom, int top) const {
    int count = 0;
    for (int y = bottom; y < top; ++y) {
      for (int x = left; x < right; ++x) {
        count += at(x, y) != 0xFFFFFF ? 1 : 0;
      }
    }
    return count;
  }
  int inked() const { return inked(0, width_, 0, height_); }

 private:
  int width_;
  int height_;
  UniqueDC dc_;
  UniqueBitmap bitmap_;
  HGDIOBJ previous_ = nullptr;
  const BYTE* bytes_ = nullptr;
};

DrawnLines linesOf(std::vector<PlanePoint> points, double width, const DrawColour& colour) {
  DrawnLines lines;
  lines.stroke.width = width;
  lines.stroke.colour = colour;
  lines.lines = lineThrough(std::move(points));
  return lines;
}

TEST(MetafileTest, BoxesFillTheirPixels) {
  const Playback played(pictureOf({DrawnBoxes{{1, 0, 0, 1}, {{10, 30, 20, 50}}}}));
  EXPECT_EQ(played.inked(), 20 * 30);
  EXPECT_EQ(played.at(10, 20), 0xFF0000U);
  EXPECT_EQ(played.at(29, 49), 0xFF0000U);
}

TEST(MetafileTest, TranslucentThingsMix) {
  const Playback played(pictureOf({DrawnBoxes{{0, 0, 1, 1}, {{0, 60, 0, 50}}},
                                   DrawnBoxes{{1, 0, 0, 0.5}, {{10, 30, 20, 80}}},
                                   linesOf({{50, 70}, {100, 70}}, 4, {0, 0, 0, 0.25})}));
  const auto isNear = [&](int x, int y, int r, int g, int b) {
    const unsigned colour = played.at(x, y);
    const auto part = [&](int shift) { return static_cast<int>(colour >> shift & 0xFF); };
    return std::abs(part(16) - r) <= 2 && std::abs(part(8) - g) <= 2 && std::abs(part(0) - b) <= 2;
  };
  EXPECT_TRUE(isNear(20, 30, 128, 0, 128));
  EXPECT_TRUE(isNear(20, 70, 255, 128, 128));
  EXPECT_TRUE(isNear(75, 70, 191, 191, 191));
  EXPECT_EQ(played.at(75, 75), 0xFFFFFFU);
  EXPECT_NEAR(played.inked(40, 110, 60, 80), 200, 16);
}

TEST(MetafileTest, LinesAreAsWideAsTheyShould) {
  const Playback played(pictureOf({linesOf({{10, 20.5}, {110, 20.5}}, 1, {0, 0, 0, 1}),
                                   linesOf({{10, 60}, {110, 60}}, 6, {0, 0, 0, 1})}));
  EXPECT_NEAR(played.inked(0, 200, 0, 40), 100, 1);
  EXPECT_EQ(played.at(60, 20), 0U);
  EXPECT_NEAR(played.inked(0, 200, 40, 100), 600, 30);
  const Playback large(pictureOf({linesOf({{10, 20}, {110, 20}}, 1, {0, 0, 0, 1})}), 4);
  EXPECT_NEAR(large.inked(), 1600, 16);
}

TEST(MetafileTest, DashesLeaveGaps) {
  DrawnLines lines = linesOf({{0, 50}, {200, 50}}, 2, {0, 0, 0, 1});
  lines.stroke.dashes = {6, 4};
  const Playback played(pictureOf({lines}));
  int changes = 0;
  for (int x = 1; x < kWidth; ++x) {
    changes += played.at(x, 50) != played.at(x - 1, 50) ? 1 : 0;
  }
  EXPECT_NEAR(changes, 40, 1);
  EXPECT_NEAR(played.inked(), 240, 90) << "GDI may round ends to whole pixels";
}

TEST(MetafileTest, LayersAreClipped) {
  VectorPicture picture =
      pictureOf({DrawnBoxes{{0, 0, 0, 1}, {{-50, 300, -50, 300}}}}, PixelBox{20, 60, 10, 50});
  picture.drawing.push_back({{}, {DrawnBoxes{{1, 0, 0, 1}, {{100, 110, 0, 10}}}}});
  const Playback played(picture);
  EXPECT_EQ(played.inked(20, 60, 10, 50), 1600);
  EXPECT_EQ(played.inked(), 1600 + 100);
}

TEST(MetafileTest, MarkersAreDiscsAndPolygons) {
  const auto inkOf = [](MarkerShape shape) {
    DrawnMarkers markers;
    markers.shape = shape;
    markers.size = 20;
    markers.lineWidth = 2;
    markers.middles = {{50, 50}, {120, 50}};
    const Playback played(pictureOf({markers}));
    EXPECT_EQ(played.inked(38, 62, 38, 62), played.inked() / 2);
    return played.inked() / 2;
  };
  EXPECT_NEAR(inkOf(MarkerShape::kCircle), 314, 16);
  EXPECT_EQ(inkOf(MarkerShape::kSquare), 400);
  EXPECT_NEAR(inkOf(MarkerShape::kTriangle), 200, 16);
  EXPECT_NEAR(inkOf(MarkerShape::kDiamond), 200, 16);
  EXPECT_NEAR(inkOf(MarkerShape::kPlus), 76, 12);
}

TEST(MetafileTest, PicturesAreStretchedAndMayBeTranslucent) {
  const auto image =
      std::make_shared<const PixelImage>(PixelImage{2, 1, {255, 0, 0, 255, 0, 0, 255, 128}});
  const Playback played(pictureOf({DrawnImage{image, {20, 60, 30, 50}, false}}));
  EXPECT_EQ(played.at(21, 31), 0xFF0000U);
  EXPECT_NEAR(played.at(59, 49) >> 16, 127, 2);
  EXPECT_EQ(played.at(59, 49) & 0xFF, 255U);
  EXPECT_EQ(played.inked(), 800);
  const auto opaque =
      std::make_shared<const PixelImage>(PixelImage{1, 2, {255, 0, 0, 255, 0, 255, 0, 255}});
  const Playback rows(pictureOf({DrawnImage{opaque, {20, 60, 30, 50}, false}}));
  EXPECT_EQ(rows.at(30, 31), 0xFF0000U) << "from the bottom";
  EXPECT_EQ(rows.at(30, 49), 0x00FF00U);
}

/// The texts in a metafile, each on a line.
std::wstring textsIn(const VectorPicture& picture) {
  std::wstring texts;
  const auto collect = [](HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM to) {
    if (record->iType == EMR_EXTTEXTOUTW) {
      const auto* const out = reinterpret_cast<const EMREXTTEXTOUTW*>(record);
      *reinterpret_cast<std::wstring*>(to) +=
          std::wstring(reinterpret_cast<const wchar_t*>(reinterpret_cast<const BYTE*>(record) +
                                                        out->emrtext.offString),
                       out->emrtext.nChars) +
          L"\n";
    }
    return 1;
  };
  const UniqueMetafile metafile = makeMetafile(picture);
  EnumEnhMetaFile(nullptr, metafile.get(), collect, &texts, nullptr);
  return texts;
}

TEST(MetafileTest, TextsAreTextsInTheirPlaces) {
  DrawnText text = textOf(
      "\xC2\xB5m \xC3\x98 -12.5 \xC2\xB0"
      "C");
  text.face = {L"Arial", false, false};
  text.emHeight = 16;
  bool isWhole = true;
  text.shaped = shapeText(L"\u00B5m \u00D8 -12.5 \u00B0C", text.face, isWhole);
  ASSERT_TRUE(isWhole);
  EXPECT_EQ(textsIn(pictureOf({text})), L"\u00B5m \u00D8 -12.5 \u00B0C\n");
  const int left = static_cast<int>(std::floor(20 + 16 * text.shaped->left));
  const int right = static_cast<int>(std::ceil(20 + 16 * text.shaped->right));
  const Playback played(pictureOf({text}), 1);
  EXPECT_GT(played.inked(), 150);
  EXPECT_EQ(played.inked(left - 1, right + 1, 25, 47), played.inked());
  EXPECT_GT(played.inked(right - 4, right + 1, 25, 47), 0) << "as wide as it was laid out";
  text.isUpright = true;
  const Playback upright(pictureOf({text}), 1);
  EXPECT_GT(upright.inked(), 100);
  EXPECT_EQ(upright.inked(3, 25, 0, kHeight), upright.inked());
}

TEST(MetafileTest, OtherScriptsAreLeftToTheReader) {
  DrawnText text = textOf("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D");
  EXPECT_EQ(textsIn(pictureOf({text})), L"\u05E9\u05DC\u05D5\u05DD\n");
}

TEST(MetafileTest, BytesAreAFile) {
  const auto bytes = bytesOf(makeMetafile(pictureOf({})));
  ASSERT_GT(bytes.size(), sizeof(ENHMETAHEADER) / 2);
  EXPECT_EQ(std::string(bytes.begin() + 40, bytes.begin() + 44), " EMF");
}

}  // namespace
}  // namespace zyn
