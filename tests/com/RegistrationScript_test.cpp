#include "com/RegistrationScript.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

using Rule = ScriptKey::Rule;

std::vector<ScriptKey> parse(std::wstring_view text) {
  return parseRegistrationScript(text, {{L"MODULE", L"C:\\it's\\%TEMP%\\x.dll"}, {L"EMPTY", L""}});
}

/// The error of a script that cannot be read, as "line:column".
std::string errorPlace(std::wstring_view text) {
  try {
    parse(text);
  } catch (const RegistrationScriptError& error) {
    EXPECT_NE(std::string(error.what()).find("line " + std::to_string(error.line())),
              std::string::npos);
    return std::to_string(error.line()) + ":" + std::to_string(error.column());
  }
  return "no error";
}

ScriptKey key(std::wstring name, Rule rule = Rule::kPlain) {
  return {std::move(name), rule, {}, {}};
}

TEST(RegistrationScript, ReadsKeysWithTheirValuesInOrder) {
  ScriptKey server = key(L"InprocServer32");
  server.values = {{L"", L"here"}, {L"ThreadingModel", L"Apartment"}, {L"Count", 12U}};
  ScriptKey text = key(L"Name.1");
  text.values = {{L"", L"A text"}};
  text.keys = {server, key(L"Programmable")};

  EXPECT_EQ(parse(L"HKCR { Name.1 = s 'A text' {\r\n\tInprocServer32 = s 'here' {\n"
                  L"val ThreadingModel = s 'Apartment' val Count = d 12 }\n Programmable } }"),
            std::vector{text});
}

TEST(RegistrationScript, KnowsTheRulesOfKeysInAnySpelling) {
  ScriptKey classes = key(L"CLSID", Rule::kNoRemove);
  classes.keys = {key(L"a", Rule::kForceRemove), key(L"b", Rule::kDelete), key(L"c")};
  EXPECT_EQ(parse(L"hkcr { noremove CLSID { FORCEREMOVE a Delete b c } }"), std::vector{classes});
}

TEST(RegistrationScript, QuotedWordsAreNamesNotKeywords) {
  EXPECT_EQ(
      parse(L"HKCR { 'val' 'ForceRemove' '=' '{' 'two words' }"),
      (std::vector{key(L"val"), key(L"ForceRemove"), key(L"="), key(L"{"), key(L"two words")}));
}

TEST(RegistrationScript, DoubledQuotesStandForOne) {
  EXPECT_EQ(parse(L"HKCR { 'it''s' '''' }"), (std::vector{key(L"it's"), key(L"'")}));
}

TEST(RegistrationScript, ReplacementsGoInAsTheyAre) {
  ScriptKey expected = key(L"k");
  expected.values = {{L"", L"C:\\it's\\%TEMP%\\x.dll, 102"}};
  EXPECT_EQ(parse(L"HKCR { k = s '%MODULE%, 102' }"), std::vector{expected});
}

TEST(RegistrationScript, ReplacementsStayOneWord) {
  const auto keys = parseRegistrationScript(L"HKCR { %A% %A%x }", {{L"A", L"{ two }"}});
  EXPECT_EQ(keys, (std::vector{key(L"{ two }"), key(L"{ two }x")}));
}

TEST(RegistrationScript, TwoPercentSignsStandForOne) {
  EXPECT_EQ(parse(L"HKCR { 100%% }"), std::vector{key(L"100%")});
}

TEST(RegistrationScript, ReadsNumbersOfBothBases) {
  ScriptKey expected = key(L"k");
  expected.values = {{L"a", 4294967295U}, {L"b", 0xABCDEFU}, {L"c", 0U}};
  EXPECT_EQ(parse(L"HKCR { k { val a = d '4294967295' val b = d 0xABcdef val c = d 0 } }"),
            std::vector{expected});
}

TEST(RegistrationScript, TextsMayBeEmpty) {
  ScriptKey expected = key(L"k");
  expected.values = {{L"", L""}};
  EXPECT_EQ(parse(L"HKCR { k = s '' }"), std::vector{expected});
  EXPECT_EQ(parse(L"HKCR { k = s %EMPTY% }"), std::vector{expected});
}

TEST(RegistrationScript, TellsWhereItStopped) {
  EXPECT_EQ(errorPlace(L""), "1:1");
  EXPECT_EQ(errorPlace(L"HKLM { }"), "1:1");
  EXPECT_EQ(errorPlace(L"HKCR\n{\n  a\n"), "4:1");
  EXPECT_EQ(errorPlace(L"HKCR { a } }"), "1:12");
  EXPECT_EQ(errorPlace(L"HKCR { a = x }"), "1:12");
  EXPECT_EQ(errorPlace(L"HKCR { a =\n  s }"), "2:5");
  EXPECT_EQ(errorPlace(L"HKCR { = }"), "1:8");
  EXPECT_EQ(errorPlace(L"HKCR { val a }"), "1:14");
  EXPECT_EQ(errorPlace(L"HKCR { ForceRemove }"), "1:20");
}

TEST(RegistrationScript, RefusesBadTexts) {
  EXPECT_EQ(errorPlace(L"HKCR { a = s 'x\n' }"), "1:16");
  EXPECT_EQ(errorPlace(L"HKCR { a = s 'x'y }"), "1:17");
  EXPECT_EQ(errorPlace(L"HKCR { it's }"), "1:10");
  EXPECT_EQ(errorPlace(L"HKCR { a\x01 }"), "1:9");
  EXPECT_EQ(errorPlace(std::wstring_view(L"HKCR { a\0 }", 11)), "1:9");
}

TEST(RegistrationScript, RefusesBadNumbers) {
  EXPECT_EQ(errorPlace(L"HKCR { a = d 4294967296 }"), "1:14");
  EXPECT_EQ(errorPlace(L"HKCR { a = d 99999999999999999999999999 }"), "1:14");
  EXPECT_EQ(errorPlace(L"HKCR { a = d 0x }"), "1:14");
  EXPECT_EQ(errorPlace(L"HKCR { a = d 1F }"), "1:14");
  EXPECT_EQ(errorPlace(L"HKCR { a = d -1 }"), "1:14");
  EXPECT_EQ(errorPlace(L"HKCR { a = d } }"), "1:14");
}

TEST(RegistrationScript, RefusesNamesThatWouldReachOtherKeys) {
  EXPECT_EQ(errorPlace(L"HKCR { '' }"), "1:8");
  EXPECT_EQ(errorPlace(L"HKCR { ForceRemove %EMPTY% }"), "1:20");
  EXPECT_EQ(errorPlace(L"HKCR { a\\b }"), "1:8");
  EXPECT_EQ(errorPlace(L"HKCR { Delete %MODULE% }"), "1:15");
  EXPECT_EQ(errorPlace(L"HKCR { a { val '' = s 'x' } }"), "1:16");
}

TEST(RegistrationScript, RefusesUnknownReplacements) {
  EXPECT_EQ(errorPlace(L"HKCR { a = s %module% }"), "1:22");
  EXPECT_EQ(errorPlace(L"HKCR { a = s %MODULE }"), "1:21");
}

TEST(RegistrationScript, RefusesKeysNestedWithoutEnd) {
  std::wstring text = L"HKCR {";
  for (int depth = 0; depth < 100'000; ++depth) {
    text += L" a {";
  }
  EXPECT_NE(errorPlace(text), "no error");
}

}  // namespace
}  // namespace zyn
