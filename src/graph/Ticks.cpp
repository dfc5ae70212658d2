#include "graph/Ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>
#include <variant>

#include "graph/CalendarSteps.h"
#include "graph/NumberSteps.h"

namespace zyn {

namespace {

/// Dates of less than this many days have no step of the calendar.
constexpr double kShortestCalendar = 5.0 / static_cast<double>(CalendarTime::kPerDay);
constexpr std::size_t kEnough = 3;
/// Of the pixels between ticks, what minor ones need.
constexpr double kMinorPart = 1.0 / 8;
constexpr double kRounding = 1e-9;
/// Pixels of an axis that are filled with ticks at most.
constexpr double kLongest = 1e5;
/// Parts into which minor ticks divide what lies between major ones: at most.
constexpr std::size_t kMostParts = 10;
constexpr std::size_t kMostCalendarParts = 31;

using Labeller = std::function<TickLabels(Notation)>;

/// The marks of one step that an axis could show.
struct Candidate {
  std::vector<double> values{};
  std::vector<double> pixels{};
  Labeller labels{};  ///< none: for minor ticks only
  std::optional<CalendarStep> step{};
};

/// A candidate with its labels in their places.
struct Choice {
  const Candidate* candidate = nullptr;
  TickLabels labels{};
  std::vector<double> middles{};

  std::size_t size() const { return candidate ? candidate->values.size() : 0; }
};

/// All steps that could have room, in the order in which they are preferred.
class Candidates {
 public:
  Candidates(const AxisScale& scale, const TickRoom& room, const TickFormat& format)
      : scale_(scale),
        range_{scale.min, scale.max},
        format_(format),
        most_(std::min(scale.length(), kLongest) /
                  std::max(std::min(kMinorPart * room.pitch, room.gap), 1.0) +
              1) {
    if (scale.kind == AxisKind::kLog10) {
      addDecades(room);
    } else if (scale.kind == AxisKind::kDate && hasCalendar()) {
      addCalendar();
    } else {
      addDecimals();
    }
  }

  const std::vector<Candidate>& all() const { return all_; }

  std::size_t mostParts() const { return isCalendar_ ? kMostCalendarParts : kMostParts; }

 private:
  bool hasCalendar() const {
    return CalendarTime::isDate(range_.min) && CalendarTime::isDate(range_.max) &&
           spanOf(range_) >= kShortestCalendar;
  }

  template <class Mark>
  void add(const std::vector<Mark>& marks, Labeller labels,
           const std::optional<CalendarStep>& calendarStep = {}) {
    Candidate candidate{.labels = std::move(labels), .step = calendarStep};
    for (const Mark& mark : marks) {
      const double value = std::clamp(valueOf(mark), range_.min, range_.max);
      candidate.values.push_back(value);
      candidate.pixels.push_back(scale_.pixelOf(value));
    }
    if (!marks.empty()) {
      all_.push_back(std::move(candidate));
    }
  }

  static double valueOf(const Decimal& mark) { return mark.value(); }
  static double valueOf(const CalendarTime& mark) { return mark.days(); }

  template <class Format, class Mark>
  static TickLabels formatted(const Format& format, const std::vector<Mark>& marks) {
    TickLabels labels;
    for (const Mark& mark : marks) {
      if constexpr (std::is_same_v<Mark, Decimal>) {
        labels.texts.push_back(format.text(mark.value()));
      } else {
        labels.texts.push_back(format.text(mark));
      }
    }
    return labels;
  }

  Labeller numberLabeller(const std::vector<Decimal>& marks, bool isDecade) const {
    return [this, marks, isDecade](Notation notation) {
      if (const auto* format = std::get_if<NumberFormat>(&format_)) {
        return formatted(*format, marks);
      }
      TickLabels labels = isDecade ? decadeLabels(marks, notation) : numberLabels(marks, notation);
      if (scale_.kind == AxisKind::kDate) {
        labels.offset += labels.offset.empty() ? "d" : " d";
      }
      return labels;
    };
  }

  void addDecimals() {
    const double span = spanOf(range_);
    const double finest = std::max(span / most_, std::numeric_limits<double>::denorm_min());
    for (DecimalStep step{1, static_cast<int>(std::floor(std::log10(finest)))};
         step.value() <= span; step = step.next()) {
      if (step.value() >= finest) {
        const std::vector<Decimal> marks = step.within(range_);
        add(marks, numberLabeller(marks, false));
      }
    }
  }

  void addCalendar() {
    isCalendar_ = true;
    const double span = spanOf(range_);
    for (const CalendarStep& step : calendarSteps()) {
      if (step.days() <= 2 * span && span / step.days() <= most_) {
        const std::vector<CalendarTime> marks = step.within(range_);
        const auto label = [this, marks, step](Notation notation) {
          const auto* format = std::get_if<DateFormat>(&format_);
          return format ? formatted(*format, marks) : calendarLabels(marks, step, notation);
        };
        add(marks, label, step);
      }
    }
  }

  void addDecade(const DecadeStep& step, bool isLabelled) {
    const std::vector<Decimal> marks = step.within(range_);
    add(marks, isLabelled ? numberLabeller(marks, true) : Labeller());
  }

