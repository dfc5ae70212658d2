#include "plot/PlotLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "plot/BlockText.h"

namespace zyn::test {
namespace {

const PlotTheme& light() { return themeOf(PlotThemeKind::kLight); }

class PlotLayoutTest : public testing::Test {
 protected:
  PlotLayoutTest() {
    axes.resize(2);
    axes[0].title = "Time";
    axes[0].unit = "s";
    axes[1].side = AxisSide::kLeft;
    axes[1].title = "Force";
    axes[1].unit = "N";
  }

  PlotAxis& addAxis(AxisSide side, const std::string& title, const ValueRange& range) {
    PlotAxis& axis = axes.emplace_back();
    axis.side = side;
    axis.range = range;
    axis.title = title;
    return axis;
  }

  PlotLayout layOut() {
    input.page = &page;
    input.theme = &light();
    input.axes.clear();
    for (const PlotAxis& axis : axes) {
      input.axes.push_back({&axis, axis.range, axis.isVisible.value_or(true)});
    }
    return layOutPlot(input);
  }

  static const DrawnText* find(const std::vector<DrawnText>& texts, const std::string& text) {
    const auto found = std::ranges::find(texts, text, &DrawnText::text);
    return found == texts.end() ? nullptr : &*found;
  }

  bool isShown(const std::string& text) {
    return find(itemsOf<DrawnText>(layOut().inFront), text) != nullptr;
  }

  PixelBox inkOfText(const PlotLayout& layout, const std::string& text) {
    const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
    const DrawnText* found = find(texts, text);
    EXPECT_NE(found, nullptr) << text;
    return found ? inkOf(*found) : PixelBox{};
  }

  static std::vector<PixelBox> boxesIn(const Drawing& drawing, const DrawColour& colour) {
    std::vector<PixelBox> boxes;
    for (const DrawnBoxes& drawn : itemsOf<DrawnBoxes>(drawing)) {
      if (drawn.colour == colour) {
        boxes.insert(boxes.end(), drawn.boxes.begin(), drawn.boxes.end());
      }
    }
    return boxes;
  }

  static bool holdsBox(const std::vector<PixelBox>& boxes, const PixelBox& box) {
    return std::ranges::find(boxes, box) != boxes.end();
  }

