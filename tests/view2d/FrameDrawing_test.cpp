#include "view2d/FrameDrawing.h"

#include <gtest/gtest.h>

#include <map>

#include "support/BoxFont.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {
namespace {

const FontMetrics kFont = boxFont();

/// The frame of a graph of 0 to 10 by 0 to 5 in a window, `pixelScale` times as fine.
DrawnLayer drawn(double pixelScale, const PixelImage& picture = {}) {
  LinearGraph graph;
  graph.colour = {0.1, 0.2, 0.3};
  graph.x = {{"Nom", "mm", picture}, 0, 10, 2, 0.5};
  graph.y = {{"Long", "s", {}}, 0, 5, 1, 0.5};
  ViewState2D view;
  view.resize({400, 300});
  view.showGraph({0, 10, 0, 5}, 1, 1);
  const GraphPlacement placement = view.graphPlacement().value();
  const FramePlace place{.origin = {50, 40},
                         .x = pixelScale,
                         .y = pixelScale,
                         .pixelScale = pixelScale,
                         .metrics = &kFont,
                         .pictureX = &graph.x.title.picture,
                         .pictureY = &graph.y.title.picture};
  return drawingOf(
      layOutFrame(graph, placement, kFont), place,
      [](std::string_view, const FontFace&) { return std::make_shared<const ShapedText>(); },
      [](const std::string& bytes) { return "<" + bytes + ">"; });
}

std::map<std::string, DrawnText> textsOf(const DrawnLayer& layer) {
  std::map<std::string, DrawnText> texts;
  for (const DrawnItem& item : layer.items) {
    if (const auto* text = std::get_if<DrawnText>(&item)) {
      texts[text->text] = *text;
    }
  }
  return texts;
}

TEST(FrameDrawingTest, HoldsLinesArrowsAndTexts) {
  const DrawnLayer layer = drawn(1);
  const auto& axes = std::get<DrawnLines>(layer.items.front());
  EXPECT_EQ(axes.stroke.colour, (DrawColour{0.1, 0.2, 0.3, 1}));
  ASSERT_GE(axes.lines.points.size(), 4U);
  EXPECT_EQ(axes.lines.starts.size(), axes.lines.points.size() / 2);
  const auto texts = textsOf(layer);
  for (const char* const text : {"<Nom>", "<mm>", "<Long>", "<s>", "<6>", "<8>", "<3>"}) {
    ASSERT_TRUE(texts.contains(text)) << text;
    EXPECT_TRUE(texts.at(text).shaped);
    EXPECT_GT(texts.at(text).emHeight, 3);
  }
  EXPECT_EQ(texts.at("<6>").emHeight, texts.at("<8>").emHeight);
  EXPECT_LT(texts.at("<6>").start.y, 40) << "below the axis";
  EXPECT_LT(texts.at("<3>").start.x, 50) << "left of it";
  EXPECT_LT(texts.at("<6>").start.x, texts.at("<8>").start.x);
}

TEST(FrameDrawingTest, GrowsAboutTheOrigin) {
  const auto once = textsOf(drawn(1));
  const auto twice = textsOf(drawn(2));
  EXPECT_NEAR(twice.at("<8>").emHeight, 2 * once.at("<8>").emHeight, 1e-9);
  EXPECT_NEAR(twice.at("<8>").start.x - 50, 2 * (once.at("<8>").start.x - 50), 1e-9);
}

TEST(FrameDrawingTest, PicturesStandForTitles) {
  const DrawnLayer layer = drawn(1, {2, 3, std::vector<std::uint8_t>(24, 255)});
  int found = 0;
  for (const DrawnItem& item : layer.items) {
    if (const auto* image = std::get_if<DrawnImage>(&item)) {
      ++found;
      EXPECT_EQ(image->box.width(), 2);
      EXPECT_EQ(image->box.height(), 3);
    }
  }
  EXPECT_EQ(found, 1);
}

}  // namespace
}  // namespace zyn::test
