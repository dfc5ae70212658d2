// Programs for mills and printers in a path, from outside: what ChargerGCode makes of them,
// compared with an interpreter that shares nothing with ours (tests/gcode).
#include <algorithm>
#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/GCodeAnswers.h"
#include "support/LateBinding_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

const std::filesystem::path kSource = "Z:" ZYN_SOURCE_FOLDER;
constexpr double kTolerance = 1e-9;  // relative

void expectNear(double found, double wanted, const char* what, double tolerance = kTolerance) {
  EXPECT_NEAR(found, wanted, tolerance * std::max(1.0, std::abs(wanted))) << what;
}

class TrajetGCodeTest : public HostTest {
 public:
  CallResult load(const std::filesystem::path& file) const {
    return callMethod(path_.Get(), L"ChargerGCode", {bstr(file)});
  }
  CallResult load(const GCodeAnswer& answer) const {
    const auto file = folder_.file(L"program.nc");
    writeFile(file, answer.text);
    put(L"SauterBlocs", answer.skipsBlocks);
    put(L"CodesInconnus", answer.skipsUnknown ? 1L : 0L);
    return load(file);
  }
  void put(const wchar_t* name, const _variant_t& value) const {
    require(putProperty(path_.Get(), name, value).code(), "a property of the path");
  }
  double number(const wchar_t* name) const {
    return static_cast<double>(getProperty(path_.Get(), name).value);
  }
  std::vector<double> placeAt(double time) const {
    put(L"PositionTemps", time);
    return doublesIn(callMethod(path_.Get(), L"getPosition").value);
  }
  void expectPlaceAt(double time, const std::array<double, 3>& wanted) const {
    const auto found = placeAt(time);
    ASSERT_EQ(found.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
      expectNear(found[i], wanted[i], "a coordinate", 1e-7);
    }
  }
  void expectSteps(const GCodeAnswer& answer) const;

 private:
  TempFolder folder_;
  ComPtr<IDispatch> path_ = createObject<IDispatch>(L"ZYNVue.ZYNGLTrajet");
};

/// In the middle of each motion its line counts, at its end the tool is where it leads to.
void TrajetGCodeTest::expectSteps(const GCodeAnswer& answer) const {
  double time = 0;
  std::array<double, 3> from{};
  for (const GCodeStep& step : answer.steps) {
    SCOPED_TRACE(step.line);
    if (step.type != GCodeStep::kDwell) {
      const double middle = time + step.seconds / 2;
      const auto place = placeAt(middle);
      EXPECT_EQ(number(L"PositionTemps"), middle);
      EXPECT_EQ(number(L"PositionLigne"), step.line);
      constexpr int kArc = 4;
      for (std::size_t i = 0; i < 3 && step.type != kArc; ++i) {
        expectNear(place.at(i), (from[i] + step.end[i]) / 2, "half way", 1e-7);
      }
      from = step.end;
    }
    time += step.seconds;
    expectPlaceAt(time, from);
  }
}

TEST_F(TrajetGCodeTest, EveryProgramIsWhatTheOtherInterpreterSays) {
  std::size_t programs = 0;
  for (const GCodeAnswer& answer : gcodeAnswers(kSource)) {
    if (answer.error) {
      continue;
    }
    SCOPED_TRACE(testing::Message() << answer);
    const auto loaded = load(answer);
    ASSERT_EQ(loaded.code(), S_OK) << loaded.description;
    expectNear(number(L"Longueur"), answer.length, "Longueur");
    expectNear(number(L"Duree"), answer.seconds, "Duree");
    EXPECT_EQ(number(L"NbCodesIgnores"), static_cast<double>(answer.ignored));
    expectSteps(answer);
    expectPlaceAt(answer.seconds + 1, answer.end);
    ++programs;
  }
  EXPECT_GE(programs, 300u);
}

TEST_F(TrajetGCodeTest, ErrorsNameFileLineAndColumnAndChangeNothing) {
  GCodeAnswer before;
  before.text = "G1 X3 Y4 F100\nG4 P2\n";
  ASSERT_EQ(load(before).code(), S_OK);
  std::size_t programs = 0;
  for (const GCodeAnswer& answer : gcodeAnswers(kSource)) {
    if (!answer.error) {
      continue;
    }
    SCOPED_TRACE(testing::Message() << answer);
    const auto failed = load(answer);
    EXPECT_EQ(failed.code(), E_FAIL);
    const std::wstring line = L"program.nc, line " + std::to_wstring(answer.error->line);
    const auto at = failed.description.find(line);
    ASSERT_NE(at, std::wstring::npos) << failed.description;
    const std::wstring rest = failed.description.substr(at + line.size());
    if (answer.error->column > 0) {
      EXPECT_NE(rest.find(L"column " + std::to_wstring(answer.error->column) + L":"),
                std::wstring::npos)
          << failed.description;
    }
    EXPECT_NE(rest.find(L": "), std::wstring::npos);
    EXPECT_EQ(number(L"Longueur"), 5);
    EXPECT_EQ(number(L"Duree"), 60 * 5.0 / 100 + 2);
    ++programs;
  }
  EXPECT_GE(programs, 100u);
}

TEST_F(TrajetGCodeTest, RealProgramsComeToWhatTheOtherInterpreterSays) {
  const auto programs = realGCode(kSource);
  EXPECT_EQ(programs.size(), 5u);
  for (const RealGCode& program : programs) {
    SCOPED_TRACE(program.file);
    put(L"CodesInconnus", program.skipsUnknown ? 1L : 0L);
    const auto loaded = load(kSource / "hosts" / "data" / "paths" / program.file);
    ASSERT_EQ(loaded.code(), S_OK) << loaded.description;
    expectNear(number(L"Longueur"), program.length, "Longueur");
    expectNear(number(L"Duree"), program.seconds, "Duree");
    expectPlaceAt(program.seconds, program.end);
  }
}

TEST_F(TrajetGCodeTest, AFileThatIsMissingIsAnErrorOfTheSystem) {
  const auto failed = load(std::filesystem::path("Z:\\no such folder\\program.nc"));
  EXPECT_TRUE(FAILED(failed.code()));
  EXPECT_NE(failed.code(), E_FAIL);
  EXPECT_NE(failed.description.find(L"program.nc"), std::wstring::npos);
}

}  // namespace
}  // namespace zyn::test