  PlotPage page{.width = 600, .height = 400, .pixelScale = 1, .shape = shapeBlocks};
  std::vector<PlotAxis> axes;
  PlotInput input;
};

constexpr double kPad = 8;

TEST_F(PlotLayoutTest, AxesEndAtThePlotArea) {
  axes[0].range = {-3, 5};
  axes[1].range = {1, 100};
  axes[1].kind = AxisKind::kLog10;
  const PlotLayout layout = layOut();
  const AxisScale& x = layout.axes[0].scale;
  EXPECT_EQ(x.pixelOf(-3), layout.area.left);
  EXPECT_EQ(x.pixelOf(5), layout.area.right);
  const AxisScale& y = layout.axes[1].scale;
  EXPECT_EQ(y.pixelOf(1), layout.area.bottom);
  EXPECT_EQ(y.pixelOf(100), layout.area.top);
  axes[0].isInverted = true;
  EXPECT_EQ(layOut().axes[0].scale.pixelOf(-3), layout.area.right);
}

TEST_F(PlotLayoutTest, PlotAreaIsAsLargeAsTextsLeaveIt) {
  const PlotLayout layout = layOut();
  EXPECT_EQ(layout.area.top, page.height - kPad);
  EXPECT_LT(page.width - layout.area.right, 3 * kPad);
  const PixelBox title = inkOfText(layout, "Force (N)");
  EXPECT_GE(title.left, kPad - 1);
  EXPECT_LT(title.left, 2 * kPad);
  EXPECT_LT(layout.area.left, title.right + 50);
  const PixelBox below = inkOfText(layout, "Time (s)");
  EXPECT_GE(below.bottom, kPad - 1);
  EXPECT_LT(below.bottom, 2 * kPad);
}

TEST_F(PlotLayoutTest, LabelsStandBesideTheirTicks) {
  const PlotLayout layout = layOut();
  const PixelBox below = inkOfText(layout, "0.4");
  EXPECT_NEAR((below.left + below.right) / 2, layout.axes[0].scale.pixelOf(0.4), 1);
  EXPECT_NEAR(layout.area.bottom - below.top, 10, 1);
  axes[0].range = {7, 8};
  const PlotLayout other = layOut();
  const PixelBox left = inkOfText(other, "0.4");
  EXPECT_NEAR((left.bottom + left.top) / 2, other.axes[1].scale.pixelOf(0.4), 1);
  EXPECT_NEAR(other.area.left - left.right, 10, 1);
}

TEST_F(PlotLayoutTest, TitlesLieAlongTheMiddleOfTheirAxes) {
  addAxis(AxisSide::kRight, "Mass", {0, 5});
  addAxis(AxisSide::kTop, "Angle", {0, 360});
  input.texts = {.title = "Run", .subtitle = "on a Monday", .points = 9};
  const PlotLayout layout = layOut();
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
  const double middleX = (layout.area.left + layout.area.right) / 2;
  const double middleY = (layout.area.bottom + layout.area.top) / 2;
  for (const char* const name : {"Time (s)", "Angle", "Run", "on a Monday"}) {
    ASSERT_NE(find(texts, name), nullptr) << name;
    EXPECT_FALSE(find(texts, name)->isUpright);
    const PixelBox ink = inkOfText(layout, name);
    EXPECT_NEAR((ink.left + ink.right) / 2, middleX, 1) << name;
  }
  for (const char* const name : {"Force (N)", "Mass"}) {
    ASSERT_NE(find(texts, name), nullptr) << name;
    EXPECT_TRUE(find(texts, name)->isUpright);
    const PixelBox ink = inkOfText(layout, name);
    EXPECT_NEAR((ink.bottom + ink.top) / 2, middleY, 1) << name;
  }
  EXPECT_LT(inkOfText(layout, "Force (N)").right, layout.area.left);
  EXPECT_GT(inkOfText(layout, "Mass").left, layout.area.right);
  EXPECT_GT(inkOfText(layout, "Angle").bottom, layout.area.top);
  EXPECT_GT(inkOfText(layout, "on a Monday").bottom, inkOfText(layout, "Angle").top);
  EXPECT_GT(inkOfText(layout, "Run").bottom, inkOfText(layout, "on a Monday").top);
}

TEST_F(PlotLayoutTest, TitlesThatDoNotFitAreBrokenThenCut) {
  page.width = 300;
  input.texts = {.title = "A title that is longer than the picture is wide",
                 .subtitle = std::string(120, 's'),
                 .points = 9};
  const PlotLayout layout = layOut();
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
  const auto upper = std::ranges::find_if(
      texts, [](const DrawnText& text) { return text.text.starts_with("A title"); });
  ASSERT_NE(upper, texts.end());
  const std::string rest = input.texts.title.substr(upper->text.size() + 1);
  EXPECT_LT(inkOfText(layout, rest).top, inkOf(*upper).bottom);
  EXPECT_TRUE(std::ranges::any_of(
      texts, [](const DrawnText& text) { return text.text.ends_with("sss\u2026"); }));
  input.texts.title += " and longer than two lines of it are";
  EXPECT_TRUE(std::ranges::any_of(itemsOf<DrawnText>(layOut().inFront), [](const DrawnText& text) {
    return text.face.bold && text.text.ends_with("\u2026");
  }));
}

TEST_F(PlotLayoutTest, TitlesOfAxesKeepTheirUnits) {
  axes[0].title = std::string(100, 'x');
  axes[1].title = std::string(100, 'y');
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layOut().inFront);
  for (const char* const end : {"x\u2026 (s)", "y\u2026 (N)"}) {
    EXPECT_TRUE(std::ranges::any_of(texts, [&](const DrawnText& text) {
      return text.text.ends_with(end);
    })) << end;
  }
}

TEST_F(PlotLayoutTest, ASubtitleStaysAsLongAsTheTitle) {
  input.texts = {.title = "Run", .subtitle = "on a Monday", .points = 9};
  page.width = 320;
  bool wasKept = true;
  for (page.height = 400; page.height > 20; page.height -= 5) {
    const bool isKept = isShown("Run");
    EXPECT_EQ(isShown("on a Monday"), isKept) << page.height;
    EXPECT_TRUE(wasKept || !isKept);
    wasKept = isKept;
  }
  EXPECT_FALSE(wasKept);
  page.height = 180;
  EXPECT_TRUE(isShown("on a Monday"));
}

TEST_F(PlotLayoutTest, TitlesAreLargerThanLabels) {
  input.texts = {.title = "Run", .subtitle = "", .points = 12};
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layOut().inFront);
  EXPECT_EQ(find(texts, "0.4")->emHeight, 16);
  EXPECT_GT(find(texts, "Time (s)")->emHeight, 16);
  EXPECT_GT(find(texts, "Run")->emHeight, find(texts, "Time (s)")->emHeight);
  EXPECT_TRUE(find(texts, "Run")->face.bold);
  EXPECT_FALSE(find(texts, "0.4")->face.bold);
}

