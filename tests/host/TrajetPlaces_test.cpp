// Places on tool paths against a model of their own: whatever is put, appended, loaded or set, in
// any order, length, time, segment, line and point of the place are those of the model. Lengths and
// times of the random paths are sums of halves and quarters, so that nothing is rounded.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <sstream>

#include "support/ArrayVariant_win.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/Random.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

using Numbers = std::vector<double>;
using Place3 = std::array<double, 3>;

constexpr long kRapid = 0;

/// A path as the test knows it.
struct Model {
  struct Segment {
    Place3 to;
    long type = 1;
    double speed = 0;
    long line = 0;
    double wait = 0;  ///< before it begins
  };

  std::optional<Place3> start{};
  std::vector<Segment> segments{};
  double lastWait = 0;  ///< at the end
  double feed = 1000;
  double rapid = 5000;

  Place3 from(std::size_t i) const { return i == 0 ? *start : segments[i - 1].to; }
  double lengthOf(std::size_t i) const {
    double sum = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      sum += std::abs(segments[i].to[axis] - from(i)[axis]);  // along one axis
    }
    return sum;
  }
  double secondsOf(std::size_t i) const {
    const Segment& one = segments[i];
    const double speed = one.type == kRapid ? rapid : one.speed > 0 ? one.speed : feed;
    return lengthOf(i) * 60 / speed;
  }
  double lengthBefore(std::size_t i) const {
    double sum = 0;
    for (std::size_t k = 0; k < i; ++k) sum += lengthOf(k);
    return sum;
  }
  /// When its start is reached; for the last but one beyond, when the end is.
  double timeBefore(std::size_t i) const {
    double sum = 0;
    for (std::size_t k = 0; k < i; ++k) sum += segments[k].wait + secondsOf(k);
    return sum;
  }
  double length() const { return lengthBefore(segments.size()); }
  double seconds() const { return timeBefore(segments.size()) + lastWait; }
  double startTime(std::size_t i) const { return timeBefore(i) + segments[i].wait; }

  /// The last one that has begun, waiting for it included; there is one.
  std::size_t segmentAt(double time) const {
    std::size_t found = 0;
    while (found + 1 < segments.size() && timeBefore(found + 1) <= time) ++found;
    return found;
  }
  double timeAtLength(double wanted) const {
    if (segments.empty() || wanted >= length()) return seconds();
    if (wanted <= 0) return 0;
    std::size_t i = 0;
    while (i + 1 < segments.size() && lengthBefore(i + 1) <= wanted) ++i;
    return startTime(i) + (wanted - lengthBefore(i)) / lengthOf(i) * secondsOf(i);
  }
  long lineAfter(long wanted) const {
    long next = std::numeric_limits<long>::max();
    for (const Segment& one : segments) {
      if (one.line >= wanted) next = std::min(next, one.line);
    }
    return next;
  }
};

class TrajetPlaces : public HostTest, public testing::WithParamInterface<int> {
 protected:
  CallResult call(const wchar_t* name, const std::vector<_variant_t>& arguments = {}) const {
    return callMethod(path_.Get(), name, arguments);
  }
  double number(const wchar_t* name) const { return getProperty(path_.Get(), name).value; }
  void put(const wchar_t* name, const _variant_t& value) const {
    ASSERT_EQ(putProperty(path_.Get(), name, value).code(), S_OK);
  }

  /// Speeds with which every length of a half takes some quarters of seconds.
  double anySpeed() { return random_.pick(std::to_array({30.0, 60.0, 120.0})); }
  Place3 next(const Place3& from) {
    Place3 to = from;
    to[random_.below(3U)] += random_.pick(std::to_array({0.0, 0.5, 1.0, -2.0, 3.5}));
    return to;
  }
  static _variant_t of(const Numbers& numbers) { return doubleArray(numbers); }
  template <class Value>
  _variant_t column(std::size_t first, Value value) const {
    Numbers all;
    for (std::size_t i = first; i < model_.segments.size(); ++i) {
      all.push_back(static_cast<double>(value(model_.segments[i])));
    }
    return of(all);
  }

  void setPoints();
  void append();
  void setColumns();
  void setSpeeds();
  void load();
  void putPlace();
  void check() const;

