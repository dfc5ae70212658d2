#include "viewer/ToolIcon.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>

namespace zyn::viewer {
namespace {

constexpr PaneKind kPanes[] = {PaneKind::kModel, PaneKind::kGraph};

double meanOpacity(const std::vector<std::uint32_t>& pixels) {
  const double sum =
      std::accumulate(pixels.begin(), pixels.end(), 0.0,
                      [](double all, std::uint32_t pixel) { return all + (pixel >> 24); });
  return sum / 255 / static_cast<double>(pixels.size());
}

TEST(ToolIconTest, EveryToolOfAPaneIsOneOfItsCommandsWithAnIconOfItsOwn) {
  for (const PaneKind pane : kPanes) {
    std::set<std::vector<std::uint32_t>> icons;
    std::size_t count = 0;
    for (const CommandEntry* const tool : toolsOf(pane)) {
      if (tool == nullptr) {
        continue;
      }
      EXPECT_TRUE(tool->isFor(pane)) << tool->name;
      const auto icon = drawToolIcon(tool->command, 20);
      EXPECT_GT(meanOpacity(icon), 0.08) << tool->name;
      EXPECT_LT(meanOpacity(icon), 0.9) << tool->name;
      icons.insert(icon);
      ++count;
    }
    EXPECT_GE(count, 8U);
    EXPECT_EQ(icons.size(), count);
  }
}

TEST(ToolIconTest, PlayBecomesPause) {
  EXPECT_TRUE(hasToolIconWhileOn(Command::kPathPlay));
  EXPECT_NE(drawToolIconWhileOn(Command::kPathPlay, 20), drawToolIcon(Command::kPathPlay, 20));
  EXPECT_GT(meanOpacity(drawToolIconWhileOn(Command::kPathPlay, 20)), 0.04);
  EXPECT_FALSE(hasToolIconWhileOn(Command::kPathFirst));
}

TEST(ToolIconTest, EveryToolOfThePathHasAnIconOfItsOwn) {
  std::set<std::vector<std::uint32_t>> icons;
  for (const CommandEntry* const tool : pathTools()) {
    ASSERT_NE(tool, nullptr);
    const auto icon = drawToolIcon(tool->command, 20);
    EXPECT_GT(meanOpacity(icon), 0.04) << tool->name;
    icons.insert(icon);
  }
  EXPECT_EQ(icons.size(), pathTools().size());
}

TEST(ToolIconTest, GapsLieBetweenToolsOnly) {
  for (const PaneKind pane : kPanes) {
    const auto tools = toolsOf(pane);
    EXPECT_NE(tools.front(), nullptr);
    EXPECT_NE(tools.back(), nullptr);
    for (std::size_t i = 1; i < tools.size(); ++i) {
      EXPECT_TRUE(tools[i - 1] != nullptr || tools[i] != nullptr);
    }
  }
}

TEST(ToolIconTest, AnIconLooksTheSameInEverySize) {
  for (const PaneKind pane : kPanes) {
    for (const CommandEntry* const tool : toolsOf(pane)) {
      if (tool != nullptr) {
        const double small = meanOpacity(drawToolIcon(tool->command, 20));
        const double large = meanOpacity(drawToolIcon(tool->command, 80));
        EXPECT_NEAR(small, large, 0.02) << tool->name;
      }
    }
  }
}

TEST(ToolIconTest, CommandsWithoutAToolHaveAnEmptyIcon) {
  EXPECT_EQ(meanOpacity(drawToolIcon(Command::kExit, 20)), 0);
}

}  // namespace
}  // namespace zyn::viewer