TEST_F(PlotLayoutTest, EverythingGrowsWithTheResolution) {
  const PlotLayout once = layOut();
  page = {.width = 1200, .height = 800, .pixelScale = 2, .shape = shapeBlocks};
  const PlotLayout twice = layOut();
  EXPECT_NEAR(twice.area.left, 2 * once.area.left, 2);
  EXPECT_NEAR(twice.area.bottom, 2 * once.area.bottom, 2);
  EXPECT_EQ(twice.axes[0].ticks.labels, once.axes[0].ticks.labels);
  EXPECT_EQ(twice.axes[1].ticks.labels, once.axes[1].ticks.labels);
  EXPECT_TRUE(
      holdsBox(boxesIn(twice.inFront, light().axis),
               {twice.area.left, twice.area.right, twice.area.bottom, twice.area.bottom + 2}));
}

TEST_F(PlotLayoutTest, TheFrameLiesWithinTheEdgesAndTicksOutside) {
  const PlotLayout layout = layOut();
  const PixelBox& area = layout.area;
  const std::vector<PixelBox> lines = boxesIn(layout.inFront, light().axis);
  EXPECT_TRUE(holdsBox(lines, {area.left, area.right, area.bottom, area.bottom + 1}));
  EXPECT_TRUE(holdsBox(lines, {area.left, area.right, area.top - 1, area.top}));
  EXPECT_TRUE(holdsBox(lines, {area.left, area.left + 1, area.bottom + 1, area.top - 1}));
  EXPECT_TRUE(holdsBox(lines, {area.right - 1, area.right, area.bottom + 1, area.top - 1}));
  // Ticks at the ends go on from the frame.
  EXPECT_TRUE(holdsBox(lines, {area.left, area.left + 1, area.bottom - 5, area.bottom}));
  EXPECT_TRUE(holdsBox(lines, {area.right - 1, area.right, area.bottom - 5, area.bottom}));
  EXPECT_TRUE(holdsBox(lines, {area.left - 5, area.left, area.top - 1, area.top}));
  const double minor = std::floor(layout.axes[0].scale.pixelOf(layout.axes[0].ticks.minor[0]));
  EXPECT_TRUE(holdsBox(lines, {minor, minor + 1, area.bottom - 3, area.bottom}));
}