  /// The path is another one, or moved along in another way.
  void keepTime() {
    if (time_ > 0) put_.reset();
    time_ = std::min(time_, model_.seconds());
  }

  TempFolder folder_;
  Random random_{static_cast<std::uint64_t>(GetParam())};
  ComPtr<IZYNGLTrajet> path_ = createObject<IZYNGLTrajet>(kPathProgId);
  Model model_;
  double time_ = 0;
  std::optional<std::size_t> put_;  ///< the segment whose start the place is by its number
};

void TrajetPlaces::setPoints() {
  model_ = {.feed = model_.feed, .rapid = model_.rapid};
  Numbers points;
  const std::size_t count = random_.oneIn(5) ? random_.below(3U) : 1 + random_.below(12U);
  Place3 place{random_.between(-1, 1) > 0 ? 2.5 : 0, 0, -1};
  for (std::size_t i = 0; i < count; ++i) {
    if (i == 0) {
      model_.start = place;
    } else {
      place = next(place);
      model_.segments.push_back({place});
    }
    points.insert(points.end(), place.begin(), place.end());
  }
  ASSERT_EQ(call(L"setPoints", {of(points)}).code(), S_OK);
  time_ = 0;
  put_.reset();
}

void TrajetPlaces::append() {
  const std::size_t first = model_.segments.size();
  Model::Segment last = first > 0 ? model_.segments.back() : Model::Segment{};
  Numbers points;
  Place3 place = first > 0 ? last.to : model_.start.value_or(Place3{1, 2, 3});
  const std::size_t count = random_.below(5U);
  const bool hasColumns = random_.oneIn(2);
  for (std::size_t i = 0; i < count; ++i) {
    if (i == 0 && !model_.start) {
      model_.start = place;
    } else {
      place = next(place);
      model_.segments.push_back({place, last.type, last.speed, last.line});
      if (hasColumns) {
        Model::Segment& own = model_.segments.back();
        own.type = random_.below(6);
        own.speed = random_.oneIn(2) ? 0 : anySpeed();
        own.line = random_.below(40) - 5;
      }
    }
    points.insert(points.end(), place.begin(), place.end());
  }
  if (model_.segments.size() > first) {
    model_.segments[first].wait += std::exchange(model_.lastWait, 0);
  }
  const std::vector<_variant_t> all = {of(points), column(first, [](auto& s) { return s.type; }),
                                       column(first, [](auto& s) { return s.speed; }),
                                       column(first, [](auto& s) { return s.line; })};
  const CallResult added = call(L"AjouterPoints", hasColumns ? all : std::vector{all[0]});
  ASSERT_EQ(added.code(), S_OK) << std::string(added.description.begin(), added.description.end());
}

void TrajetPlaces::setColumns() {
  for (Model::Segment& one : model_.segments) one.type = random_.below(3);
  ASSERT_EQ(call(L"setTypes", {column(0, [](auto& s) { return s.type; })}).code(), S_OK);
  keepTime();
  for (Model::Segment& one : model_.segments) {
    one.speed = random_.oneIn(3) ? 0 : anySpeed();
    one.line = random_.below(20);
  }
  ASSERT_EQ(call(L"setVitesses", {column(0, [](auto& s) { return s.speed; })}).code(), S_OK);
  ASSERT_EQ(call(L"setLignes", {column(0, [](auto& s) { return s.line; })}).code(), S_OK);
  keepTime();
}

void TrajetPlaces::setSpeeds() {
  model_.feed = anySpeed();
  put(L"VitesseAvance", model_.feed);
  keepTime();
  model_.rapid = anySpeed();
  put(L"VitesseRapide", model_.rapid);
  keepTime();
}