  /// Decades, where there are enough of them, with labels between where they lie far apart.
  void addDecades(const TickRoom& room) {
    static constexpr std::array kPower{10};
    static constexpr std::array kSome{10, 20, 50};
    static constexpr std::array kAll{10, 20, 30, 40, 50, 60, 70, 80, 90};
    static constexpr std::array kHalves{10, 15, 20, 25, 30, 35, 40, 45, 50,
                                        55, 60, 65, 70, 75, 80, 85, 90, 95};
    constexpr double kFar = 5;  // pitches
    const double decades = std::log10(range_.max) - std::log10(range_.min);
    const double pixels = scale_.length() / std::max(decades, 1.0);
    if (pixels > kFar * room.pitch) {
      addDecade({1, kSome}, true);
    }
    for (const int every : {1, 2, 3, 5, 10, 20, 30, 50, 100, 200}) {
      if (decades / every <= most_) {
        addDecade({every, kPower}, true);
      }
    }
    if (3 * decades <= most_) {
      addDecade({1, kSome}, true);
    }
    if (9 * decades <= most_) {
      addDecade({1, kAll}, true);
      addDecade({1, kHalves}, false);
    }
    if (range_.max / 10 <= range_.min) {
      addDecimals();
    }
  }

  const AxisScale& scale_;
  ValueRange range_;
  const TickFormat& format_;
  double most_;
  bool isCalendar_ = false;
  std::vector<Candidate> all_;
};

/// The least distance between neighbours; infinite without.
double closest(const std::vector<double>& pixels) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < pixels.size(); ++i) {
    least = std::min(least, std::abs(pixels[i] - pixels[i - 1]));
  }
  return least;
}

/// Labels of a candidate, if they have room.
std::optional<Choice> place(const Candidate& candidate, const TickRoom& room, Notation notation,
                            bool isComfortable) {
  const double gap = isComfortable ? 2 * room.gap : room.gap;
  if (!candidate.labels || closest(candidate.pixels) < (isComfortable ? room.pitch : room.gap)) {
    return {};
  }
  Choice choice{&candidate, candidate.labels(notation)};
  const std::vector<std::string>& texts = choice.labels.texts;
  if (std::ranges::adjacent_find(texts) != texts.end()) {
    return {};
  }
  double extentBefore = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const double extent = room.extentOf(texts[i]);
    const double low = room.first + extent / 2;
    const double high = room.last - extent / 2;
    if (!(low <= high)) {
      return {};
    }
    const double middle = std::clamp(candidate.pixels[i], low, high);
    if (i > 0 && std::abs(middle - choice.middles.back()) < (extentBefore + extent) / 2 + gap) {
      return {};
    }
    choice.middles.push_back(middle);
    extentBefore = extent;
  }
  return choice;
}

/// The first that has enough ticks in comfort; else of those with enough the one with the fewest;
/// else the one with the most.
Choice choose(const std::vector<Candidate>& candidates, const TickRoom& room,
              std::span<const Notation> notations) {
  for (const Notation notation : notations) {
    for (const Candidate& candidate : candidates) {
      if (candidate.values.size() >= kEnough) {
        if (auto choice = place(candidate, room, notation, true)) {
          return std::move(*choice);
        }
      }
    }
  }
  Choice best;
  const auto isBetter = [&](std::size_t size) {
    return best.size() < kEnough ? size > best.size() : size >= kEnough && size < best.size();
  };
  for (const Notation notation : notations) {
    for (const Candidate& candidate : candidates) {
      if (isBetter(candidate.values.size())) {
        if (auto choice = place(candidate, room, notation, false)) {
          best = std::move(*choice);
        }
      }
    }
  }
  return best;
}

/// The marks of the finest step that has room and falls on every major tick.
std::vector<double> minorTicks(const Candidates& candidates, const Candidate& major,
                               const TickRoom& room, bool isLogarithmic) {
  const Candidate* finest = &major;
  const double wanted =
      isLogarithmic ? kMinorPart * room.pitch : std::max(kMinorPart * room.pitch, room.minorPitch);
  const double least = (1 - kRounding) * wanted;
  for (const Candidate& candidate : candidates.all()) {
    const std::size_t size = candidate.values.size();
    if (size > finest->values.size() &&
        size <= candidates.mostParts() * (major.values.size() + 1) &&
        closest(candidate.pixels) >= least &&
        (!candidate.step || candidate.step->divides(*major.step)) &&
        std::ranges::includes(candidate.values, major.values)) {
      finest = &candidate;
    }
  }
  std::vector<double> minor;
  std::ranges::set_difference(finest->values, major.values, std::back_inserter(minor));
  return minor;
}

Ticks chooseAmong(const AxisScale& scale, const TickRoom& room, const TickFormat& format,
                  std::span<const Notation> notations) {
  Ticks ticks;
  if (!scale.isValid() || !(scale.length() > 0)) {
    return ticks;
  }
  const Candidates candidates(scale, room, format);
  Choice choice = choose(candidates.all(), room, notations);
  if (choice.candidate) {
    ticks.major = choice.candidate->values;
    ticks.minor = minorTicks(candidates, *choice.candidate, room, scale.kind == AxisKind::kLog10);
    ticks.labels = std::move(choice.labels.texts);
    ticks.labelPixels = std::move(choice.middles);
    ticks.offset = std::move(choice.labels.offset);
  }
  return ticks;
}

}  // namespace

Ticks chooseTicks(const AxisScale& scale, const TickRoom& room, const TickFormat& format) {
  static constexpr std::array kNotations{Notation::kFull, Notation::kShort};
  return chooseAmong(scale, room, format, kNotations);
}

Ticks chooseLoneTicks(const AxisScale& scale, const TickRoom& room) {
  static constexpr std::array kNotations{Notation::kAlone};
  return chooseAmong(scale, room, {}, kNotations);
}

}  // namespace zyn
