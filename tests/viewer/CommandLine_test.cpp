#include "viewer/CommandLine.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

Request parse(std::vector<std::string> arguments) { return parseCommandLine(arguments); }

std::string complaint(std::vector<std::string> arguments) {
  try {
    parseCommandLine(arguments);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "none";
}

TEST(ViewerCommandLineTest, EverythingMayBeMissing) {
  const Request request = parse({});
  EXPECT_TRUE(request.files.empty());
  EXPECT_EQ(request.width, 1000);
  EXPECT_EQ(request.height, 700);
  EXPECT_TRUE(request.script.empty());
  EXPECT_FALSE(request.batch);
}

TEST(ViewerCommandLineTest, EverythingIsUnderstoodInAnyOrder) {
  const Request request =
      parse({"--batch", "--size", "640x480", "a model.stl", "--script", "xy+,zoom-all,exit"});
  EXPECT_EQ(request.files, std::vector<std::string>{"a model.stl"});
  EXPECT_EQ(request.width, 640);
  EXPECT_EQ(request.height, 480);
  EXPECT_EQ(request.script, (std::vector{Command::kViewXYp, Command::kZoomAll, Command::kExit}));
  EXPECT_TRUE(request.batch);
}

TEST(ViewerCommandLineTest, AModelAndAProgramAreShownTogether) {
  EXPECT_EQ(parse({"a.nc", "--batch", "a.stl"}).files, (std::vector<std::string>{"a.nc", "a.stl"}));
  EXPECT_EQ(parse({"a.stl", "a.gcode"}).files, (std::vector<std::string>{"a.stl", "a.gcode"}));
}

TEST(ViewerCommandLineTest, ScriptsKeepNoSettingsUnlessTheySayWhere) {
  EXPECT_EQ(parse({}).settings, "ZYNVue\\Viewer");
  EXPECT_EQ(parse({"--batch"}).settings, "");
  EXPECT_EQ(parse({"--settings", "Mine", "--batch"}).settings, "Mine");
  EXPECT_EQ(complaint({"--settings"}), "--settings needs a value");
}

TEST(ViewerCommandLineTest, HelpTellsOfAllOptions) {
  EXPECT_FALSE(parse({}).help);
  for (const char* const word : {"--help", "-h", "/?"}) {
    EXPECT_TRUE(parse({word}).help) << word;
  }
  for (const char* const option : {"--size", "--script", "--batch", "--settings", "--help"}) {
    EXPECT_NE(usageText().find(option), std::string::npos) << option;
  }
}

TEST(ViewerCommandLineTest, SizesAreChecked) {
  EXPECT_EQ(complaint({"--size", "640"}), "\"640\" is not WIDTHxHEIGHT");
  for (const char* const size : {"15x100", "100x8193", "x100", "100x", "1e3x100", "100x100px",
                                 "-100x100", "99999999999x100"}) {
    EXPECT_NE(complaint({"--size", size}), "none") << size;
  }
  EXPECT_EQ(complaint({"--size", "16x8192"}), "none");
}

TEST(ViewerCommandLineTest, MistakesAreNamed) {
  EXPECT_EQ(complaint({"--script", "xy+,dance"}), "\"dance\" is not a command");
  EXPECT_EQ(complaint({"--script", ",xy+"}), "\"\" is not a command");
  EXPECT_EQ(complaint({"--fast"}), "\"--fast\" is not an option");
  EXPECT_EQ(complaint({"--size"}), "--size needs a value");
  for (const auto& files : {std::vector<std::string>{"a.stl", "b.stl"},
                            {"a.nc", "b.nc"},
                            {"a.csv", "b.nc"},
                            {"a.stl", "b.csv"},
                            {"a.stl", "b.nc", "c.stl"}}) {
    EXPECT_EQ(complaint(files), "one file at a time, or a model and a program") << files[1];
  }
}

}  // namespace
}  // namespace zyn::viewer