/// Lines and pauses, some with neither.
void TrajetPlaces::load() {
  model_ = {.start = Place3{0, 0, 0}, .feed = model_.feed, .rapid = model_.rapid};
  std::ostringstream program;
  Place3 place{};
  for (long line = 1, lines = random_.below(15); line <= lines; ++line) {
    const double seconds = random_.below(5) * 0.5;
    if (random_.oneIn(4)) {
      model_.lastWait += seconds;
      program << "G4 P" << seconds << "\n";
    } else if (random_.oneIn(5)) {
      program << "(nothing)\n";
    } else {
      place = next(place);
      const bool isRapid = random_.oneIn(3);
      const double speed = anySpeed();
      program << (isRapid ? "G0" : "G1") << " X" << place[0] << " Y" << place[1] << " Z" << place[2]
              << " F" << speed << "\n";
      const Place3 from = model_.segments.empty() ? *model_.start : model_.segments.back().to;
      if (place == from) continue;
      model_.segments.push_back({place, isRapid ? kRapid : 1, isRapid ? 0 : speed, line,
                                 std::exchange(model_.lastWait, 0)});
      if (!isRapid && place[2] != from[2]) model_.segments.back().type = place[2] < from[2] ? 2 : 3;
    }
  }
  const auto file = folder_.file(L"part.nc");
  writeFile(file, program.str());
  const CallResult loaded = call(L"ChargerGCode", {bstr(file)});
  ASSERT_EQ(loaded.code(), S_OK) << program.str();
  time_ = 0;
  put_.reset();
}

void TrajetPlaces::putPlace() {
  const std::size_t count = model_.segments.size();
  put_.reset();
  switch (random_.below(4)) {
    case 0: {
      const double wanted = random_.below(60) * 0.25 - 1;
      put(L"Position", wanted);
      time_ = model_.timeAtLength(wanted);
      EXPECT_EQ(number(L"Position"), std::clamp(wanted, 0.0, model_.length()));
      break;
    }
    case 1: {
      const double wanted = random_.below(100) * 0.25 - 1;
      put(L"PositionTemps", wanted);
      time_ = std::clamp(wanted, 0.0, model_.seconds());
      EXPECT_EQ(number(L"PositionTemps"), time_);
      break;
    }
    case 2: {
      const long wanted = random_.below(14) - 1;
      put(L"PositionSegment", wanted);
      const auto index = static_cast<std::size_t>(std::max(wanted, 0L));
      if (index < count) put_ = index;
      time_ = put_ ? model_.startTime(*put_) : model_.seconds();
      break;
    }
    default: {
      const long wanted = random_.below(20) - 2;
      put(L"PositionLigne", wanted);
      const long line = model_.lineAfter(wanted);
      for (std::size_t i = 0; i < count && !put_; ++i) {
        if (model_.segments[i].line == line) put_ = i;
      }
      time_ = put_ ? model_.startTime(*put_) : model_.seconds();
      break;
    }
  }
}

void TrajetPlaces::check() const {
  const std::size_t count = model_.segments.size();
  EXPECT_EQ(number(L"NbSegments"), static_cast<double>(count));
  EXPECT_EQ(number(L"Longueur"), model_.length());
  EXPECT_EQ(number(L"Duree"), model_.seconds());
  EXPECT_EQ(number(L"PositionTemps"), time_);
  const Numbers point = doublesIn(call(L"getPosition").value);
  if (count == 0) {
    EXPECT_EQ(number(L"PositionSegment"), 0);
    EXPECT_EQ(number(L"PositionLigne"), 0);
    EXPECT_EQ(number(L"Position"), 0);
    EXPECT_EQ(point,
              model_.start ? Numbers(model_.start->begin(), model_.start->end()) : Numbers{});
    return;
  }
  const std::size_t at = put_.value_or(model_.segmentAt(time_));
  EXPECT_EQ(number(L"PositionSegment"), static_cast<double>(at));
  EXPECT_EQ(number(L"PositionLigne"), static_cast<double>(model_.segments[at].line));
  const double passed = std::max(0.0, time_ - model_.startTime(at));
  const double seconds = model_.secondsOf(at);
  const double share = passed < seconds ? passed / seconds : seconds > 0 ? 1 : 0;
  EXPECT_EQ(number(L"Position"), model_.lengthBefore(at) + share * model_.lengthOf(at));
  ASSERT_EQ(point.size(), 3U);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double from = model_.from(at)[axis];
    EXPECT_EQ(point[axis], from + share * (model_.segments[at].to[axis] - from));
  }
}