TEST_F(PlotLayoutTest, GridsLieBehindTheDataFineOnesAtTheBack) {
  EXPECT_TRUE(boxesIn(layOut().behind, light().grid).empty());
  axes[0].hasGrid = axes[1].hasFineGrid = true;
  const PlotLayout layout = layOut();
  const std::vector<PixelBox> lines = boxesIn(layout.behind, light().grid);
  ASSERT_EQ(lines.size(), layout.axes[0].ticks.major.size());
  const double pixel = std::floor(layout.axes[0].scale.pixelOf(layout.axes[0].ticks.major[1]));
  EXPECT_EQ(lines[1], (PixelBox{pixel, pixel + 1, layout.area.bottom, layout.area.top}));
  EXPECT_EQ(boxesIn(layout.behind, light().fineGrid).size(), layout.axes[1].ticks.minor.size());
  EXPECT_EQ(layout.behind.back().clip, layout.area);
  const std::vector<DrawnBoxes> drawn = itemsOf<DrawnBoxes>(layout.behind);
  ASSERT_EQ(drawn.size(), 4U);
  EXPECT_EQ(drawn[0].boxes, (std::vector<PixelBox>{{0, page.width, 0, page.height}}));
  EXPECT_EQ(drawn[1].boxes, std::vector<PixelBox>{layout.area});
  EXPECT_EQ(drawn[2].colour, light().fineGrid);
}

TEST_F(PlotLayoutTest, OffsetTextsAreAtTheEndsOfTheirAxes) {
  axes[0].range = {1e6, 1e6 + 1e-5};
  axes[1].range = {0, 3e9};
  const PlotLayout layout = layOut();
  ASSERT_EQ(layout.axes[0].ticks.offset, "+1e6");
  ASSERT_EQ(layout.axes[1].ticks.offset, "x10⁹");
  const PixelBox right = inkOfText(layout, "+1e6");
  EXPECT_NEAR(right.right, layout.area.right, 1);
  EXPECT_LT(right.top, inkOfText(layout, layout.axes[0].ticks.labels[0]).bottom);
  const PixelBox above = inkOfText(layout, "x10⁹");
  EXPECT_GT(above.bottom, inkOfText(layout, layout.axes[1].ticks.labels.back()).top);
  EXPECT_LT(above.left, layout.area.left);
  // The title of the bottom axis has the same row, until that is too short for both.
  EXPECT_NEAR(right.bottom, inkOfText(layout, "Time (s)").bottom, 4);
  axes[0].title =
      "Time since the last but one of all the many clocks in the house was set by somebody";
  const PlotLayout longer = layOut();
  EXPECT_GT(inkOfText(longer, "+1e6").bottom, inkOfText(longer, axes[0].title + " (s)").top);
}

TEST_F(PlotLayoutTest, OffsetTextsThatWouldOverlapAreAboveOneAnother) {
  addAxis(AxisSide::kLeft, "", {1234567890, 1234567891});
  axes[1].range = {-1234567890, -1234567889};
  const PlotLayout layout = layOut();
  const PixelBox inner = inkOfText(layout, layout.axes[1].ticks.offset);
  const PixelBox outer = inkOfText(layout, layout.axes[2].ticks.offset);
  EXPECT_LT(inner.left, outer.right);
  EXPECT_GT(outer.bottom, inner.top);
}

TEST_F(PlotLayoutTest, AxesOfOneSideFollowOneAnotherOutwards) {
  addAxis(AxisSide::kLeft, "Second", {0, 300}).colour = DrawColour{1, 0, 0};
  const PlotLayout layout = layOut();
  const PixelBox& inner = layout.axes[1].box;
  const PixelBox& outer = layout.axes[2].box;
  EXPECT_EQ(inner.right, layout.area.left);
  EXPECT_LT(outer.right, inner.left);
  EXPECT_TRUE(inner.holds(inkOfText(layout, "Force (N)")));
  EXPECT_TRUE(outer.holds(inkOfText(layout, "Second")));
  EXPECT_TRUE(holdsBox(boxesIn(layout.inFront, {1, 0, 0}),
                       {outer.right, outer.right + 1, layout.area.bottom, layout.area.top}));
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
  EXPECT_EQ(find(texts, "Second")->colour, (DrawColour{1, 0, 0}));
  EXPECT_EQ(find(texts, "200")->colour, (DrawColour{1, 0, 0}));
  EXPECT_EQ(find(texts, "Force (N)")->colour, light().text);
}

