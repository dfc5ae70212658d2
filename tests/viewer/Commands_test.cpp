#include "viewer/Commands.h"

#include <gtest/gtest.h>

#include <set>

namespace zyn::viewer {
namespace {

TEST(CommandsTest, CommandsAndNamesAreUnique) {
  std::set<Command> commands;
  std::set<std::string_view> names;
  for (const CommandEntry& entry : commandTable()) {
    EXPECT_TRUE(commands.insert(entry.command).second) << entry.name;
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
  }
}

TEST(CommandsTest, EveryCommandIsInTheTable) {
  const auto first = static_cast<std::size_t>(Command::kOpen);
  const auto last = static_cast<std::size_t>(Command::kHelp);
  EXPECT_EQ(commandTable().size(), last - first + 1);
}

constexpr PaneKind kPanes[] = {PaneKind::kModel, PaneKind::kGraph};

TEST(CommandsTest, EveryCommandIsForAPane) {
  for (const CommandEntry& entry : commandTable()) {
    EXPECT_TRUE(entry.isFor(PaneKind::kModel) || entry.isFor(PaneKind::kGraph)) << entry.name;
  }
}

TEST(CommandsTest, NoKeyServesTwoCommandsOfAPane) {
  for (const PaneKind pane : kPanes) {
    std::set<std::string> keys;
    for (const CommandEntry& entry : commandTable()) {
      if (entry.key.code != 0 && entry.isFor(pane)) {
        EXPECT_TRUE(keys.insert(keyText(entry.key)).second) << keyText(entry.key);
      }
    }
  }
}

TEST(CommandsTest, NoLetterServesTwoEntriesOfAMenu) {
  for (const PaneKind pane : kPanes) {
    std::set<std::pair<std::string_view, char>> letters;
    for (const CommandEntry& entry : commandTable()) {
      const std::size_t mark = entry.label.find('&');
      if (mark != entry.label.npos && entry.isFor(pane)) {
        const char letter = static_cast<char>(std::tolower(entry.label[mark + 1]));
        EXPECT_TRUE(letters.emplace(entry.menu, letter).second) << entry.menu << ' ' << entry.label;
      }
    }
  }
}

TEST(CommandsTest, NamesAreFound) {
  EXPECT_EQ(commandNamed("zoom-all"), Command::kZoomAll);
  EXPECT_EQ(commandNamed("xz-"), Command::kViewXZm);
  EXPECT_EQ(commandNamed("Zoom-All"), std::nullopt);
  EXPECT_EQ(commandNamed(""), std::nullopt);
}

TEST(CommandsTest, KeysAreWrittenAsMenusShowThem) {
  EXPECT_EQ(keyText({}), "");
  EXPECT_EQ(keyText({'O', true, false}), "Ctrl+O");
  EXPECT_EQ(keyText({kKeyLeft, true, true}), "Ctrl+Shift+Left");
  EXPECT_EQ(keyText({kKeyPlus}), "+");
}

TEST(CommandsTest, HelpTellsOfEveryKeyWithoutMarks) {
  for (const PaneKind pane : kPanes) {
    const std::string help = keyHelp(pane);
    EXPECT_NE(help.find("Ctrl+O\tOpen...\n"), help.npos);
    EXPECT_NE(help.find("Backspace\tUndo view\n"), help.npos);
    EXPECT_EQ(help.find('&'), help.npos);
    EXPECT_EQ(help.find("Logarithmic") != help.npos, pane == PaneKind::kGraph);
    EXPECT_EQ(help.find("Trihedron") != help.npos, pane == PaneKind::kModel);
  }
}

}  // namespace
}  // namespace zyn::viewer