TEST_P(TrajetPlaces, AreThoseOfTheModel) {
  setSpeeds();
  setPoints();
  for (int step = 0; step < 300 && !HasFailure(); ++step) {
    SCOPED_TRACE(step);
    switch (random_.below(12)) {
      case 0:
        setPoints();
        break;
      case 1:
        append();
        break;
      case 2:
        setColumns();
        break;
      case 3:
        setSpeeds();
        break;
      case 4:
        load();
        break;
      case 5: {
        const _variant_t copy = call(L"Copie").value;
        path_ = queryFor<IZYNGLTrajet>(copy.pdispVal);
        break;
      }
      default:
        putPlace();
        break;
    }
    check();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TrajetPlaces, testing::Range(1, 25));

/// A helix in one of the planes, between a rapid and a feed.
struct Helix {
  const char* name;
  const char* words;
  std::size_t first, second;  ///< axes of the plane, in the order in which angles grow
  double sense = 1;           ///< in which it turns
};
void PrintTo(const Helix& helix, std::ostream* out) { *out << helix.name; }

class TrajetArcPlaces : public HostTest, public testing::WithParamInterface<Helix> {};

TEST_P(TrajetArcPlaces, FollowTheExactArc) {
  constexpr double kRadius = 7;
  constexpr double kRise = 11;
  constexpr double kSweep = 1.5 * std::numbers::pi;
  const auto [name, words, first, second, sense] = GetParam();
  const std::size_t along = 3 - first - second;
  const TempFolder folder;
  const auto file = folder.file(L"helix.nc");
  const std::string program = std::string("G0 X5 Y5 Z5\nG4 P3\n") + words + "\nG91 G1 X4 F30\n";
  writeFile(file, program);
  const auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->put_Tolerance(0.4), "Tolerance");
  const CallResult loaded = callMethod(path.Get(), L"ChargerGCode", {bstr(file)});
  ASSERT_EQ(loaded.code(), S_OK) << std::string(loaded.description.begin(),
                                                loaded.description.end());
  const auto number = [&](const wchar_t* property) {
    return static_cast<double>(getProperty(path.Get(), property).value);
  };
  const double before = std::sqrt(75.0);
  const double arc = std::hypot(kRadius * kSweep, kRise);
  EXPECT_NEAR(number(L"Longueur"), before + arc + 4, 1e-10);
  const double pause = before / 5000 * 60 + 3;
  EXPECT_NEAR(number(L"Duree"), pause + arc + 8, 1e-10);
  const double chords = number(L"NbSegments") - 2;
  ASSERT_GE(chords, 6);
  ASSERT_LE(chords, 9);
  Random random(3);
  for (int i = 0; i < 400; ++i) {
    const double share = random.between(0, 1);
    const bool isByTime = i % 2 != 0;
    const double wanted = isByTime ? pause + share * arc : before + share * arc;
    const wchar_t* const property = isByTime ? L"PositionTemps" : L"Position";
    ASSERT_EQ(putProperty(path.Get(), property, wanted).code(), S_OK);
    EXPECT_EQ(number(property), wanted);
    EXPECT_NEAR(number(L"Position"), before + share * arc, 1e-9);
    EXPECT_NEAR(number(L"PositionTemps"), pause + share * arc, 1e-9);
    EXPECT_EQ(number(L"PositionLigne"), 3);
    EXPECT_NEAR(number(L"PositionSegment"), 1 + share * chords - 0.5, 0.5 + 1e-6);
    const Numbers point = doublesIn(callMethod(path.Get(), L"getPosition").value);
    const double angle = share * kSweep;  // from the start, which lies at -first of the centre
    Place3 wantedPoint{5, 5, 5};
    wantedPoint[first] += kRadius - kRadius * std::cos(angle);
    wantedPoint[second] -= sense * kRadius * std::sin(angle);
    wantedPoint[along] += share * kRise;
    for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_NEAR(point[axis], wantedPoint[axis], 1e-9);
  }
}

// Each three quarters of a turn about a centre 7 beyond the start.
INSTANTIATE_TEST_SUITE_P(Planes, TrajetArcPlaces,
                         testing::Values(Helix{"XY", "G17 G3 X12 Y12 Z16 I7 F60", 0, 1},
                                         Helix{"ZX", "G18 G3 Z12 X12 Y16 K7 F60", 2, 0},
                                         Helix{"YZ", "G19 G3 Y12 Z12 X16 J7 F60", 1, 2},
                                         Helix{"Clockwise", "G17 G2 X12 Y-2 Z16 I7 F60", 0, 1, -1}),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

}  // namespace
}  // namespace zyn::test
