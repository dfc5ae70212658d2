#include "viewer/Commands.h"

#include <gtest/gtest.h>

#include <algorithm>
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
  const auto last = static_cast<std::size_t>(Command::kRecent);
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
        for (const Key& key : keysAs(entry.key)) {
          EXPECT_TRUE(keys.insert(keyText(key)).second) << keyText(key);
        }
      }
    }
  }
}

TEST(CommandsTest, PlusIsTypedWithShiftAndOnTheNumberPadToo) {
  const Key plus = {.code = kKeyPlus, .control = true};
  EXPECT_EQ(keysAs(plus), (std::vector<Key>{plus,
                                            {.code = kKeyPadPlus, .control = true},
                                            {.code = kKeyPlus, .control = true, .shift = true}}));
  const Key minus = {.code = kKeyMinus};
  EXPECT_EQ(keysAs(minus), (std::vector<Key>{minus, {.code = kKeyPadMinus}}));
  EXPECT_EQ(keysAs({.code = 'A'}), std::vector<Key>{{.code = 'A'}});
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
    const std::vector<HelpRow> help = keyHelp(pane);
    const auto tells = [&](const HelpRow& row) { return std::ranges::count(help, row) == 1; };
    EXPECT_TRUE(tells({"Ctrl+O", "Open"}));
    EXPECT_TRUE(tells({"Ctrl+E", "Export: PNG"}));
    EXPECT_TRUE(tells({"Backspace", "Undo view"}));
    EXPECT_TRUE(tells({"Ctrl+P", "Print preview"}));
    EXPECT_EQ(tells({"X", "Logarithmic x"}), pane == PaneKind::kGraph);
    EXPECT_EQ(tells({"U", "Two cursors"}), pane == PaneKind::kGraph);
    EXPECT_EQ(tells({"Ctrl+5", "Style: Points"}), pane == PaneKind::kModel);
    EXPECT_EQ(tells({"Home", "Isometric"}), pane == PaneKind::kModel);
    EXPECT_EQ(tells({"Space", "Play"}), pane == PaneKind::kModel);
    EXPECT_EQ(tells({"Ctrl+End", "To the end"}), pane == PaneKind::kModel);
    EXPECT_EQ(tells({"9", "Colours: By speed"}), pane == PaneKind::kModel);
  }
}

}  // namespace
}  // namespace zyn::viewer