TEST_F(PlotLayoutTest, AHiddenAxisHasTicksAndGridButTakesNoRoom) {
  axes[1].isVisible = false;
  axes[1].hasGrid = true;
  const PlotLayout layout = layOut();
  EXPECT_GE(layout.axes[1].ticks.major.size(), 3U);
  EXPECT_EQ(boxesIn(layout.behind, light().grid).size(), layout.axes[1].ticks.major.size());
  EXPECT_TRUE(layout.axes[1].box.isEmpty());
  EXPECT_LT(layout.area.left, 3 * kPad);
  EXPECT_FALSE(isShown("Force (N)"));
}

TEST_F(PlotLayoutTest, MarginsThatAreSetAreKept) {
  page.pixelScale = 2;
  input.margins = {.left = 60, .top = 10, .right = 20, .bottom = 40};
  const PlotLayout layout = layOut();
  EXPECT_EQ(layout.area, (PixelBox{120, 560, 80, 380}));
  input.margins = {.left = 3000, .top = 3000, .right = 3000, .bottom = 3000};
  EXPECT_FALSE(layOut().area.isEmpty());
  input.margins = {.left = 30};
  EXPECT_FALSE(isShown("Force (N)"));
  EXPECT_EQ(layOut().area.left, 60);
}

TEST_F(PlotLayoutTest, WhereThereIsNoRoomTheLeastImportantTextsGoFirst) {
  input.texts = {.title = "Run", .subtitle = "Monday", .points = 9};
  std::vector<std::string> gone;
  for (page.height = 400; page.height > 0; --page.height) {
    const PlotLayout layout = layOut();
    EXPECT_FALSE(layout.area.isEmpty());
    const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
    for (const char* const name : {"Monday", "Run", "Time (s)", "0.0"}) {
      if (!find(texts, name) && std::ranges::find(gone, name) == gone.end()) {
        gone.emplace_back(name);
      }
    }
  }
  EXPECT_EQ(gone, (std::vector<std::string>{"Monday", "Run", "Time (s)", "0.0"}));
}

TEST_F(PlotLayoutTest, TitlesThatAreTooLongAreCut) {
  axes[0].title = std::string(200, 'a');
  axes[1].title = std::string(60, 'b');
  input.texts.title = std::string(100, 'c') + " " + std::string(100, 'd');
  const PlotLayout layout = layOut();
  int cut = 0;
  for (const DrawnText& text : itemsOf<DrawnText>(layout.inFront)) {
    EXPECT_TRUE((PixelBox{0, page.width, 0, page.height}.holds(inkOf(text)))) << text.text;
    cut += text.text.find("…") != std::string::npos ? 1 : 0;
  }
  EXPECT_EQ(cut, 3);
}

TEST_F(PlotLayoutTest, TheSmallestPicturesHaveAPlotArea) {
  for (page.width = 1; page.width < 40; page.width += 3) {
    for (page.height = 1; page.height < 40; page.height += 3) {
      const PixelBox area = layOut().area;
      EXPECT_FALSE(area.isEmpty());
      EXPECT_TRUE((PixelBox{0, page.width, 0, page.height}.holds(area)));
    }
  }
}

TEST_F(PlotLayoutTest, ThePlotAreaStaysWhileTheRangeMoves) {
  axes[0].range = {0, 10};
  axes[1].range = {10, 20};
  const PixelBox area = layOut().area;
  for (int i = 1; i < 100; ++i) {
    axes[0].range = {i * 0.07, 10 + i * 0.07};
    axes[1].range = {10 + i * 0.03, 20 + i * 0.03};
    EXPECT_EQ(layOut().area, area);
  }
}

}  // namespace
}  // namespace zyn::test
